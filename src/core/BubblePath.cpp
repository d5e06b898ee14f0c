// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/BubblePath.h"

#include <cmath>
#include <numbers>

namespace core {

QPointF pointOnCircle(QPointF centre, qreal radius, qreal degrees)
{
    const qreal a = degrees * std::numbers::pi / 180.0;
    return {centre.x() + radius * std::cos(a), centre.y() + radius * std::sin(a)};
}

void appendArc(QPainterPath& path, QPointF centre, qreal radius, qreal startDegrees,
               qreal endDegrees, bool clockwise)
{
    const QPointF start = pointOnCircle(centre, radius, startDegrees);
    if (path.elementCount() == 0)
        path.moveTo(start);
    else
        path.lineTo(start);
    // The sweep in the y-up plane: clockwise turns down from the start angle
    // to the end angle, counter-clockwise up, never more than a full turn.
    qreal sweep = clockwise ? std::fmod(startDegrees - endDegrees, 360.0)
                            : std::fmod(endDegrees - startDegrees, 360.0);
    if (sweep < 0)
        sweep += 360.0;
    if (clockwise)
        sweep = -sweep;
    if (radius <= 0 || sweep == 0)
        return;
    // arcTo measures angles the other way round; negating both turns its
    // arc into this plane's.
    const QRectF box(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius);
    path.arcTo(box, -startDegrees, -sweep);
}

QPainterPath& makeBubble(QPainterPath& path, const QRectF& rect, qreal top, qreal bottom)
{
    const qreal t = top;
    const qreal b = bottom;
    const qreal minX = rect.left();
    const qreal maxX = rect.right();
    const qreal minY = rect.top(); // the bottom edge in the y-up plane
    const qreal maxY = rect.bottom();
    appendArc(path, {maxX - b, minY + b}, b, -50, -90, true);
    appendArc(path, {minX + b, minY + b}, b, -90, -180, true);
    appendArc(path, {minX + t, maxY - t}, t, 180, 90, true);
    appendArc(path, {maxX - t, maxY - t}, t, 90, 0, true);
    appendArc(path, {maxX - b, minY + b}, b, 0, -50, true);
    path.closeSubpath();
    return path;
}

} // namespace core
