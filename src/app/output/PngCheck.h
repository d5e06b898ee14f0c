// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

namespace app::output {

// Pictures that arrive from outside (another process, the bus) are decoded
// once with these limits before Kelvo hands them on.
inline constexpr int kMaxForeignSide = 32768;
inline constexpr qsizetype kMaxForeignBytes = qsizetype{256} << 20;

// Why `png` is not a PNG Kelvo accepts (not a PNG, damaged, too large);
// empty when it decodes completely within the limits.
[[nodiscard]] QString checkPng(const QByteArray& png);

} // namespace app::output
