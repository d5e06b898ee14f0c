// SPDX-License-Identifier: GPL-3.0-or-later
#include "annotation/logic/CropBorderTracker.h"
#include "annotation/logic/StrokeCoverage.h"
#include "annotation/logic/StrokeHandleTracker.h"

#include "RedStroke.h"

#include <gtest/gtest.h>

namespace annotation {
namespace {

namespace st = stroketype;

Stroke shape(int type, QPointF a, QPointF b, double size = 3)
{
    return test::redStroke(type, a, b, size);
}

StrokeHoverContext annotating()
{
    StrokeHoverContext context;
    context.clipToolbarWindowOpened = true;
    return context;
}

TEST(StrokeHandles, BoxesHaveEightHandlesLinesTwoEndsAndThePencilNone)
{
    const std::vector<HandleArea> square = handleAreasOf(shape(st::Square, {100, 100}, {200, 150}));
    ASSERT_EQ(square.size(), 9U);
    EXPECT_EQ(square[0], (HandleArea{0, QRectF(106, 106, 0, 0)}));
    EXPECT_EQ(square[1], (HandleArea{1, QRectF(95, 95, 10, 10)}));
    EXPECT_EQ(square[3], (HandleArea{3, QRectF(195, 95, 10, 10)}));
    EXPECT_EQ(square[6], (HandleArea{6, QRectF(145, 145, 10, 10)}));
    EXPECT_EQ(square[8], (HandleArea{8, QRectF(95, 120, 10, 10)}));
    // Drawn toward the bottom left, the handles still go round the box.
    EXPECT_EQ(handleAreasOf(shape(st::Ellipse, {200, 150}, {100, 100})), square);

    const std::vector<HandleArea> line = handleAreasOf(shape(st::Arrow, {10, 20}, {80, 90}));
    EXPECT_EQ(line,
              (std::vector<HandleArea>{{1, QRectF(5, 15, 10, 10)}, {2, QRectF(75, 85, 10, 10)}}));
    Stroke pencil;
    pencil.type = st::PencilPen;
    pencil.allPoints = {{0, 0}, {50, 50}};
    EXPECT_TRUE(handleAreasOf(pencil).empty());

    // The cursor runs along the handle's axis; a line's end moves.
    EXPECT_EQ(handleCursorOf(st::Square, 3), CropCursor::ResizeDiagonalDown);
    EXPECT_EQ(handleCursorOf(st::Ellipse, 7), CropCursor::ResizeDiagonalDown);
    EXPECT_EQ(handleCursorOf(st::Square, 1), CropCursor::ResizeDiagonalUp);
    EXPECT_EQ(handleCursorOf(st::Square, 6), CropCursor::ResizeVertical);
    EXPECT_EQ(handleCursorOf(st::Square, 8), CropCursor::ResizeHorizontal);
    EXPECT_EQ(handleCursorOf(st::Mosaic, 12), CropCursor::OpenHand);
    EXPECT_FALSE(handleCursorOf(st::Square, 0));
    EXPECT_EQ(handleCursorOf(st::Line, 2), CropCursor::Move);
    EXPECT_FALSE(handleCursorOf(st::Arrow, 3));
    EXPECT_FALSE(handleCursorOf(st::PencilPen, 1));
    // Every one of them makes a press hold a handle.
    for (CropCursor c :
         {CropCursor::Move, CropCursor::ResizeVertical, CropCursor::ResizeDiagonalUp})
        EXPECT_TRUE(overlay::isResizeRole(pointerRoleOf(c)));
}

TEST(StrokeHandles, EnteringAHandleSetsItsNumberAndCursorAndLeavingItHandsBackLater)
{
    StrokeState state;
    state.dicOfCurrentStroke = shape(st::Square, {100, 100}, {200, 150});
    StrokeHandleTracker tracker;
    const StrokeHoverContext context = annotating();

    EXPECT_EQ(tracker.pointerMoved({150, 125}, state, context), StrokeHoverReaction{});
    const StrokeHoverReaction entered = tracker.pointerMoved({201, 99}, state, context);
    EXPECT_EQ(entered.cursor, CropCursor::ResizeDiagonalDown);
    EXPECT_EQ(state.idx, 3);
    EXPECT_TRUE(state.mouseEnterSingleStrokeTrackRect);
    // Staying inside reports nothing.
    EXPECT_EQ(tracker.pointerMoved({202, 98}, state, context), StrokeHoverReaction{});
    const StrokeHoverReaction left = tracker.pointerMoved({180, 120}, state, context);
    EXPECT_FALSE(left.cursor);
    EXPECT_TRUE(left.openHandLater);
    EXPECT_FALSE(state.mouseEnterSingleStrokeTrackRect);

    // A drag moves nothing here; without the annotation window the arrow shows.
    StrokeHoverContext dragging = context;
    dragging.mouseDraggedTimes = 3;
    EXPECT_EQ(tracker.pointerMoved({100, 100}, state, dragging), StrokeHoverReaction{});
    StrokeHoverContext closed;
    EXPECT_EQ(tracker.pointerMoved({100, 100}, state, closed).cursor, CropCursor::Arrow);

    // The areas follow the active stroke: a line now, whose ends move.
    state.dicOfCurrentStroke = shape(st::Line, {10, 10}, {90, 10});
    const StrokeHoverReaction onEnd = tracker.pointerMoved({91, 12}, state, context);
    EXPECT_EQ(onEnd.cursor, CropCursor::Move);
    EXPECT_EQ(state.idx, 2);
    // No active stroke: no areas.
    state.dicOfCurrentStroke.reset();
    (void)tracker.pointerMoved({91, 12}, state, context);
    EXPECT_TRUE(tracker.areas().empty());
}

TEST(StrokeCoverage, StrokesTakeThePointerOnTheirPaintAndSkirtWithinTheLayer)
{
    StrokeState state;
    const QRectF layer(0, 0, 400, 300);
    const auto commit = [&state](const Stroke& s) {
        state.dicOfCurrentStroke = s;
        state.commit();
        state.dicOfCurrentStroke.reset();
    };
    // A 3-point line is covered 3.5 either side: its 7-point skirt.
    commit(shape(st::Line, {50, 50}, {150, 50}));
    EXPECT_TRUE(layerCoversPoint(state, {100, 53.5}, layer));
    EXPECT_FALSE(layerCoversPoint(state, {100, 53.6}, layer));
    // A 12-point ellipse is wider than its skirt: 6 either side.
    Stroke ring = shape(st::Ellipse, {200, 100}, {300, 200}, 12);
    ring.list = 2;
    commit(ring);
    EXPECT_TRUE(layerCoversPoint(state, {250, 205.9}, layer));
    EXPECT_FALSE(layerCoversPoint(state, {250, 206.1}, layer));
    EXPECT_FALSE(layerCoversPoint(state, {250, 150}, layer));
    // A stroked arrow: its shaft, and its head past the shaft's end.
    Stroke arrow = shape(st::Arrow, {50, 250}, {150, 250});
    arrow.normalTypeOfArrow = QStringLiteral("1");
    commit(arrow);
    EXPECT_TRUE(layerCoversPoint(state, {100, 251.4}, layer));
    EXPECT_FALSE(layerCoversPoint(state, {100, 252}, layer));
    EXPECT_TRUE(layerCoversPoint(state, {145, 251}, layer));

    // A rectangle along the layer's left edge: its outer half lies outside
    // the layer and takes nothing there.
    Stroke onEdge = shape(st::Square, {0, 100}, {40, 140});
    onEdge.list = 3;
    commit(onEdge);
    EXPECT_TRUE(layerCoversPoint(state, {2, 120}, layer));
    EXPECT_FALSE(layerCoversPoint(state, {-2, 120}, layer));

    // Undone, a stroke leaves no paint.
    (void)state.undoDraw();
    EXPECT_FALSE(layerCoversPoint(state, {2, 120}, layer));

    // The active stroke covers where its drag shows it, handles included.
    Stroke active = state.currentStrokes(false).back(); // the line
    active.moveX = 100;
    active.moveY = 50;
    active.moveToX = 100;
    active.moveToY = 150;
    state.dicOfCurrentStroke = active;
    state.strokeState = StrokeGesture::Move;
    EXPECT_FALSE(layerCoversPoint(state, {100, 50}, layer));
    EXPECT_TRUE(layerCoversPoint(state, {100, 150}, layer));
    EXPECT_TRUE(layerCoversPoint(state, {154.5, 150}, layer)); // the tip's handle
    EXPECT_FALSE(layerCoversPoint(state, {155.5, 150}, layer));
}

TEST(StrokeCoverage, TheCropBorderLetsTheStrokeLayerHaveThePointerAndItsGestures)
{
    CropBorderContext context;
    context.clipToolbarWindowOpened = true;
    context.toolSelected = true;
    bool onMarkup = false;
    context.pointerOnMarkup = [&onMarkup](QPointF) { return onMarkup; };
    context.strokeUnderPointer = [](QPointF) { return StrokeUnderPointer::Stroke; };
    CropBorderTracker tracker;
    tracker.updateTrackingAreas(QSizeF(200, 100), context);
    const QPointF body(100, 50);
    EXPECT_EQ(tracker.pointerMoved(body, context).cursor, CropCursor::ToolCrosshair);
    // Onto a stroke's paint: the body is left, and the hover finds the stroke.
    onMarkup = true;
    EXPECT_EQ(tracker.pointerMoved(body, context).cursor, CropCursor::OpenHand);
    // A press there is the stroke layer's: its release leaves the hand.
    (void)tracker.mouseDragged(context);
    EXPECT_FALSE(tracker.mouseUp(1, context).cursor);
    // Off the stroke again: the tool's cross.
    onMarkup = false;
    EXPECT_EQ(tracker.pointerMoved(body, context).cursor, CropCursor::ToolCrosshair);
    (void)tracker.mouseDragged(context);
    EXPECT_EQ(tracker.mouseUp(1, context).cursor, CropCursor::ToolCrosshair);
    // A stroke drawn under the pointer, with the areas rebuilt since: the
    // layer has the pointer though no area saw it leave.
    tracker.updateTrackingAreas(QSizeF(200, 100), context);
    onMarkup = true;
    EXPECT_EQ(tracker.pointerMoved(body, context).cursor, CropCursor::OpenHand);
    EXPECT_EQ(tracker.pointerMoved(body, context), CropBorderReaction{});
}

} // namespace
} // namespace annotation
