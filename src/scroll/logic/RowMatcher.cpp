// SPDX-License-Identifier: GPL-3.0-or-later
#include "scroll/logic/RowMatcher.h"

#include "core/ImageView.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace scroll {

namespace {

// First byte offset at which a and b differ, or n when they don't. Word-wise
// because the row comparisons are the whole cost of a settled frame.
std::size_t firstDifference(const std::uint8_t* a, const std::uint8_t* b, std::size_t n)
{
    std::size_t i = 0;
    for (; i + 8 <= n; i += 8) {
        std::uint64_t wa;
        std::uint64_t wb;
        std::memcpy(&wa, a + i, 8);
        std::memcpy(&wb, b + i, 8);
        if (wa != wb)
            break;
    }
    while (i < n && a[i] == b[i])
        ++i;
    return i;
}

bool sameColour(const std::uint8_t* a, const std::uint8_t* b)
{
    // Alpha is never read: a pixel that only differs there is the same.
    return a[0] == b[0] && a[1] == b[1] && a[2] == b[2];
}

// Bytes of whole pixel pairs from the start that match in colour (alpha
// aside). A row compared with a similar one is mostly such runs, and they
// pass the gray test without a gray value being worked out.
std::size_t sameColourRun(const std::uint8_t* a, const std::uint8_t* b, std::size_t n)
{
    constexpr std::uint64_t kColour =
        std::endian::native == std::endian::little ? 0x00FFFFFF00FFFFFFull : 0xFFFFFF00FFFFFF00ull;
    std::size_t i = 0;
    for (; i + 8 <= n; i += 8) {
        std::uint64_t wa;
        std::uint64_t wb;
        std::memcpy(&wa, a + i, 8);
        std::memcpy(&wb, b + i, 8);
        if (((wa ^ wb) & kColour) != 0)
            break;
    }
    return i;
}

bool sameColumnValues(Column a, Column to)
{
    // A first list longer than the second has values with nothing to be
    // compared against; they count as different rather than being read.
    if (a.size() > to.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        const int x = a[i];
        const int y = to[i];
        if (x > y + 3 || x < y - 3)
            return false;
    }
    return true;
}

} // namespace

bool RowMatcher::isChatApp(std::string_view appID)
{
    return appID == kQQ || appID == kWeChat;
}

RowMatcher::RowMatcher(std::string_view appIDUnderMouse, int leftSameColumn, int rightSameColumn)
    : m_chatApp(isChatApp(appIDUnderMouse))
    , m_leftSameColumn(leftSameColumn)
    , m_rightSameColumn(rightSameColumn)
{}

bool RowMatcher::sameArr(Row a, Row to) const
{
    if (a.empty() || to.empty())
        return false;
    // Rows that are byte for byte equal pass every pixel test below too, so
    // the equality short cut (not taken for the chat applications) only ever
    // saves time; the first differing byte tells where the gray test begins.
    const std::size_t common = std::min(a.size(), to.size());
    const std::size_t equalPrefix = firstDifference(a.data(), to.data(), common);
    if (!m_chatApp && equalPrefix == common && a.size() == to.size())
        return true;

    // In signed 64-bit arithmetic, so that a row narrower than its margins
    // has nothing to compare instead of wrapping round to a huge end.
    std::int64_t i = std::int64_t(m_leftSameColumn) * 4 + 80;
    std::int64_t end = std::int64_t(a.size()) - std::int64_t(m_rightSameColumn) * 4 - 80;
    if (end <= i)
        return true;
    // Never past the end of either row, whatever the counts say.
    end = std::min<std::int64_t>(end, std::int64_t(std::min(a.size(), to.size())) & ~3);
    i = std::max<std::int64_t>({i, 0, std::int64_t(equalPrefix & ~std::size_t(3))});
    while (i + 4 <= end) {
        i += std::int64_t(sameColourRun(a.data() + i, to.data() + i, std::size_t(end - i)));
        if (i + 4 > end)
            break;
        const std::uint8_t* pa = a.data() + i;
        const std::uint8_t* pb = to.data() + i;
        if (!sameColour(pa, pb)) {
            const int ga = core::grayOf(pa);
            const int gb = core::grayOf(pb);
            if (ga + 3 < gb || gb + 3 < ga)
                return false;
        }
        i += 4;
    }
    return true;
}

bool RowMatcher::sameArrColumn(Column a, Column to) const
{
    const bool exactlyEqual =
        a.size() == to.size() && (a.empty() || std::memcmp(a.data(), to.data(), a.size()) == 0);
    if (!m_chatApp) {
        if (a.empty() || to.empty())
            return false;
        if (exactlyEqual)
            return true;
        return sameColumnValues(a, to);
    }
    if (exactlyEqual) // two empty lists included
        return true;
    if (a.size() != to.size())
        return false;
    return sameColumnValues(a, to);
}

bool RowMatcher::notOnlyWhiteColorInQQOrWeChat(Row row) const
{
    if (!m_chatApp)
        return true;
    for (std::size_t i = 0; i + 4 <= row.size(); i += 4) {
        if (core::grayOf(row.data() + i) < 210)
            return true;
    }
    return false;
}

} // namespace scroll
