// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPainterPath>
#include <QPointF>
#include <QRectF>

namespace core {

// Arcs in a y-up plane (the y axis points up, angles in degrees turn
// counter-clockwise from the x axis), as the drawing rules are written.
// QPainterPath::arcTo turns the other way in such a plane, so it is only
// used through this helper. Like the rules' arcs, an arc on a path that
// already has a point first draws a line to the arc's start; on an empty
// path it starts there.
void appendArc(QPainterPath& path, QPointF centre, qreal radius, qreal startDegrees,
               qreal endDegrees, bool clockwise);

// The point at `degrees` on a circle in the y-up plane.
[[nodiscard]] QPointF pointOnCircle(QPointF centre, qreal radius, qreal degrees);

// Appends the rounded outline of `rect` (y-up: minY is the bottom edge)
// with top radius `top` and bottom radius `bottom`: five clockwise arcs,
// starting at -50 degrees in the bottom-right corner, then closes it.
QPainterPath& makeBubble(QPainterPath& path, const QRectF& rect, qreal top, qreal bottom);

} // namespace core
