// SPDX-License-Identifier: GPL-3.0-or-later
#include "annotation/logic/StrokeCoverage.h"

#include "annotation/logic/StrokeEdit.h"
#include "annotation/logic/StrokeGeometry.h"
#include "annotation/logic/StrokeHitTest.h"

#include <QPolygonF>

#include <algorithm>
#include <cmath>

namespace annotation {

namespace {

namespace st = stroketype;
namespace g = geometry;
namespace h = hittest;

// The skirt every thin outline is stroked with a second time.
constexpr double kSkirtWidth = 7.0;
// A pencil path wider than this has no skirt.
constexpr int kThinPencil = 6;
// Handles are 10-point circles.
constexpr double kHandleRadius = 5.0;

QPointF p1Of(const Stroke& s)
{
    return {s.X1.value_or(0), s.Y1.value_or(0)};
}

QPointF p2Of(const Stroke& s)
{
    return {s.X2.value_or(0), s.Y2.value_or(0)};
}

double distanceToRectOutline(QPointF p, const QRectF& r)
{
    const double dx = std::max({r.left() - p.x(), 0.0, p.x() - r.right()});
    const double dy = std::max({r.top() - p.y(), 0.0, p.y() - r.bottom()});
    if (dx > 0 || dy > 0)
        return std::hypot(dx, dy);
    return std::min({p.x() - r.left(), r.right() - p.x(), p.y() - r.top(), r.bottom() - p.y()});
}

double distanceToPath(QPointF p, const std::vector<QPointF>& points)
{
    if (points.size() == 1)
        return h::distanceBetweenPoint(p, points.front());
    double nearest = INFINITY;
    for (std::size_t i = 1; i < points.size(); ++i)
        nearest = std::min(nearest, h::distanceToSegment(p, points[i - 1], points[i]));
    return nearest;
}

bool arrowCovers(const Stroke& s, QPointF p)
{
    if (s.normalTypeOfArrow == QLatin1String("1")) {
        const g::StrokedArrow arrow = g::strokedArrow(p1Of(s), p2Of(s), s.size);
        const QPolygonF head{arrow.head[0], arrow.head[1], arrow.head[2]};
        return h::distanceToSegment(p, arrow.tail, arrow.shaftEnd) <= s.size / 2 ||
               head.containsPoint(p, Qt::OddEvenFill);
    }
    return g::taperedArrow(p1Of(s), p2Of(s), static_cast<int>(s.size))
        .containsPoint(p, Qt::OddEvenFill);
}

bool strokeCovers(const Stroke& s, QPointF p)
{
    const int width = static_cast<int>(s.size);
    const double outline = std::max<double>(width, kSkirtWidth) / 2;
    switch (s.type) {
    case st::Square: {
        const QRectF box = g::orderedRect(p1Of(s), p2Of(s));
        if (s.filledOfSquare)
            return h::pointInRect(p, box);
        return distanceToRectOutline(p, box) <= outline;
    }
    case st::Ellipse: {
        const QRectF box = g::orderedRect(p1Of(s), p2Of(s));
        if (s.filledOfEllipse)
            return h::insideEllipse(p.x() - box.center().x(), p.y() - box.center().y(),
                                    box.width() / 2, box.height() / 2);
        return h::distanceToEllipseOutline(p, box) <= outline;
    }
    case st::Line:
        return h::distanceToSegment(p, p1Of(s), p2Of(s)) <= outline;
    case st::Arrow:
        return arrowCovers(s, p);
    case st::PencilPen:
        if (s.allPoints.empty())
            return false;
        return distanceToPath(p, s.allPoints) <=
               (width <= kThinPencil ? outline : static_cast<double>(width) / 2);
    default:
        // Mosaic, highlight and text have layers and views of their own.
        return false;
    }
}

bool handlesCover(const Stroke& s, QPointF p)
{
    std::vector<QPointF> centres;
    if (s.type == st::Square || s.type == st::Ellipse) {
        const std::vector<QRectF> boxes =
            g::calculateAllNeededHandleSquareRects(g::orderedRect(p1Of(s), p2Of(s)), s.type);
        for (std::size_t i = 1; i <= 8; ++i)
            centres.push_back(boxes[i].center());
    } else if (s.type == st::Line || s.type == st::Arrow) {
        centres = {p1Of(s), p2Of(s)};
    } else if (s.type == st::PencilPen && !s.allPoints.empty()) {
        centres = {s.allPoints.front(), s.allPoints.back()};
    }
    return std::any_of(centres.begin(), centres.end(),
                       [p](QPointF c) { return h::distanceBetweenPoint(p, c) <= kHandleRadius; });
}

} // namespace

bool layerCoversPoint(const StrokeState& state, QPointF p, const QRectF& layerFrame)
{
    if (!h::pointInRect(p, layerFrame))
        return false;
    if (state.dicOfCurrentStroke) {
        const Stroke shown = edit::shownWhileEditing(*state.dicOfCurrentStroke, state.strokeState,
                                                     state.whichTrackingAreaOfMouseDown);
        // Before its first drag a new shape paints nothing.
        const bool painted = shown.type == st::PencilPen || shown.X2.has_value();
        if (painted && (strokeCovers(shown, p) || handlesCover(shown, p)))
            return true;
    }
    const std::vector<Stroke> strokes = state.currentStrokes(true);
    return std::any_of(strokes.begin(), strokes.end(),
                       [p](const Stroke& s) { return strokeCovers(s, p); });
}

} // namespace annotation
