// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/ImageView.h"

#include <QImage>

namespace core {

std::size_t ImageView::byteCount() const
{
    if (sizeBytes != 0)
        return sizeBytes;
    if (height <= 0 || strideBytes <= 0)
        return 0;
    return static_cast<std::size_t>(height) * static_cast<std::size_t>(strideBytes);
}

bool ImageView::isValid() const
{
    if (data == nullptr || width <= 0 || height <= 0)
        return false;
    const auto rowLength = static_cast<std::ptrdiff_t>(width) * 4;
    if (strideBytes < rowLength)
        return false;
    const auto needed =
        static_cast<std::size_t>(height - 1) * static_cast<std::size_t>(strideBytes) +
        static_cast<std::size_t>(rowLength);
    return needed <= byteCount();
}

ImageView ImageView::of(const QImage& image)
{
    switch (image.format()) {
    case QImage::Format_ARGB32:
    case QImage::Format_RGB32:
    case QImage::Format_ARGB32_Premultiplied:
        break;
    default:
        return {};
    }
    if (image.isNull())
        return {};
    return {image.constBits(), image.width(), image.height(), image.bytesPerLine(),
            static_cast<std::size_t>(image.sizeInBytes())};
}

} // namespace core
