// SPDX-License-Identifier: GPL-3.0-or-later
#include "annotation/logic/CropBorderTracker.h"

#include <gtest/gtest.h>

namespace annotation {
namespace {

using overlay::CropBorderZones;
using overlay::PointerRole;

// A 100 by 50 selection: the border is 112 by 62.
const QSizeF kBorder(112, 62);
const QPointF kBody(56, 31);
const QPointF kBottomLeft(5, 5);
const QPointF kTopEdge(56, 57);
const QPointF kBottomRight(106, 5);
const QPointF kOutside(200, 200);

CropBorderContext annotating()
{
    CropBorderContext context;
    context.clipToolbarWindowOpened = true;
    return context;
}

CropBorderTracker trackerFor(const CropBorderContext& context, bool onlyWindow = false,
                             bool hideHandles = false)
{
    CropBorderTracker tracker;
    tracker.setOnlyClipCurrentWindow(onlyWindow);
    tracker.setHideHandleRect(hideHandles);
    tracker.updateTrackingAreas(kBorder, context);
    return tracker;
}

TEST(CropBorderZones, BandOfZonesJustInsideTheBorder)
{
    const std::array<QRectF, 9> zones = CropBorderZones::handleTrackRects(kBorder);
    EXPECT_EQ(zones[0], QRectF(13, 13, 88, 36));
    EXPECT_EQ(zones[1], QRectF(1, 1, 10, 10));
    EXPECT_EQ(zones[2], QRectF(12, 1, 88, 10));
    EXPECT_EQ(zones[3], QRectF(101, 1, 10, 10));
    EXPECT_EQ(zones[4], QRectF(102, 12, 10, 38));
    EXPECT_EQ(zones[5], QRectF(101, 51, 10, 10));
    EXPECT_EQ(zones[6], QRectF(12, 51, 88, 10));
    EXPECT_EQ(zones[7], QRectF(1, 51, 10, 10));
    EXPECT_EQ(zones[8], QRectF(2, 12, 10, 38));
    // The selection's own edge runs through the handle zones.
    for (int i = 1; i <= 8; ++i) {
        const QRectF& z = zones[static_cast<std::size_t>(i)];
        const bool crossesEdge =
            z.left() <= 6 || z.right() >= 106 || z.top() <= 6 || z.bottom() >= 56;
        EXPECT_TRUE(crossesEdge) << "zone " << i;
    }
    // Handles sit centred on the outline's middle line, one per zone.
    const std::array<QRectF, 8> squares = CropBorderZones::handleSquares(kBorder);
    EXPECT_EQ(squares[0].center(), QPointF(5, 5));
    EXPECT_EQ(squares[4].center(), QPointF(107, 57));
    EXPECT_EQ(squares[3].center(), QPointF(107, 31));
    for (std::size_t i = 0; i < squares.size(); ++i)
        EXPECT_TRUE(zones[i + 1].intersects(squares[i])) << "handle " << i + 1;
}

TEST(CropBorderTracker, BodyMovesTheSelectionAndHandlesResizeIt)
{
    const CropBorderContext context = annotating();
    CropBorderTracker tracker = trackerFor(context);

    const CropBorderReaction body = tracker.pointerMoved(kBody, context);
    EXPECT_EQ(body.cursor, CropCursor::OpenHand);
    EXPECT_TRUE(tracker.isCanMove());
    EXPECT_TRUE(tracker.isInContentViewRect());
    EXPECT_FALSE(tracker.isInResizeRect());

    const CropBorderReaction corner = tracker.pointerMoved(kBottomLeft, context);
    EXPECT_EQ(corner.cursor, CropCursor::ResizeDiagonalUp);
    EXPECT_EQ(pointerRoleOf(*corner.cursor), PointerRole::ResizeAlternate);
    EXPECT_FALSE(tracker.isCanMove());
    EXPECT_TRUE(tracker.isInResizeRect());
    EXPECT_EQ(tracker.whichInResizeRect(), 1);
    EXPECT_EQ(tracker.numberOfReSize(), 1);

    const CropBorderReaction edge = tracker.pointerMoved(kTopEdge, context);
    EXPECT_EQ(edge.cursor, CropCursor::ResizeVertical);
    EXPECT_EQ(pointerRoleOf(*edge.cursor), PointerRole::Resize);
    EXPECT_EQ(tracker.whichInResizeRect(), 6);

    // Out of the border: the arrow, nothing under the pointer.
    const CropBorderReaction out = tracker.pointerMoved(kOutside, context);
    EXPECT_EQ(out.cursor, CropCursor::Arrow);
    EXPECT_FALSE(tracker.isInResizeRect());
    EXPECT_EQ(tracker.whichInResizeRect(), -1);
}

TEST(CropBorderTracker, WindowSelectionCanNeitherMoveNorResize)
{
    const CropBorderContext context = annotating();
    CropBorderTracker tracker = trackerFor(context, true);
    EXPECT_EQ(tracker.pointerMoved(kBody, context).cursor, CropCursor::Arrow);
    EXPECT_FALSE(tracker.isCanMove());
    for (QPointF zone : {kBottomLeft, kTopEdge, kBottomRight}) {
        const CropBorderReaction reaction = tracker.pointerMoved(zone, context);
        EXPECT_FALSE(tracker.isInResizeRect());
        EXPECT_FALSE(tracker.isCanMove());
        EXPECT_NE(reaction.cursor, CropCursor::OpenHand);
    }
}

TEST(CropBorderTracker, HiddenHandlesLeaveNoZonesButTheToolKeepsItsCross)
{
    CropBorderContext context = annotating();
    CropBorderTracker tracker = trackerFor(context, false, true);
    EXPECT_TRUE(tracker.areas().empty());
    EXPECT_FALSE(tracker.pointerMoved(kBottomLeft, context).cursor);
    EXPECT_FALSE(tracker.isInResizeRect());

    // The record button's area still reports, and gives the tool's cross.
    context.toolbarViewOpend = true;
    tracker.updateTrackingAreas(kBorder, context);
    ASSERT_EQ(tracker.areas().size(), 1u);
    EXPECT_EQ(tracker.areas()[0].number, CropBorderZones::kRecordButtonArea);
    const CropBorderReaction entered =
        tracker.mouseEntered(CropBorderZones::kRecordButtonArea, context);
    EXPECT_EQ(entered.cursor, CropCursor::ToolCrosshair);
    EXPECT_TRUE(tracker.isInContentViewRect());
}

TEST(CropBorderTracker, DragFromAHandleEndsWithThatHandlesCursorWhereverItEnds)
{
    const CropBorderContext context = annotating();
    CropBorderTracker tracker = trackerFor(context);
    (void)tracker.pointerMoved(kBottomRight, context);
    ASSERT_EQ(tracker.whichInResizeRect(), 3);

    const CropBorderReaction down = tracker.mouseDown(1);
    EXPECT_EQ(down.cursorRectsEnabled, false);
    EXPECT_TRUE(down.redraw);
    (void)tracker.mouseDragged(context);
    EXPECT_EQ(tracker.closedHandRect(), QRectF(1, 1, 110, 60));
    // No crossing is reported during the drag.
    EXPECT_EQ(tracker.pointerMoved(kOutside, context), CropBorderReaction{});
    EXPECT_EQ(tracker.whichInResizeRect(), 3);

    const CropBorderReaction up = tracker.mouseUp(1, context);
    EXPECT_EQ(up.cursor, CropCursor::ResizeDiagonalDown);
    EXPECT_EQ(up.cursorRectsEnabled, true);
    EXPECT_FALSE(tracker.closedHandRect());
    // The next move settles the cursor by the pointer's place.
    EXPECT_EQ(tracker.pointerMoved(kOutside, context).cursor, CropCursor::Arrow);
    EXPECT_FALSE(tracker.isInResizeRect());
}

TEST(CropBorderTracker, ReleaseInTheBodyRestoresTheBodysCursor)
{
    CropBorderContext context = annotating();
    CropBorderTracker tracker = trackerFor(context);
    (void)tracker.pointerMoved(kBody, context);
    (void)tracker.mouseDown(2);
    EXPECT_FALSE(tracker.mouseUp(2, context).redraw);
    EXPECT_EQ(tracker.mouseUp(1, context).cursor, CropCursor::OpenHand);
    context.toolSelected = true;
    EXPECT_EQ(tracker.mouseUp(1, context).cursor, CropCursor::ToolCrosshair);
    tracker.setOnlyClipCurrentWindow(true);
    context.toolSelected = false;
    EXPECT_EQ(tracker.mouseUp(1, context).cursor, CropCursor::Arrow);
}

TEST(CropBorderTracker, WithAToolTheSelectionShowsTheToolsCross)
{
    CropBorderContext context = annotating();
    context.toolSelected = true;
    CropBorderTracker tracker = trackerFor(context);
    EXPECT_EQ(tracker.pointerMoved(kBody, context).cursor, CropCursor::ToolCrosshair);
    EXPECT_FALSE(tracker.isCanMove());
    // From a handle back into the body the cross returns too.
    (void)tracker.pointerMoved(kTopEdge, context);
    EXPECT_EQ(tracker.pointerMoved(QPointF(56, 40), context).cursor, CropCursor::ToolCrosshair);
}

TEST(CropBorderTracker, LeavingTheBodyOntoAStrokeShowsTheHand)
{
    CropBorderContext context = annotating();
    StrokeUnderPointer under = StrokeUnderPointer::ActiveStroke;
    QPointF asked;
    context.strokeUnderPointer = [&under, &asked](QPointF p) {
        asked = p;
        return under;
    };
    CropBorderTracker tracker = trackerFor(context);
    (void)tracker.pointerMoved(kBody, context);
    const CropBorderReaction onActive = tracker.mouseExited(0, QPointF(60, 30), context);
    EXPECT_EQ(onActive.cursor, CropCursor::OpenHand);
    EXPECT_EQ(onActive.mouseIsOnActivedStroke, true);
    EXPECT_EQ(asked, QPointF(60, 30));

    under = StrokeUnderPointer::Stroke;
    EXPECT_EQ(tracker.mouseExited(0, QPointF(60, 30), context).mouseIsOnActivedStroke, false);
    under = StrokeUnderPointer::NoteLine;
    EXPECT_FALSE(tracker.mouseExited(0, QPointF(60, 30), context).cursor);
    under = StrokeUnderPointer::None;
    EXPECT_EQ(tracker.mouseExited(0, QPointF(60, 30), context).cursor, CropCursor::Arrow);

    // A stroke handle that took the pointer keeps its own cursor.
    context.mouseEnterSingleStrokeTrackRect = true;
    under = StrokeUnderPointer::Stroke;
    EXPECT_FALSE(tracker.mouseExited(0, QPointF(60, 30), context).cursor);
}

TEST(CropBorderTracker, StaysQuietBeforeASelectionStandsAndDuringAScrollingCapture)
{
    CropBorderContext waiting;
    CropBorderTracker tracker = trackerFor(waiting);
    EXPECT_FALSE(tracker.pointerMoved(kBody, waiting).cursor);
    EXPECT_FALSE(tracker.isCanMove());

    CropBorderContext scrolling = annotating();
    scrolling.scrollScreenShot = true;
    CropBorderTracker scroller = trackerFor(scrolling);
    EXPECT_EQ(scroller.pointerMoved(kBottomLeft, scrolling), CropBorderReaction{});
    EXPECT_FALSE(scroller.isInResizeRect());

    // While the wheel adjusts an alpha the areas are not rebuilt.
    CropBorderContext adjusting = annotating();
    adjusting.scrollCanAdjustColorAlph = true;
    tracker.setHideHandleRect(true);
    tracker.updateTrackingAreas(kBorder, adjusting);
    EXPECT_EQ(tracker.areas().size(), 9u);
}

TEST(CropBorderTracker, RecordButtonAreaReportsThePointerOverIt)
{
    CropBorderContext context;
    context.toolbarViewOpend = true;
    CropBorderTracker tracker;
    tracker.updateTrackingAreas(QSizeF(500, 300), context);
    const QRectF button = CropBorderZones::recordButtonRect(QSizeF(500, 300));
    EXPECT_EQ(button, QRectF(90, 25, 320, 40));
    const CropBorderReaction in = tracker.pointerMoved(button.center(), context);
    EXPECT_EQ(in.mouseInButtonOfRecordScreen, true);
    const CropBorderReaction out = tracker.pointerMoved(QPointF(250, 150), context);
    EXPECT_EQ(out.mouseInButtonOfRecordScreen, false);

    context.realStartRecordingScreen = true;
    tracker.updateTrackingAreas(QSizeF(500, 300), context);
    EXPECT_EQ(tracker.areas().size(), 9u);
}

} // namespace
} // namespace annotation
