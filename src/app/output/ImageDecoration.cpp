// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/output/ImageDecoration.h"

#include "core/BubblePath.h"
#include "core/Shadow.h"

#include <QPainter>

#include <cmath>

namespace app::output {

ShadowGeometry shadowGeometry(QSizeF picture, qreal size)
{
    return {QSizeF(picture.width() + 2 * size, picture.height() + 2 * size),
            QRectF(QPointF(size, size), picture), 1.1 * size};
}

core::Picture addShadow(const core::Picture& picture, qreal size, const QColor& colour)
{
    if (picture.isNull())
        return picture;
    const double scale = picture.density();
    const ShadowGeometry g = shadowGeometry(picture.pointSize, size);
    const int margin = static_cast<int>(std::lround(size * scale));
    const QImage source = picture.pixels.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    QImage canvas = core::shadowOf(source, margin, g.blur * scale / 2.0, colour);
    QPainter painter(&canvas);
    painter.drawImage(QPoint(margin, margin), source);
    painter.end();
    return {canvas, g.canvas};
}

core::Picture addRoundImgae(const core::Picture& picture, qreal radius)
{
    if (picture.isNull())
        return picture;
    const double scale = picture.density();
    const QSizeF size = picture.pointSize;
    QPainterPath bubble;
    core::makeBubble(bubble, QRectF(QPointF(0, 0), size), radius, radius);
    QImage result(picture.pixels.size(), QImage::Format_ARGB32_Premultiplied);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    painter.setRenderHint(QPainter::Antialiasing);
    // The outline is in points with y up; the pixels run y down.
    painter.scale(scale, scale);
    painter.translate(0, size.height());
    painter.scale(1, -1);
    painter.setClipPath(bubble);
    painter.resetTransform();
    painter.drawImage(QPoint(0, 0), picture.pixels);
    painter.end();
    return {result, picture.pointSize};
}

} // namespace app::output
