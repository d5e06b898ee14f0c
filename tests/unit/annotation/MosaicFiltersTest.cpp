// SPDX-License-Identifier: GPL-3.0-or-later
#include "annotation/logic/MosaicFilters.h"

#include <gtest/gtest.h>

#include <cmath>

namespace annotation::mosaic {
namespace {

// Every pixel a colour of its own, so a copied pixel tells where it came from.
QImage numbered(int w, int h)
{
    QImage image(w, h, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x)
            image.setPixel(x, y, qRgb(x * 10, y * 10, 7));
    return image;
}

TEST(MosaicFilters, ABlockTakesItsTopLeftPixelAndTheLastRowAndColumnStay)
{
    const QImage work = numbered(8, 7);
    const QImage m = blockMosaic(work, 3);
    EXPECT_EQ(m.pixel(1, 0), work.pixel(0, 0));
    EXPECT_EQ(m.pixel(2, 2), work.pixel(0, 0));
    EXPECT_EQ(m.pixel(3, 0), work.pixel(3, 0));
    EXPECT_EQ(m.pixel(5, 2), work.pixel(3, 0));
    EXPECT_EQ(m.pixel(4, 3), work.pixel(3, 3));
    EXPECT_EQ(m.pixel(6, 5), work.pixel(6, 3));
    for (int y = 0; y < 7; ++y)
        EXPECT_EQ(m.pixel(7, y), work.pixel(7, y)) << "last column, row " << y;
    for (int x = 0; x < 8; ++x)
        EXPECT_EQ(m.pixel(x, 6), work.pixel(x, 6)) << "last row, column " << x;
    EXPECT_EQ(blockMosaic(work, 1), work);
}

TEST(MosaicFilters, TheBlurKeepsAFlatColourAndSpreadsAPointAsItsRadiusSays)
{
    QImage flat(40, 30, QImage::Format_ARGB32_Premultiplied);
    flat.fill(qRgb(200, 17, 255));
    EXPECT_EQ(gaussianBlured(flat, 13.5), flat);
    EXPECT_EQ(gaussianBlured(numbered(9, 9), 0), numbered(9, 9));

    // A bright line on black: across it, the light is kept and spread
    // with the variance of the radius squared (within what three boxes and
    // whole levels allow), evenly to both sides.
    QImage line(121, 3, QImage::Format_ARGB32_Premultiplied);
    line.fill(Qt::black);
    for (int y = 0; y < 3; ++y)
        line.setPixel(60, y, qRgb(255, 255, 255));
    for (const double radius : {3.0, 6.0, 13.5}) {
        const QImage b = gaussianBlured(line, radius);
        double total = 0;
        double weighted = 0;
        for (int x = 0; x < 121; ++x) {
            const double v = qRed(b.pixel(x, 1));
            total += v;
            weighted += v * (x - 60) * (x - 60);
        }
        EXPECT_NEAR(total, 255.0, 255.0 * 0.05) << radius;
        EXPECT_NEAR(weighted / total, radius * radius, radius * radius * 0.15) << radius;
        EXPECT_EQ(b.pixel(50, 1), b.pixel(70, 1)) << "symmetric, " << radius;
    }
}

TEST(MosaicFilters, TheTwentyCopiesAreChosenBySizeAndOption)
{
    const QImage work = numbered(32, 20);
    const FilteredCopies copies(work);
    ASSERT_TRUE(copies.ready());
    EXPECT_EQ(copies.forStroke(3, true), &copies.at(2));
    EXPECT_EQ(copies.forStroke(3, false), &copies.at(12));
    EXPECT_EQ(copies.forStroke(10, false), &copies.at(19));
    EXPECT_EQ(copies.forStroke(0, true), nullptr);
    EXPECT_EQ(copies.forStroke(11, true), nullptr);
    EXPECT_EQ(copies.at(4), blockMosaic(work, 5));
    // Size 1 is the work image itself, either way.
    EXPECT_EQ(copies.at(0), work);
    EXPECT_EQ(copies.at(10), work);
    EXPECT_EQ(copies.at(11), gaussianBlured(work, 1.5));
    // Larger radii are kept smaller (7.5 at a quarter), and their patches
    // cut at that scale.
    EXPECT_EQ(copies.at(15).size(), QSize(8, 5));
    EXPECT_EQ(copies.at(19).size(), QSize(4, 3));
    const QImage patch = copies.patch(6, false, QRectF(4, 8, 8, 4));
    EXPECT_EQ(patch.size(), QSize(2, 1));
    EXPECT_EQ(patch.pixel(0, 0), copies.at(15).pixel(1, 2));
    EXPECT_EQ(copies.patch(6, true, QRectF(5, 5, 10, 5)),
              cutPatch(copies.at(5), QRectF(5, 5, 10, 5)));
    EXPECT_FALSE(FilteredCopies(QImage()).ready());
    EXPECT_EQ(FilteredCopies().forStroke(3, true), nullptr);
}

TEST(MosaicFilters, APatchIsCutFromUnderItHalvedAndFlippedAndAMosaicsFromItsGrid)
{
    // A patch 60 by 40 points whose bottom edge is 200 points up a screen
    // 1080 high: its top-left-origin rows are 840 to 880, halved 420 to 440.
    const QRectF patch(100, 200, 60, 40);
    EXPECT_EQ(patchSourceRect(patch, 3, 1080, false), QRectF(50, 420, 30, 20));
    // A mosaic of size 3 looks 3 work pixels right and down.
    EXPECT_EQ(patchSourceRect(patch, 3, 1080, true), QRectF(53, 423, 30, 20));
    // A patch dragged up and to the left is the same patch.
    EXPECT_EQ(patchSourceRect(QRectF(160, 240, -60, -40), 3, 1080, false), QRectF(50, 420, 30, 20));

    const QImage copy = numbered(20, 10);
    const QImage cut = cutPatch(copy, QRectF(2.5, 3.2, 4, 2));
    ASSERT_EQ(cut.size(), QSize(5, 3)); // grown to whole pixels: 2..6, 3..5
    EXPECT_EQ(cut.pixel(0, 0), copy.pixel(2, 3));
    EXPECT_EQ(cutPatch(copy, QRectF(18, 8, 10, 10)).size(), QSize(2, 2));
    EXPECT_TRUE(cutPatch(copy, QRectF(30, 0, 5, 5)).isNull());
}

TEST(MosaicFilters, TheWorkImageIsHalfTheScreensPointSize)
{
    QImage screen(400, 300, QImage::Format_RGB32);
    screen.fill(qRgb(10, 20, 30));
    EXPECT_EQ(workImageOf(screen, 1.0).size(), QSize(200, 150));
    // A scale-2 screen of the same pixels is half as many points.
    const QImage work = workImageOf(screen, 2.0);
    EXPECT_EQ(work.size(), QSize(100, 75));
    EXPECT_EQ(work.pixel(50, 40), qRgb(10, 20, 30));
}

} // namespace
} // namespace annotation::mosaic
