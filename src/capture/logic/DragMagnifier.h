// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>

namespace capture {

// Where the 120-point magnifier goes while the selection changes under the
// mouse: off the mouse, on the screen, and clear of the side being adjusted,
// so that the user sees the pixels the edge is about to cross.
class DragMagnifier
{
public:
    static constexpr double Side = 120.0;
    static constexpr double Gap = 10.0; // kept off the mouse and off the selection

    // The magnifier's origin, overlay-local. `mouse` is overlay-local (cut to
    // whole points here), `screen` the size of the screen under the mouse,
    // `numberOfReSize` the handle of a running resize (0 for a region drag).
    [[nodiscard]] static QPointF positionOfDragging(QPointF mouse, QSizeF screen,
                                                    const QRectF& contentRect, int numberOfReSize,
                                                    bool onlyClipCurrentWindow);
};

} // namespace capture
