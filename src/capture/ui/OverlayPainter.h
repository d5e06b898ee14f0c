// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "capture/ui/OverlayFrame.h"

#include <QColor>
#include <QFont>
#include <QRectF>
#include <QString>

class QPainter;

namespace colour {
class ColorPickerImageView;
}

namespace capture {

// Draws what a capture overlay shows over its frozen screen: the dim
// surround with its hole, the outline, the size label, the tip box, the
// magnifier and the cross hair. The overlay calls paint() from its own
// paintEvent after drawing the frozen screen, with the painter in widget
// coordinates; the painter flips the frame's y-up rectangles itself.
//
// Lines and bands are snapped to the device's pixels, so they are one
// crisp colour at scale 1 and 2; only text and rounded corners are smoothed.
class OverlayPainter
{
public:
    // `magnifier` draws the square's inside; without it no magnifier shows.
    explicit OverlayPainter(colour::ColorPickerImageView* magnifier = nullptr);

    // Paints `frame`. A frame with a magnifier asks its readout to draw,
    // which consumes the readout's pending move: paint once per update.
    void paint(QPainter& painter, const OverlayFrame& frame);

    [[nodiscard]] static QColor surroundColor();
    [[nodiscard]] static QColor outlineColor();
    [[nodiscard]] static QColor sizeLabelColor();
    [[nodiscard]] static QFont textFont();
    // The tip box for `text`, overlay-local: 10 points off the lower-left
    // corner, the text with a margin of 10 (15 on the right).
    [[nodiscard]] static QRectF tipBox(const QString& text);

private:
    void paintSurround(QPainter& painter, const OverlayFrame& frame, double ratio) const;
    void paintOutline(QPainter& painter, const OverlayFrame& frame, double ratio) const;
    void paintSizeLabel(QPainter& painter, const OverlayFrame& frame, double ratio) const;
    void paintTip(QPainter& painter, const OverlayFrame& frame, double ratio) const;
    void paintMagnifier(QPainter& painter, const OverlayFrame& frame, double ratio);
    void paintCross(QPainter& painter, const OverlayFrame& frame) const;

    colour::ColorPickerImageView* m_magnifier;
};

} // namespace capture
