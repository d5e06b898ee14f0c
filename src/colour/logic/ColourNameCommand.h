// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>
#include <QTextStream>

namespace colour {

// `kelvo colour-name RRGGBB` (a leading "#" is allowed): prints the look-up
// of that colour as one JSON object with "rgb", "hex", "colorName" and
// "colorValue". Returns 0; a missing, extra or malformed argument gets a
// message on stderr and 1.
[[nodiscard]] int runColourNameCommand(const QStringList& arguments);

// The same with the streams given, for tests.
[[nodiscard]] int runColourNameCommand(const QStringList& arguments, QTextStream& out,
                                       QTextStream& err);

} // namespace colour
