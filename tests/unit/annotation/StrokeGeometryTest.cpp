// SPDX-License-Identifier: GPL-3.0-or-later
#include "annotation/logic/StrokeGeometry.h"

#include <gtest/gtest.h>

#include <cmath>

namespace annotation::geometry {
namespace {

constexpr double kTol = 1e-4;

void expectNear(QPointF actual, QPointF expected, double tol = kTol)
{
    EXPECT_NEAR(actual.x(), expected.x(), tol) << "x";
    EXPECT_NEAR(actual.y(), expected.y(), tol) << "y";
}

// Worked by hand: cos 29.2° = 0.8728716, sin 29.2° = 0.4879500.
void expectNear(const QRectF& actual, const QRectF& expected)
{
    expectNear(actual.topLeft(), expected.topLeft());
    expectNear(actual.bottomRight(), expected.bottomRight());
}

TEST(ArrowGeometry, StrokedHeadAlongTheXAxis)
{
    // size 10: head t = trunc(10 / 1.6 + 10 + 8) = trunc(24.25) = 24;
    // shaft L = 100.5 - 0.8728716 * 24 = 79.55108.
    const StrokedArrow a = strokedArrow({0, 0}, {100, 0}, 10);
    EXPECT_EQ(a.headLength, 24);
    expectNear(a.shaftEnd, {79.55108, 0});
    expectNear(a.head[0], {100, 0});
    // Wings 24 back from the tip at 29.2° either side: 24 * 0.8728716 = 20.94892,
    // 24 * 0.4879500 = 11.71080.
    expectNear(a.head[1], {79.05108, -11.71080});
    expectNear(a.head[2], {79.05108, 11.71080});
}

TEST(ArrowGeometry, StrokedHeadPointingUpAndTooShortForItsHead)
{
    // size 3: t = trunc(1.875 + 11) = 12; length 40: L = 40.5 - 10.47446 = 30.02554.
    const StrokedArrow up = strokedArrow({10, 10}, {10, 50}, 3);
    EXPECT_EQ(up.headLength, 12);
    expectNear(up.shaftEnd, {10, 40.02554});
    // 12 * 0.4879500 = 5.85540 to each side, 12 * 0.8728716 = 10.47446 back.
    expectNear(up.head[1], {15.85540, 39.52554});
    expectNear(up.head[2], {4.14460, 39.52554});
    // Shorter than its head: the shaft points back past the tail, unclamped.
    // size 10, length 5: L = 5.5 - 20.94892 = -15.44892.
    const StrokedArrow stub = strokedArrow({0, 0}, {5, 0}, 10);
    expectNear(stub.shaftEnd, {-15.44892, 0});
}

TEST(ArrowGeometry, TaperedDartKeepsItsHeadsRealSize)
{
    // Length 60: scale 2; size 2: q = (3 * 2 + 2) / 2 = 4 design units.
    const QPolygonF along = taperedArrow({0, 0}, {60, 0}, 2);
    ASSERT_EQ(along.size(), 7);
    const QPolygonF expected{{0, 0.1},     {52, 3.2},  {51.2, 6.4}, {60, 0},
                             {51.2, -6.4}, {52, -3.2}, {0, -0.1}};
    for (int i = 0; i < 7; ++i)
        expectNear(along[i], expected[i]);
    // Head 1.1 * 8 = 8.8 long and 1.6 * 8 = 12.8 wide whatever the length:
    // at length 300 (scale 10), the same.
    const QPolygonF longer = taperedArrow({0, 0}, {300, 0}, 2);
    EXPECT_NEAR(longer[3].x() - longer[2].x(), 8.8, kTol);
    EXPECT_NEAR(longer[2].y() - longer[4].y(), 12.8, kTol);
    EXPECT_NEAR(longer[0].y() - longer[6].y(), 1.0, kTol); // 0.1 * 300 / 30 at the tail
    // Pointing straight down from (10, 70) to (10, 10): turned a quarter clockwise.
    const QPolygonF down = taperedArrow({10, 70}, {10, 10}, 2);
    expectNear(down[3], {10, 10});
    expectNear(down[2], {16.4, 18.8});
    expectNear(down[4], {3.6, 18.8});
}

TEST(ArrowGeometry, ZeroLengthDartFallsBackToItsDesignSize)
{
    // Scale 1/30: q = 8 * 30 = 240 design units, all near the tail; no
    // division by zero.
    const QPolygonF dot = taperedArrow({5, 5}, {5, 5}, 2);
    for (QPointF p : dot) {
        EXPECT_TRUE(std::isfinite(p.x()) && std::isfinite(p.y()));
    }
    expectNear(dot[3], {6, 5});
    expectNear(dot[2], {6 - 8.8, 5 + 6.4});
}

TEST(StrokeShapes, HandlesRunCounterClockwiseFromTheBottomLeft)
{
    const std::vector<QRectF> h = calculateAllNeededHandleSquareRects({10, 20, 100, 50}, 0);
    ASSERT_EQ(h.size(), 9U);
    EXPECT_EQ(h[0], QRectF(16, 26, 0, 0));
    EXPECT_EQ(h[1].center(), QPointF(10, 20));
    EXPECT_EQ(h[2].center(), QPointF(60, 20));
    EXPECT_EQ(h[3].center(), QPointF(110, 20));
    EXPECT_EQ(h[4].center(), QPointF(110, 45));
    EXPECT_EQ(h[5].center(), QPointF(110, 70));
    EXPECT_EQ(h[6].center(), QPointF(60, 70));
    EXPECT_EQ(h[7].center(), QPointF(10, 70));
    EXPECT_EQ(h[8].center(), QPointF(10, 45));
    EXPECT_EQ(h[5].size(), QSizeF(10, 10));
    // A highlight also gets the bands between them, the right upper one twice.
    const std::vector<QRectF> bands = calculateAllNeededHandleSquareRects({10, 20, 100, 50}, 8);
    ASSERT_EQ(bands.size(), 18U);
    EXPECT_EQ(bands[9], QRectF(16, 15, 38, 10));
    EXPECT_EQ(bands[12], QRectF(105, 51, 10, 13));
    EXPECT_EQ(bands[13], bands[12]);
    EXPECT_EQ(bands[17], QRectF(5, 51, 10, 13));
}

TEST(StrokeShapes, RoundedRectangleRadiusShrinksOnNarrowShapes)
{
    // Radius 8 on a large rectangle: the path starts at -50° on the
    // bottom-right corner's arc.
    const QPainterPath big = makeBubble({0, 0, 100, 60}, 8, 8);
    const QPointF start = big.elementAt(0);
    expectNear(start, {92 + 8 * std::cos(-50 * M_PI / 180), 8 + 8 * std::sin(-50 * M_PI / 180)});
    expectNear(big.boundingRect(), QRectF(0, 0, 100, 60));
    // 12 wide: radius 6 whatever the height, so the ends are half circles
    // that stay inside the rectangle.
    const QPainterPath narrow = makeBubble({0, 0, 12, 80}, 8, 8);
    expectNear(narrow.boundingRect(), QRectF(0, 0, 12, 80));
    EXPECT_TRUE(narrow.contains(QPointF(6, 0.5)));
    EXPECT_FALSE(narrow.contains(QPointF(0.8, 0.8)));
    EXPECT_FALSE(narrow.contains(QPointF(11.2, 79.2)));
    // Radius 0: a plain rectangle, corners included.
    const QPainterPath plain = makeBubble({0, 0, 40, 40}, 0, 0);
    EXPECT_TRUE(plain.contains(QPointF(0.2, 0.2)));
    expectNear(plain.boundingRect(), QRectF(0, 0, 40, 40));
    // 10 high and 15 wide: the width wins, radius 7.5, not 5.
    const QPainterPath flat = makeBubble({0, 0, 15, 10}, 8, 8);
    expectNear(flat.elementAt(0),
               {7.5 + 7.5 * std::cos(-50 * M_PI / 180), 7.5 + 7.5 * std::sin(-50 * M_PI / 180)});
}

TEST(StrokeShapes, PaintColourKeepsAZeroAlphaCatchable)
{
    Stroke s;
    s.color = QColor(10, 20, 30);
    EXPECT_EQ(paintColour(s).alphaF(), 1.0f);
    s.colorAlpha = 0.5;
    EXPECT_NEAR(paintColour(s).alphaF(), 0.5, 1e-3);
    s.colorAlpha = 0.0;
    EXPECT_GT(paintColour(s).alpha(), 0);
    EXPECT_NEAR(paintColour(s).alphaF(), 0.01, 0.002);
    EXPECT_EQ(paintColour(s, true).alpha(), 0);
    EXPECT_EQ(paintColour(s).rgb(), QColor(10, 20, 30).rgb());
    EXPECT_EQ(orderedRect({50, 10}, {20, 40}), QRectF(20, 10, 30, 30));
}

} // namespace
} // namespace annotation::geometry
