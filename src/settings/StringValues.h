// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringView>

namespace settings {

// Numbers and booleans kept as text are read the way Cocoa's NSString reads
// them, because the stored forms ("YES", "3", "0.5") were chosen for those
// readers. None of them fails: text that is no number reads as 0 or false.

// Leading whitespace, an optional sign, then the longest run of decimal
// digits; anything after is ignored. "3.5" is 3, "x1" is 0. Out of range
// values stick at the limit of the type.
[[nodiscard]] int intValue(QStringView text);
[[nodiscard]] qint64 integerValue(QStringView text);

// The longest prefix that is a decimal floating point number ("0.5s" is 0.5).
[[nodiscard]] double doubleValue(QStringView text);

// True when, after leading whitespace, an optional sign and any zeros, the
// text starts with Y, y, T, t or a digit 1 to 9: "YES", "true", "1", "007".
// "NO", "false", "0", "" and garbage read as false.
[[nodiscard]] bool boolValue(QStringView text);

} // namespace settings
