// SPDX-License-Identifier: GPL-3.0-or-later
#include "annotation/logic/StrokeHitTest.h"

#include <QSet>

#include <algorithm>
#include <cmath>

namespace annotation::hittest {

namespace {

namespace st = stroketype;

// cos of 29.2 degrees, half the stroked head's opening: where its shaft stops.
constexpr double kHeadCosine = 0.872871608293454;
// 150.8 degrees: seen from the tip, a point within 29.2 degrees of the
// shaft lies in the head.
constexpr double kHeadAngle = 2.63185;
// The tapered dart is designed 30 units long.
constexpr double kDartLength = 30.0;

QPointF p1Of(const Stroke& s)
{
    return {static_cast<float>(s.X1.value_or(0)), static_cast<float>(s.Y1.value_or(0))};
}

QPointF p2Of(const Stroke& s)
{
    return {static_cast<float>(s.X2.value_or(0)), static_cast<float>(s.Y2.value_or(0))};
}

// The stored box as it stands: a committed one is ordered already.
QRectF boxOf(const Stroke& s)
{
    const QPointF a = p1Of(s);
    const QPointF b = p2Of(s);
    return QRectF(a.x(), a.y(), b.x() - a.x(), b.y() - a.y());
}

// The point in the arrow's own frame: u along the shaft from the tail, v
// the distance off it.
struct ArrowFrame
{
    double d = 0; // the arrow's length
    double u = 0;
    double v = 0;
};

ArrowFrame arrowFrame(const Stroke& s, QPointF p)
{
    const QPointF tail = p1Of(s);
    const QPointF tip = p2Of(s);
    ArrowFrame f;
    f.d = distanceBetweenPoint(tail, tip);
    const double a = angleBetweenPoint(tip, tail);
    const double e = p.x() - tail.x();
    const double g = p.y() - tail.y();
    f.u = e * std::cos(a) + g * std::sin(a);
    f.v = std::abs(g * std::cos(a) - e * std::sin(a));
    return f;
}

bool onEllipse(const Stroke& s, QPointF p, const Tolerances& tol, bool filled)
{
    const float x1 = static_cast<float>(s.X1.value_or(0));
    const float y1 = static_cast<float>(s.Y1.value_or(0));
    const float x2 = static_cast<float>(s.X2.value_or(0));
    const float y2 = static_cast<float>(s.Y2.value_or(0));
    const float a = std::abs(x2 - x1) / 2;
    const float b = std::abs(y2 - y1) / 2;
    const float u = static_cast<float>(p.x()) - (x1 + x2) / 2;
    const float v = static_cast<float>(p.y()) - (y1 + y2) / 2;
    const float t = static_cast<float>(tol.band);
    if (filled && tol.filledInterior)
        return insideEllipse(u, v, a, b);
    if (filled && tol.filledGrown)
        return insideEllipse(u, v, a + t, b + t);
    return insideEllipse(u, v, a + t, b + t) && outsideEllipse(u, v, a - t, b - t);
}

bool onPencil(const Stroke& s, QPointF p, int radius)
{
    for (std::size_t i = 1; i < s.allPoints.size(); ++i) {
        if (crossWithCyclePoint(s.allPoints[i - 1], s.allPoints[i], p, radius))
            return true;
    }
    return false;
}

// Eberly's bisection for the first quadrant: the root of
// (r0·z0/(s + r0))² + (z1/(s + 1))² = 1.
double ellipseRoot(double r0, double z0, double z1, double g)
{
    const double n0 = r0 * z0;
    double s0 = z1 - 1;
    double s1 = g < 0 ? 0 : std::hypot(n0, z1) - 1;
    double s = 0;
    for (int i = 0; i < 120; ++i) {
        s = (s0 + s1) / 2;
        if (s == s0 || s == s1)
            break;
        const double ratio0 = n0 / (s + r0);
        const double ratio1 = z1 / (s + 1);
        const double h = ratio0 * ratio0 + ratio1 * ratio1 - 1;
        if (h > 0)
            s0 = s;
        else if (h < 0)
            s1 = s;
        else
            break;
    }
    return s;
}

// Distance from (y0, y1), both at least 0, to the ellipse of semi-axes
// e0 >= e1 > 0.
double distanceInQuadrant(double e0, double e1, double y0, double y1)
{
    if (y1 > 0) {
        if (y0 > 0) {
            const double z0 = y0 / e0;
            const double z1 = y1 / e1;
            const double g = z0 * z0 + z1 * z1 - 1;
            if (g == 0)
                return 0;
            const double r0 = (e0 / e1) * (e0 / e1);
            const double sbar = ellipseRoot(r0, z0, z1, g);
            const double x0 = r0 * y0 / (sbar + r0);
            const double x1 = y1 / (sbar + 1);
            return std::hypot(x0 - y0, x1 - y1);
        }
        return std::abs(y1 - e1);
    }
    const double numer0 = e0 * y0;
    const double denom0 = e0 * e0 - e1 * e1;
    if (numer0 < denom0) {
        const double xde0 = numer0 / denom0;
        const double x0 = e0 * xde0;
        const double x1 = e1 * std::sqrt(1 - xde0 * xde0);
        return std::hypot(x0 - y0, x1);
    }
    return std::abs(y0 - e0);
}

} // namespace

double distanceBetweenPoint(QPointF a, QPointF b)
{
    return std::hypot(a.x() - b.x(), a.y() - b.y());
}

double angleBetweenPoint(QPointF p, QPointF q)
{
    return std::atan2(p.y() - q.y(), p.x() - q.x());
}

bool crossWithCyclePoint(QPointF a, QPointF b, QPointF c, double r)
{
    const double dx = b.x() - a.x();
    const double dy = b.y() - a.y();
    const double minX = std::min(a.x(), b.x());
    const double maxX = std::max(a.x(), b.x());
    const double minY = std::min(a.y(), b.y());
    const double maxY = std::max(a.y(), b.y());
    // Top and bottom edges: where the segment's line meets them.
    for (const double edgeY : {c.y() + r, c.y() - r}) {
        const double x = (edgeY - a.y()) * dx / dy + a.x();
        if (c.x() - r <= x && x <= c.x() + r && minY <= edgeY && edgeY <= maxY)
            return true;
    }
    // Left and right edges.
    for (const double edgeX : {c.x() - r, c.x() + r}) {
        const double y = (edgeX - a.x()) * dy / dx + a.y();
        if (c.y() - r <= y && y <= c.y() + r && minX <= edgeX && edgeX <= maxX)
            return true;
    }
    return false;
}

QPointF getPointFrom(QPointF p, const QRectF& box)
{
    return {std::clamp(p.x(), box.x(), box.x() + box.width()),
            std::clamp(p.y(), box.y(), box.y() + box.height())};
}

bool pointInRect(QPointF p, const QRectF& r)
{
    return p.x() >= r.x() && p.x() < r.x() + r.width() && p.y() >= r.y() &&
           p.y() < r.y() + r.height();
}

bool inRectBand(QPointF p, const QRectF& r, double t)
{
    // No normalising: a rectangle shrunk past nothing keeps its negative size.
    const QRectF inner(r.x() + t, r.y() + t, r.width() - 2 * t, r.height() - 2 * t);
    const QRectF outer(r.x() - t, r.y() - t, r.width() + 2 * t, r.height() + 2 * t);
    return !pointInRect(p, inner) && pointInRect(p, outer);
}

bool insideEllipse(double u, double v, double a, double b)
{
    const float fu = static_cast<float>(u);
    const float fv = static_cast<float>(v);
    const float fa = static_cast<float>(a);
    const float fb = static_cast<float>(b);
    return fu * fu / (fa * fa) + fv * fv / (fb * fb) < 1.0f;
}

bool outsideEllipse(double u, double v, double a, double b)
{
    const float fu = static_cast<float>(u);
    const float fv = static_cast<float>(v);
    const float fa = static_cast<float>(a);
    const float fb = static_cast<float>(b);
    return fu * fu / (fa * fa) + fv * fv / (fb * fb) > 1.0f;
}

double distanceToSegment(QPointF p, QPointF a, QPointF b)
{
    const double dx = b.x() - a.x();
    const double dy = b.y() - a.y();
    const double lengthSquared = dx * dx + dy * dy;
    if (lengthSquared == 0)
        return distanceBetweenPoint(p, a);
    const double t =
        std::clamp(((p.x() - a.x()) * dx + (p.y() - a.y()) * dy) / lengthSquared, 0.0, 1.0);
    return distanceBetweenPoint(p, QPointF(a.x() + t * dx, a.y() + t * dy));
}

double distanceToEllipseOutline(QPointF p, const QRectF& box)
{
    const QRectF r = box.normalized();
    const double a = r.width() / 2;
    const double b = r.height() / 2;
    const double u = std::abs(p.x() - r.center().x());
    const double v = std::abs(p.y() - r.center().y());
    // A flat ellipse is the segment it collapsed to.
    if (a == 0 || b == 0)
        return distanceToSegment(QPointF(u, v), QPointF(0, 0), QPointF(a, b));
    return a >= b ? distanceInQuadrant(a, b, u, v) : distanceInQuadrant(b, a, v, u);
}

bool onStrokedArrow(const Stroke& arrow, QPointF p)
{
    double s = arrow.size;
    if (s <= 2)
        s = 3;
    const ArrowFrame f = arrowFrame(arrow, p);
    if (f.u > 0) {
        const double t = std::trunc(s / 1.6 + s + 8);
        const double L = std::abs(f.d - kHeadCosine * t) - 1;
        if (L > f.u)
            return static_cast<int>(s) / 2 + 1 > f.v;
    }
    if (f.d > f.u && f.u > 0)
        return angleBetweenPoint(QPointF(f.u, f.v - 2), QPointF(f.d, 0)) > kHeadAngle;
    return false;
}

bool onTaperedArrow(const Stroke& arrow, QPointF p)
{
    const double s = arrow.size;
    ArrowFrame f = arrowFrame(arrow, p);
    f.v -= 1;
    const double scale = f.d / kDartLength;
    const double q = (3 * s + 2) / scale;
    const double neck = (kDartLength - 1.1 * q) * scale;
    if (neck > f.u && f.u > 0) {
        // Below the line from the tail to the neck.
        const QPointF tail(0, 0.05 * scale);
        const double A =
            angleBetweenPoint(QPointF((kDartLength - q) * scale, 0.4 * q * scale), tail);
        const double B = angleBetweenPoint(QPointF(f.u, f.v), tail);
        return A > B;
    }
    if (kDartLength * scale > f.u && f.u > 0) {
        const QPointF tip(kDartLength * scale, 0);
        const double C = angleBetweenPoint(QPointF(neck, 0.8 * q * scale), tip);
        const double D = angleBetweenPoint(QPointF(f.u, f.v), tip);
        return D > C;
    }
    return false;
}

Tolerances tolerancesOf(HitTest test, int size)
{
    Tolerances tol;
    switch (test) {
    case HitTest::Press:
        tol.band = std::max((size + 1) / 2, 5);
        tol.lineRadius = std::max(size / 2, 3) + 1;
        tol.pencilRadius = std::max((size + 1) / 2, 4);
        tol.filledInterior = true;
        break;
    case HitTest::Hover:
        tol.band = std::max(size, 4);
        tol.lineRadius = std::max(size / 2, 4) + 1;
        tol.pencilRadius = std::max(size / 2, 4) + 1;
        break;
    case HitTest::ActiveStroke:
        tol.band = std::max(size, 4);
        tol.lineRadius = std::max(size / 2, 4);
        tol.pencilRadius = std::max(size / 2, 4);
        tol.filledGrown = true;
        break;
    }
    return tol;
}

bool strokeContains(const Stroke& s, QPointF p, HitTest test)
{
    const Tolerances tol = tolerancesOf(test, static_cast<int>(s.size));
    switch (s.type) {
    case st::Mosaic:
    case st::Highlight:
        return inRectBand(p, boxOf(s), tol.band);
    case st::Square:
        if (s.filledOfSquare && tol.filledInterior)
            return pointInRect(p, boxOf(s));
        if (s.filledOfSquare && tol.filledGrown)
            return pointInRect(p, boxOf(s).adjusted(-tol.band, -tol.band, tol.band, tol.band));
        return inRectBand(p, boxOf(s), tol.band);
    case st::Ellipse:
        return onEllipse(s, p, tol, s.filledOfEllipse);
    case st::Line:
        return crossWithCyclePoint(p1Of(s), p2Of(s), p, tol.lineRadius);
    case st::Arrow:
        if (s.normalTypeOfArrow == QLatin1String("1"))
            return onStrokedArrow(s, p);
        if (s.normalTypeOfArrow == QLatin1String("0"))
            return onTaperedArrow(s, p);
        return false;
    case st::PencilPen:
        return onPencil(s, p, tol.pencilRadius);
    default:
        return false;
    }
}

std::optional<Stroke> strokeUnderMouse(const StrokeState& state, QPointF p, HitTest test)
{
    for (const Stroke& s : state.currentStrokes(false)) {
        if (strokeContains(s, p, test))
            return s;
    }
    return std::nullopt;
}

bool getdicOfCurrentStrokeUnderMouse(StrokeState& state, QPointF p)
{
    std::optional<Stroke> hit = strokeUnderMouse(state, p, HitTest::Press);
    if (!hit)
        return false;
    state.dicOfCurrentStroke = std::move(hit);
    return true;
}

bool isOnActiveStroke(const StrokeState& state, QPointF p)
{
    return state.dicOfCurrentStroke &&
           strokeContains(*state.dicOfCurrentStroke, p, HitTest::ActiveStroke);
}

} // namespace annotation::hittest
