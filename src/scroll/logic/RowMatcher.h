// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace scroll {

// A row entry: the w*4 BGRA bytes of one image row. An absent row is an
// empty span.
using Row = std::span<const std::uint8_t>;
// A column entry: the gray values of one image column, top to bottom.
using Column = std::span<const std::uint8_t>;

// The comparisons behind frame matching. Two rows are the same when every
// compared pixel differs by at most 3 gray levels: no count of bad pixels
// and no average, so one pixel off by 4 makes them different.
class RowMatcher
{
public:
    // Two chat applications get their own rules: their pale backgrounds are
    // full of nearly white rows that would match anywhere.
    static constexpr std::string_view kQQ = "com.tencent.qq";
    static constexpr std::string_view kWeChat = "com.tencent.xinWeChat";
    [[nodiscard]] static bool isChatApp(std::string_view appID);

    RowMatcher(std::string_view appIDUnderMouse, int leftSameColumn, int rightSameColumn);

    // Leaves out the side bars and a further 20 pixels on each side; a row
    // with nothing left to compare counts as the same.
    [[nodiscard]] bool sameArr(Row a, Row to) const;
    [[nodiscard]] bool sameArrColumn(Column a, Column to) const;
    // True when the row may serve as an anchor in the application under the
    // mouse: in the chat applications it must hold a pixel darker than 210.
    [[nodiscard]] bool notOnlyWhiteColorInQQOrWeChat(Row row) const;

private:
    bool m_chatApp;
    int m_leftSameColumn;
    int m_rightSameColumn;
};

} // namespace scroll
