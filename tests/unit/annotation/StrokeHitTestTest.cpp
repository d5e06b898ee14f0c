// SPDX-License-Identifier: GPL-3.0-or-later
#include "annotation/logic/StrokeHitTest.h"

#include "RedStroke.h"

#include <gtest/gtest.h>

#include <cmath>

namespace annotation::hittest {
namespace {

namespace st = stroketype;

Stroke shape(int type, QPointF a, QPointF b, double size = 3)
{
    return test::redStroke(type, a, b, size);
}

Stroke arrow(const char* kind, QPointF tail, QPointF tip, double size = 3)
{
    Stroke s = shape(st::Arrow, tail, tip, size);
    s.normalTypeOfArrow = QString::fromLatin1(kind);
    return s;
}

bool hits(const Stroke& s, QPointF p, HitTest test = HitTest::Press)
{
    return strokeContains(s, p, test);
}

TEST(HitPrimitives, SegmentCrossesTheSquaresEdgesAndLevelSegmentsUseTheOtherPair)
{
    // A level segment: its line never meets the top or bottom edge (the
    // division by zero fails the test), so only the side edges can catch it.
    const QPointF a(0, 0);
    const QPointF b(10, 0);
    EXPECT_TRUE(crossWithCyclePoint(a, b, {5, 2}, 3));
    EXPECT_TRUE(crossWithCyclePoint(a, b, {5, 3}, 3)); // the edge itself counts
    EXPECT_FALSE(crossWithCyclePoint(a, b, {5, 3.1}, 3));
    // Past the end: the left edge must still lie on the segment.
    EXPECT_TRUE(crossWithCyclePoint(a, b, {13, 0}, 3));
    EXPECT_FALSE(crossWithCyclePoint(a, b, {13.1, 0}, 3));
    // Upright, and slanting.
    EXPECT_TRUE(crossWithCyclePoint({0, 0}, {0, 10}, {2, 5}, 3));
    EXPECT_FALSE(crossWithCyclePoint({0, 0}, {0, 10}, {3.5, 5}, 3));
    EXPECT_TRUE(crossWithCyclePoint({0, 0}, {10, 10}, {5, 7}, 3));
    // A segment wholly inside the square crosses nothing.
    EXPECT_FALSE(crossWithCyclePoint({4, 4}, {6, 6}, {5, 5}, 3));

    EXPECT_DOUBLE_EQ(distanceBetweenPoint({0, 0}, {3, 4}), 5);
    EXPECT_DOUBLE_EQ(angleBetweenPoint({0, 1}, {0, 0}), M_PI / 2);
    EXPECT_DOUBLE_EQ(angleBetweenPoint({-1, 0}, {0, 0}), M_PI);
    EXPECT_EQ(getPointFrom({-5, 20}, {0, 0, 10, 10}), QPointF(0, 10));
    EXPECT_EQ(getPointFrom({5, 5}, {0, 0, 10, 10}), QPointF(5, 5));
    // Half-open, and a rectangle of negative size holds nothing.
    EXPECT_TRUE(pointInRect({0, 0}, {0, 0, 10, 10}));
    EXPECT_FALSE(pointInRect({10, 5}, {0, 0, 10, 10}));
    EXPECT_FALSE(pointInRect({5, 10}, {0, 0, 10, 10}));
    EXPECT_FALSE(pointInRect({5, 5}, {10, 0, -10, 10}));
}

TEST(HitPrimitives, DistancesToSegmentsAndEllipseOutlines)
{
    EXPECT_DOUBLE_EQ(distanceToSegment({5, 5}, {0, 0}, {10, 0}), 5);
    EXPECT_DOUBLE_EQ(distanceToSegment({-3, 4}, {0, 0}, {10, 0}), 5); // to the end
    EXPECT_DOUBLE_EQ(distanceToSegment({3, 4}, {0, 0}, {0, 0}), 5);   // a point
    // A circle of radius 10 about (10, 10).
    const QRectF circle(0, 0, 20, 20);
    EXPECT_NEAR(distanceToEllipseOutline({10, 10}, circle), 10, 1e-9);
    EXPECT_NEAR(distanceToEllipseOutline({25, 10}, circle), 5, 1e-9);
    EXPECT_NEAR(distanceToEllipseOutline({10, 13}, circle), 7, 1e-9);
    EXPECT_NEAR(
        distanceToEllipseOutline({10 + 20 / std::sqrt(2.0), 10 + 20 / std::sqrt(2.0)}, circle), 10,
        1e-6);
    // Semi-axes 20 and 10 about (20, 10): the centre is nearest the long
    // sides; on the outline the distance is 0.
    const QRectF wide(0, 0, 40, 20);
    EXPECT_NEAR(distanceToEllipseOutline({20, 10}, wide), 10, 1e-9);
    EXPECT_NEAR(distanceToEllipseOutline({45, 10}, wide), 5, 1e-9);
    EXPECT_NEAR(distanceToEllipseOutline({20 + 20 * std::cos(0.7), 10 + 10 * std::sin(0.7)}, wide),
                0, 1e-6);
    // A flat one is its segment.
    EXPECT_NEAR(distanceToEllipseOutline({20, 13}, QRectF(0, 10, 40, 0)), 3, 1e-9);
}

TEST(HitTolerances, EachTestHasItsOwnBandsAndRadii)
{
    // The press: band (s+1)/2 but 5 at least; line s/2 but 3 at least, plus
    // 1; pencil (s+1)/2 but 4 at least.
    const Tolerances press3 = tolerancesOf(HitTest::Press, 3);
    EXPECT_EQ(press3.band, 5);
    EXPECT_EQ(press3.lineRadius, 4);
    EXPECT_EQ(press3.pencilRadius, 4);
    const Tolerances press11 = tolerancesOf(HitTest::Press, 11);
    EXPECT_EQ(press11.band, 6);
    EXPECT_EQ(press11.lineRadius, 6);
    EXPECT_EQ(press11.pencilRadius, 6);
    // The hover: band s but 4 at least; line and pencil s/2 but 4, plus 1.
    const Tolerances hover3 = tolerancesOf(HitTest::Hover, 3);
    EXPECT_EQ(hover3.band, 4);
    EXPECT_EQ(hover3.lineRadius, 5);
    EXPECT_EQ(hover3.pencilRadius, 5);
    EXPECT_EQ(tolerancesOf(HitTest::Hover, 10).band, 10);
    EXPECT_EQ(tolerancesOf(HitTest::Hover, 10).lineRadius, 6);
    // The active stroke's: as the hover, without the plus 1.
    const Tolerances active10 = tolerancesOf(HitTest::ActiveStroke, 10);
    EXPECT_EQ(active10.band, 10);
    EXPECT_EQ(active10.lineRadius, 5);
    EXPECT_EQ(active10.pencilRadius, 5);
    EXPECT_EQ(tolerancesOf(HitTest::ActiveStroke, 2).lineRadius, 4);
}

TEST(HitTests, RectanglesCatchOnABandAndFilledOnesByTest)
{
    // Edges at x 100 and 200, y 100 and 150, 3 points wide.
    Stroke box = shape(st::Square, {100, 100}, {200, 150});
    // The press's band reaches 5 either side of the edge, half-open.
    EXPECT_TRUE(hits(box, {100, 125}));
    EXPECT_TRUE(hits(box, {104.9, 125}));
    EXPECT_FALSE(hits(box, {105, 125}));
    EXPECT_TRUE(hits(box, {95, 125}));
    EXPECT_FALSE(hits(box, {94.9, 125}));
    EXPECT_FALSE(hits(box, {150, 125})); // the inside stays free for drawing
    // The hover's is 4.
    EXPECT_TRUE(hits(box, {96, 125}, HitTest::Hover));
    EXPECT_FALSE(hits(box, {95.9, 125}, HitTest::Hover));
    EXPECT_FALSE(hits(box, {104.1, 125}, HitTest::Hover));
    // A wide stroke: the hover's band grows with it, the press's barely.
    box.size = 10;
    EXPECT_TRUE(hits(box, {91, 125}, HitTest::Hover));
    EXPECT_FALSE(hits(box, {91, 125}));

    // Filled: the press takes the inside exactly, the hover only the band,
    // the active stroke's test the rectangle grown by its band.
    Stroke filled = shape(st::Square, {100, 100}, {200, 150});
    filled.filledOfSquare = true;
    EXPECT_TRUE(hits(filled, {150, 125}));
    EXPECT_FALSE(hits(filled, {99.9, 125}));
    EXPECT_FALSE(hits(filled, {150, 125}, HitTest::Hover));
    EXPECT_TRUE(hits(filled, {99, 125}, HitTest::Hover));
    EXPECT_TRUE(hits(filled, {96, 125}, HitTest::ActiveStroke));
    EXPECT_TRUE(hits(filled, {150, 125}, HitTest::ActiveStroke));
    EXPECT_FALSE(hits(filled, {95.9, 125}, HitTest::ActiveStroke));

    // Narrower than twice the band: no inside is left, all of it is band.
    const Stroke narrow = shape(st::Square, {100, 100}, {106, 200});
    EXPECT_TRUE(hits(narrow, {103, 150}));
    // A rectangle of no size at all is a 10-point square to the press.
    const Stroke dot = shape(st::Square, {50, 50}, {50, 50});
    EXPECT_TRUE(hits(dot, {50, 50}));
    EXPECT_TRUE(hits(dot, {45, 54.9}));
    EXPECT_FALSE(hits(dot, {55, 50}));
    // A patch's border grabs the same way.
    EXPECT_TRUE(hits(shape(st::Mosaic, {0, 0}, {100, 100}), {3, 50}));
    EXPECT_FALSE(hits(shape(st::Highlight, {0, 0}, {100, 100}), {50, 50}));
}

TEST(HitTests, EllipsesCatchBetweenTwoGrownAndShrunkOutlines)
{
    // Semi-axes 20 and 10 about (20, 10); the press's band is 5.
    const Stroke ring = shape(st::Ellipse, {0, 0}, {40, 20});
    EXPECT_TRUE(hits(ring, {20, 20}));    // on the outline
    EXPECT_TRUE(hits(ring, {20, 15.5}));  // 0.5 inside the shrunk one
    EXPECT_FALSE(hits(ring, {20, 14.9})); // inside it
    EXPECT_FALSE(hits(ring, {20, 10}));   // the centre
    EXPECT_TRUE(hits(ring, {20, 24.9}));
    EXPECT_FALSE(hits(ring, {20, 25})); // on the grown one, which is open
    EXPECT_TRUE(hits(ring, {44.9, 10}));

    // A semi-axis below the band: its shrunk square still divides, so only
    // the very middle misses.
    const Stroke flat = shape(st::Ellipse, {0, 0}, {40, 6});
    EXPECT_FALSE(hits(flat, {20, 3}));
    EXPECT_TRUE(hits(flat, {20, 6}));
    // No width at all: the shrunk outline keeps semi-axes 5 and 15, so the
    // middle of the line misses and its ends are band.
    const Stroke upright = shape(st::Ellipse, {10, 0}, {10, 40});
    EXPECT_FALSE(hits(upright, {10, 20}));
    EXPECT_TRUE(hits(upright, {12, 38}));

    Stroke disc = shape(st::Ellipse, {0, 0}, {40, 20});
    disc.filledOfEllipse = true;
    EXPECT_TRUE(hits(disc, {20, 10}));
    EXPECT_FALSE(hits(disc, {20, 10}, HitTest::Hover));
    // The active stroke's test: inside semi-axes 24 and 14.
    EXPECT_TRUE(hits(disc, {20, 23.9}, HitTest::ActiveStroke));
    EXPECT_FALSE(hits(disc, {20, 24}, HitTest::ActiveStroke));
}

TEST(HitTests, ThinLinesAndPencilPathsCatchOnTheirSquares)
{
    // A level line, 3 points wide: the press's square has half side 4.
    const Stroke line = shape(st::Line, {0, 0}, {100, 0});
    EXPECT_TRUE(hits(line, {50, 0}));
    EXPECT_TRUE(hits(line, {50, 4}));
    EXPECT_FALSE(hits(line, {50, 4.1}));
    EXPECT_TRUE(hits(line, {50, 5}, HitTest::Hover));
    EXPECT_FALSE(hits(line, {50, 5.1}, HitTest::Hover));
    EXPECT_FALSE(hits(line, {50, 4.1}, HitTest::ActiveStroke));
    EXPECT_TRUE(hits(line, {104, 0}));
    EXPECT_FALSE(hits(line, {104.1, 0}));
    // A hair line still gets half side 4, a wide one its own half plus 1.
    EXPECT_TRUE(hits(shape(st::Line, {0, 0}, {100, 0}, 1), {50, 4}));
    EXPECT_TRUE(hits(shape(st::Line, {0, 0}, {100, 0}, 12), {50, 7}));
    EXPECT_FALSE(hits(shape(st::Line, {0, 0}, {100, 0}, 12), {50, 7.1}));

    Stroke pencil;
    pencil.type = st::PencilPen;
    pencil.list = 1;
    pencil.size = 3;
    pencil.allPoints = {{0, 0}, {50, 0}, {50, 50}};
    EXPECT_TRUE(hits(pencil, {50, 25}));
    EXPECT_TRUE(hits(pencil, {25, 4}));
    EXPECT_FALSE(hits(pencil, {25, 4.1}));
    EXPECT_TRUE(hits(pencil, {25, 5}, HitTest::Hover));
    // Two points closer together than the square: the click crosses no edge.
    pencil.allPoints = {{50, 50}, {52, 50}};
    EXPECT_FALSE(hits(pencil, {51, 50}));
}

TEST(HitTests, ArrowsCatchOnTheirShaftAndInTheirHead)
{
    // Stroked, 100 long, 3 wide: head 12, shaft caught to u = 88.5 within
    // v < 2, the head within 29.2 degrees of the axis seen from the tip,
    // measured from 2 points off it.
    const Stroke stroked = arrow("1", {0, 0}, {100, 0});
    EXPECT_TRUE(hits(stroked, {50, 1.9}));
    EXPECT_TRUE(hits(stroked, {50, -1.9}));
    EXPECT_FALSE(hits(stroked, {50, 2}));
    EXPECT_FALSE(hits(stroked, {-1, 0}));
    EXPECT_TRUE(hits(stroked, {95, 4}));    // atan2(2, -5) = 2.761
    EXPECT_FALSE(hits(stroked, {95, 5.5})); // atan2(3.5, -5) = 2.531
    EXPECT_FALSE(hits(stroked, {95, 1}));   // 2 points off the axis is the head's floor
    EXPECT_FALSE(hits(stroked, {101, 0}));
    // The same test turned: an arrow pointing down.
    EXPECT_TRUE(hits(arrow("1", {0, 100}, {0, 0}), {1.9, 50}));
    // Shorter than its head: no shaft, all head.
    const Stroke stubby = arrow("1", {0, 0}, {10, 0});
    EXPECT_TRUE(hits(stubby, {5, 3}));
    EXPECT_FALSE(hits(stubby, {5, 0}));

    // Tapered, 300 long: scale 10, q 1.1, the neck at u = 287.9.
    const Stroke dart = arrow("0", {0, 0}, {300, 0});
    EXPECT_TRUE(hits(dart, {100, 1.5}));
    EXPECT_TRUE(hits(dart, {100, 2.5}));
    EXPECT_FALSE(hits(dart, {100, 3}));
    EXPECT_TRUE(hits(dart, {295, 2}));
    EXPECT_FALSE(hits(dart, {295, 5}));
    EXPECT_FALSE(hits(dart, {300.5, 0}));
    // No length: nothing to catch, and no trouble.
    EXPECT_FALSE(hits(arrow("0", {5, 5}, {5, 5}), {5, 5}));
    EXPECT_FALSE(hits(arrow("", {0, 0}, {100, 0}), {50, 0}));
}

TEST(HitTests, TheWalkFindsTheNewestVisibleSnapshotAndThePressActivatesIt)
{
    StrokeState state;
    const auto commit = [&state](Stroke s) {
        state.dicOfCurrentStroke = s;
        state.commit();
    };
    const Stroke first = shape(st::Square, {0, 0}, {100, 100});
    Stroke second = shape(st::Square, {50, 0}, {150, 100});
    second.list = 2;
    commit(first);
    commit(second);
    // Where both top edges lie, the later one wins...
    const QPointF shared(75, 100);
    EXPECT_EQ(strokeUnderMouse(state, shared)->list, 2);
    // ...until the first is edited: the stroke changed last is on top.
    Stroke recoloured = first;
    recoloured.color = Qt::blue;
    commit(recoloured);
    EXPECT_EQ(strokeUnderMouse(state, shared)->color, QColor(Qt::blue));

    // A stroke moved elsewhere is caught only at its new place.
    Stroke moved = second;
    moved.X1 = 300;
    moved.X2 = 400;
    commit(moved);
    EXPECT_FALSE(strokeUnderMouse(state, QPointF(150, 50)));
    EXPECT_EQ(strokeUnderMouse(state, QPointF(400, 50))->list, 2);
    // Undone, the old place is back and the new one is free.
    (void)state.undoDraw();
    EXPECT_EQ(strokeUnderMouse(state, QPointF(150, 50))->list, 2);
    EXPECT_FALSE(strokeUnderMouse(state, QPointF(400, 50)));

    // The press makes a fresh copy active; a miss leaves the active one.
    ASSERT_TRUE(getdicOfCurrentStrokeUnderMouse(state, QPointF(150, 50)));
    EXPECT_EQ(*state.dicOfCurrentStroke, second);
    EXPECT_TRUE(isOnActiveStroke(state, QPointF(146, 50)));
    EXPECT_FALSE(isOnActiveStroke(state, QPointF(0, 50)));
    EXPECT_FALSE(getdicOfCurrentStrokeUnderMouse(state, QPointF(400, 50)));
    EXPECT_EQ(*state.dicOfCurrentStroke, second);
    // With everything undone nothing can be hit.
    while (state.undoDraw().undone) {
    }
    EXPECT_FALSE(getdicOfCurrentStrokeUnderMouse(state, QPointF(0, 50)));
    EXPECT_FALSE(state.dicOfCurrentStroke);
}

} // namespace
} // namespace annotation::hittest
