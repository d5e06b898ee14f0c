// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>

namespace capture {

// Where the magnifier square and the drawn cross sit while the pointer
// hovers (nothing pressed). Placement during a drag, which avoids the edge
// being adjusted, belongs to the selection geometry.
struct HoverMagnifier
{
    static constexpr double kSide = 120.0;
    static constexpr double kGap = 10.0;
    static constexpr double kCrossSide = 30.0;

    // The square, overlay-local (y up): left of and above the pointer, moved
    // to the right when it would leave the screen on the left, and below
    // the pointer when it would leave it at the top. The pointer's
    // coordinates are cut to whole points first, so the square never lands
    // between pixels.
    [[nodiscard]] static QRectF square(QPointF pointer, QSizeF screenSize);

    // The drawn cross hair that stands in for the hidden system cursor,
    // overlay-local: a 30-point square centred on the pointer's whole point.
    [[nodiscard]] static QRectF cross(QPointF pointer);
};

} // namespace capture
