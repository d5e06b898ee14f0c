// SPDX-License-Identifier: GPL-3.0-or-later
#include "annotation/render/StrokePainter.h"

#include "RedStroke.h"

#include <gtest/gtest.h>

namespace annotation {
namespace {

namespace st = stroketype;

// The layer over (0, 0, 100, 100) in overlay points, y up: the pixel
// holding point (x, y) is at column x, row 100 - y.
const QRectF kArea(0, 0, 100, 100);

Stroke shape(int type, QPointF a, QPointF b, double size = 3)
{
    Stroke s = test::redStroke(type, a, b, size);
    s.colorAlpha = 1.0;
    return s;
}

StrokeState settled(std::initializer_list<Stroke> strokes)
{
    StrokeState state;
    int list = 0;
    for (Stroke s : strokes) {
        s.list = ++list;
        state.dicOfCurrentStroke = s;
        state.commit();
    }
    state.dicOfCurrentStroke.reset();
    return state;
}

// The colour at overlay point (x, y) of a layer rendered at `scale`.
QColor at(const QImage& image, double x, double y, double scale = 1)
{
    return image.pixelColor(static_cast<int>(x * scale),
                            static_cast<int>((kArea.height() - y) * scale));
}

bool solidRed(QColor c)
{
    return c.red() >= 250 && c.green() == 0 && c.blue() == 0 && c.alpha() >= 250;
}

TEST(StrokePainter, RectanglesPlainRoundedAndFilled)
{
    const StrokeState plain = settled({shape(st::Square, {20, 20}, {80, 60})});
    const QImage image = StrokePainter::renderLayer(plain, kArea, 1);
    ASSERT_EQ(image.size(), QSize(100, 100));
    // The 3-point edge straddles the outline; the inside stays clear.
    EXPECT_TRUE(solidRed(at(image, 20.5, 40)));
    EXPECT_TRUE(solidRed(at(image, 50, 60.5)));
    EXPECT_TRUE(solidRed(at(image, 20.5, 20.5))); // a sharp corner
    EXPECT_EQ(at(image, 50, 40).alpha(), 0);
    // Outside it, only the skirt's faint veil.
    EXPECT_LE(at(image, 50, 63).alpha(), 3);
    EXPECT_EQ(at(image, 50, 70).alpha(), 0);

    Stroke round = shape(st::Square, {20, 20}, {80, 60});
    round.enableRoundOfSquare = true;
    const QImage rounded = StrokePainter::renderLayer(settled({round}), kArea, 1);
    EXPECT_LT(rounded.pixelColor(20, 79).alpha(), 128); // the corner is cut
    EXPECT_TRUE(solidRed(at(rounded, 20.5, 40)));

    Stroke fill = shape(st::Square, {20, 20}, {80, 60});
    fill.filledOfSquare = true;
    const QImage filled = StrokePainter::renderLayer(settled({fill}), kArea, 1);
    EXPECT_TRUE(solidRed(at(filled, 50, 40)));
    EXPECT_EQ(at(filled, 50, 62).alpha(), 0); // no stroke, no skirt
}

TEST(StrokePainter, EllipsesLinesAndPencilPaths)
{
    Stroke oval = shape(st::Ellipse, {20, 20}, {80, 60});
    const QImage ellipse = StrokePainter::renderLayer(settled({oval}), kArea, 1);
    EXPECT_TRUE(solidRed(at(ellipse, 50, 60)));
    EXPECT_TRUE(solidRed(at(ellipse, 20.5, 40)));
    EXPECT_EQ(at(ellipse, 50, 40).alpha(), 0);
    EXPECT_EQ(at(ellipse, 22, 22).alpha(), 0); // the box's corner
    oval.filledOfEllipse = true;
    EXPECT_TRUE(solidRed(at(StrokePainter::renderLayer(settled({oval}), kArea, 1), 50, 40)));

    // A line at half alpha, with round caps past its ends.
    Stroke line = shape(st::Line, {10, 50}, {90, 50}, 6);
    line.colorAlpha = 0.5;
    const QImage lined = StrokePainter::renderLayer(settled({line}), kArea, 1);
    EXPECT_NEAR(at(lined, 50, 50.5).alphaF(), 0.5, 0.02);
    EXPECT_GT(at(lined, 8.5, 50.5).alpha(), 100); // the cap
    EXPECT_EQ(at(lined, 50, 58).alpha(), 0);

    Stroke pencil;
    pencil.type = st::PencilPen;
    pencil.color = Qt::blue;
    pencil.size = 4;
    pencil.allPoints = {{10, 10}, {50, 10}, {50, 90}};
    const QImage drawn = StrokePainter::renderLayer(settled({pencil}), kArea, 1);
    for (QPointF p : {QPointF(30, 10), QPointF(50, 50), QPointF(50, 89)})
        EXPECT_GE(at(drawn, p.x(), p.y()).blue(), 250) << p.x() << "," << p.y();
    EXPECT_EQ(at(drawn, 30, 50).alpha(), 0);
}

TEST(StrokePainter, BothArrowKindsEndAtTheReleasePoint)
{
    Stroke stroked = shape(st::Arrow, {10, 50}, {90, 50}, 10);
    stroked.normalTypeOfArrow = QStringLiteral("1");
    const QImage one = StrokePainter::renderLayer(settled({stroked}), kArea, 1);
    EXPECT_TRUE(solidRed(at(one, 84, 50.5))); // the head, behind the tip
    EXPECT_TRUE(solidRed(at(one, 40, 54)));   // the 10-point shaft
    EXPECT_EQ(at(one, 91, 50).alpha(), 0);    // nothing past the tip
    EXPECT_TRUE(solidRed(at(one, 70, 60)));   // a wing, 11.7 to the side at 66
    EXPECT_EQ(at(one, 40, 58).alpha(), 0);

    Stroke dart = shape(st::Arrow, {10, 50}, {70, 50}, 2);
    dart.normalTypeOfArrow = QStringLiteral("0");
    const QImage zero = StrokePainter::renderLayer(settled({dart}), kArea, 1);
    EXPECT_TRUE(solidRed(at(zero, 65, 50.5)));
    EXPECT_TRUE(solidRed(at(zero, 62, 55))); // the head, 6.4 to each side at 61.2
    EXPECT_EQ(at(zero, 40, 55).alpha(), 0);  // the shaft is thin there
    EXPECT_EQ(at(zero, 72, 50).alpha(), 0);
}

TEST(StrokePainter, TheActiveStrokeHasHandlesAndNewerStrokesLieOnTop)
{
    StrokeState state = settled({shape(st::Square, {20, 20}, {80, 60})});
    // Newer: a blue filled square over the red one's left edge.
    Stroke blue = shape(st::Square, {10, 30}, {30, 50});
    blue.type = st::Square;
    blue.color = Qt::blue;
    blue.filledOfSquare = true;
    blue.list = 2;
    state.dicOfCurrentStroke = blue;
    state.commit();
    state.dicOfCurrentStroke.reset();
    QImage image = StrokePainter::renderLayer(state, kArea, 1);
    EXPECT_EQ(at(image, 20.5, 40).blue(), 255);
    EXPECT_EQ(at(image, 20.5, 40).red(), 0);
    // Undo: the red edge shows again.
    state.undoDraw();
    EXPECT_TRUE(solidRed(at(StrokePainter::renderLayer(state, kArea, 1), 20.5, 40)));

    // The red square made active: white-centred handles on its corners and
    // edge middles; before its first drag it shows nothing.
    state.dicOfCurrentStroke = state.arrayOfStrokes()[0];
    state.strokeState = StrokeGesture::Draw;
    image = StrokePainter::renderLayer(state, kArea, 1);
    EXPECT_GT(at(image, 80, 60).green(), 200); // white
    EXPECT_GT(at(image, 50, 20).green(), 200);
    state.dicOfCurrentStroke->X2.reset();
    image = StrokePainter::renderLayer(state, kArea, 1);
    EXPECT_EQ(at(image, 20.5, 40).alpha(), 0);
}

TEST(StrokePainter, AScaledLayerHasWholePixelEdges)
{
    const StrokeState state = settled({shape(st::Square, {20, 20}, {80, 60})});
    const QImage image = StrokePainter::renderLayer(state, kArea, 2);
    ASSERT_EQ(image.size(), QSize(200, 200));
    // The left edge spans 18.5 to 21.5 points: pixels 37 to 42, all solid.
    const int row = 200 - 80;
    for (int x = 37; x <= 42; ++x)
        EXPECT_TRUE(solidRed(image.pixelColor(x, row))) << x;
    EXPECT_LE(image.pixelColor(36, row).alpha(), 3);
    EXPECT_LE(image.pixelColor(43, row).alpha(), 3);
}

} // namespace
} // namespace annotation
