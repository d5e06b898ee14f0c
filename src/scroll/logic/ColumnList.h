// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace scroll {

class Frame;

// The gray values of a frame, one list per column, left column first, each
// top to bottom. Only needed while a side bar is still being learnt: it is
// the costly part of a frame, one gray value for each pixel.
class ColumnList
{
public:
    ColumnList() = default;
    [[nodiscard]] static ColumnList of(const Frame& frame);

    // Absent and empty read the same: no columns.
    [[nodiscard]] bool isEmpty() const { return m_count == 0; }
    [[nodiscard]] int count() const { return m_count; }
    [[nodiscard]] int length() const { return m_length; }
    [[nodiscard]] std::span<const std::uint8_t> column(int x) const;

    // Exactly equal: as many columns, each with the same gray values.
    [[nodiscard]] bool operator==(const ColumnList& other) const = default;

private:
    int m_count = 0;
    int m_length = 0;
    std::vector<std::uint8_t> m_gray; // column-major
};

} // namespace scroll
