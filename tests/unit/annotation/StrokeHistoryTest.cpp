// SPDX-License-Identifier: GPL-3.0-or-later
#include "annotation/logic/StrokeState.h"

#include <gtest/gtest.h>

namespace annotation {
namespace {

using namespace Qt::Literals::StringLiterals;

namespace st = stroketype;

// A settled stroke of `type`, numbered as a new stroke would be, made
// active and committed, as a release after a drag does.
Stroke draw(StrokeState& state, int type, double x)
{
    Stroke s;
    s.type = type;
    s.list = state.getListNumberFromArrayOfStrokes(type) + 1;
    s.color = Qt::red;
    s.size = 3;
    s.X1 = x;
    s.Y1 = 10;
    s.X2 = x + 20;
    s.Y2 = 30;
    state.dicOfCurrentStroke = s;
    state.commit();
    return s;
}

std::vector<QString> visibleIdentities(const StrokeState& state)
{
    std::vector<QString> ids;
    for (const Stroke& s : state.currentStrokes(false))
        ids.push_back(s.identity());
    return ids;
}

using Ids = std::vector<QString>;

TEST(StrokeHistory, CommitAppendsSnapshotsAndTheStrokeStaysActive)
{
    StrokeState state;
    const Stroke a = draw(state, st::Square, 0);
    EXPECT_EQ(a.identity(), QStringLiteral("01"));
    ASSERT_EQ(state.arrayOfStrokes().size(), 1U);
    ASSERT_TRUE(state.dicOfCurrentStroke);
    EXPECT_EQ(*state.dicOfCurrentStroke, a);

    // A second snapshot of the same stroke (a move) changes no earlier one;
    // a drag in progress never reaches the history.
    state.dicOfCurrentStroke->X1 = 50;
    state.dicOfCurrentStroke->moveToX = 99;
    state.dicOfCurrentStroke->moveToY = 98;
    state.commit();
    ASSERT_EQ(state.arrayOfStrokes().size(), 2U);
    EXPECT_EQ(state.arrayOfStrokes()[0], a);
    EXPECT_EQ(state.arrayOfStrokes()[1].X1, 50.0);
    EXPECT_FALSE(state.arrayOfStrokes()[1].moveToX);
    EXPECT_FALSE(state.arrayOfStrokes()[1].moveToY);
    // One stroke, seen as its newest snapshot.
    const std::vector<Stroke> now = state.currentStrokes(false);
    ASSERT_EQ(now.size(), 1U);
    EXPECT_EQ(now[0].X1, 50.0);
    // The active stroke is left out when it is drawn by itself.
    EXPECT_TRUE(state.currentStrokes(true).empty());
}

TEST(StrokeHistory, CurrentViewIsNewestStrokeFirstAndAMovedStrokeRisesToTheTop)
{
    StrokeState state;
    const Stroke a = draw(state, st::Square, 0);
    draw(state, st::Ellipse, 40);
    draw(state, st::Square, 80);
    EXPECT_EQ(visibleIdentities(state), (Ids{u"02"_s, u"11"_s, u"01"_s}));
    // The oldest stroke is moved: its newest snapshot is now the newest of all.
    state.dicOfCurrentStroke = a;
    state.dicOfCurrentStroke->X1 = 5;
    state.commit();
    EXPECT_EQ(visibleIdentities(state), (Ids{u"01"_s, u"02"_s, u"11"_s}));
    // Undoing the move puts it back in its place, with its old geometry.
    state.undoDraw();
    EXPECT_EQ(visibleIdentities(state), (Ids{u"02"_s, u"11"_s, u"01"_s}));
    EXPECT_EQ(state.currentStrokes(false)[2].X1, 0.0);
}

TEST(StrokeHistory, UndoRedoAndReSetUndo)
{
    StrokeState state;
    // Undo with an empty history: nothing to undo, the button goes off.
    UndoOutcome empty = state.undoDraw();
    EXPECT_FALSE(empty.undone);
    EXPECT_TRUE(empty.disableButton);
    EXPECT_EQ(state.undoTimes(), 0);

    draw(state, st::Line, 0);
    draw(state, st::Arrow, 40);
    ASSERT_TRUE(state.dicOfCurrentStroke);
    UndoOutcome first = state.undoDraw();
    // Nothing stays active after an undo.
    EXPECT_FALSE(state.dicOfCurrentStroke);
    EXPECT_TRUE(first.undone);
    EXPECT_FALSE(first.disableButton);
    EXPECT_EQ(visibleIdentities(state), (Ids{u"21"_s}));
    UndoOutcome second = state.undoDraw();
    EXPECT_TRUE(second.disableButton);
    EXPECT_TRUE(state.everythingUndone());
    EXPECT_FALSE(state.undoDraw().undone);
    EXPECT_EQ(state.undoTimes(), 2);

    // Redo brings them back in order; a redo with nothing undone does nothing.
    EXPECT_TRUE(state.redoDraw());
    EXPECT_EQ(visibleIdentities(state), (Ids{u"21"_s}));
    EXPECT_TRUE(state.redoDraw());
    EXPECT_EQ(visibleIdentities(state), (Ids{u"31"_s, u"21"_s}));
    EXPECT_FALSE(state.redoDraw());

    // Undo, then a new commit: the undone tail is gone for good.
    state.undoDraw();
    draw(state, st::Square, 80);
    EXPECT_EQ(state.arrayOfStrokes().size(), 2U);
    EXPECT_EQ(state.undoTimes(), 0);
    EXPECT_FALSE(state.redoDraw());
    EXPECT_EQ(visibleIdentities(state), (Ids{u"01"_s, u"21"_s}));
}

TEST(StrokeHistory, ListNumbersSurviveUndoButComeBackAfterADelete)
{
    StrokeState state;
    draw(state, st::Square, 0);
    draw(state, st::Square, 40);
    draw(state, st::Ellipse, 80);
    EXPECT_EQ(state.getListNumberFromArrayOfStrokes(st::Square), 2);
    EXPECT_EQ(state.getListNumberFromArrayOfStrokes(st::Ellipse), 1);
    EXPECT_EQ(state.getListNumberFromArrayOfStrokes(st::PencilPen), 0);

    // Undone snapshots still count: no serial is reused after an undo.
    state.undoDraw();
    state.undoDraw();
    EXPECT_EQ(visibleIdentities(state), (Ids{u"01"_s}));
    EXPECT_EQ(state.getListNumberFromArrayOfStrokes(st::Square), 2);
    state.redoDraw();
    state.redoDraw();

    // The delete key erases every snapshot of the active stroke, so the
    // highest number can come back; the other strokes stay.
    Stroke second = state.currentStrokes(false)[1];
    ASSERT_EQ(second.identity(), QStringLiteral("02"));
    state.dicOfCurrentStroke = second;
    state.dicOfCurrentStroke->X1 = 7; // moved: a second snapshot
    state.commit();
    EXPECT_EQ(state.deleteCurrentStroke(), st::Square);
    EXPECT_FALSE(state.dicOfCurrentStroke);
    EXPECT_EQ(state.arrayOfStrokes().size(), 2U);
    EXPECT_EQ(visibleIdentities(state), (Ids{u"11"_s, u"01"_s}));
    EXPECT_EQ(state.getListNumberFromArrayOfStrokes(st::Square), 1);
    EXPECT_EQ(draw(state, st::Square, 120).list, 2);
    // Without an active stroke a delete does nothing.
    state.dicOfCurrentStroke.reset();
    EXPECT_FALSE(state.deleteCurrentStroke());
    EXPECT_EQ(state.arrayOfStrokes().size(), 3U);
}

TEST(StrokeHistory, DeleteTakesUndoneSnapshotsTooAndLeavesTheUndoCount)
{
    StrokeState state;
    const Stroke a = draw(state, st::Square, 0);
    draw(state, st::Ellipse, 40);
    state.dicOfCurrentStroke = a;
    state.dicOfCurrentStroke->X1 = 9;
    state.commit(); // a's move: the newest snapshot
    state.undoDraw();
    // a, grabbed again as it stands after the undo, is deleted: its undone
    // move goes with it, and the undo count still hides one snapshot.
    state.dicOfCurrentStroke = a;
    state.deleteCurrentStroke();
    EXPECT_EQ(state.arrayOfStrokes().size(), 1U);
    EXPECT_EQ(state.undoTimes(), 1);
    EXPECT_TRUE(state.everythingUndone());
    EXPECT_TRUE(state.redoDraw());
    EXPECT_EQ(visibleIdentities(state), (Ids{u"11"_s}));
}

TEST(StrokeHistory, ClearEndsTheCaptureWithNothingKept)
{
    StrokeState state;
    draw(state, st::Square, 0);
    state.undoDraw();
    state.strokeState = StrokeGesture::Draw;
    state.clear();
    EXPECT_TRUE(state.arrayOfStrokes().empty());
    EXPECT_EQ(state.undoTimes(), 0);
    EXPECT_FALSE(state.dicOfCurrentStroke);
    EXPECT_EQ(state.strokeState, StrokeGesture::Idle);
    EXPECT_EQ(state.getListNumberFromArrayOfStrokes(st::Square), 0);
}

} // namespace
} // namespace annotation
