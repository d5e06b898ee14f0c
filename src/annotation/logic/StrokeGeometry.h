// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "annotation/logic/Stroke.h"

#include <QColor>
#include <QPainterPath>
#include <QPointF>
#include <QPolygonF>
#include <QRectF>

#include <array>
#include <vector>

// The shapes of strokes as numbers, in a y-up plane (view coordinates: the
// stored values less the drawing view's origin). Painting only strokes and
// fills what these give.
namespace annotation::geometry {

// The rectangle spanned by two corners, whichever way the drag went.
[[nodiscard]] QRectF orderedRect(QPointF a, QPointF b);

// Index = handle number. 0 is an empty placeholder; 1 to 8 are 10-point
// squares on the corners and edge middles, counter-clockwise from the
// bottom left. A highlight (`activeType` 8) also gets the bands between
// them, 9 to 17, where the patch can be grabbed (13 repeats 12).
[[nodiscard]] std::vector<QRectF> calculateAllNeededHandleSquareRects(const QRectF& r,
                                                                      int activeType);

// The 10 by 10 handle on a line's or a pencil path's end.
[[nodiscard]] QRectF endHandle(QPointF p);

// A rounded rectangle: right corners of radius `right`, left ones of
// `left`; a side shorter than 20 makes both half of it (the width wins).
// Starts at -50 degrees in the bottom-right corner.
[[nodiscard]] QPainterPath makeBubble(const QRectF& rect, double right, double left);

// The stroked arrow ("normalTypeOfArrow" "1"): a shaft from the tail that
// stops short of the tip, and a filled head whose wings lie 29.2 degrees
// either side of the shaft, behind the tip.
struct StrokedArrow
{
    QPointF tail;
    QPointF shaftEnd;
    std::array<QPointF, 3> head; // tip, then the two wings
    int headLength = 0;
};
[[nodiscard]] StrokedArrow strokedArrow(QPointF tail, QPointF tip, double size);

// The tapered dart ("normalTypeOfArrow" "0"): seven corners from the tail's
// point to the tip and back. Its head keeps the same real size whatever
// the arrow's length.
[[nodiscard]] QPolygonF taperedArrow(QPointF tail, QPointF tip, int size);

// The colour a shape is painted in: "color" at "colorAlpha" (opaque when
// missing). An alpha of exactly 0 becomes 0.01 unless `keepZero`, so a
// settled stroke still catches the pointer.
[[nodiscard]] QColor paintColour(const Stroke& stroke, bool keepZero = false);

} // namespace annotation::geometry
