// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/logic/DockMeasurement.h"
#include "unit/capture/CaptureTestSupport.h"

#include <gtest/gtest.h>

#include <vector>

namespace capture {
namespace {

using testing::darkPicture;
using Side = DockEdges::Side;

DockEdges scanned(const QImage& image)
{
    const std::optional<DockEdges> edges = DockMeasurement::scan(core::ImageView::of(image));
    EXPECT_TRUE(edges.has_value());
    return edges.value_or(DockEdges{});
}

TEST(DockMeasurementScan, EachSideEndsWhereItsLitRunEnds)
{
    QImage split = darkPicture(200, 100, {QRect(50, 80, 100, 20)});
    for (int y = 80; y < 100; ++y)
        split.setPixel(120, y, 0xff000000u);
    const std::pair<QImage, DockEdges> cases[] = {
        // A bottom dock spans its last row and reaches the picture's height.
        {darkPicture(200, 100, {QRect(50, 80, 100, 20)}), {Side::Bottom, 50, 150, 80, 100}},
        // A rounded corner: its narrow last row counts.
        {darkPicture(200, 100, {QRect(50, 80, 100, 19), QRect(53, 99, 94, 1)}),
         {Side::Bottom, 53, 147, 80, 100}},
        // A dark column inside it ends the run.
        {split, {Side::Bottom, 50, 120, 80, 100}},
        // Column zero lit only in the lower half is still a bottom dock.
        {darkPicture(200, 100, {QRect(0, 60, 30, 40)}), {Side::Bottom, 0, 30, 60, 100}},
        // Side docks end at their last lit row.
        {darkPicture(200, 100, {QRect(0, 20, 30, 60)}), {Side::Left, 0, 30, 20, 79}},
        {darkPicture(200, 100, {QRect(170, 20, 30, 60)}), {Side::Right, 170, 200, 20, 79}},
        // A hidden dock leaves minus one and the picture's height.
        {darkPicture(200, 100), {Side::None, -1, -1, -1, 100}},
    };
    for (std::size_t i = 0; i < std::size(cases); ++i)
        EXPECT_EQ(scanned(cases[i].first), cases[i].second) << "case " << i;
}

TEST(DockMeasurementScan, PixelsWhoseGrayValueCutsToZeroAreDark)
{
    QImage image = darkPicture(200, 100);
    // Blue 9 weighs 0.99: still dark. Blue 10 weighs 1.1: lit.
    for (int x = 40; x < 60; ++x)
        image.setPixel(x, 90, qRgba(0, 0, 9, 255));
    EXPECT_EQ(scanned(image).side, Side::None);
    image.setPixel(45, 95, qRgba(0, 0, 10, 255));
    EXPECT_EQ(scanned(image), (DockEdges{Side::Bottom, 45, 46, 95, 100}));
}

TEST(DockMeasurementScan, RowStrideComesFromTheDataLength)
{
    // Rows padded by 16 bytes; a stride taken as 4 x width would drift one
    // pixel per 4 per row and miss the lit block's left edge.
    const int width = 20, height = 10, stride = 4 * width + 16;
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(stride * height), 0);
    for (int y = 7; y < height; ++y)
        for (int x = 5; x < 12; ++x)
            for (int c = 0; c < 3; ++c)
                bytes[static_cast<std::size_t>(y * stride + 4 * x + c)] = 200;
    const core::ImageView view{bytes.data(), width, height, 4 * width, bytes.size()};
    EXPECT_EQ(DockMeasurement::strideFromLength(view), static_cast<std::size_t>(stride));
    const std::optional<DockEdges> edges = DockMeasurement::scan(view);
    ASSERT_TRUE(edges);
    EXPECT_EQ(*edges, (DockEdges{Side::Bottom, 5, 12, 7, 10}));
}

TEST(DockMeasurementScan, TruncatedOrEmptyBuffersAreRefused)
{
    std::vector<std::uint8_t> bytes(4 * 20 * 10 - 1, 255);
    EXPECT_FALSE(DockMeasurement::scan({bytes.data(), 20, 10, 80, bytes.size()}));
    EXPECT_FALSE(DockMeasurement::scan({nullptr, 20, 10, 80, 800}));
    EXPECT_FALSE(DockMeasurement::scan({bytes.data(), 0, 10, 80, bytes.size()}));
    EXPECT_FALSE(DockMeasurement::scan(core::ImageView::of(QImage())));
}

TEST(DockMeasurementBounds, BottomDockOnThePrimaryScreen)
{
    const core::ScreenLayout layout = testing::twoScreens();
    const QImage image = darkPicture(1920, 1080, {QRect(500, 1000, 920, 80)});
    EXPECT_EQ(
        DockMeasurement::measure(core::ImageView::of(image), QRectF(0, 0, 1920, 1080), layout),
        QRectF(500, 1000, 920, 80));
}

TEST(DockMeasurementBounds, ScaleTwoScreenBesideAShorterPrimary)
{
    // The second screen, 640x512 points at scale 2, beside the 1080-high primary.
    const core::ScreenLayout layout(
        {{"DP-1", QRectF(0, 0, 1920, 1080), 1.0}, {"DP-2", QRectF(1920, 0, 640, 512), 2.0}});
    const QImage image = darkPicture(1280, 1024, {QRect(200, 944, 800, 80)});
    EXPECT_EQ(
        DockMeasurement::measure(core::ImageView::of(image), QRectF(1920, 0, 640, 512), layout),
        QRectF(2020, 472, 400, 40));
}

TEST(DockMeasurementBounds, DivisionByScaleIsWholeNumberedBeforeTheHalfIsAdded)
{
    const core::ScreenLayout layout({{"DP-1", QRectF(0, 0, 960, 540), 2.0}});
    // 51/2 -> 25 (+0.5 cut: 25), 151/2 -> 75, 81/2 -> 40, 100/2 -> 50.
    const std::optional<QRectF> r = DockMeasurement::boundsFromEdges(
        {Side::Bottom, 51, 151, 81, 100}, QRectF(0, 0, 960, 540), layout);
    ASSERT_TRUE(r);
    EXPECT_EQ(*r, QRectF(25, 40, 50, 10));
}

TEST(DockMeasurementBounds, HiddenDockHasNoWidth)
{
    const core::ScreenLayout layout = testing::twoScreens();
    const QRectF r = DockMeasurement::measure(core::ImageView::of(darkPicture(1920, 1080)),
                                              QRectF(0, 0, 1920, 1080), layout);
    EXPECT_EQ(r.width(), 0.0);
    EXPECT_EQ(r.x(), 0.0);
}

TEST(DockMeasurementBounds, WithoutAMatchingScreenTheBoundsStay)
{
    const core::ScreenLayout layout = testing::twoScreens();
    const QImage image = darkPicture(200, 100, {QRect(50, 80, 100, 20)});
    const QRectF offScreen(10, 10, 200, 100);
    EXPECT_EQ(DockMeasurement::measure(core::ImageView::of(image), offScreen, layout), offScreen);

    const core::ScreenLayout tooSmallScale({{"DP-1", QRectF(0, 0, 200, 100), 0.5}});
    EXPECT_EQ(
        DockMeasurement::measure(core::ImageView::of(image), QRectF(0, 0, 200, 100), tooSmallScale),
        QRectF(0, 0, 200, 100));
    EXPECT_EQ(DockMeasurement::measure({}, QRectF(0, 0, 1920, 1080), layout),
              QRectF(0, 0, 1920, 1080));
}

} // namespace
} // namespace capture
