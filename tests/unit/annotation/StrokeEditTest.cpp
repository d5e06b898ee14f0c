// SPDX-License-Identifier: GPL-3.0-or-later
#include "annotation/logic/StrokeEdit.h"
#include "annotation/logic/StrokeHitTest.h"
#include "annotation/logic/StrokeInput.h"

#include "RedStroke.h"

#include <gtest/gtest.h>

namespace annotation {
namespace {

using overlay::PointerRole;
namespace st = stroketype;

Stroke box(int type, QPointF a, QPointF b)
{
    return test::redStroke(type, a, b);
}

// A drag by d that began at `from`.
Stroke dragged(Stroke s, QPointF from, QPointF d)
{
    s.moveX = from.x();
    s.moveY = from.y();
    s.moveToX = from.x() + d.x();
    s.moveToY = from.y() + d.y();
    return s;
}

TEST(StrokeEdit, EachHandleMovesItsSidesAndADragPastTheOppositeSideFlips)
{
    const Stroke s = box(st::Square, {0, 0}, {100, 50});
    const QPointF d(10, 20);
    const QRectF R(-1000, -1000, 3000, 3000);
    const std::vector<QRectF> expected{
        {0, 0, 100, 50},  // 0: no handle
        {10, 20, 90, 30}, // 1 bottom left
        {0, 20, 100, 30}, // 2 bottom
        {0, 20, 110, 30}, // 3 bottom right
        {0, 0, 110, 50},  // 4 right
        {0, 0, 110, 70},  // 5 top right
        {0, 0, 100, 70},  // 6 top
        {10, 0, 90, 70},  // 7 top left
        {10, 0, 90, 50},  // 8 left
        {0, 0, 100, 50},  // 9: none either
    };
    for (int which = 0; which <= 9; ++which)
        EXPECT_EQ(edit::getNewRectOfResizeAllStroke(dragged(s, {}, d), which, R),
                  expected[static_cast<std::size_t>(which)])
            << "handle " << which;
    // Before any drag only the normalising acts.
    EXPECT_EQ(edit::getNewRectOfResizeAllStroke(box(st::Ellipse, {100, 50}, {0, 0}), 3, R),
              QRectF(0, 0, 100, 50));

    // The bottom-right handle dragged past the top-left corner: the box
    // turns over that corner, which becomes its bottom right.
    Stroke flipped = dragged(s, {100, 0}, {-150, 80});
    EXPECT_EQ(edit::getNewRectOfResizeAllStroke(flipped, 3, R), QRectF(-50, 50, 50, 30));
    edit::foldResize(flipped, 3, R);
    EXPECT_EQ(flipped.X1, -50.0);
    EXPECT_EQ(flipped.Y1, 50.0);
    EXPECT_EQ(flipped.X2, 0.0);
    EXPECT_EQ(flipped.Y2, 80.0);
    // The bottom handle past the top one: stored ordered again.
    Stroke over = dragged(s, {50, 0}, {0, 80});
    edit::foldResize(over, 2, R);
    EXPECT_EQ(over.Y1, 50.0);
    EXPECT_EQ(over.Y2, 80.0);

    // A line's handle moves its own end only, and keeps its direction.
    Stroke line = dragged(box(st::Arrow, {0, 0}, {100, 0}), {0, 0}, {200, 30});
    edit::foldResize(line, 1, R);
    EXPECT_EQ(line.X1, 200.0);
    EXPECT_EQ(line.Y1, 30.0);
    EXPECT_EQ(line.X2, 100.0);
    Stroke tip = dragged(box(st::Line, {0, 0}, {100, 0}), {100, 0}, {-5, 5});
    edit::foldResize(tip, 2, R);
    EXPECT_EQ(tip.X1, 0.0);
    EXPECT_EQ(tip.X2, 95.0);
    EXPECT_EQ(tip.Y2, 5.0);
}

TEST(StrokeEdit, AMosaicStaysFivePointsInsideTheSelectionsBand)
{
    const QRectF R(0, 0, 300, 200);
    // Resized past the bottom left: clamped at R less 5.
    const Stroke patch = box(st::Mosaic, {10, 10}, {110, 60});
    EXPECT_EQ(edit::getNewRectOfResizeAllStroke(dragged(patch, {}, {-50, -50}), 1, R),
              QRectF(5, 5, 105, 55));
    // Moved against the left edge: it stops there.
    Stroke moving = patch;
    moving.moveX = 50;
    moving.moveY = 50;
    edit::dragMove(moving, {0, 50}, R);
    EXPECT_EQ(moving.Rect, QRectF(5, 10, 100, 50));
    edit::foldMove(moving, {0, 50}, R);
    EXPECT_EQ(moving.X1, 5.0);
    EXPECT_EQ(moving.X2, 105.0);
    // A patch wider than the room ends against the high side.
    Stroke wide = box(st::Mosaic, {0, 10}, {400, 60});
    wide.moveX = 0;
    wide.moveY = 0;
    edit::dragMove(wide, {0, 0}, R);
    EXPECT_EQ(wide.Rect->x(), -105.0);
    // A highlight is not held in.
    Stroke light = box(st::Highlight, {10, 10}, {110, 60});
    light.moveX = 50;
    light.moveY = 50;
    edit::dragMove(light, {0, 50}, R);
    EXPECT_EQ(light.Rect->x(), -40.0);
}

TEST(StrokeEdit, AMoveShiftsEveryPointAndShowsAtTheOffsetUntilItIsFolded)
{
    Stroke pencil;
    pencil.type = st::PencilPen;
    pencil.list = 1;
    pencil.allPoints = {{0, 0}, {10, 5}};
    pencil.moveX = 3;
    pencil.moveY = 3;
    edit::dragMove(pencil, {13, 1}, {});
    const Stroke shown = edit::shownWhileEditing(pencil, StrokeGesture::Move, 0);
    EXPECT_EQ(shown.allPoints, (std::vector<QPointF>{{10, -2}, {20, 3}}));
    EXPECT_EQ(pencil.allPoints.front(), QPointF(0, 0)); // stored place unchanged
    // The release point counts, not the last drag.
    edit::foldMove(pencil, {23, 3}, {});
    EXPECT_EQ(pencil.allPoints, (std::vector<QPointF>{{20, 0}, {30, 5}}));
    // Its corners were missing and read as zero: they get the bare offset.
    EXPECT_EQ(pencil.X1, 20.0);
    EXPECT_EQ(pencil.Y2, 0.0);

    // During a resize a box shows ordered with its handle dragged; a line
    // with its held end moved.
    const Stroke s = dragged(box(st::Square, {0, 0}, {100, 50}), {100, 0}, {-150, 80});
    const Stroke resized = edit::shownWhileEditing(s, StrokeGesture::Resize, 3);
    EXPECT_EQ(resized.X1, -50.0);
    EXPECT_EQ(resized.Y2, 80.0);
    const Stroke end = edit::shownWhileEditing(
        dragged(box(st::Line, {0, 0}, {100, 0}), {100, 0}, {0, 40}), StrokeGesture::Resize, 2);
    EXPECT_EQ(end.X1, 0.0);
    EXPECT_EQ(end.Y2, 40.0);
    // A settled stroke shows as it is.
    EXPECT_EQ(edit::shownWhileEditing(box(st::Line, {0, 0}, {1, 1}), StrokeGesture::Move, 0),
              box(st::Line, {0, 0}, {1, 1}));
}

NewStrokeSettings red()
{
    NewStrokeSettings settings;
    settings.color = Qt::red;
    settings.size = 3;
    return settings;
}

class StrokeEditHistory : public ::testing::Test
{
protected:
    StrokeEditHistory() { input.setCurrentRectOfAnnotatedImageView({0, 0, 1000, 1000}); }

    // Press with the pointer's role, `drags` even steps, release.
    void gesture(PointerRole role, QPointF from, QPointF to, int drags = 6)
    {
        input.mouseDown(from, role, st::Square, red(), [this](QPointF p) {
            return hittest::getdicOfCurrentStrokeUnderMouse(state, p);
        });
        for (int i = 1; i <= drags; ++i)
            input.mouseDragged(from + (to - from) * i / drags);
        input.mouseUp(to);
    }

    [[nodiscard]] QRectF visibleBox() const
    {
        const std::vector<Stroke> strokes = state.currentStrokes(false);
        EXPECT_EQ(strokes.size(), 1U);
        const Stroke& s = strokes.front();
        return QRectF(QPointF(*s.X1, *s.Y1), QPointF(*s.X2, *s.Y2));
    }

    StrokeState state;
    StrokeInput input{state};
};

TEST_F(StrokeEditHistory, AMoveAndAResizeAreUndoStepsOfTheirOwn)
{
    gesture(PointerRole::ToolCrosshair, {100, 100}, {200, 150});
    ASSERT_EQ(state.arrayOfStrokes().size(), 1U);

    // Grabbed on its left edge, moved 50 right: a second snapshot of the
    // same stroke, which stays active without its drag.
    gesture(PointerRole::OverStroke, {100, 120}, {150, 120});
    ASSERT_EQ(state.arrayOfStrokes().size(), 2U);
    EXPECT_EQ(state.arrayOfStrokes()[1].identity(), state.arrayOfStrokes()[0].identity());
    EXPECT_EQ(visibleBox(), QRectF(150, 100, 100, 50));
    ASSERT_TRUE(state.dicOfCurrentStroke);
    EXPECT_FALSE(state.dicOfCurrentStroke->moveToX);

    // Its bottom-right handle past the top-left corner: flipped over it.
    state.idx = 3;
    gesture(PointerRole::ResizeAlternate, {250, 100}, {100, 230});
    EXPECT_EQ(state.whichTrackingAreaOfMouseDown, 3);
    EXPECT_EQ(visibleBox(), QRectF(100, 150, 50, 80));

    // Each undo uncovers the place before; a redo covers it again.
    (void)state.undoDraw();
    EXPECT_EQ(visibleBox(), QRectF(150, 100, 100, 50));
    (void)state.undoDraw();
    EXPECT_EQ(visibleBox(), QRectF(100, 100, 100, 50));
    EXPECT_TRUE(state.redoDraw());
    EXPECT_EQ(visibleBox(), QRectF(150, 100, 100, 50));

    // A move now drops the undone resize for good.
    gesture(PointerRole::OverStroke, {150, 120}, {160, 120});
    EXPECT_EQ(state.arrayOfStrokes().size(), 3U);
    EXPECT_EQ(state.undoTimes(), 0);
    EXPECT_FALSE(state.redoDraw());
    EXPECT_EQ(visibleBox(), QRectF(160, 100, 100, 50));
}

TEST_F(StrokeEditHistory, FiveDragsCommitNothingAndTheStrokeShowsAtTheOffsetUntilTheNextPress)
{
    gesture(PointerRole::ToolCrosshair, {100, 100}, {200, 150});
    gesture(PointerRole::OverStroke, {100, 120}, {130, 120}, 5);
    EXPECT_EQ(state.arrayOfStrokes().size(), 1U);
    ASSERT_TRUE(state.dicOfCurrentStroke);
    EXPECT_EQ(state.dicOfCurrentStroke->moveToX, 130.0);
    const Stroke shown = edit::shownWhileEditing(*state.dicOfCurrentStroke, state.strokeState, 0);
    EXPECT_EQ(shown.X1, 130.0);
    // The next grab takes the stored snapshot: back at its place.
    input.mouseDown({100, 120}, PointerRole::OverStroke, st::Square, red(), [this](QPointF p) {
        return hittest::getdicOfCurrentStrokeUnderMouse(state, p);
    });
    EXPECT_FALSE(state.dicOfCurrentStroke->moveToX);
    EXPECT_EQ(state.dicOfCurrentStroke->X1, 100.0);
}

TEST_F(StrokeEditHistory, ANewColourIsAStepButKeepsTheUndoneTail)
{
    gesture(PointerRole::ToolCrosshair, {100, 100}, {200, 150});
    ASSERT_TRUE(state.dicOfCurrentStroke);
    // The same settings change nothing.
    EXPECT_FALSE(edit::refreshBoxSizeAndDrawRect(state, Qt::red, 3));
    EXPECT_EQ(state.arrayOfStrokes().size(), 1U);
    EXPECT_TRUE(edit::refreshBoxSizeAndDrawRect(state, Qt::blue, 3));
    ASSERT_EQ(state.arrayOfStrokes().size(), 2U);
    EXPECT_EQ(state.currentStrokes(false).front().color, QColor(Qt::blue));
    (void)state.undoDraw();
    EXPECT_EQ(state.currentStrokes(false).front().color, QColor(Qt::red));
    EXPECT_FALSE(edit::refreshBoxSizeAndDrawRect(state, Qt::green, 3)); // nothing active

    // After that undo: grab the stroke (red, as visible) and make it wider.
    // The copy lands behind the undone blue one; the count still hides one
    // snapshot, now the new one, so the blue shows and the width waits for
    // a redo.
    gesture(PointerRole::OverStroke, {100, 120}, {100, 120}, 0);
    EXPECT_TRUE(edit::refreshBoxSizeAndDrawRect(state, Qt::red, 8));
    ASSERT_EQ(state.arrayOfStrokes().size(), 3U);
    EXPECT_EQ(state.undoTimes(), 1);
    EXPECT_EQ(state.currentStrokes(false).front().color, QColor(Qt::blue));
    EXPECT_EQ(state.currentStrokes(false).front().size, 3.0);
    EXPECT_TRUE(state.redoDraw());
    EXPECT_EQ(state.currentStrokes(false).front().size, 8.0);
}

TEST_F(StrokeEditHistory, AShapeOptionReachesOnlyAnActiveStrokeOfItsTypeAsAStep)
{
    EXPECT_FALSE(edit::followOption(state, u"filledOfSquare", true)); // nothing active
    gesture(PointerRole::ToolCrosshair, {100, 100}, {200, 150});
    EXPECT_FALSE(edit::followOption(state, u"filledOfEllipse", true));
    EXPECT_FALSE(edit::followOption(state, u"normalTypeOfArrow", false));
    EXPECT_EQ(state.arrayOfStrokes().size(), 1U);

    EXPECT_TRUE(edit::followOption(state, u"filledOfSquare", true));
    EXPECT_TRUE(edit::followOption(state, u"enableRoundOfSquare", true));
    ASSERT_EQ(state.arrayOfStrokes().size(), 3U);
    const Stroke shown = state.currentStrokes(false).front();
    EXPECT_TRUE(shown.filledOfSquare);
    EXPECT_TRUE(shown.enableRoundOfSquare);
    // Each option is its own step.
    (void)state.undoDraw();
    EXPECT_TRUE(state.currentStrokes(false).front().filledOfSquare);
    EXPECT_FALSE(state.currentStrokes(false).front().enableRoundOfSquare);
    (void)state.undoDraw();
    EXPECT_FALSE(state.currentStrokes(false).front().filledOfSquare);
}

} // namespace
} // namespace annotation
