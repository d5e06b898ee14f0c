// SPDX-License-Identifier: GPL-3.0-or-later
#include "colour/logic/ColorReadoutState.h"
#include "colour/logic/ColorSample.h"
#include "colour/logic/ReadoutLayout.h"

#include <gtest/gtest.h>

#include <QImage>

#include <algorithm>
#include <vector>

using namespace colour;

namespace {

QImage filled(int w, int h, QRgb rgb)
{
    QImage image(w, h, QImage::Format_ARGB32);
    image.fill(rgb);
    return image;
}

} // namespace

TEST(ColorReadoutState, MousePointCountsYFromTheTopOfTheScreen)
{
    ColorReadoutState state;
    state.mouseMoved({10.4, 20.6}, 1080.0);
    EXPECT_TRUE(state.mouseMoving);
    EXPECT_EQ(state.mousePoint, QStringLiteral("10,1059"));
    state.mouseMoved({0.0, 0.0}, 900.0);
    EXPECT_EQ(state.mousePoint, QStringLiteral("0,900"));
    // No screen under the pointer: a height of 0.
    state.mouseMoved({5.0, 7.0}, 0.0);
    EXPECT_EQ(state.mousePoint, QStringLiteral("5,-7"));
    EXPECT_FALSE(state.hexOfColor);
    EXPECT_EQ(&state.colorNamer(), &state.colorNamer());
}

TEST(ColorReadoutSample, RectangleIsTwelvePointsOnePointLowerThanCentred)
{
    EXPECT_EQ(sampleRect({100.0, 50.0}), QRectF(94.0, 45.0, 12.0, 12.0));
}

TEST(ColorReadoutSample, CutsDevicePixelsAndLeavesOffScreenPartsTransparent)
{
    QImage screen = filled(40, 30, qRgb(10, 20, 30));
    screen.setPixel(20, 10, qRgb(200, 100, 50));
    const QImage one = cutSample(screen, 1.0, QRectF(14.0, 4.0, 12.0, 12.0));
    ASSERT_EQ(one.size(), QSize(12, 12));
    EXPECT_EQ(one.pixel(6, 6), qRgb(200, 100, 50));
    EXPECT_EQ(one.pixel(0, 0), qRgb(10, 20, 30));

    // At 2 pixels per point the same 12 points hold 24 pixels.
    QImage retina = filled(80, 60, qRgb(10, 20, 30));
    retina.setPixel(40, 20, qRgb(1, 2, 3));
    const QImage two = cutSample(retina, 2.0, QRectF(14.0, 4.0, 12.0, 12.0));
    ASSERT_EQ(two.size(), QSize(24, 24));
    EXPECT_EQ(two.pixel(12, 12), qRgb(1, 2, 3));

    const QImage corner = cutSample(screen, 1.0, QRectF(-6.0, -5.0, 12.0, 12.0));
    ASSERT_EQ(corner.size(), QSize(12, 12));
    EXPECT_EQ(qAlpha(corner.pixel(5, 4)), 0);
    EXPECT_EQ(corner.pixel(6, 5), qRgb(10, 20, 30));

    EXPECT_TRUE(cutSample(QImage(), 1.0, QRectF(0, 0, 12, 12)).isNull());
    EXPECT_TRUE(cutSample(screen, 0.0, QRectF(0, 0, 12, 12)).isNull());
}

TEST(ColorReadoutSample, PicksTheCentrePixelAndAveragesEveryPixel)
{
    QImage sample = filled(12, 12, qRgb(0, 0, 0));
    sample.setPixel(6, 6, qRgb(255, 128, 0));
    const auto a = analyseSample(core::ImageView::of(sample));
    ASSERT_TRUE(a);
    EXPECT_EQ(a->picked, Color::fromBytes(255, 128, 0));
    EXPECT_DOUBLE_EQ(a->mean, (255.0 + 128.0) / 144.0 / 255.0 / 3.0);
    EXPECT_EQ(a->textStyle, ReadoutTextStyle::WhiteOnBlackHalo);

    // Rows padded beyond their pixels: the padding (here black) is not read.
    const int stride = 12 * 4 + 8;
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(stride) * 12, 0);
    for (int y = 0; y < 12; ++y)
        std::fill_n(bytes.begin() + y * stride, 12 * 4, std::uint8_t{255});
    const auto b = analyseSample(core::ImageView{bytes.data(), 12, 12, stride, bytes.size()});
    ASSERT_TRUE(b);
    EXPECT_DOUBLE_EQ(b->mean, 1.0);
    EXPECT_EQ(b->textStyle, ReadoutTextStyle::BlackOnWhiteHalo);

    EXPECT_FALSE(analyseSample(core::ImageView{}));
    QImage thin = filled(12, 1, qRgb(1, 1, 1));
    EXPECT_FALSE(analyseSample(core::ImageView::of(thin)));
}

TEST(ColorReadoutSample, TextTurnsBlackOnlyAboveAMeanOfOneHalf)
{
    // Half white, half black: a mean of exactly 0.5 keeps white text.
    QImage sample = filled(12, 12, qRgb(0, 0, 0));
    for (int y = 0; y < 12; ++y)
        for (int x = 0; x < 6; ++x)
            sample.setPixel(x, y, qRgb(255, 255, 255));
    const auto half = analyseSample(core::ImageView::of(sample));
    ASSERT_TRUE(half);
    EXPECT_EQ(half->mean, 0.5);
    EXPECT_EQ(half->textStyle, ReadoutTextStyle::WhiteOnBlackHalo);

    sample.setPixel(11, 11, qRgb(0, 0, 1));
    const auto above = analyseSample(core::ImageView::of(sample));
    ASSERT_TRUE(above);
    EXPECT_GT(above->mean, 0.5);
    EXPECT_EQ(above->textStyle, ReadoutTextStyle::BlackOnWhiteHalo);

    // The test is made in single precision: a mean a hair above 0.5 that
    // rounds to 0.5 as a float still counts as dark.
    EXPECT_EQ(textStyleForMean(0.5 + 1e-10), ReadoutTextStyle::WhiteOnBlackHalo);
    EXPECT_EQ(textStyleForMean(0.5 + 1e-7), ReadoutTextStyle::BlackOnWhiteHalo);
}

TEST(ColorReadoutLayout, NameShrinksFromTwelveDownUntilItFits)
{
    std::vector<int> asked;
    const auto widthPer = [&asked](double perPoint) {
        return [&asked, perPoint](int size) {
            asked.push_back(size);
            return perPoint * size;
        };
    };
    EXPECT_EQ(readout::nameFontSize(widthPer(9.0)), 13); // 117 fits
    EXPECT_EQ(asked, std::vector<int>{13});
    asked.clear();
    EXPECT_EQ(readout::nameFontSize(widthPer(10.0)), 12); // 130, then 120 fits
    EXPECT_EQ(asked, (std::vector<int>{13, 12}));
    asked.clear();
    EXPECT_EQ(readout::nameFontSize(widthPer(15.0)), 8);
    EXPECT_EQ(asked, (std::vector<int>{13, 12, 11, 10, 9, 8}));
    EXPECT_EQ(readout::nameFontSize([](int) { return 1000.0; }), 1);
}

TEST(ColorReadoutLayout, TextsSitAtTheirBasePoints)
{
    const auto o = readout::textOrigins(80.0, 40.0);
    EXPECT_EQ(o.name, QPointF(20.0, 103.0));
    EXPECT_EQ(o.mousePoint, QPointF(10.0, 3.0));
    EXPECT_EQ(o.hex, QPointF(68.0, 3.0));
}

TEST(ColorReadoutLayout, EnlargedSampleKeepsSharpBlocksUnderAOnePointGrid)
{
    QImage sample = filled(24, 24, qRgb(0, 0, 0));
    sample.setPixel(3, 0, qRgb(255, 0, 0));
    QImage square = enlargeSample(sample, 240);
    ASSERT_EQ(square.size(), QSize(240, 240));
    for (int x = 28; x < 42; ++x)
        EXPECT_EQ(square.pixel(x, 5), x >= 30 && x < 40 ? qRgb(255, 0, 0) : qRgb(0, 0, 0)) << x;

    // At 2 pixels per point the line at 5.5 covers device columns 10 and
    // 11, and rows 228 and 229 (points 5 to 6 above the bottom edge).
    readout::blendGrid(square, 2.0);
    const QRgb gridOnBlack = square.pixel(10, 100);
    EXPECT_EQ(qRed(gridOnBlack), 32);
    EXPECT_EQ(qAlpha(gridOnBlack), 255);
    EXPECT_EQ(square.pixel(11, 100), gridOnBlack);
    EXPECT_EQ(square.pixel(9, 100), qRgb(0, 0, 0));
    EXPECT_EQ(square.pixel(12, 100), qRgb(0, 0, 0));
    EXPECT_EQ(square.pixel(102, 229), gridOnBlack);
    EXPECT_EQ(square.pixel(102, 228), gridOnBlack);
    EXPECT_EQ(square.pixel(102, 230), qRgb(0, 0, 0));
    EXPECT_EQ(square.pixel(102, 227), qRgb(0, 0, 0));
    EXPECT_GT(qRed(square.pixel(10, 229)), qRed(gridOnBlack)); // crossings blend twice
}
