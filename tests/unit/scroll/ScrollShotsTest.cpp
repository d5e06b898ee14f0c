// SPDX-License-Identifier: GPL-3.0-or-later
#include "SyntheticPage.h"

#include <gtest/gtest.h>

using namespace scrolltest;
using scroll::FrameVerdict;

namespace {

constexpr Bgra kWhite{255, 255, 255, 255};
constexpr Bgra kBorder{60, 60, 60, 255};

} // namespace

TEST(ScrollShots, SmallShiftsAdvanceOneStoredPictureAndComposeThePage)
{
    const Pixels page = texturedPage(240, 1200, 1);
    const int h = 160;
    Session session;
    session.start(page.rows(0, h));
    EXPECT_EQ(session.compose(), withLostColumn(page.rows(0, h), 1))
        << "before any accepted frame the picture is the first frame alone";

    int last = 0;
    float used = 0;
    for (const int offset : {5, 12, 30, 31, 60, 100}) {
        const auto judgement = session.feed(page.rows(offset, h));
        ASSERT_EQ(judgement.verdict, FrameVerdict::Accepted) << "offset " << offset;
        EXPECT_EQ(judgement.shift, offset - last);
        EXPECT_EQ(judgement.gap, 0) << "no row of this page repeats";
        used += float(offset - last);
        last = offset;
        EXPECT_EQ(session.state.imageArr.size(), 1u);
        EXPECT_EQ(session.state.imageUsedHeightArr, std::vector<float>{used});
        EXPECT_EQ(session.state.totalDeltay, 0.0f);
    }
    EXPECT_TRUE(session.state.headSameRowFinished && session.state.tailSameRowFinished);
    EXPECT_EQ(session.state.headSameRow, 0);
    EXPECT_EQ(session.state.tailSameRow, 0);
    EXPECT_TRUE(session.state.tailImageView.isNull());
    EXPECT_EQ(session.compose(), withLostColumn(page.rows(0, 100 + h), 1));
}

TEST(ScrollShots, LargeShiftsStoreAFramePerFrameHeightAndAJumpPastAFrameIsLost)
{
    const Pixels page = texturedPage(200, 1200, 2);
    const int h = 160;
    Session session;
    session.start(page.rows(0, h));
    for (const int offset : {120, 230, 370, 520})
        ASSERT_EQ(session.feed(page.rows(offset, h)).verdict, FrameVerdict::Accepted);
    EXPECT_EQ(session.state.imageUsedHeightArr, (std::vector<float>{120, 110, 140, 150}));
    EXPECT_EQ(session.state.imageArr.size(), 4u);

    // A whole frame height further: nothing of it is in the last frame.
    const auto usedBefore = session.state.imageUsedHeightArr;
    const std::uint8_t* lastRows = session.state.lastScrollScreenshotsArray.view().data;
    const auto lost = session.feed(page.rows(520 + h, h));
    EXPECT_EQ(lost.verdict, FrameVerdict::Dropped);
    EXPECT_EQ(lost.p, -1);
    EXPECT_EQ(session.state.imageUsedHeightArr, usedBefore);
    EXPECT_EQ(session.state.lastScrollScreenshotsArray.view().data, lastRows);
    EXPECT_EQ(session.state.totalDeltay, -1.0f) << "a dropped frame keeps the wheel balance";

    // The next frame is compared with the same previous frame.
    const auto next = session.feed(page.rows(600, h));
    ASSERT_EQ(next.verdict, FrameVerdict::Accepted);
    EXPECT_EQ(next.shift, 80);
    EXPECT_EQ(session.compose(), withLostColumn(page.rows(0, 600 + h), 1));
}

TEST(ScrollShots, FixedHeaderFooterAndSideBarsAreLearntThenLeftOutOfEveryFrame)
{
    const int h = 200;
    const Pixels content = texturedPage(200, 900, 3);
    const Chrome chrome = windowChrome(content.width, h);
    Session session;
    session.start(windowFrame(content, 0, h, chrome));

    // Learning: header and footer counts come out the same frame after
    // frame; four repeats are not yet enough.
    for (const int offset : {9, 18, 27, 36}) {
        const auto judgement = session.feed(windowFrame(content, offset, h, chrome));
        ASSERT_EQ(judgement.verdict, FrameVerdict::Accepted) << "offset " << offset;
        EXPECT_EQ(judgement.shift, 9);
        EXPECT_GT(judgement.anchorIndex, 31) << "the search starts below the header";
        // The first picture leaves out the footer as counted so far.
        EXPECT_EQ(session.state.imageArr.front().height(), h - 20);
    }
    const scroll::ScrollState& s = session.state;
    EXPECT_EQ(s.leftSameColumn, 25);
    EXPECT_EQ(s.rightSameColumn, 12);
    EXPECT_TRUE(s.leftSameColumnFinished && s.rightSameColumnFinished);
    EXPECT_EQ(s.headSameRow, 30);
    EXPECT_EQ(s.tailSameRow, 20);
    EXPECT_EQ(s.headSameRowTimes, 3);
    EXPECT_FALSE(s.headSameRowFinished);
    EXPECT_FALSE(s.tailSameRowFinished);

    // The fifth equal count settles both. This frame still holds the
    // header, and the search now starts at the top, inside the header,
    // where the anchor finds itself: no shift, the frame is lost.
    const auto settling = session.feed(windowFrame(content, 45, h, chrome));
    EXPECT_TRUE(s.headSameRowFinished && s.tailSameRowFinished);
    EXPECT_EQ(settling.anchorIndex, 2);
    EXPECT_EQ(settling.shift, 0);
    EXPECT_EQ(settling.verdict, FrameVerdict::Dropped);
    EXPECT_EQ(s.tailImageView.view().height, 20);
    EXPECT_EQ(pixelsOf(s.tailImageView), chrome.footer) << "the footer's picture";
    EXPECT_FALSE(s.headRejustedOfRectOfScreenShots);

    // From the next frame on the area leaves out header and footer; the
    // shift against the last full frame takes in the header's height.
    const auto rejusted = session.feed(windowFrame(content, 54, h, chrome));
    EXPECT_TRUE(s.headRejustedOfRectOfScreenShots);
    EXPECT_EQ(s.newRectOfScreenShots, QRectF(0, 30, 237, 150));
    ASSERT_EQ(rejusted.verdict, FrameVerdict::Accepted);
    EXPECT_EQ(rejusted.shift, 30 + 54 - 36);
    EXPECT_EQ(s.scrollImageTotal.height(), 150);

    for (const int offset : {120, 200, 290})
        ASSERT_EQ(session.feed(windowFrame(content, offset, h, chrome)).verdict,
                  FrameVerdict::Accepted);
    EXPECT_EQ(s.imageUsedHeightArr, (std::vector<float>{84, 146, 90}));
    EXPECT_EQ(session.compose(), expectedPicture(content, 290 + 150, chrome, 1));
}

TEST(ScrollShots, DoubleDensityStartsTheSearchTwiceAsDeepAsTheHeader)
{
    const int h = 200;
    const Pixels content = texturedPage(200, 900, 4);
    const Chrome chrome = windowChrome(content.width, h);
    Session session;
    session.scale = 2;
    session.start(windowFrame(content, 0, h, chrome));

    const auto second = session.feed(windowFrame(content, 10, h, chrome));
    ASSERT_EQ(second.verdict, FrameVerdict::Accepted);
    EXPECT_EQ(second.anchorIndex, 30 * 2 + 2 + 1) << "start is headSameRow*scale + scale";
    EXPECT_EQ(second.p, 30 + 10 + 33);
    for (const int offset : {20, 30, 40})
        ASSERT_EQ(session.feed(windowFrame(content, offset, h, chrome)).verdict,
                  FrameVerdict::Accepted);
    const auto settling = session.feed(windowFrame(content, 50, h, chrome));
    EXPECT_EQ(settling.anchorIndex, 3) << "once settled the search starts at scale";
    EXPECT_EQ(settling.verdict, FrameVerdict::Dropped);

    // Even shifts keep every stored picture on whole points.
    for (const int offset : {60, 130, 210, 300})
        ASSERT_EQ(session.feed(windowFrame(content, offset, h, chrome)).verdict,
                  FrameVerdict::Accepted);
    EXPECT_EQ(session.state.newRectOfScreenShots, QRectF(0, 15, 118.5, 75));
    EXPECT_EQ(session.state.imageUsedHeightArr, (std::vector<float>{90, 70, 80, 90}));
    EXPECT_EQ(session.compose(), expectedPicture(content, 300 + 150, chrome, 2));
}

TEST(ScrollShots, FramesWithoutAnchorOrChangeAreDroppedBeforeTheyCount)
{
    // A smooth gradient: no row is unlike both its neighbours.
    Pixels gradient(200, 600);
    for (int y = 0; y < gradient.height; ++y)
        gradient.fillRow(y, {std::uint8_t(y / 3), std::uint8_t(y / 3), std::uint8_t(y / 3), 255});
    Session flat;
    flat.start(gradient.rows(0, 150));
    for (const int offset : {20, 40, 300}) {
        const auto judgement = flat.feed(gradient.rows(offset, 150));
        EXPECT_EQ(judgement.verdict, FrameVerdict::Dropped);
        EXPECT_EQ(judgement.anchorIndex, -1);
    }
    EXPECT_TRUE(flat.state.imageArr.empty());

    // A frame equal to the first changes no count at all.
    const Pixels page = texturedPage(200, 600, 5);
    Session session;
    session.start(page.rows(0, 150));
    ASSERT_EQ(session.feed(page.rows(12, 150)).verdict, FrameVerdict::Accepted);
    session.state.headSameRow = 7;
    session.state.headSameRowTimes = 2;
    session.state.headSameRowFinished = false;
    session.state.leftSameColumnFinished = false;
    const scroll::ScrollState before = session.state;
    const auto same = session.feed(page.rows(0, 150));
    EXPECT_EQ(same.verdict, FrameVerdict::SameAsFirst);
    EXPECT_EQ(session.state.headSameRow, 7);
    EXPECT_EQ(session.state.headSameRowTimes, 2);
    EXPECT_EQ(session.state.leftSameColumn, before.leftSameColumn);
    EXPECT_FALSE(session.state.leftSameColumnFinished);
    EXPECT_EQ(session.state.imageUsedHeightArr, before.imageUsedHeightArr);

    // No picture from the window: nothing happens.
    const auto none = scroll::screenShotsAtScrollScreenshots(
        session.state, [](const QRectF&) { return std::optional<scroll::Frame>(); }, {1, {}});
    EXPECT_EQ(none.verdict, FrameVerdict::NoFrame);
    EXPECT_EQ(session.state.headSameRowTimes, 2);
}

TEST(ScrollShots, OneRowFramesSettleAtOnceAndNeverFindAnAnchor)
{
    const Pixels page = texturedPage(120, 40, 6);
    Session session;
    session.start(page.rows(0, 1));
    for (int y = 1; y < 4; ++y) {
        const auto judgement = session.feed(page.rows(y, 1));
        EXPECT_EQ(judgement.verdict, FrameVerdict::Dropped);
        EXPECT_EQ(judgement.anchorIndex, -1);
    }
    EXPECT_EQ(session.state.headSameRow, 0);
    EXPECT_EQ(session.state.tailSameRow, 0);
    EXPECT_TRUE(session.state.headSameRowFinished && session.state.tailSameRowFinished);
    EXPECT_EQ(session.compose(), withLostColumn(page.rows(0, 1), 1));
}

namespace {

// Blocks of 24 rows that look alike (a border line, then blank rows) but
// for a label that is unique to each block, four rows from its border.
Pixels tablePage(int width, int blocks)
{
    Pixels page(width, blocks * 24);
    for (int b = 0; b < blocks; ++b) {
        page.fillRow(b * 24, kBorder);
        for (int y = b * 24 + 6; y < b * 24 + 10; ++y) {
            for (int x = 0; x < width; ++x) {
                const bool ink = ((x / 8 + b * 7) % 5) < (b % 3) + 1;
                page.set(x, y, ink ? Bgra{0, 0, 0, 255} : kWhite);
            }
        }
    }
    return page;
}

} // namespace

TEST(ScrollShots, RepeatedAnchorIsToldApartByTheCheckRowFromItsFirstOccurrenceOnly)
{
    const Pixels page = tablePage(120, 12);
    Session session;
    session.start(page.rows(2, 100));

    // The first border repeats three times below; the label six rows down
    // tells them apart.
    const auto judgement = session.feed(page.rows(6, 100));
    EXPECT_EQ(judgement.anchorIndex, 18);
    EXPECT_EQ(judgement.gap, 6);
    EXPECT_EQ(judgement.p, 22);
    ASSERT_EQ(judgement.verdict, FrameVerdict::Accepted);
    EXPECT_EQ(judgement.shift, 4);

    // A shift of a whole block: the first border of the previous frame is
    // the wrong block, its label fails, and no later border is tried.
    const auto lost = session.feed(page.rows(30, 100));
    EXPECT_EQ(lost.gap, 6);
    EXPECT_EQ(lost.p, -1);
    EXPECT_EQ(lost.verdict, FrameVerdict::Dropped);
}

TEST(ScrollShots, RepeatWhosePartnerLeavesTheFrameAcceptsTheFirstDistance)
{
    Pixels page = texturedPage(160, 400, 7);
    Session session;
    session.start(page.rows(0, 120));
    // The anchor of the next frame (page row 12 at frame row 2) also shows
    // as the frame's last row.
    Pixels frame = page.rows(10, 120);
    frame.paste(page.rows(12, 1), 0, 119);
    const auto judgement = session.feed(frame);
    EXPECT_EQ(judgement.anchorIndex, 2);
    EXPECT_EQ(judgement.gap, 1);
    EXPECT_EQ(judgement.verdict, FrameVerdict::Accepted);
    EXPECT_EQ(judgement.shift, 10);
}

TEST(ScrollShots, OnlyAWheelBalanceBelowZeroLetsAFrameIn)
{
    const Pixels page = texturedPage(160, 400, 8);
    Session session;
    session.start(page.rows(0, 120));
    const Pixels frame = page.rows(10, 120);
    EXPECT_EQ(session.feed(frame, +1).verdict, FrameVerdict::Dropped);
    EXPECT_EQ(session.feed(frame, -1).verdict, FrameVerdict::Dropped) << "balance back at 0";
    EXPECT_TRUE(session.state.imageArr.empty());
    const auto judgement = session.feed(frame, -0.5f);
    ASSERT_EQ(judgement.verdict, FrameVerdict::Accepted);
    EXPECT_EQ(judgement.shift, 10);
    EXPECT_EQ(session.state.totalDeltay, 0.0f);
    EXPECT_EQ(session.state.lastTotalDeltay, -0.5f);
}

TEST(ScrollShots, ChatApplicationsNeverAnchorOnNearlyWhiteRows)
{
    // Sixty pale rows, all distinct, then ordinary content.
    Pixels page = texturedPage(160, 400, 9);
    std::mt19937 random(10);
    std::uniform_int_distribution<int> pale(214, 255);
    for (int y = 0; y < 60; ++y)
        for (int x = 0; x < page.width; ++x)
            page.setGray(x, y, std::uint8_t(pale(random)));

    for (const char* app : {"org.example.editor", "com.tencent.qq", "com.tencent.xinWeChat"}) {
        Session session;
        session.app = app;
        session.start(page.rows(0, 120));
        const auto judgement = session.feed(page.rows(8, 120));
        const bool chat = std::string(app).starts_with("com.tencent");
        EXPECT_EQ(judgement.anchorIndex, chat ? 60 - 8 : 2) << app;
        EXPECT_EQ(judgement.verdict, FrameVerdict::Accepted) << app;
        EXPECT_EQ(judgement.shift, 8) << app;
    }
}

TEST(ScrollShots, ANewSessionKeepsTheLearntCountsAndSettlesSooner)
{
    const int h = 200;
    const Pixels content = texturedPage(200, 900, 15);
    const Chrome chrome = windowChrome(content.width, h);
    Session session;
    session.start(windowFrame(content, 0, h, chrome));
    for (const int offset : {9, 18, 27, 36, 45, 54})
        session.feed(windowFrame(content, offset, h, chrome));
    ASSERT_TRUE(session.state.headRejustedOfRectOfScreenShots);
    ASSERT_FALSE(session.state.imageArr.empty());
    const int times = session.state.headSameRowTimes;

    session.start(windowFrame(content, 100, h, chrome));
    const scroll::ScrollState& s = session.state;
    EXPECT_TRUE(s.imageArr.empty() && s.imageUsedHeightArr.empty());
    EXPECT_FALSE(s.headSameRowFinished || s.tailSameRowFinished || s.leftSameColumnFinished ||
                 s.rightSameColumnFinished || s.headRejustedOfRectOfScreenShots);
    EXPECT_TRUE(s.tailImageView.isNull());
    EXPECT_EQ(s.headSameRow, 30);
    EXPECT_EQ(s.tailSameRow, 20);
    EXPECT_EQ(s.leftSameColumn, 25);
    EXPECT_EQ(s.headSameRowTimes, times);

    // The first comparison repeats the carried count: settled at once.
    EXPECT_EQ(session.feed(windowFrame(content, 108, h, chrome)).verdict, FrameVerdict::Dropped)
        << "settled now, so the anchor lies in the header";
    EXPECT_TRUE(s.headSameRowFinished && s.tailSameRowFinished);
    EXPECT_EQ(s.headSameRowTimes, times + 1);
}
