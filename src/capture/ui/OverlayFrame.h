// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>

#include <optional>

namespace capture {

// Everything the overlay draws over its frozen screen in one paint pass.
// All rectangles and points are overlay-local: points, origin at the
// screen's bottom-left corner, y up.
struct OverlayFrame
{
    QSizeF screenSize; // the overlay's size in points

    // The dim surround's hole, where the frozen screen shows undimmed.
    // Nothing: no dimming at all (before the first hover, or on a screen the
    // pointer left). An empty rectangle dims the whole screen.
    std::optional<QRectF> dimHole;
    // The outline box: a 2-point band just inside this frame.
    std::optional<QRectF> outlineBox;
    // Fill inside the outline band (a recording's tint); transparent for a capture.
    QColor outlineFill = Qt::transparent;

    // The selection whose size the label shows; nothing hides the label.
    std::optional<QRectF> sizeLabelFor;

    // The magnifier square and the pointer it reads at.
    std::optional<QRectF> magnifier;
    QPointF pointer;
    // The drawn cross hair that stands in for the hidden system cursor.
    std::optional<QRectF> cross;

    // The tip box's text in the lower-left corner; empty hides it.
    QString tip;
};

} // namespace capture
