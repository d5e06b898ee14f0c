// SPDX-License-Identifier: GPL-3.0-or-later
#include "colour/ui/ColorPickerImageView.h"
#include "colour/logic/Qorvani.h"

#include <gtest/gtest.h>

#include <QFontMetricsF>
#include <QPainter>

#include <cstdlib>

using namespace colour;

namespace {

// The readout rendered alone, as the overlay would paint it at `scale`.
QImage render(ColorPickerImageView& view, QPointF pointerInOverlay, double scale)
{
    QImage target((QSizeF(120, 120) * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    target.setDevicePixelRatio(scale);
    target.fill(Qt::magenta);
    QPainter painter(&target);
    view.paint(painter, pointerInOverlay);
    painter.end();
    return target;
}

// The colour at a point of the square (top-left origin), at its device pixel.
QRgb at(const QImage& image, int x, int y, int dx = 0, int dy = 0)
{
    const double s = image.devicePixelRatio();
    return image.pixel(static_cast<int>(x * s) + dx, static_cast<int>(y * s) + dy) | 0xFF000000U;
}

QImage screen(QSize points, double scale, QRgb rgb)
{
    QImage image((QSizeF(points) * scale).toSize(), QImage::Format_RGB32);
    image.fill(rgb);
    return image;
}

bool near(QRgb a, QRgb b, int tolerance = 2)
{
    return std::abs(qRed(a) - qRed(b)) <= tolerance &&
           std::abs(qGreen(a) - qGreen(b)) <= tolerance &&
           std::abs(qBlue(a) - qBlue(b)) <= tolerance;
}

QRgb branding()
{
    return qorvani::qorvaniBrandingColor().toQColor().rgb();
}

class ColorPickerImageViewAtScale : public ::testing::TestWithParam<double>
{};

} // namespace

TEST_P(ColorPickerImageViewAtScale, EnlargesTheFrozenPixelUnderTheHotSpot)
{
    const double s = GetParam();
    const QSize size(300, 200);
    QImage frozen = screen(size, s, qRgb(90, 90, 90));
    // The picked pixel lies one point below the pointer, at (100, 51) from
    // the screen's top-left corner.
    for (int dy = 0; dy < s; ++dy)
        for (int dx = 0; dx < s; ++dx)
            frozen.setPixel(static_cast<int>(100 * s) + dx, static_cast<int>(51 * s) + dy,
                            qRgb(200, 30, 60));

    ColorReadoutState state;
    ColorPickerImageView view(state);
    view.setFrozenScreen(frozen, s);
    const QPointF pointer(100, 200 - 50); // overlay-local, y up
    view.mouseMoved(pointer, 200);
    const QImage out = render(view, pointer, s);

    // The centre cell, ten points wide whatever the scale, away from lines.
    for (int y : {61, 63, 68})
        for (int x : {62, 63, 69})
            EXPECT_EQ(at(out, x, y), qRgb(200, 30, 60)) << x << "," << y;
    EXPECT_EQ(at(out, 52, 62), qRgb(90, 90, 90));
    EXPECT_EQ(at(out, 62, 72), qRgb(90, 90, 90));

    EXPECT_EQ(state.hexOfColor, QStringLiteral("#C81E3C"));
    EXPECT_EQ(state.rgbOfColor, QStringLiteral("200,30,60"));
    EXPECT_EQ(state.mousePoint, QStringLiteral("100,50"));
    EXPECT_FALSE(state.mouseMoving);
}

TEST_P(ColorPickerImageViewAtScale, GridLinesEveryFivePointsAndATwoPointFrame)
{
    const double s = GetParam();
    const QRgb base = qRgb(200, 40, 40);
    ColorReadoutState state;
    ColorPickerImageView view(state);
    view.setFrozenScreen(screen({200, 200}, s, base), s);
    const QImage out = render(view, {100, 100}, s); // no move: no texts

    const auto isVerticalLine = [](int x) {
        return x <= 1 || x >= 118 || (x % 5 == 0 && x >= 5 && x <= 115) || x == 59 || x == 60;
    };
    const int row = 32;
    for (int x = 0; x < 120; ++x) {
        for (int d = 0; d < s; ++d) {
            const QRgb p = at(out, x, row, d);
            if (isVerticalLine(x))
                continue;
            EXPECT_EQ(p, base) << "x " << x << " sub " << d;
        }
    }
    for (int x = 5; x <= 115; x += 5) {
        if (x == 60)
            continue;
        for (int d = 0; d < s; ++d) {
            const QRgb p = at(out, x, row, d);
            EXPECT_NE(p, base) << "grid x " << x;
            EXPECT_TRUE(near(p, qRgb(182, 62, 62), 3)) << "grid x " << x << " " << std::hex << p;
        }
    }
    // Horizontal lines sit 5.5, 10.5, ... above the bottom edge.
    const int column = 32;
    for (int y = 2; y < 118; ++y) {
        const bool line = (y + 1) % 5 == 0;
        if (y == 59 || y == 60)
            continue;
        for (int d = 0; d < s; ++d)
            EXPECT_EQ(at(out, column, y, 0, d) != base, line) << "y " << y;
    }
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(near(at(out, i, 80), branding()));
        EXPECT_TRUE(near(at(out, 119 - i, 80), branding()));
        EXPECT_TRUE(near(at(out, 80, i), branding()));
        EXPECT_TRUE(near(at(out, 80, 119 - i), branding()));
    }
}

TEST_P(ColorPickerImageViewAtScale, CrossHairStopsShortOfTheNameAfterAMove)
{
    const double s = GetParam();
    ColorReadoutState state;
    ColorPickerImageView view(state);
    view.setFrozenScreen(screen({200, 200}, s, qRgb(20, 20, 20)), s);

    const QImage still = render(view, {100, 100}, s);
    int column = -1;
    for (int x = 58; x <= 61 && column < 0; ++x)
        if (near(at(still, x, 30), branding()))
            column = x;
    ASSERT_GE(column, 0);
    for (int y = 2; y < 118; ++y)
        EXPECT_TRUE(near(at(still, column, y), branding())) << "y " << y;
    for (int x = 2; x < 118; ++x)
        EXPECT_TRUE(near(at(still, x, 59), branding()) || near(at(still, x, 60), branding()));

    view.mouseMoved({100, 100}, 200);
    const QImage moved = render(view, {100, 100}, s);
    for (int y = 21; y < 118; ++y)
        EXPECT_TRUE(near(at(moved, column, y), branding())) << "y " << y;
    for (int y = 2; y < 20; ++y)
        EXPECT_FALSE(near(at(moved, column, y), branding(), 20)) << "y " << y;
}

INSTANTIATE_TEST_SUITE_P(Scales, ColorPickerImageViewAtScale, ::testing::Values(1.0, 2.0));

namespace {

struct TextInk
{
    int white = 0;
    int black = 0;
};

// A 12 by 12 point screen sampled whole: rows 10 and 11, columns 6 to 11 are
// mid gray (behind the hex text), and the rest holds 65 white pixels, one
// pixel of `nearWhite` and 66 black ones. With nearWhite 249 the mean is
// exactly one half.
TextInk hexTextInk(int nearWhite)
{
    QImage frozen(12, 12, QImage::Format_RGB32);
    int n = 0;
    for (int y = 0; y < 12; ++y) {
        for (int x = 0; x < 12; ++x) {
            if (y >= 10 && x >= 6) {
                frozen.setPixel(x, y, qRgb(128, 128, 128));
                continue;
            }
            const QRgb rgb = n < 65    ? qRgb(255, 255, 255)
                             : n == 65 ? qRgb(nearWhite, nearWhite, nearWhite)
                                       : qRgb(0, 0, 0);
            frozen.setPixel(x, y, rgb);
            ++n;
        }
    }
    ColorReadoutState state;
    ColorPickerImageView view(state);
    view.setFrozenScreen(frozen, 1.0);
    const QPointF pointer(6, 12 - 5); // sample rectangle (0, 0, 12, 12)
    view.mouseMoved(pointer, 12);
    const QImage out = render(view, pointer, 1.0);
    TextInk ink;
    for (int y = 100; y < 118; ++y) {
        for (int x = 66; x < 118; ++x) {
            const QRgb p = out.pixel(x, y);
            if (qRed(p) >= 230 && qGreen(p) >= 230 && qBlue(p) >= 230)
                ++ink.white;
            else if (qRed(p) <= 25 && qGreen(p) <= 25 && qBlue(p) <= 25)
                ++ink.black;
        }
    }
    return ink;
}

} // namespace

TEST(ColorPickerImageView, TextIsWhiteWithABlackHaloUpToAMeanOfOneHalf)
{
    // The halo is eight offset copies, so its colour covers more pixels than
    // the text's own colour does.
    const TextInk half = hexTextInk(249);
    EXPECT_GT(half.white, 0);
    EXPECT_GT(half.black, half.white);

    const TextInk above = hexTextInk(250); // three units more: just above 0.5
    EXPECT_GT(above.black, 0);
    EXPECT_GT(above.white, above.black);
}

TEST(ColorPickerImageView, TextsAppearOnlyOnTheRedrawAfterAMove)
{
    const QRgb gray = qRgb(128, 128, 128);
    ColorReadoutState state;
    ColorPickerImageView view(state);
    view.setFrozenScreen(screen({200, 200}, 1.0, gray), 1.0);
    const auto inked = [gray](const QImage& out) {
        int count = 0;
        for (int y = 100; y < 118; ++y)
            for (int x = 66; x < 118; ++x)
                count += !near(out.pixel(x, y), gray, 3);
        return count;
    };
    EXPECT_EQ(inked(render(view, {50, 50}, 1.0)), 0);
    view.mouseMoved({50, 50}, 200);
    EXPECT_GT(inked(render(view, {50, 50}, 1.0)), 20);
    EXPECT_EQ(inked(render(view, {50, 50}, 1.0)), 0);
}

TEST(ColorPickerImageView, SamplesTheFrozenPictureNotWhatIsPaintedOverIt)
{
    const QRgb green = qRgb(10, 200, 10);
    ColorReadoutState state;
    ColorPickerImageView view(state);
    view.setFrozenScreen(screen({200, 200}, 1.0, green), 1.0);
    // The overlay's own picture: the frozen screen with the readout drawn
    // right over the pointer, twice.
    QImage overlay = screen({200, 200}, 1.0, green);
    const QPointF pointer(100, 100);
    for (int i = 0; i < 2; ++i) {
        view.mouseMoved(pointer, 200);
        QPainter painter(&overlay);
        painter.translate(40, 40);
        view.paint(painter, pointer);
    }
    EXPECT_EQ(state.hexOfColor, QStringLiteral("#0AC80A"));
    EXPECT_NE(overlay.pixel(100, 100), green);
}

TEST(ColorPickerImageView, LongNamesShrinkUntilTheyFitTheSquare)
{
    EXPECT_EQ(ColorPickerImageView::nameFontSizeFor(QStringLiteral("Red")), 13);
    const QString name = QStringLiteral("International Klein Blue Light Slate Gray");
    const int size = ColorPickerImageView::nameFontSizeFor(name);
    ASSERT_LT(size, 13);
    EXPECT_LE(QFontMetricsF(ColorPickerImageView::readoutFont(size)).horizontalAdvance(name),
              120.0);
    EXPECT_GT(QFontMetricsF(ColorPickerImageView::readoutFont(size + 1)).horizontalAdvance(name),
              120.0);
}
