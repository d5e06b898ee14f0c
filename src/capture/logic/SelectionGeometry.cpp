// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/logic/SelectionGeometry.h"

#include "overlay/logic/CropBorderZones.h"

#include <Qt>

#include <algorithm>
#include <cmath>

namespace capture {

QRectF SelectionGeometry::truncated(const QRectF& r)
{
    return {std::trunc(r.x()), std::trunc(r.y()), std::trunc(r.width()), std::trunc(r.height())};
}

QPointF SelectionGeometry::truncated(QPointF p)
{
    return {std::trunc(p.x()), std::trunc(p.y())};
}

QRectF SelectionGeometry::grown(const QRectF& r, double d)
{
    return {r.x() - d, r.y() - d, r.width() + 2 * d, r.height() + 2 * d};
}

QRectF SelectionGeometry::spanned(QPointF a, QPointF b)
{
    return {std::min(a.x(), b.x()), std::min(a.y(), b.y()), std::abs(a.x() - b.x()),
            std::abs(a.y() - b.y())};
}

bool SelectionGeometry::pointInRect(QPointF p, const QRectF& r)
{
    return p.x() >= r.x() && p.x() < r.x() + r.width() && p.y() >= r.y() &&
           p.y() < r.y() + r.height();
}

bool SelectionGeometry::containsRect(const QRectF& outer, const QRectF& inner)
{
    return inner.width() > 0 && inner.height() > 0 && inner.x() >= outer.x() &&
           inner.y() >= outer.y() && inner.x() + inner.width() <= outer.x() + outer.width() &&
           inner.y() + inner.height() <= outer.y() + outer.height();
}

SelectionGeometry::Move SelectionGeometry::moved(const QRectF& contentRect, QPointF point,
                                                 QPointF startPoint, QSizeF screenSize)
{
    double x = std::max(0.0, std::trunc(contentRect.x() + point.x() - startPoint.x()));
    double y = std::max(0.0, std::trunc(contentRect.y() + point.y() - startPoint.y()));
    const double w = contentRect.width();
    const double h = contentRect.height();
    if (x + w > screenSize.width())
        x = std::trunc(screenSize.width() - w);
    if (y + h > screenSize.height())
        y = std::trunc(screenSize.height() - h);
    return {QRectF(x, y, w, h), truncated(point)};
}

QRectF SelectionGeometry::resized(const QRectF& before, QPointF point, int handle)
{
    const double left = before.x();
    const double bottom = before.y();
    const double right = before.x() + before.width();
    const double top = before.y() + before.height();
    QPointF a;
    QPointF b;
    switch (handle) {
    case handles::BottomLeft:
        a = point;
        b = {right, top};
        break;
    case handles::Bottom:
        a = {left, point.y()};
        b = {right, top};
        break;
    case handles::BottomRight:
        a = {left, point.y()};
        b = {point.x(), top};
        break;
    case handles::Right:
        a = {left, bottom};
        b = {point.x(), top};
        break;
    case handles::TopRight:
        a = {left, bottom};
        b = point;
        break;
    case handles::Top:
        a = {left, bottom};
        b = {right, point.y()};
        break;
    case handles::TopLeft:
        a = {point.x(), bottom};
        b = {right, point.y()};
        break;
    case handles::Left:
        a = {point.x(), bottom};
        b = {right, top};
        break;
    default:
        break;
    }
    return spanned(truncated(a), truncated(b));
}

std::optional<KeyboardStep> SelectionGeometry::arrowKeyStep(const QRectF& f, int key, int handle,
                                                            QPointF pointer)
{
    const bool leftSide =
        handle == handles::BottomLeft || handle == handles::TopLeft || handle == handles::Left;
    const bool rightSide =
        handle == handles::BottomRight || handle == handles::Right || handle == handles::TopRight;
    const bool bottomSide = handle == handles::BottomLeft || handle == handles::Bottom ||
                            handle == handles::BottomRight;
    const bool topSide =
        handle == handles::TopRight || handle == handles::Top || handle == handles::TopLeft;
    // The pointer moves on the screen the way the key points; the frame's
    // side under the pointer moves with it.
    switch (key) {
    case Qt::Key_Left:
        if (leftSide)
            return KeyboardStep{{f.x() - 1, f.y(), f.width() + 1, f.height()},
                                pointer + QPointF(-1, 0)};
        if (rightSide)
            return KeyboardStep{{f.x(), f.y(), f.width() - 1, f.height()},
                                pointer + QPointF(-1, 0)};
        break;
    case Qt::Key_Right:
        if (leftSide)
            return KeyboardStep{{f.x() + 1, f.y(), f.width() - 1, f.height()},
                                pointer + QPointF(1, 0)};
        if (rightSide)
            return KeyboardStep{{f.x(), f.y(), f.width() + 1, f.height()}, pointer + QPointF(1, 0)};
        break;
    case Qt::Key_Down:
        if (bottomSide)
            return KeyboardStep{{f.x(), f.y() - 1, f.width(), f.height() + 1},
                                pointer + QPointF(0, -1)};
        if (topSide)
            return KeyboardStep{{f.x(), f.y(), f.width(), f.height() - 1},
                                pointer + QPointF(0, -1)};
        break;
    case Qt::Key_Up:
        if (bottomSide)
            return KeyboardStep{{f.x(), f.y() + 1, f.width(), f.height() - 1},
                                pointer + QPointF(0, 1)};
        if (topSide)
            return KeyboardStep{{f.x(), f.y(), f.width(), f.height() + 1}, pointer + QPointF(0, 1)};
        break;
    default:
        break;
    }
    return std::nullopt;
}

std::vector<QRectF> SelectionGeometry::handleSquareRects(const QRectF& rect, bool withBars)
{
    const double x = rect.x();
    const double y = rect.y();
    const double w = rect.width();
    const double h = rect.height();
    std::vector<QRectF> rects{
        {x + 6, y + 6, 0, 0},
        {x - 5, y - 5, 10, 10},
        {x + w / 2 - 5, y - 5, 10, 10},
        {x + w - 5, y - 5, 10, 10},
        {x + w - 5, y + h / 2 - 5, 10, 10},
        {x + w - 5, y + h - 5, 10, 10},
        {x + w / 2 - 5, y + h - 5, 10, 10},
        {x - 5, y + h - 5, 10, 10},
        {x - 5, y + h / 2 - 5, 10, 10},
    };
    if (!withBars)
        return rects;
    // The bar lengths are worked out in single precision.
    const double t = static_cast<float>(w / 2 - 12);
    const double u = static_cast<float>(h / 2 - 12);
    const QRectF rightUpper{x + w - 5, y + h / 2 + 6, 10, u};
    rects.insert(rects.end(), {
                                  {x + 6, y - 5, t, 10},
                                  {x + w / 2 + 6, y - 5, t, 10},
                                  {x + w - 5, y + 6, 10, u},
                                  rightUpper,
                                  rightUpper,
                                  {x + 6, y + h - 5, t, 10},
                                  {x + w / 2 + 6, y + h - 5, t, 10},
                                  {x - 5, y + 6, 10, u},
                                  {x - 5, y + h / 2 + 6, 10, u},
                              });
    return rects;
}

std::array<QRectF, 9> SelectionGeometry::handleTrackRects(QSizeF size)
{
    // The selection's handles are exactly the zones the crop border tracks.
    return overlay::CropBorderZones::handleTrackRects(size);
}

int SelectionGeometry::handleZoneAt(QSizeF size, QPointF p)
{
    const std::array<QRectF, 9> zones = handleTrackRects(size);
    for (int n = 1; n <= 8; ++n) {
        if (pointInRect(p, zones[static_cast<std::size_t>(n)]))
            return n;
    }
    return pointInRect(p, zones[0]) ? 0 : -1;
}

QString SelectionGeometry::stringFromRect(const QRectF& r)
{
    return QStringLiteral("{{%1, %2}, {%3, %4}}")
        .arg(QString::number(r.x(), 'g', 15), QString::number(r.y(), 'g', 15),
             QString::number(r.width(), 'g', 15), QString::number(r.height(), 'g', 15));
}

} // namespace capture
