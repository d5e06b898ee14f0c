// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QSizeF>

namespace core {

// A picture with a size in points beside its pixels: many rules size a
// picture "pixels as points" or "pixels over the scale", so both travel
// together, and with them the picture's density. Whoever decorates or
// encodes a picture reads the density here rather than being told the
// scale of some screen beside it.
struct Picture
{
    QImage pixels;
    QSizeF pointSize;

    [[nodiscard]] bool isNull() const { return pixels.isNull(); }
    // Pixels per point (the scale of the screen it was taken on); 1 for a
    // picture without a point size.
    [[nodiscard]] double density() const;
    [[nodiscard]] static Picture pixelsAsPoints(QImage image);
    [[nodiscard]] static Picture withScale(QImage image, double scale);
};

} // namespace core
