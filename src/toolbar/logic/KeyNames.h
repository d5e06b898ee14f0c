// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringView>
#include <Qt>

namespace toolbar {

// The key a short cut's stored name stands for, as a Qt key; 0 for a name
// the table does not know. Names are matched exactly, in the table's order,
// and the first match wins: the keypad's rows repeat names that come
// earlier, so a name such as "1" always means the main keyboard's key, and
// only the keypad's own names ("*", "+", "CLEAR") reach the keypad (their
// keys carry Qt::KeypadModifier). Letters are known in lower case only.
[[nodiscard]] int keyCodeFormKeyString(QStringView name);

} // namespace toolbar
