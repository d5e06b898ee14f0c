// SPDX-License-Identifier: GPL-3.0-or-later
#include "annotation/logic/StrokeInput.h"

#include <gtest/gtest.h>

namespace annotation {
namespace {

using overlay::PointerRole;
namespace st = stroketype;

NewStrokeSettings red(double size)
{
    NewStrokeSettings settings;
    settings.color = Qt::red;
    settings.size = size;
    return settings;
}

const auto noStroke = [](QPointF) { return false; };

// Presses at `from` with `tool`, drags in `drags` even steps to `to` and
// releases there.
void gesture(StrokeInput& input, int tool, QPointF from, QPointF to, int drags,
             const NewStrokeSettings& settings = red(3))
{
    input.mouseDown(from, PointerRole::ToolCrosshair, tool, settings, noStroke);
    for (int i = 1; i <= drags; ++i)
        input.mouseDragged(from + (to - from) * i / drags);
    input.mouseUp(to);
}

TEST(StrokeInput, ThePressTellsDrawingMovingAndResizingApartByThePointersRole)
{
    EXPECT_EQ(pressKindOf(PointerRole::ToolCrosshair), PressKind::Draw);
    EXPECT_EQ(pressKindOf(PointerRole::OverStroke), PressKind::GrabStroke);
    EXPECT_EQ(pressKindOf(PointerRole::Resize), PressKind::Handle);
    EXPECT_EQ(pressKindOf(PointerRole::ResizeAlternate), PressKind::Handle);
    EXPECT_EQ(pressKindOf(PointerRole::Arrow), PressKind::None);
    EXPECT_EQ(pressKindOf(PointerRole::TextIBeam), PressKind::None);

    StrokeState state;
    StrokeInput input(state);
    // Free space: a new stroke, with the undo button on.
    StrokeReaction drawn =
        input.mouseDown({10, 20}, PointerRole::ToolCrosshair, st::Square, red(3), noStroke);
    EXPECT_EQ(state.strokeState, StrokeGesture::Draw);
    EXPECT_TRUE(drawn.enableUndoButton);
    ASSERT_TRUE(state.dicOfCurrentStroke);
    EXPECT_EQ(state.dicOfCurrentStroke->X1, 10.0);
    EXPECT_FALSE(state.dicOfCurrentStroke->X2);
    input.mouseUp({10, 20});

    // A handle of the active stroke: a resize that remembers the press.
    gesture(input, st::Square, {10, 20}, {60, 70}, 6);
    state.idx = 5;
    input.mouseDown({60, 70}, PointerRole::Resize, st::Square, red(3), noStroke);
    EXPECT_EQ(state.strokeState, StrokeGesture::Resize);
    EXPECT_EQ(state.whichTrackingAreaOfMouseDown, 5);
    EXPECT_EQ(state.dicOfCurrentStroke->moveX, 60.0);
    input.mouseUp({60, 70});

    // The open hand over a stroke: a grab that selects the stroke's tool.
    Stroke line;
    line.type = st::Line;
    line.list = 1;
    const auto grabLine = [&](QPointF) {
        state.dicOfCurrentStroke = line;
        return true;
    };
    StrokeReaction grabbed =
        input.mouseDown({30, 30}, PointerRole::OverStroke, st::Square, red(3), grabLine);
    EXPECT_EQ(state.strokeState, StrokeGesture::Move);
    EXPECT_EQ(grabbed.adjustTool, st::Line);
    EXPECT_EQ(state.dicOfCurrentStroke->moveX, 30.0);
    EXPECT_EQ(state.oldType, st::Square);
    // A grab that finds nothing after all changes nothing.
    const std::optional<Stroke> before = state.dicOfCurrentStroke;
    StrokeReaction missed =
        input.mouseDown({90, 90}, PointerRole::OverStroke, st::Square, red(3), noStroke);
    EXPECT_EQ(missed, StrokeReaction{});
    EXPECT_EQ(state.strokeState, StrokeGesture::Idle);
    EXPECT_EQ(state.dicOfCurrentStroke, before);
    // The arrow: no stroke begins.
    input.mouseDown({90, 90}, PointerRole::Arrow, st::Square, red(3), noStroke);
    EXPECT_EQ(state.strokeState, StrokeGesture::Idle);
    EXPECT_EQ(state.arrayOfStrokes().size(), 1U);
}

TEST(StrokeInput, OnlySixDragEventsMakeAStrokeHoweverShort)
{
    StrokeState state;
    StrokeInput input(state);
    // A click, then five drags of any length: nothing is kept.
    gesture(input, st::Square, {10, 10}, {10, 10}, 0);
    gesture(input, st::Ellipse, {10, 10}, {300, 200}, 5);
    EXPECT_TRUE(state.arrayOfStrokes().empty());
    EXPECT_FALSE(state.dicOfCurrentStroke);
    // Six drags that go nowhere: a rectangle of zero size is kept.
    gesture(input, st::Square, {40, 40}, {40, 40}, 6);
    ASSERT_EQ(state.arrayOfStrokes().size(), 1U);
    EXPECT_EQ(state.arrayOfStrokes()[0].X2, 40.0);
    EXPECT_EQ(input.mouseDraggedTimes(), 0);
}

TEST(StrokeInput, EachToolShapesItsStrokeAndTheReleaseSettlesIt)
{
    StrokeState state;
    StrokeInput input(state);
    // A rectangle dragged toward the bottom left: not ordered during the
    // drag, ordered at the release, and still active after it.
    input.mouseDown({100, 100}, PointerRole::ToolCrosshair, st::Square, red(3), noStroke);
    for (int i = 1; i <= 6; ++i)
        input.mouseDragged({100.0 - 10 * i, 100.0 - 5 * i});
    EXPECT_EQ(state.dicOfCurrentStroke->X1, 100.0);
    EXPECT_EQ(state.dicOfCurrentStroke->X2, 40.0);
    input.mouseUp({30.5, 60.25});
    ASSERT_EQ(state.arrayOfStrokes().size(), 1U);
    const Stroke square = state.arrayOfStrokes()[0];
    EXPECT_EQ(square.X1, 30.5);
    EXPECT_EQ(square.Y1, 60.25);
    EXPECT_EQ(square.X2, 100.0);
    EXPECT_EQ(square.Y2, 100.0);
    EXPECT_EQ(state.dicOfCurrentStroke, square);
    EXPECT_EQ(square.identity(), QStringLiteral("01"));

    // An arrow dragged to the bottom left keeps its tail at the press.
    NewStrokeSettings dart = red(10);
    dart.normalTypeOfArrow = false;
    gesture(input, st::Arrow, {200, 200}, {150, 120}, 8, dart);
    const Stroke arrow = state.arrayOfStrokes().back();
    EXPECT_EQ(arrow.X1, 200.0);
    EXPECT_EQ(arrow.Y1, 200.0);
    EXPECT_EQ(arrow.X2, 150.0);
    EXPECT_EQ(arrow.Y2, 120.0);
    EXPECT_EQ(arrow.normalTypeOfArrow, QStringLiteral("0"));
    // The arrow starts opaque, the line half transparent, unless the tool
    // remembers an alpha of its own.
    EXPECT_EQ(arrow.colorAlpha, 1.0);
    gesture(input, st::Line, {0, 0}, {50, 0}, 6);
    EXPECT_EQ(state.arrayOfStrokes().back().colorAlpha, 0.5);
    NewStrokeSettings faint = red(16);
    faint.colorAlpha = 0.2;
    gesture(input, st::Line, {0, 0}, {50, 0}, 6, faint);
    EXPECT_EQ(state.arrayOfStrokes().back().colorAlpha, 0.2);
    EXPECT_EQ(state.arrayOfStrokes().back().list, 2);

    // Options are frozen into the stroke at its press.
    NewStrokeSettings options = red(3);
    options.enableRoundOfSquare = true;
    options.filledOfEllipse = true;
    gesture(input, st::Square, {0, 0}, {30, 30}, 6, options);
    EXPECT_TRUE(state.arrayOfStrokes().back().enableRoundOfSquare);
    gesture(input, st::Ellipse, {0, 0}, {30, 30}, 6, options);
    EXPECT_TRUE(state.arrayOfStrokes().back().filledOfEllipse);
    EXPECT_FALSE(state.arrayOfStrokes().back().enableRoundOfSquare);

    // A new press on free space lets the active stroke go as it stands.
    const std::size_t count = state.arrayOfStrokes().size();
    input.mouseDown({5, 5}, PointerRole::ToolCrosshair, st::Square, red(3), noStroke);
    EXPECT_EQ(state.arrayOfStrokes().size(), count);
    EXPECT_EQ(state.dicOfCurrentStroke->list, 3);
}

TEST(StrokeInput, ThePencilSamplesPointsMoreThanTwoApartAndEndsExactly)
{
    StrokeState state;
    StrokeInput input(state);
    input.mouseDown({0, 0}, PointerRole::ToolCrosshair, st::PencilPen, red(16), noStroke);
    EXPECT_FALSE(state.dicOfCurrentStroke->X1);
    // 2.0 away is not enough; 2.5 is; the next is measured from the last taken.
    const std::vector<QPointF> drags{{2, 0}, {2.5, 0}, {3.5, 0}, {4, 1}, {4.6, 2}, {10, 10}};
    for (QPointF p : drags)
        input.mouseDragged(p);
    EXPECT_EQ(state.dicOfCurrentStroke->allPoints,
              (std::vector<QPointF>{{0, 0}, {2.5, 0}, {4.6, 2}, {10, 10}}));
    // The release point is added whatever its distance.
    input.mouseUp({10.5, 10});
    ASSERT_EQ(state.arrayOfStrokes().size(), 1U);
    EXPECT_EQ(state.arrayOfStrokes()[0].allPoints,
              (std::vector<QPointF>{{0, 0}, {2.5, 0}, {4.6, 2}, {10, 10}, {10.5, 10}}));

    // Held still for six drags: its start and its end.
    gesture(input, st::PencilPen, {50, 50}, {50, 50}, 6);
    EXPECT_EQ(state.arrayOfStrokes().back().allPoints, (std::vector<QPointF>{{50, 50}, {50, 50}}));
    EXPECT_EQ(state.arrayOfStrokes().back().colorAlpha, 0.5);
    // Five drags: dropped.
    gesture(input, st::PencilPen, {0, 0}, {90, 90}, 5);
    EXPECT_EQ(state.arrayOfStrokes().size(), 2U);
    EXPECT_FALSE(state.dicOfCurrentStroke);
}

TEST(StrokeInput, TheReleaseOfANewStrokeDropsTheUndoneTail)
{
    StrokeState state;
    StrokeInput input(state);
    gesture(input, st::Square, {0, 0}, {30, 30}, 6);
    gesture(input, st::Square, {40, 0}, {70, 30}, 6);
    state.undoDraw();
    // While it is only undone, the second square's number stays taken.
    input.mouseDown({0, 0}, PointerRole::ToolCrosshair, st::Square, red(3), noStroke);
    EXPECT_EQ(state.dicOfCurrentStroke->list, 3);
    input.mouseUp({0, 0});
    // A short gesture keeps the tail; a real one ends it.
    gesture(input, st::Ellipse, {0, 0}, {30, 30}, 2);
    EXPECT_EQ(state.undoTimes(), 1);
    gesture(input, st::Ellipse, {0, 0}, {30, 30}, 6);
    EXPECT_EQ(state.undoTimes(), 0);
    EXPECT_EQ(state.arrayOfStrokes().size(), 2U);
    EXPECT_EQ(state.arrayOfStrokes().back().type, st::Ellipse);
    EXPECT_FALSE(state.redoDraw());
    // Gone for good, its number is free again.
    gesture(input, st::Square, {0, 0}, {30, 30}, 6);
    EXPECT_EQ(state.arrayOfStrokes().back().list, 2);
}

} // namespace
} // namespace annotation
