// SPDX-License-Identifier: GPL-3.0-or-later
#include "annotation/render/StrokePainter.h"

#include "annotation/logic/StrokeEdit.h"
#include "annotation/logic/StrokeGeometry.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace annotation {

namespace {

namespace st = stroketype;
namespace g = geometry;

constexpr double kRoundRadius = 8.0;
// The invisible skirt widens a thin stroke's pixels for the pointer.
constexpr double kSkirtWidth = 7.0;
constexpr float kSkirtAlpha = 0.01f;
// The pencil's skirt only for paths this thin or thinner.
constexpr int kThinPencil = 6;

QPen strokePen(const QColor& colour, double width, Qt::PenCapStyle cap = Qt::FlatCap,
               Qt::PenJoinStyle join = Qt::MiterJoin)
{
    QPen pen(colour, width, Qt::SolidLine, cap, join);
    // Keeps joins of a wide stroke whole, as a path stroker of the drawing
    // rules does.
    pen.setMiterLimit(10);
    return pen;
}

int widthOf(const Stroke& s)
{
    return static_cast<int>(s.size); // read as an integer
}

// Arcs appended to a path start with a line to the arc's first point, and
// where that point is the current one up to rounding, the line is a sliver
// whose direction is noise; a mitred join on it spikes far out of the
// shape. Such slivers are dropped, and an end that meets its start up to
// rounding is made to meet it exactly, so the outline closes with a join.
QPainterPath withoutSlivers(const QPainterPath& path)
{
    constexpr double kSliver = 1e-3; // points
    const auto near = [](QPointF a, QPointF b) {
        return std::abs(a.x() - b.x()) < kSliver && std::abs(a.y() - b.y()) < kSliver;
    };
    QPainterPath clean;
    clean.setFillRule(path.fillRule());
    QPointF start;
    QPointF current;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element e = path.elementAt(i);
        switch (e.type) {
        case QPainterPath::MoveToElement:
            start = current = e;
            clean.moveTo(e);
            break;
        case QPainterPath::LineToElement:
            if (!near(e, current)) {
                current = near(e, start) ? start : QPointF(e);
                clean.lineTo(current);
            }
            break;
        case QPainterPath::CurveToElement: {
            const QPointF end = path.elementAt(i + 2);
            current = near(end, start) ? start : end;
            clean.cubicTo(e, path.elementAt(i + 1), current);
            i += 2;
            break;
        }
        case QPainterPath::CurveToDataElement:
            break; // read with its curve
        }
    }
    return clean;
}

} // namespace

StrokePainter::StrokePainter(QPainter& painter, QPointF origin)
    : m_painter(painter)
    , m_origin(origin)
{}

void StrokePainter::yUp(QPainter& painter, double height)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setTransform(QTransform(1, 0, 0, -1, 0, height), true);
}

QImage StrokePainter::renderLayer(const StrokeState& state, const QRectF& area, double scale)
{
    QImage image(qRound(area.width() * scale), qRound(area.height() * scale),
                 QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return image;
    image.fill(Qt::transparent);
    image.setDevicePixelRatio(scale);
    QPainter painter(&image);
    yUp(painter, area.height());
    StrokePainter(painter, area.topLeft()).paintLayer(state, std::nullopt);
    return image;
}

QPointF StrokePainter::view(double x, double y) const
{
    return QPointF(x - m_origin.x(), y - m_origin.y());
}

StrokePainter::Ends StrokePainter::endsOf(const Stroke& s) const
{
    return {view(s.X1.value_or(0), s.Y1.value_or(0)), view(s.X2.value_or(0), s.Y2.value_or(0))};
}

QRectF StrokePainter::boxOf(const Stroke& s, bool ordered) const
{
    const auto [a, b] = endsOf(s);
    // A settled shape keeps the order its release gave it.
    return ordered ? g::orderedRect(a, b) : QRectF(a, b);
}

void StrokePainter::paintLayer(const StrokeState& state, std::optional<int> currentFunction)
{
    paintSettled(state.currentStrokes(true));
    paintActive(state, currentFunction);
}

void StrokePainter::paintSettled(const std::vector<Stroke>& newestFirst)
{
    // Painted oldest first, so a stroke changed last lies on top.
    for (auto it = newestFirst.rbegin(); it != newestFirst.rend(); ++it)
        drawSettled(*it);
}

void StrokePainter::paintActive(const StrokeState& state, std::optional<int> currentFunction)
{
    // A moved or resized stroke shows where the drag has it; its stored
    // place changes at the release.
    if (state.dicOfCurrentStroke)
        drawCurrent(edit::shownWhileEditing(*state.dicOfCurrentStroke, state.strokeState,
                                            state.whichTrackingAreaOfMouseDown),
                    state.strokeState, currentFunction);
}

void StrokePainter::drawSettled(const Stroke& s)
{
    switch (s.type) {
    case st::Square:
        drawSquare(s, false, false);
        break;
    case st::Ellipse:
        drawEllipse(s, false, false);
        break;
    case st::Line:
    case st::Arrow:
        drawLine(s, false);
        break;
    case st::PencilPen:
        drawPencilPen(s, false);
        break;
    default:
        // Mosaic and highlight have layers of their own; text comes with
        // its views.
        break;
    }
}

void StrokePainter::drawCurrent(const Stroke& s, StrokeGesture gesture,
                                std::optional<int> currentFunction)
{
    // A pencil path has no handles to resize it by.
    if (gesture == StrokeGesture::Resize && s.type == st::PencilPen)
        return;
    switch (s.type) {
    case st::Square:
        drawSquare(s, true, true);
        break;
    case st::Ellipse:
        drawEllipse(s, true, true);
        break;
    case st::Line:
        drawLine(s, true);
        break;
    case st::Arrow:
        // While an arrow is drawn, only as the arrow tool's own stroke.
        if (gesture != StrokeGesture::Draw || currentFunction == st::Arrow)
            drawLine(s, true);
        break;
    case st::PencilPen:
        drawPencilPen(s, true);
        break;
    default:
        break;
    }
}

void StrokePainter::drawSkirt(const QPainterPath& path)
{
    QColor clear(Qt::transparent);
    clear.setAlphaF(kSkirtAlpha);
    m_painter.strokePath(path, strokePen(clear, kSkirtWidth));
}

void StrokePainter::drawHandle(const QRectF& box, const QColor& outer)
{
    m_painter.setPen(Qt::NoPen);
    m_painter.setBrush(outer);
    m_painter.drawEllipse(box);
    QColor white(Qt::white);
    white.setAlphaF(0.95f);
    m_painter.setBrush(white);
    m_painter.drawEllipse(box.adjusted(1, 1, -1, -1));
    m_painter.setBrush(Qt::NoBrush);
}

void StrokePainter::drawBoxHandles(const QRectF& rect, const Stroke& s)
{
    QColor solid = s.color;
    solid.setAlphaF(1.0f);
    const std::vector<QRectF> handles = g::calculateAllNeededHandleSquareRects(rect, s.type);
    for (int i = 1; i <= 8; ++i)
        drawHandle(handles[static_cast<std::size_t>(i)], solid);
}

void StrokePainter::drawSquare(const Stroke& s, bool ordered, bool withHandles)
{
    // The active stroke has no second corner before its first drag.
    if (withHandles && !s.X2)
        return;
    const QRectF rect = boxOf(s, ordered);
    const double r = s.enableRoundOfSquare ? kRoundRadius : 0;
    const QPainterPath path = withoutSlivers(g::makeBubble(rect, r, r));
    const QColor colour = g::paintColour(s);
    if (s.filledOfSquare) {
        m_painter.fillPath(path, colour);
    } else {
        m_painter.strokePath(path, strokePen(colour, widthOf(s)));
        drawSkirt(path);
    }
    if (withHandles)
        drawBoxHandles(rect, s);
}

void StrokePainter::drawEllipse(const Stroke& s, bool ordered, bool withHandles)
{
    if (withHandles && !s.X2)
        return;
    const QRectF rect = boxOf(s, ordered);
    QPainterPath path;
    path.addEllipse(rect);
    const QColor colour = g::paintColour(s);
    if (s.filledOfEllipse) {
        m_painter.fillPath(path, colour);
    } else {
        m_painter.strokePath(path, strokePen(colour, widthOf(s)));
        drawSkirt(path);
    }
    if (withHandles)
        drawBoxHandles(rect, s);
}

void StrokePainter::drawLine(const Stroke& s, bool withHandles)
{
    if (withHandles && !s.X2)
        return;
    const auto [p1, p2] = endsOf(s);
    if (s.type == st::Arrow) {
        drawArrow(s, p1, p2);
    } else {
        QPainterPath path(p1);
        path.lineTo(p2);
        m_painter.strokePath(path,
                             strokePen(g::paintColour(s), widthOf(s), Qt::RoundCap, Qt::RoundJoin));
        drawSkirt(path);
    }
    if (withHandles) {
        QColor solid = s.color;
        solid.setAlphaF(1.0f);
        drawHandle(g::endHandle(p1), solid);
        drawHandle(g::endHandle(p2), solid);
    }
}

void StrokePainter::drawArrow(const Stroke& s, QPointF p1, QPointF p2)
{
    const QColor colour = g::paintColour(s);
    if (s.normalTypeOfArrow == QLatin1String("1")) {
        const g::StrokedArrow arrow = g::strokedArrow(p1, p2, s.size);
        QPainterPath shaft(arrow.tail);
        shaft.lineTo(arrow.shaftEnd);
        m_painter.strokePath(shaft, strokePen(colour, s.size));
        QPainterPath head(arrow.head[0]);
        head.lineTo(arrow.head[1]);
        head.lineTo(arrow.head[2]);
        m_painter.fillPath(head, colour);
        return;
    }
    QPainterPath dart;
    dart.addPolygon(g::taperedArrow(p1, p2, widthOf(s)));
    dart.closeSubpath();
    m_painter.fillPath(dart, colour);
}

void StrokePainter::drawPencilPen(const Stroke& s, bool withHandles)
{
    if (s.allPoints.empty())
        return;
    QPainterPath path(view(s.allPoints.front().x(), s.allPoints.front().y()));
    for (std::size_t i = 1; i < s.allPoints.size(); ++i)
        path.lineTo(view(s.allPoints[i].x(), s.allPoints[i].y()));
    m_painter.strokePath(path,
                         strokePen(g::paintColour(s), widthOf(s), Qt::RoundCap, Qt::RoundJoin));
    if (widthOf(s) <= kThinPencil)
        drawSkirt(path);
    if (withHandles) {
        QColor outer = s.color;
        outer.setAlphaF(0.85f);
        const QPointF first = view(s.allPoints.front().x(), s.allPoints.front().y());
        const QPointF last = view(s.allPoints.back().x(), s.allPoints.back().y());
        drawHandle(g::endHandle(first), outer);
        drawHandle(g::endHandle(last), outer);
    }
}

} // namespace annotation
