// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>

namespace colour {

struct NamedColorRow
{
    const char* key;  // six upper-case hex digits, no "#"
    const char* name; // English
};

struct ColorListEntry
{
    const char* chineseName; // UTF-8
    const char* englishName;
    int hue;        // degrees
    int saturation; // per cent
    int brightness; // per cent
};

inline constexpr std::size_t kNamedColorRowCount = 242;
inline constexpr std::size_t kColorListRowCount = 242;

extern const std::array<NamedColorRow, kNamedColorRowCount> kNamedColorRows;
extern const std::array<ColorListEntry, kColorListRowCount> kColorListRows;

} // namespace colour
