// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "capture/logic/WindowPicture.h"
#include "core/Picture.h"

#include <QColor>
#include <QImage>
#include <QRectF>

#include <vector>

namespace capture {

// Everything the final picture of a capture is made of. Rectangles are
// overlay-local points with the origin at the bottom left, as the
// selection keeps them.
struct CompositionInput
{
    // The crop border's frame: the selection grown by 6 on every side.
    QRectF R;
    int S = 0; // shadow size, 0 for none
    QColor shadowColour;
    bool onlyClipCurrentWindow = false; // windows (picks) rather than a region
    bool mapImage = false;              // the picture becomes a pin
    bool fillet = false;                // round a region's corners (radius 5)
    // The picks of a window selection, front to back.
    std::vector<PickedWindow> picks;
    // The frozen screen, for a region, and the overlay's size in points.
    core::Picture fullImage;
    QSizeF windowSize;
    // Pixels per point of the screen the picture is taken on.
    double scale = 1.0;
    // What the overlay drew on top of the selection (mark-up), covering the
    // selection exactly; may be null.
    QImage marks;
};

// Where the pieces of a finished picture go, in the picture's own points
// (origin at the bottom left).
struct CompositionLayout
{
    QSizeF size;
    struct Piece
    {
        QRectF rect;
        bool shadow = false;
    };
    std::vector<Piece> pieces; // in drawing order, back to front
    QRectF marks;              // where the mark-up goes
    QRectF regionSource;       // for a region: where the frozen screen is drawn
    double regionRadius = 0;   // for a region: its corner radius
};

// The arithmetic of the picture: its size, and where each window or the
// region goes, with or without a shadow.
[[nodiscard]] CompositionLayout layOutComposition(const CompositionInput& in);

// Where the mark-up layer of the finished picture is taken from, in the
// overlay's points (origin at the bottom left): the part of the crop border's
// frame that lands on the layout's `marks`.
[[nodiscard]] QRectF marksArea(const CompositionInput& in);

// The final picture: the frozen windows or screen, shadows and rounding,
// and the mark-up, at the screen's pixel density. Null when the selection
// is empty.
[[nodiscard]] core::Picture composeCapture(const CompositionInput& in);

} // namespace capture
