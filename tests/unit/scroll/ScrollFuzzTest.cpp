// SPDX-License-Identifier: GPL-3.0-or-later
// Random, truncated and mismatched buffers and random learnt state through
// the whole of frame judging and composition. Built with AddressSanitizer
// and UBSan: every buffer is allocated at exactly the size it claims, so a
// read one byte past a row or a frame stops the run.

#include "SyntheticPage.h"
#include "scroll/logic/RowMatcher.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>

using namespace scrolltest;

namespace {

using Bytes = std::vector<std::uint8_t>;

class Fuzzer
{
public:
    explicit Fuzzer(std::uint32_t seed)
        : m_random(seed)
    {}

    int uniform(int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(m_random); }
    bool chance(int percent) { return uniform(0, 99) < percent; }

    // A count as a learnt state may hold it: mostly sensible, sometimes
    // far outside any frame.
    std::int32_t count()
    {
        switch (uniform(0, 5)) {
        case 0:
            return std::numeric_limits<std::int32_t>::max();
        case 1:
            return -uniform(0, 1000);
        case 2:
            return uniform(0, 1 << 20);
        default:
            return uniform(0, 60);
        }
    }

    // A buffer of exactly the claimed size, possibly too short for the
    // rows it claims, with or without a stated stride.
    struct Buffer
    {
        std::shared_ptr<Bytes> bytes;
        core::ImageView view;
    };
    Buffer buffer(const Pixels* source)
    {
        const int width = source ? source->width : uniform(1, chance(10) ? 400 : 90);
        const int height = source ? source->height : uniform(1, chance(10) ? 300 : 60);
        const int pad = chance(50) ? 0 : uniform(0, 13);
        const std::ptrdiff_t stride = std::ptrdiff_t(width) * 4 + pad;
        std::size_t size = std::size_t(stride) * std::size_t(height);
        if (chance(25))
            size -= std::size_t(uniform(0, int(std::min<std::size_t>(size, 64))));
        else if (chance(10))
            size -= std::size_t(pad);
        auto bytes = std::make_shared<Bytes>(size);
        for (int y = 0; y < height; ++y) {
            for (std::ptrdiff_t i = 0; i < stride; ++i) {
                const std::size_t at = std::size_t(y) * std::size_t(stride) + std::size_t(i);
                if (at >= size)
                    break;
                const bool inRow = i < std::ptrdiff_t(width) * 4;
                (*bytes)[at] = source && inRow
                                   ? source->bytes[(std::size_t(y) * width) * 4 + std::size_t(i)]
                                   : std::uint8_t(uniform(0, 255));
            }
        }
        const std::ptrdiff_t claimed = chance(20) ? 0 : stride;
        return {bytes, {bytes->empty() ? nullptr : bytes->data(), width, height, claimed, size}};
    }

    void scramble(scroll::ScrollState& s)
    {
        if (chance(20))
            s.leftSameColumn = count();
        if (chance(20))
            s.rightSameColumn = count();
        if (chance(15))
            s.headSameRow = count();
        if (chance(15))
            s.tailSameRow = count();
        if (chance(10))
            s.headSameRowTimes = count();
        if (chance(10))
            s.tailSameRowTimes = count();
        if (chance(10))
            s.headSameRowFinished = !s.headSameRowFinished;
        if (chance(10))
            s.tailSameRowFinished = !s.tailSameRowFinished;
        if (chance(10))
            s.leftSameColumnFinished = !s.leftSameColumnFinished;
        if (chance(5) && !s.imageUsedHeightArr.empty())
            s.imageUsedHeightArr.back() = float(count());
        if (chance(5))
            s.tailImageViewOrder = std::size_t(uniform(0, 5));
    }

private:
    std::mt19937 m_random;
};

// The rows of a frame lie inside the buffer it was made from.
bool rowsInside(const scroll::Frame& frame, const Bytes& bytes)
{
    const std::uint8_t* begin = bytes.data();
    const std::uint8_t* end = bytes.data() + bytes.size();
    for (int y = 0; y < frame.height(); ++y) {
        const auto row = frame.row(y);
        if (row.data() < begin || row.data() + row.size() > end)
            return false;
    }
    return true;
}

} // namespace

TEST(ScrollFuzz, FramesOfAnyShapeAndStateNeverReadOutOfBounds)
{
    const Pixels page = texturedPage(70, 400, 99);
    int accepted = 0;
    int refused = 0;
    for (std::uint32_t seed = 1; seed <= 120; ++seed) {
        Fuzzer fuzz(seed);
        scroll::ScrollState state;
        const bool chat = fuzz.chance(30);
        const std::string app = chat ? "com.tencent.qq" : "org.example.editor";
        const int scale = fuzz.uniform(0, 3);
        state.rectOfScreenShots = QRectF(0, 0, fuzz.uniform(0, 80), fuzz.uniform(0, 80));
        state.resetForSession();
        int offset = 0;
        for (int n = 0; n < 40; ++n) {
            // Mostly frames of a real page so that anchors are found and the
            // picture grows; otherwise noise of any size.
            Pixels slice;
            const bool fromPage = fuzz.chance(60);
            if (fromPage) {
                offset = std::min(offset + fuzz.uniform(0, 30), page.height - 60);
                slice = page.rows(offset, fuzz.chance(90) ? 60 : fuzz.uniform(1, 60));
            }
            Fuzzer::Buffer buffer = fuzz.buffer(fromPage ? &slice : nullptr);
            const auto frame = scroll::Frame::wrap(buffer.view, buffer.bytes);
            if (!frame) {
                ++refused;
                continue;
            }
            ASSERT_TRUE(rowsInside(*frame, *buffer.bytes));
            state.totalDeltay += fuzz.chance(85) ? -1.0f : 1.0f;
            if (fuzz.chance(30))
                fuzz.scramble(state);
            const bool cut = fuzz.chance(50);
            const scroll::FrameSource source = [&](const QRectF& area) {
                if (!cut)
                    return std::optional<scroll::Frame>(*frame);
                scroll::Frame part =
                    scroll::frameInArea(*frame, state.rectOfScreenShots, area, scale);
                return part.isNull() ? std::nullopt : std::optional<scroll::Frame>(part);
            };
            const auto judgement =
                scroll::screenShotsAtScrollScreenshots(state, source, {scale, app});
            state.startScrollScreenshots = true;
            if (judgement.verdict == scroll::FrameVerdict::Accepted) {
                ++accepted;
                ASSERT_GT(judgement.shift, 0);
                ASSERT_LT(judgement.shift, state.scrollImageTotal.height());
            }
            ASSERT_EQ(state.imageArr.size(), state.imageUsedHeightArr.size());
            if (fuzz.chance(15)) {
                const auto layout = scroll::redrawScrollView(state, scale);
                const auto composed = scroll::toImage(layout, scale, 1 << 20);
                if (composed.status == scroll::ComposeStatus::Done) {
                    ASSERT_EQ(composed.picture.pixels.size(),
                              std::size_t(composed.picture.width) * composed.picture.height * 4);
                }
            }
        }
        state.releaseFrames();
    }
    // The run must have gone through the deep paths, not just refusals.
    EXPECT_GT(accepted, 50);
    EXPECT_GT(refused, 50);
}

TEST(ScrollFuzz, RowAndColumnComparisonsStayInsideRowsOfAnyLength)
{
    Fuzzer fuzz(7);
    for (int n = 0; n < 20000; ++n) {
        const auto sized = [&fuzz](int maxLength) {
            Bytes bytes(std::size_t(fuzz.uniform(0, maxLength)));
            for (auto& b : bytes)
                b = std::uint8_t(fuzz.chance(80) ? 128 : fuzz.uniform(0, 255));
            return bytes;
        };
        const Bytes a = sized(fuzz.chance(50) ? 200 : 1200);
        const Bytes b = fuzz.chance(30) ? a : sized(1200);
        const std::string_view app = fuzz.chance(30) ? scroll::RowMatcher::kWeChat : "x";
        const scroll::RowMatcher m(app, fuzz.count(), fuzz.count());
        const bool same = m.sameArr(a, b);
        const bool column = m.sameArrColumn(a, b);
        const bool fit = m.notOnlyWhiteColorInQQOrWeChat(a);
        if (a == b && !a.empty()) {
            ASSERT_TRUE(same);
            ASSERT_TRUE(column);
        }
        if (app == "x") {
            ASSERT_TRUE(fit);
        }
    }
}
