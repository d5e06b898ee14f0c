// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace core {

// Text from outside (a D-Bus caller, a damaged file) as a message quotes
// it: on one line, control characters as "?", and cut to `longest`
// characters with "..." after, since it may be megabytes long.
[[nodiscard]] QString shortForMessage(const QString& text, qsizetype longest = 60);

} // namespace core
