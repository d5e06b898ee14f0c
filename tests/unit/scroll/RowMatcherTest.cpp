// SPDX-License-Identifier: GPL-3.0-or-later
#include "scroll/logic/RowMatcher.h"
#include "SyntheticPage.h"

#include <gtest/gtest.h>

using namespace scrolltest;
using scroll::RowMatcher;

namespace {

// A row of gray pixels of the given value.
std::vector<std::uint8_t> grayRow(int width, std::uint8_t value)
{
    Pixels row(width, 1, {value, value, value, 255});
    return row.bytes;
}

void setGray(std::vector<std::uint8_t>& row, int x, std::uint8_t value)
{
    row[std::size_t(x) * 4] = row[std::size_t(x) * 4 + 1] = row[std::size_t(x) * 4 + 2] = value;
}

constexpr std::string_view kEditor = "org.example.editor";

} // namespace

TEST(ScrollRowMatcher, RowsDifferOnlyWhenOneComparedPixelIsFourGrayLevelsOff)
{
    const RowMatcher m(kEditor, 0, 0);
    const auto a = grayRow(100, 100);
    auto b = a;
    setGray(b, 50, 103);
    EXPECT_TRUE(m.sameArr(a, b)) << "three levels are within the tolerance";
    setGray(b, 51, 97);
    EXPECT_TRUE(m.sameArr(a, b));
    setGray(b, 60, 104);
    EXPECT_FALSE(m.sameArr(a, b)) << "one pixel four levels off is enough";
    EXPECT_FALSE(m.sameArr(b, a));

    // Alpha is never read.
    auto c = a;
    c[50 * 4 + 3] = 0;
    EXPECT_TRUE(m.sameArr(a, c));
    // Gray, not channels: a swap of red and blue that keeps the gray value.
    auto d = a;
    d[40 * 4] = 0;
    d[40 * 4 + 2] = 0;
    EXPECT_FALSE(m.sameArr(a, d));
}

TEST(ScrollRowMatcher, SideBarsAndTwentyPixelsBesideThemAreLeftOut)
{
    auto a = grayRow(200, 100);
    auto b = a;
    // Side bars of 10 and 30 columns: compared are pixels 30 .. 149.
    const RowMatcher m(kEditor, 10, 30);
    for (int x : {0, 9, 10, 29, 150, 169, 170, 199})
        setGray(b, x, 0);
    EXPECT_TRUE(m.sameArr(a, b));
    for (int x : {30, 149}) {
        auto c = a;
        setGray(c, x, 0);
        EXPECT_FALSE(m.sameArr(a, c)) << "pixel " << x;
    }
    // The same rows without side bars: all but 20 pixels a side count.
    EXPECT_FALSE(RowMatcher(kEditor, 0, 0).sameArr(a, b));
}

TEST(ScrollRowMatcher, AbsentEmptyAndTooNarrowRows)
{
    const auto a = grayRow(100, 100);
    for (const std::string_view app : {kEditor, RowMatcher::kQQ}) {
        const RowMatcher m(app, 0, 0);
        EXPECT_FALSE(m.sameArr({}, a)) << app;
        EXPECT_FALSE(m.sameArr(a, {})) << app;
        EXPECT_FALSE(m.sameArr({}, {})) << app;
        EXPECT_TRUE(m.sameArr(a, a)) << app;
    }
    // Forty pixels or fewer leave nothing between the margins, and so do
    // side bars wider than the row: the rows count as the same without a
    // byte being read past their end.
    const auto narrow = grayRow(40, 0);
    const auto other = grayRow(40, 255);
    EXPECT_TRUE(RowMatcher(kEditor, 0, 0).sameArr(narrow, other));
    const auto wide = grayRow(100, 0);
    const auto wideOther = grayRow(100, 255);
    EXPECT_TRUE(RowMatcher(kEditor, 0, 80).sameArr(wide, wideOther));
    EXPECT_TRUE(RowMatcher(kEditor, 90, 0).sameArr(wide, wideOther));
    EXPECT_FALSE(RowMatcher(kEditor, 0, 0).sameArr(wide, wideOther));
    // A second row shorter than the first is compared where both have
    // pixels only.
    const auto shortRow = grayRow(30, 255);
    EXPECT_TRUE(RowMatcher(kEditor, 0, 0).sameArr(wideOther, shortRow));
}

TEST(ScrollRowMatcher, ColumnsAllowThreeLevelsAndTheChatApplicationsTreatLengthsStrictly)
{
    const std::vector<std::uint8_t> a{10, 20, 30, 40};
    const std::vector<std::uint8_t> near{13, 17, 30, 43};
    const std::vector<std::uint8_t> far{10, 20, 34, 40};
    const std::vector<std::uint8_t> shorter{10, 20, 30};
    const std::vector<std::uint8_t> empty;
    const RowMatcher editor(kEditor, 0, 0);
    const RowMatcher chat(RowMatcher::kWeChat, 0, 0);
    for (const RowMatcher* m : {&editor, &chat}) {
        EXPECT_TRUE(m->sameArrColumn(a, a));
        EXPECT_TRUE(m->sameArrColumn(a, near));
        EXPECT_FALSE(m->sameArrColumn(a, far));
        EXPECT_FALSE(m->sameArrColumn(a, empty));
        EXPECT_FALSE(m->sameArrColumn(a, shorter)) << "values with no partner never pass";
    }
    // Where the lengths differ, only the chat rules say no at once.
    EXPECT_TRUE(editor.sameArrColumn(shorter, a));
    EXPECT_FALSE(chat.sameArrColumn(shorter, a));
    // Two empty columns: no columns to the one, exactly equal to the other.
    EXPECT_FALSE(editor.sameArrColumn(empty, empty));
    EXPECT_TRUE(chat.sameArrColumn(empty, empty));
}

TEST(ScrollRowMatcher, OnlyTheChatApplicationsRefuseRowsWithoutAPixelDarkerThan210)
{
    auto pale = grayRow(50, 211);
    const RowMatcher qq(RowMatcher::kQQ, 0, 0);
    // In doubles, 0.3 + 0.59 + 0.11 of 210 comes to just under 210.
    EXPECT_TRUE(qq.notOnlyWhiteColorInQQOrWeChat(grayRow(50, 210)));
    EXPECT_FALSE(qq.notOnlyWhiteColorInQQOrWeChat(pale));
    EXPECT_FALSE(qq.notOnlyWhiteColorInQQOrWeChat({}));
    EXPECT_TRUE(RowMatcher(kEditor, 0, 0).notOnlyWhiteColorInQQOrWeChat(pale));
    EXPECT_TRUE(RowMatcher("com.tencent.qqx", 0, 0).notOnlyWhiteColorInQQOrWeChat(pale));
    // The whole width counts, margins included.
    setGray(pale, 0, 209);
    EXPECT_TRUE(qq.notOnlyWhiteColorInQQOrWeChat(pale));
    EXPECT_TRUE(RowMatcher(RowMatcher::kWeChat, 0, 0).notOnlyWhiteColorInQQOrWeChat(pale));
}

TEST(ScrollFrame, RowLengthFromTheDataLengthAndBoundsOfEveryRow)
{
    // 10 pixels a row, 3 rows: padding of 9 bytes a row is cut to 2 pixels.
    EXPECT_EQ(scroll::strideFromDataLength(10, 3, 3 * 49), 48);
    EXPECT_EQ(scroll::strideFromDataLength(10, 3, 3 * 40), 40);
    EXPECT_EQ(scroll::strideFromDataLength(10, 3, 3 * 40 - 1), 0);

    std::vector<std::uint8_t> bytes(3 * 48);
    bytes[48] = 7; // row 1 starts after a padded row
    const auto frame = scroll::Frame::wrap({bytes.data(), 10, 3, 0, bytes.size()}, nullptr);
    ASSERT_TRUE(frame);
    EXPECT_EQ(frame->row(1).data(), bytes.data() + 48);
    EXPECT_EQ(frame->row(1).size(), 40u);
    EXPECT_TRUE(frame->row(3).empty());
    EXPECT_TRUE(frame->row(-1).empty());

    EXPECT_FALSE(scroll::Frame::wrap({bytes.data(), 10, 3, 48, 2 * 48 + 39}, nullptr));
    EXPECT_FALSE(scroll::Frame::wrap({bytes.data(), 10, 3, 36, bytes.size()}, nullptr));
    EXPECT_FALSE(scroll::Frame::wrap({nullptr, 10, 3, 48, bytes.size()}, nullptr));
    EXPECT_FALSE(scroll::Frame::wrap({bytes.data(), 0, 3, 48, bytes.size()}, nullptr));
}

TEST(ScrollFrame, CutsShareThePixelsAndAreClippedToTheFrame)
{
    const Pixels page = texturedPage(20, 10, 1);
    const scroll::Frame frame = page.frame();
    const scroll::Frame cut = frame.cut(5, 2, 10, 4);
    ASSERT_FALSE(cut.isNull());
    EXPECT_EQ(cut.width(), 10);
    EXPECT_EQ(cut.height(), 4);
    EXPECT_EQ(cut.row(1).data(), frame.row(3).data() + 5 * 4);

    const scroll::Frame clipped = frame.cut(-3, 8, 100, 100);
    EXPECT_EQ(clipped.width(), 20);
    EXPECT_EQ(clipped.height(), 2);
    EXPECT_TRUE(frame.cut(0, 10, 20, 5).isNull());
    EXPECT_TRUE(frame.cut(0, 0, 20, 0).isNull());
    EXPECT_TRUE(frame.cut(0, -2147483000, 20, 2147483000).isNull());
}
