// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QSizeF>

namespace core {

// A picture with a size in points beside its pixels: many rules size a
// picture "pixels as points" or "pixels over the scale", so both travel
// together.
struct Picture
{
    QImage pixels;
    QSizeF pointSize;

    [[nodiscard]] bool isNull() const { return pixels.isNull(); }
    [[nodiscard]] static Picture pixelsAsPoints(QImage image);
    [[nodiscard]] static Picture withScale(QImage image, double scale);
};

} // namespace core
