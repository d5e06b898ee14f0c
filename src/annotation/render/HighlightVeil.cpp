// SPDX-License-Identifier: GPL-3.0-or-later
#include "annotation/render/HighlightVeil.h"

#include "annotation/logic/StrokeGeometry.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace annotation {

namespace {

namespace st = stroketype;

bool isHighlight(const Stroke& s)
{
    return s.type == st::Highlight;
}

QPainterPath holeShape(const Stroke& s, const QRectF& rect)
{
    QPainterPath path;
    if (s.squareOfHighlight.value_or(1) != 0)
        path.addRect(rect);
    else
        path.addEllipse(rect);
    return path;
}

// Writes transparency into `shape`: the veil has a hole there.
void clearInside(QPainter& painter, const QPainterPath& shape)
{
    painter.save();
    painter.setCompositionMode(QPainter::CompositionMode_Clear);
    painter.fillPath(shape, Qt::transparent);
    painter.restore();
}

void drawHandles(QPainter& painter, const QRectF& rect)
{
    const std::vector<QRectF> handles =
        geometry::calculateAllNeededHandleSquareRects(rect, st::Highlight);
    painter.setPen(Qt::NoPen);
    for (int i = 1; i <= 8; ++i) {
        const QRectF& box = handles[static_cast<std::size_t>(i)];
        painter.setBrush(Qt::black);
        painter.drawEllipse(box);
        painter.setBrush(Qt::white);
        painter.drawEllipse(box.adjusted(1, 1, -1, -1));
    }
    painter.setBrush(Qt::NoBrush);
}

// The active highlight: its handles, the hole that erases their inner
// halves, then the handles again inside the hole.
void drawCurrentHighlightStroke(QPainter& painter, const Stroke& s, QPointF origin)
{
    if (!s.Rect)
        return;
    const QRectF rect = s.Rect->normalized().translated(-origin);
    const bool sized = rect.width() != 0;
    if (sized)
        drawHandles(painter, rect);
    clearInside(painter, holeShape(s, rect));
    if (sized) {
        painter.save();
        painter.setClipPath(holeShape(s, rect));
        drawHandles(painter, rect);
        painter.restore();
    }
}

void drawAllHighlight(QPainter& painter, const StrokeState& state, QPointF origin)
{
    // Each hole stands alone; their order does not matter.
    for (const Stroke& s : state.currentStrokes(true)) {
        if (!isHighlight(s) || !s.X1 || !s.Y1 || !s.X2 || !s.Y2)
            continue;
        const QRectF rect(*s.X1 - origin.x(), *s.Y1 - origin.y(), *s.X2 - *s.X1, *s.Y2 - *s.Y1);
        clearInside(painter, holeShape(s, rect));
    }
}

} // namespace

bool paintHighlightVeil(QPainter& painter, const StrokeState& state, const VeilScene& scene)
{
    const bool active = state.dicOfCurrentStroke && isHighlight(*state.dicOfCurrentStroke);
    if (!active) {
        const std::vector<Stroke> visible = state.currentStrokes(false);
        if (std::none_of(visible.begin(), visible.end(), isHighlight))
            return false;
    }
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    QColor veil(Qt::black);
    veil.setAlphaF(static_cast<float>(scene.level * 0.025));
    const QPointF origin = scene.R.topLeft();
    const QRectF bounds(QPointF(0, 0), scene.R.size());
    if (!scene.onlyClipCurrentWindow && scene.windows.empty()) {
        const QRectF covered = bounds.adjusted(6, 6, -6, -6);
        if (scene.fillet)
            painter.fillPath(geometry::makeBubble(covered, 5, 5), veil);
        else
            painter.fillRect(covered, veil);
    } else if (scene.windows.size() == 1) {
        painter.fillPath(geometry::makeBubble(scene.windows.front().translated(-origin), 5, 5),
                         veil);
    } else {
        // Overlapping windows take the veil once.
        QPainterPath all;
        all.setFillRule(Qt::WindingFill);
        for (const QRectF& w : scene.windows)
            all.addRect(w.translated(-origin));
        painter.fillPath(all.simplified(), veil);
    }
    if (active)
        drawCurrentHighlightStroke(painter, *state.dicOfCurrentStroke, origin);
    drawAllHighlight(painter, state, origin);
    painter.restore();
    return true;
}

} // namespace annotation
