// SPDX-License-Identifier: GPL-3.0-or-later
#include "SyntheticPage.h"

#include <gtest/gtest.h>

using namespace scrolltest;

namespace {

scroll::Frame flat(int width, int height, std::uint8_t value)
{
    return Pixels(width, height, {value, value, value, 255}).frame();
}

// The blue byte of each row at column x, 0 where nothing was drawn.
std::vector<int> columnValues(const scroll::ComposedPicture& p, int x)
{
    std::vector<int> values;
    for (int y = 0; y < p.height; ++y)
        values.push_back(p.pixels[(std::size_t(y) * p.width + x) * 4]);
    return values;
}

// Newest frame 8 rows (value 1), first stored picture 6 rows (2), a second
// stored one taller than the newest (3), a 2-row footer (4).
scroll::ScrollState stackOfFour()
{
    scroll::ScrollState s;
    s.rectOfScreenShots = QRectF(0, 0, 10, 8);
    s.scrollImageTotal = flat(10, 8, 1);
    s.imageArr = {flat(10, 6, 2), flat(10, 12, 3)};
    s.imageUsedHeightArr = {3, 4};
    s.tailSameRow = 2;
    s.tailImageView = flat(10, 2, 4);
    s.tailImageViewOrder = 1;
    return s;
}

} // namespace

TEST(ScrollComposition, StoredPicturesLieOverTheNewestAndTheFooterBelowIt)
{
    const scroll::ScrollState s = stackOfFour();
    const scroll::ScrollLayout layout = scroll::redrawScrollView(s, 1);
    EXPECT_EQ(layout.size, QSizeF(10, 8 + 3 + 4 + 2));
    ASSERT_EQ(layout.views.size(), 4u);
    EXPECT_EQ(layout.views[0].frame, QRectF(0, 7, 10, 8)) << "the newest, under everything";
    EXPECT_EQ(layout.views[1].frame, QRectF(0, 0, 10, 6)) << "capture height less the footer";
    EXPECT_EQ(layout.views[2].frame, QRectF(0, 15, 10, 2)) << "the footer, where it joined";
    EXPECT_EQ(layout.views[3].frame, QRectF(0, 3, 10, 8)) << "as high as the newest frame";

    const auto result = scroll::toImage(layout, 1);
    ASSERT_EQ(result.status, scroll::ComposeStatus::Done);
    EXPECT_EQ(result.picture.width, 10);
    EXPECT_EQ(result.picture.height, 17);
    // The taller stored picture is cut to its rectangle, so the newest
    // frame shows from row 11.
    const std::vector<int> expected{2, 2, 2, 3, 3, 3, 3, 3, 3, 3, 3, 1, 1, 1, 1, 4, 4};
    EXPECT_EQ(columnValues(result.picture, 0), expected);
    EXPECT_EQ(columnValues(result.picture, 8), expected);
    EXPECT_EQ(columnValues(result.picture, 9), std::vector<int>(17, 0)) << "the lost column";
    EXPECT_EQ(result.picture.pixels[(16 * 10 + 9) * 4 + 3], 0) << "transparent, not black";
}

TEST(ScrollComposition, TheFooterLiesInTheStackWhereItJoined)
{
    scroll::ScrollState s = stackOfFour();
    // A first picture reaching down over the footer's rows.
    s.rectOfScreenShots = QRectF(0, 0, 10, 20);
    s.imageArr[0] = flat(10, 18, 2);
    const auto footerRows = [&s] {
        const auto p = scroll::toImage(scroll::redrawScrollView(s, 1), 1).picture;
        const auto values = columnValues(p, 0);
        return std::vector<int>(values.end() - 2, values.end());
    };
    s.tailImageViewOrder = 1;
    EXPECT_EQ(footerRows(), (std::vector<int>{4, 4}));
    EXPECT_EQ(scroll::redrawScrollView(s, 1).size.height(), 8 + 7 + 2);
    s.tailImageViewOrder = 0;
    EXPECT_EQ(footerRows(), (std::vector<int>{2, 2})) << "under the pictures stored before it";
    s.tailImageView = {};
    EXPECT_EQ(scroll::redrawScrollView(s, 1).size.height(), 8 + 7) << "no footer, no rows";
}

TEST(ScrollComposition, OddShiftsOnDoubleDensityLoseHalfAPointPerStoredPicture)
{
    scroll::ScrollState s;
    s.rectOfScreenShots = QRectF(0, 0, 5, 4);
    s.scrollImageTotal = flat(10, 8, 1);
    s.imageArr = {flat(10, 8, 2), flat(10, 8, 3)};
    s.imageUsedHeightArr = {5, 7};
    const scroll::ScrollLayout layout = scroll::redrawScrollView(s, 2);
    EXPECT_EQ(layout.size.height(), 4 + 2.5 + 3.5) << "the total keeps the halves";
    EXPECT_EQ(layout.views[0].frame.y(), 6);
    EXPECT_EQ(layout.views[2].frame.y(), 2) << "5 pixel rows place the next picture 2 points down";

    const auto result = scroll::toImage(layout, 2);
    EXPECT_EQ(result.picture.width, 10);
    EXPECT_EQ(result.picture.height, 20);
    const auto values = columnValues(result.picture, 0);
    EXPECT_EQ(values[3], 2);
    EXPECT_EQ(values[4], 3) << "one pixel row higher than the shift says";
    EXPECT_EQ(values[11], 3);
    EXPECT_EQ(values[12], 1);
    EXPECT_EQ(columnValues(result.picture, 7), values);
    EXPECT_EQ(columnValues(result.picture, 8), std::vector<int>(20, 0))
        << "the lost column is a point: two pixels";
}

TEST(ScrollComposition, PicturesOverTheLimitOrWithoutAreaAreRefused)
{
    scroll::ScrollState s = stackOfFour();
    const auto layout = scroll::redrawScrollView(s, 1);
    EXPECT_EQ(scroll::toImage(layout, 1, 10 * 17 - 1).status, scroll::ComposeStatus::TooLarge);
    EXPECT_EQ(scroll::toImage(layout, 1, 10 * 17).status, scroll::ComposeStatus::Done);
    s.rectOfScreenShots = QRectF();
    EXPECT_EQ(scroll::toImage(scroll::redrawScrollView(s, 1), 1).status,
              scroll::ComposeStatus::Empty);
    // A picture no wider than its lost column is all transparent.
    s.rectOfScreenShots = QRectF(0, 0, 1, 8);
    const auto thin = scroll::toImage(scroll::redrawScrollView(s, 1), 1);
    ASSERT_EQ(thin.status, scroll::ComposeStatus::Done);
    EXPECT_EQ(columnValues(thin.picture, 0), std::vector<int>(thin.picture.height, 0));
}
