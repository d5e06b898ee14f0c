// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "annotation/logic/StrokeState.h"

#include <QImage>
#include <QPointF>
#include <QRectF>

#include <optional>
#include <vector>

class QPainter;

namespace annotation {

// Paints the stroke layer: shapes, lines, arrows and pencil paths of the
// history, oldest first, then the active stroke with its handles. The
// painter is set to the layer's y-up plane in points (see yUp()); strokes
// are drawn at their stored place less `origin`, the layer's overlay-local
// bottom-left corner.
class StrokePainter
{
public:
    StrokePainter(QPainter& painter, QPointF origin);

    // `currentFunction` is the tool of the stroke being drawn, if one is.
    void paintLayer(const StrokeState& state, std::optional<int> currentFunction);
    // The layer in two parts: the history's strokes as currentStrokes()
    // gives them, newest first; then the active stroke over them.
    void paintSettled(const std::vector<Stroke>& newestFirst);
    void paintActive(const StrokeState& state, std::optional<int> currentFunction);

    // A settled stroke of the history, without handles.
    void drawSettled(const Stroke& stroke);
    // The active stroke as it is being drawn, with its handles.
    void drawCurrent(const Stroke& stroke, StrokeGesture gesture,
                     std::optional<int> currentFunction);

    // Sets `painter` to a y-up plane of `height` points, with antialiasing.
    static void yUp(QPainter& painter, double height);

    // The layer alone as a picture: `area` (overlay-local, y up) at `scale`
    // pixels per point, transparent where there is no stroke.
    [[nodiscard]] static QImage renderLayer(const StrokeState& state, const QRectF& area,
                                            double scale);

private:
    [[nodiscard]] QPointF view(double x, double y) const;
    // The two points a stroke is drawn between, in view coordinates: a
    // shape's corners, a line's or an arrow's tail and tip.
    struct Ends
    {
        QPointF first;
        QPointF second;
    };
    [[nodiscard]] Ends endsOf(const Stroke& s) const;
    // The box of a square or an ellipse; `ordered` for a live drag, which
    // may have gone any way.
    [[nodiscard]] QRectF boxOf(const Stroke& s, bool ordered) const;
    void drawSquare(const Stroke& s, bool ordered, bool withHandles);
    void drawEllipse(const Stroke& s, bool ordered, bool withHandles);
    void drawLine(const Stroke& s, bool withHandles);
    void drawArrow(const Stroke& s, QPointF p1, QPointF p2);
    void drawPencilPen(const Stroke& s, bool withHandles);
    void drawSkirt(const QPainterPath& path);
    void drawBoxHandles(const QRectF& rect, const Stroke& s);
    void drawHandle(const QRectF& box, const QColor& outer);

    QPainter& m_painter;
    QPointF m_origin;
};

} // namespace annotation
