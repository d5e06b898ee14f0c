// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringView>

#include <cstdint>
#include <optional>

namespace colour {

// A number as C's "%.f" writes it: rounded to a whole number the way the C
// library rounds (an exact half goes to the even neighbour), "-0" kept.
// QString::number rounds halves away from zero, which would change texts
// the user copies.
[[nodiscard]] QString formatWhole(double value);

// Reads a hexadecimal number the way a Cocoa scanner's scanHexInt does:
// leading white space is skipped, an optional "0x" or "0X" prefix is taken,
// digits run until the first non-hex character, and a value too large for
// 32 bits gives 0xFFFFFFFF. Nothing when no digit follows, so "#FF0000"
// read from its first character fails.
[[nodiscard]] std::optional<std::uint32_t> scanHexInt(QStringView text);

} // namespace colour
