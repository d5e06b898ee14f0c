// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/Picture.h"

#include <utility>

namespace core {

double Picture::density() const
{
    return pointSize.width() > 0 ? pixels.width() / pointSize.width() : 1.0;
}

Picture Picture::pixelsAsPoints(QImage image)
{
    const QSizeF size = image.size();
    return {std::move(image), size};
}

Picture Picture::withScale(QImage image, double scale)
{
    const double s = scale > 0.0 ? scale : 1.0;
    const QSizeF size(image.width() / s, image.height() / s);
    return {std::move(image), size};
}

} // namespace core
