// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QRectF>
#include <QString>

namespace app::hotkeys {

// Reads a rectangle written as "{{x, y}, {w, h}}" the lenient way Cocoa
// reads it: the first four numbers in the text, whatever stands between
// them, are x, y, width and height, and missing ones are 0. An empty or
// unreadable text is the zero rectangle.
[[nodiscard]] QRectF rectFromString(const QString& text);

} // namespace app::hotkeys
