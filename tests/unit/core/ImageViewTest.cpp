// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/ImageView.h"

#include <QImage>

#include <gtest/gtest.h>

#include <vector>

TEST(ImageView, RejectsBuffersThatDoNotHoldEveryRow)
{
    std::vector<std::uint8_t> bytes(4 * 10 * 3);
    core::ImageView v{bytes.data(), 10, 3, 40, bytes.size()};
    EXPECT_TRUE(v.isValid());
    v.sizeBytes = bytes.size() - 1;
    EXPECT_FALSE(v.isValid());
    v.sizeBytes = bytes.size();
    v.strideBytes = 36; // shorter than a row
    EXPECT_FALSE(v.isValid());
    v.strideBytes = 40;
    v.height = 0;
    EXPECT_FALSE(v.isValid());
    // A padded last row may be short: only the pixels must be there.
    core::ImageView padded{bytes.data(), 9, 3, 40, 40 * 2 + 36};
    EXPECT_TRUE(padded.isValid());
}

TEST(ImageView, OfQImageKeepsBgraByteOrderAndStride)
{
    QImage image(3, 2, QImage::Format_ARGB32);
    image.fill(qRgba(10, 20, 30, 255));
    const auto v = core::ImageView::of(image);
    ASSERT_TRUE(v.isValid());
    EXPECT_EQ(v.strideBytes, image.bytesPerLine());
    EXPECT_EQ(v.row(1)[0], 30); // blue first
    EXPECT_EQ(v.row(1)[2], 10);
    EXPECT_EQ(core::grayOf(v.row(0)), static_cast<int>(0.3 * 10 + 0.59 * 20 + 0.11 * 30));
    EXPECT_FALSE(core::ImageView::of(image.convertToFormat(QImage::Format_RGB888)).isValid());
}
