// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/logic/HoverMagnifier.h"
#include "capture/logic/OverlayTips.h"
#include "capture/logic/SizeLabelPlacement.h"
#include "capture/logic/SurroundBands.h"

#include <gtest/gtest.h>

namespace capture {
namespace {

const QSizeF kScreen(1920, 1080);

TEST(SurroundBands, HoleEdgeDependsOnHowTheSelectionCameAbout)
{
    const QRectF window(100, 200, 300, 400);
    const SurroundBands hover = SurroundBands::forHoveredWindow(window);
    EXPECT_EQ(hover.outlineBox, window);
    EXPECT_EQ(hover.hole, QRectF(102, 202, 296, 396));

    const SurroundBands region = SurroundBands::forRegion(window);
    EXPECT_EQ(region.outlineBox, QRectF(98, 198, 304, 404));
    EXPECT_EQ(region.hole, QRectF(99, 199, 302, 402));

    // From the crop border's frame, 6 outside the selection.
    const QRectF border = window.adjusted(-6, -6, 6, 6);
    EXPECT_EQ(SurroundBands::forFixedSelection(border).hole, QRectF(99, 199, 302, 402));
    EXPECT_EQ(SurroundBands::forFixedSelection(border).outlineBox, QRectF(98, 198, 304, 404));
    EXPECT_EQ(SurroundBands::forPickedWindows(border).hole, QRectF(98, 198, 304, 404));
}

TEST(SizeLabel, ShowsTheSelectionsSizeOnTopOfItsBorder)
{
    const std::optional<SizeLabel> label = placeSizeLabel(QRectF(200, 300, 100, 50), kScreen);
    ASSERT_TRUE(label);
    EXPECT_EQ(label->widthText, "100");
    EXPECT_EQ(label->heightText, "50");
    // Left-aligned one point left of the selection, on the border's top.
    EXPECT_EQ(label->frame, QRectF(199, 356, 90, 20));

    EXPECT_EQ(placeSizeLabel(QRectF(10, 10, 0.5, 40), kScreen), std::nullopt);
    EXPECT_EQ(placeSizeLabel(QRectF(10, 10, 40, 0.9), kScreen), std::nullopt);
    EXPECT_TRUE(placeSizeLabel(QRectF(10, 10, 1, 1), kScreen));
    // Fractions round to whole points.
    EXPECT_EQ(placeSizeLabel(QRectF(10, 10, 99.6, 20.4), kScreen)->widthText, "100");
}

TEST(SizeLabel, StaysOnTheScreenNearEachEdge)
{
    const QRectF screen(QPointF(0, 0), kScreen);
    // At the top with room on the left: beside the selection, to its left.
    const SizeLabel topLeftRoom = *placeSizeLabel(QRectF(500, 900, 300, 180), kScreen);
    EXPECT_EQ(topLeftRoom.frame, QRectF(402, 1060, 90, 20));
    // At the top, near the left edge: to the right of the selection.
    const SizeLabel topRight = *placeSizeLabel(QRectF(40, 900, 300, 180), kScreen);
    EXPECT_EQ(topRight.frame, QRectF(345, 1060, 90, 20));
    // The whole screen: inside its top-left corner.
    const SizeLabel whole = *placeSizeLabel(screen, kScreen);
    EXPECT_EQ(whole.frame, QRectF(0, 1060, 90, 20));
    // At the top, full width but not full height: under the selection's corner.
    const SizeLabel below = *placeSizeLabel(QRectF(0, 300, 1920, 780), kScreen);
    EXPECT_EQ(below.frame, QRectF(0, 274, 90, 20));
    // A narrow selection at the right edge is pulled back onto the screen.
    const SizeLabel right = *placeSizeLabel(QRectF(1900, 400, 20, 20), kScreen);
    EXPECT_EQ(right.frame.right(), 1920);
}

TEST(HoverMagnifier, SitsLeftAboveThePointerAndTurnsAtTheEdges)
{
    EXPECT_EQ(HoverMagnifier::square(QPointF(500.7, 400.2), kScreen), QRectF(370, 410, 120, 120));
    // No room on the left: to the right of the pointer.
    EXPECT_EQ(HoverMagnifier::square(QPointF(100, 400), kScreen), QRectF(110, 410, 120, 120));
    // No room above: below the pointer.
    EXPECT_EQ(HoverMagnifier::square(QPointF(500, 1000), kScreen), QRectF(370, 870, 120, 120));
    // Top-left corner: right and below.
    EXPECT_EQ(HoverMagnifier::square(QPointF(5, 1075), kScreen), QRectF(15, 945, 120, 120));
    EXPECT_EQ(HoverMagnifier::cross(QPointF(100.9, 200.1)), QRectF(85, 185, 30, 30));
}

TEST(OverlayTips, HandleTipsNameTheArrowKeysThatApply)
{
    CursorTipInput in;
    in.isInResizeRect = true;
    in.role = PointerRole::ResizeAlternate;
    const auto textFor = [&in](int which) {
        in.whichInResizeRect = which;
        return cursorTip(in).change.text;
    };
    EXPECT_EQ(textFor(1),
              "Press up, down, left and right direction keys to adjust the size by one pixel");
    EXPECT_EQ(textFor(7), textFor(3));
    EXPECT_EQ(textFor(6), "Press up, down direction keys to adjust the size by one pixel");
    EXPECT_EQ(textFor(8), "Press left and right direction keys to adjust the size by one pixel");
    in.whichInResizeRect = -1;
    EXPECT_EQ(cursorTip(in).change.kind, TipChange::Kind::Hide);

    // A window selection cannot be resized, so no key tip; the role decides.
    in.onlyClipCurrentWindow = true;
    in.whichInResizeRect = 2;
    EXPECT_EQ(cursorTip(in).change.kind, TipChange::Kind::Hide);
}

TEST(OverlayTips, WheelTipsFollowThePointerRole)
{
    CursorTipInput in;
    in.role = PointerRole::ToolCrosshair;
    in.selectFunction = QStringLiteral("highlight");
    EXPECT_EQ(cursorTip(in).change.text,
              "The up and down scroll wheel can adjust the opacity of the highlight");
    in.selectFunction = QStringLiteral("arrow");
    const CursorTip size = cursorTip(in);
    EXPECT_EQ(size.change.text, "The up and down scroll wheel can adjust size");
    EXPECT_EQ(size.mousePosition, QString(""));

    in.role = PointerRole::OverStroke;
    in.strokeType = 7;
    in.mouseOnCycleOfNote = true;
    const CursorTip note = cursorTip(in);
    EXPECT_EQ(note.change.text,
              "The upper and lower rollers can adjust the number of step marking");
    EXPECT_EQ(note.mousePosition, QString("onCycleOfNote"));
    in.strokeType = 6;
    EXPECT_EQ(cursorTip(in).change.kind, TipChange::Kind::Hide);
    in.strokeType = 3;
    in.mouseIsOnActivedStroke = true;
    EXPECT_EQ(cursorTip(in).change.text,
              "The up and down scroll wheel can adjust the opacity of the active element");

    in.role = PointerRole::TextIBeam;
    EXPECT_EQ(cursorTip(in).change.text,
              "The up and down scroll wheel can adjust the opacity of the text");
}

TEST(OverlayTips, ButtonTipsShowOnAButtonAndGoWhenThePointerLeavesIt)
{
    ButtonTipInput in;
    in.mouseOnWhichButtonBox = 12;
    in.onlyClipCurrentWindow = true;
    const std::optional<TipChange> scroll = buttonTip(in);
    ASSERT_TRUE(scroll);
    EXPECT_EQ(scroll->text, "Window screenshot mode cannot take scroll screenshots");

    in.mouseOnWhichButtonBox = 3;
    in.buttonBoxNeedHidden = true;
    EXPECT_EQ(buttonTip(in)->text, "Tap the Control key to hide or show the toolbar");
    in.buttonBoxNeedHidden = false;
    EXPECT_TRUE(buttonTip(in)->text.startsWith("Stop move the mouse on the button"));
    in.tipsBoxIsOpening = true;
    EXPECT_FALSE(buttonTip(in));

    in.mouseOnWhichButtonBox = -1;
    in.tipHidden = false;
    in.shownText = scroll->text;
    EXPECT_EQ(buttonTip(in)->kind, TipChange::Kind::Hide);
    // Another tip stays when the pointer leaves the buttons.
    in.shownText = openingTipText();
    EXPECT_FALSE(buttonTip(in));
}

} // namespace
} // namespace capture
