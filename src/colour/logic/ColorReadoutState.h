// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "colour/logic/ColorNamer.h"

#include <QPointF>
#include <QString>

#include <memory>
#include <optional>

namespace colour {

// What the colour readout remembers between redraws and between captures.
// The application owns one for the whole process: the last colour stays
// copyable by the keys, even in the next capture before the pointer moves.
struct ColorReadoutState
{
    // A move has arrived since the last redraw; only then are the colour's
    // name and the texts worked out and drawn.
    bool mouseMoving = false;
    // "%.f,%.f" of the pointer, y counted from the top of the screen.
    QString mousePoint;
    // The last colour looked up, as "#RRGGBB" and as "R,G,B"; absent until
    // the first move of the first capture.
    std::optional<QString> hexOfColor;
    std::optional<QString> rgbOfColor;

    // locationInWindow: the pointer in overlay-local points (y up);
    // screenHeight: the height in points of the screen under the pointer,
    // 0 when there is none.
    void mouseMoved(QPointF locationInWindow, double screenHeight);

    // Made at the first look-up and kept from then on.
    [[nodiscard]] const ColorNamer& colorNamer();

private:
    std::unique_ptr<ColorNamer> m_colorNamer;
};

} // namespace colour
