// SPDX-License-Identifier: GPL-3.0-or-later
#include "annotation/logic/StrokeGeometry.h"

#include "core/BubblePath.h"

#include <QTransform>

#include <cmath>

namespace annotation::geometry {

namespace {

// cos of 29.2 degrees, half the head's opening: where the shaft stops.
constexpr double kHeadCosine = 0.872871608293454;
// Added to an angle in radians: 60.2 rad lies 209.2 degrees round, so the
// wings point back from the tip.
constexpr double kWingTurn = 60.2;
// The dart is designed 30 units long and scaled to the arrow's length.
constexpr double kDartLength = 30.0;

} // namespace

QRectF orderedRect(QPointF a, QPointF b)
{
    return QRectF(QPointF(std::min(a.x(), b.x()), std::min(a.y(), b.y())),
                  QPointF(std::max(a.x(), b.x()), std::max(a.y(), b.y())));
}

std::vector<QRectF> calculateAllNeededHandleSquareRects(const QRectF& r, int activeType)
{
    const double x = r.x();
    const double y = r.y();
    const double w = static_cast<float>(r.width());
    const double h = static_cast<float>(r.height());
    std::vector<QRectF> rects{
        QRectF(x + 6, y + 6, 0, 0),
        QRectF(x - 5, y - 5, 10, 10),
        QRectF(x + w / 2 - 5, y - 5, 10, 10),
        QRectF(x + w - 5, y - 5, 10, 10),
        QRectF(x + w - 5, y + h / 2 - 5, 10, 10),
        QRectF(x + w - 5, y + h - 5, 10, 10),
        QRectF(x + w / 2 - 5, y + h - 5, 10, 10),
        QRectF(x - 5, y + h - 5, 10, 10),
        QRectF(x - 5, y + h / 2 - 5, 10, 10),
    };
    if (activeType == stroketype::Highlight) {
        const double ww = static_cast<float>(w / 2 - 12);
        const double hh = static_cast<float>(h / 2 - 12);
        rects.insert(rects.end(), {
                                      QRectF(x + 6, y - 5, ww, 10),
                                      QRectF(x + w / 2 + 6, y - 5, ww, 10),
                                      QRectF(x + w - 5, y + 6, 10, hh),
                                      QRectF(x + w - 5, y + h / 2 + 6, 10, hh),
                                      QRectF(x + w - 5, y + h / 2 + 6, 10, hh),
                                      QRectF(x + 6, y + h - 5, ww, 10),
                                      QRectF(x + w / 2 + 6, y + h - 5, ww, 10),
                                      QRectF(x - 5, y + 6, 10, hh),
                                      QRectF(x - 5, y + h / 2 + 6, 10, hh),
                                  });
    }
    return rects;
}

QRectF endHandle(QPointF p)
{
    return QRectF(p.x() - 5, p.y() - 5, 10, 10);
}

QPainterPath makeBubble(const QRectF& rect, double right, double left)
{
    double rr = right;
    double rl = left;
    if (rect.height() < 20)
        rr = rl = rect.height() / 2;
    if (rect.width() < 20)
        rr = rl = rect.width() / 2;
    const double minX = rect.left();
    const double maxX = rect.right();
    const double minY = rect.top(); // the bottom edge in the y-up plane
    const double maxY = rect.bottom();
    QPainterPath path;
    core::appendArc(path, {maxX - rr, minY + rr}, rr, -50, -90, true);
    core::appendArc(path, {minX + rl, minY + rl}, rl, -90, -180, true);
    core::appendArc(path, {minX + rl, maxY - rl}, rl, 180, 90, true);
    core::appendArc(path, {maxX - rr, maxY - rr}, rr, 90, 0, true);
    core::appendArc(path, {maxX - rr, minY + rr}, rr, 0, -50, true);
    path.closeSubpath();
    return path;
}

StrokedArrow strokedArrow(QPointF tail, QPointF tip, double size)
{
    StrokedArrow arrow;
    const double a = static_cast<float>(std::atan2(tip.y() - tail.y(), tip.x() - tail.x()));
    const int t = static_cast<int>(std::trunc(size / 1.6 + size + 8.0));
    const double distance = std::hypot(tip.x() - tail.x(), tip.y() - tail.y());
    // May go negative for an arrow shorter than its head: the shaft then
    // points back past the tail.
    const double L = static_cast<float>(distance + 0.5) - kHeadCosine * t;
    arrow.tail = tail;
    arrow.shaftEnd = QPointF(tail.x() + std::cos(a) * L, tail.y() + std::sin(a) * L);
    arrow.head = {
        tip, QPointF(tip.x() + std::cos(a + kWingTurn) * t, tip.y() + std::sin(a + kWingTurn) * t),
        QPointF(tip.x() + std::cos(a - kWingTurn) * t, tip.y() + std::sin(a - kWingTurn) * t)};
    arrow.headLength = t;
    return arrow;
}

QPolygonF taperedArrow(QPointF tail, QPointF tip, int size)
{
    const double a = std::atan2(tip.y() - tail.y(), tip.x() - tail.x());
    const double d = std::hypot(tip.x() - tail.x(), tip.y() - tail.y());
    const double scale = d == 0 ? 1.0 / kDartLength : d / kDartLength;
    const double q = (3 * size + 2) / scale;
    const double L = kDartLength;
    const QPolygonF design{
        QPointF(0, 0.05), QPointF(L - q, 0.4 * q),        QPointF(L - 1.1 * q, 0.8 * q),
        QPointF(L, 0),    QPointF(L - 1.1 * q, -0.8 * q), QPointF(L - q, -0.4 * q),
        QPointF(0, -0.05)};
    QTransform toView;
    toView.translate(tail.x(), tail.y());
    toView.rotateRadians(a);
    toView.scale(scale, scale);
    return toView.map(design);
}

QColor paintColour(const Stroke& stroke, bool keepZero)
{
    QColor colour = stroke.color;
    double alpha = stroke.colorAlpha.value_or(1.0);
    if (alpha == 0 && !keepZero)
        alpha = static_cast<double>(0.01f);
    colour.setAlphaF(static_cast<float>(alpha));
    return colour;
}

} // namespace annotation::geometry
