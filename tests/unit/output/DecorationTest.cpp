// SPDX-License-Identifier: GPL-3.0-or-later
// The bubble outline, rounded corners and the shadow, on geometry and on
// real pixels.
#include "app/output/ImageDecoration.h"
#include "core/BubblePath.h"

#include <gtest/gtest.h>

using namespace app::output;

namespace {

constexpr double kTol = 1e-6;

void expectNear(QPointF a, QPointF b)
{
    EXPECT_NEAR(a.x(), b.x(), kTol);
    EXPECT_NEAR(a.y(), b.y(), kTol);
}

core::Picture solid(int w, int h, QColor c, double scale = 1.0)
{
    QImage image(static_cast<int>(w * scale), static_cast<int>(h * scale), QImage::Format_ARGB32);
    image.fill(c);
    return {image, QSizeF(w, h)};
}

int alphaAt(const core::Picture& p, int x, int y)
{
    return qAlpha(p.pixels.pixel(x, y));
}

} // namespace

TEST(BubblePath, ArcsTurnClockwiseInTheYUpPlane)
{
    QPainterPath down;
    core::appendArc(down, {0, 0}, 10, -50, -90, true);
    expectNear(down.elementAt(0), core::pointOnCircle({0, 0}, 10, -50));
    expectNear(down.currentPosition(), QPointF(0, -10));
    // A short clockwise arc stays in its quarter; the other way round would
    // sweep 320 degrees and cover the whole circle.
    EXPECT_GT(down.boundingRect().top(), -10.0 - 1e-3);
    EXPECT_GT(down.boundingRect().left(), -1e-3);

    QPainterPath up;
    core::appendArc(up, {0, 0}, 10, -50, -90, false);
    EXPECT_LT(up.boundingRect().left(), -9.9);
    EXPECT_GT(up.boundingRect().bottom(), 9.9);
}

TEST(BubblePath, AnArcOnAPathDrawsALineToItsStart)
{
    QPainterPath p;
    p.moveTo(100, 100);
    core::appendArc(p, {0, 0}, 10, 90, 0, true);
    ASSERT_GE(p.elementCount(), 2);
    EXPECT_TRUE(p.elementAt(1).isLineTo());
    expectNear(p.elementAt(1), QPointF(0, 10));
}

TEST(BubblePath, StartsAtMinusFiftyDegreesInTheBottomRightCornerAndCoversTheRect)
{
    const QRectF rect(10, 20, 200, 100);
    QPainterPath bubble;
    core::makeBubble(bubble, rect, 8, 12);
    // minY is the bottom edge: the first point lies on the bottom-right
    // corner's circle, 50 degrees below its horizontal.
    expectNear(bubble.elementAt(0), core::pointOnCircle({210 - 12, 20 + 12}, 12, -50));
    const QRectF bounds = bubble.boundingRect();
    EXPECT_NEAR(bounds.left(), rect.left(), 1e-3);
    EXPECT_NEAR(bounds.right(), rect.right(), 1e-3);
    EXPECT_NEAR(bounds.top(), rect.top(), 1e-3);
    EXPECT_NEAR(bounds.bottom(), rect.bottom(), 1e-3);
    // Corners are cut by their own radius: top (maxY) by 8, bottom by 12.
    EXPECT_FALSE(bubble.contains(QPointF(11, 21)));
    EXPECT_TRUE(bubble.contains(QPointF(10 + 12 * 0.5, 20 + 12)));
    EXPECT_FALSE(bubble.contains(QPointF(209, 119)));
    EXPECT_TRUE(bubble.contains(QPointF(209, 119 - 8)));
    EXPECT_FALSE(bubble.contains(QPointF(10 + 3, 20 + 3))); // inside the 12 cut
    EXPECT_TRUE(bubble.contains(rect.center()));
}

TEST(BubblePath, ZeroRadiiGiveThePlainRectangle)
{
    QPainterPath bubble;
    core::makeBubble(bubble, QRectF(0, 0, 40, 30), 0, 0);
    EXPECT_TRUE(bubble.contains(QPointF(0.5, 0.5)));
    EXPECT_TRUE(bubble.contains(QPointF(39.5, 29.5)));
    EXPECT_EQ(bubble.boundingRect(), QRectF(0, 0, 40, 30));
}

TEST(Decoration, RoundedCornersAreTransparentOutsideTheOutlineOnly)
{
    const core::Picture rounded = addRoundImgae(solid(40, 30, Qt::red), 5);
    EXPECT_EQ(rounded.pixels.size(), QSize(40, 30));
    EXPECT_EQ(rounded.pointSize, QSizeF(40, 30));
    for (QPoint corner : {QPoint(0, 0), QPoint(39, 0), QPoint(0, 29), QPoint(39, 29)})
        EXPECT_EQ(alphaAt(rounded, corner.x(), corner.y()), 0) << corner.x() << "," << corner.y();
    for (QPoint inside :
         {QPoint(20, 15), QPoint(0, 15), QPoint(20, 0), QPoint(39, 15), QPoint(20, 29)})
        EXPECT_EQ(alphaAt(rounded, inside.x(), inside.y()), 255) << inside.x() << "," << inside.y();
}

TEST(Decoration, TheRadiusIsInPointsOnADenseScreen)
{
    const core::Picture rounded = addRoundImgae(solid(40, 30, Qt::blue, 2.0), 5);
    EXPECT_EQ(rounded.pixels.size(), QSize(80, 60));
    // Five points are ten pixels: a pixel one in from the corner, which a
    // radius of five pixels would keep, is cut.
    EXPECT_EQ(alphaAt(rounded, 1, 1), 0);
    EXPECT_EQ(alphaAt(rounded, 78, 58), 0);
    EXPECT_EQ(alphaAt(rounded, 10, 10), 255);
}

TEST(Decoration, ShadowGrowsThePictureOnEverySideAndFadesOutward)
{
    const ShadowGeometry g = shadowGeometry(QSizeF(20, 10), 4);
    EXPECT_EQ(g.canvas, QSizeF(28, 18));
    EXPECT_EQ(g.picture, QRectF(4, 4, 20, 10));
    EXPECT_DOUBLE_EQ(g.blur, 4.4);

    const core::Picture shadowed = addShadow(solid(20, 10, Qt::red), 4, QColor(0, 0, 0, 255));
    ASSERT_EQ(shadowed.pixels.size(), QSize(28, 18));
    EXPECT_EQ(shadowed.pointSize, QSizeF(28, 18));
    const QImage px = shadowed.pixels.convertToFormat(QImage::Format_ARGB32);
    EXPECT_EQ(px.pixel(14, 9), qRgba(255, 0, 0, 255)); // the picture, untouched
    EXPECT_EQ(px.pixel(4, 4), qRgba(255, 0, 0, 255));
    const int nearEdge = qAlpha(px.pixel(3, 9));
    const int farOut = qAlpha(px.pixel(0, 9));
    const int corner = qAlpha(px.pixel(0, 0));
    EXPECT_GT(nearEdge, farOut);
    EXPECT_GT(farOut, corner);
    EXPECT_GT(corner, 0);
    EXPECT_EQ(qRed(px.pixel(3, 9)), 0); // the shadow's colour, not the picture's
}

TEST(Decoration, ShadowTakesItsColourAndOpacityFromThePreference)
{
    EXPECT_EQ(shadowColourFrom(QString()), defaultShadowColour());
    EXPECT_EQ(shadowColourFrom(QStringLiteral("not a colour")), defaultShadowColour());
    EXPECT_EQ(defaultShadowColour().alpha(), 102);
    EXPECT_EQ(shadowColourFrom(QStringLiteral("#800000ff")), QColor(0, 0, 255, 128));

    const auto strong = addShadow(solid(10, 10, Qt::white), 3, QColor(0, 0, 255, 255));
    const auto faint = addShadow(solid(10, 10, Qt::white), 3, QColor(0, 0, 255, 64));
    const QRgb s = strong.pixels.convertToFormat(QImage::Format_ARGB32).pixel(2, 8);
    const QRgb f = faint.pixels.convertToFormat(QImage::Format_ARGB32).pixel(2, 8);
    EXPECT_EQ(qBlue(s), 255);
    EXPECT_GT(qAlpha(s), qAlpha(f) * 3);
}

TEST(Decoration, ASizeOfZeroKeepsThePicture)
{
    const core::Picture p = solid(12, 7, Qt::green);
    const core::Picture same = addShadow(p, 0, defaultShadowColour());
    EXPECT_EQ(same.pixels.size(), QSize(12, 7));
    EXPECT_EQ(same.pixels.convertToFormat(QImage::Format_ARGB32), p.pixels);
}
