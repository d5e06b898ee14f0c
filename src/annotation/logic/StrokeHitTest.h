// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "annotation/logic/StrokeState.h"

#include <QPointF>
#include <QRectF>

#include <optional>

// Which stroke lies under a point. Three tests ask it, each with its own
// tolerances: the press, which grabs a stroke; the hover of the crop
// border, which shows the open hand; and the active stroke's own, which
// the wheel and the tool bar ask. The hover is the more generous for thin
// strokes and the stingier for filled ones, so a click can find no stroke
// under the open hand, or the reverse. Points are overlay-local, y up.
namespace annotation::hittest {

// Euclidean distance.
[[nodiscard]] double distanceBetweenPoint(QPointF a, QPointF b);
// The direction from q to p: atan2(p.y - q.y, p.x - q.x), in radians.
[[nodiscard]] double angleBetweenPoint(QPointF p, QPointF q);
// Whether segment AB crosses an edge of the axis-aligned square of half
// side r around C. A segment wholly inside the square crosses none; for a
// level or upright segment two edges give infinities and simply fail.
[[nodiscard]] bool crossWithCyclePoint(QPointF a, QPointF b, QPointF c, double r);
// The point of `box` nearest to p in each axis.
[[nodiscard]] QPointF getPointFrom(QPointF p, const QRectF& box);
// x in [minX, maxX), y in [minY, maxY); a rectangle of negative size holds
// nothing.
[[nodiscard]] bool pointInRect(QPointF p, const QRectF& r);
// Inside `r` grown by t but not inside `r` shrunk by t. A rectangle
// narrower than 2t has no inside left, so all of it is band.
[[nodiscard]] bool inRectBand(QPointF p, const QRectF& r, double t);
// u²/a² + v²/b² against 1 for an ellipse of semi-axes a, b centred at the
// origin, in floats; a zero axis gives no number and every test fails.
[[nodiscard]] bool insideEllipse(double u, double v, double a, double b);
[[nodiscard]] bool outsideEllipse(double u, double v, double a, double b);
// Distances to the painted outlines, for the pointer's catch area.
[[nodiscard]] double distanceToSegment(QPointF p, QPointF a, QPointF b);
[[nodiscard]] double distanceToEllipseOutline(QPointF p, const QRectF& box);

// The arrow's body: the stroked kind ("1") or the tapered dart ("0").
[[nodiscard]] bool onStrokedArrow(const Stroke& arrow, QPointF p);
[[nodiscard]] bool onTaperedArrow(const Stroke& arrow, QPointF p);

enum class HitTest
{
    Press,        // a press on the open hand grabs what this finds
    Hover,        // the crop border shows the open hand over it
    ActiveStroke, // the active stroke alone, for the wheel and the tool bar
};

// The tolerances of one test for a stroke of `size` (read as an integer).
struct Tolerances
{
    int band = 0;                // half width of a box's or an ellipse's catch band
    int lineRadius = 0;          // half side of the square a line must cross
    int pencilRadius = 0;        // the same for each leg of a pencil path
    bool filledInterior = false; // a filled shape catches inside, exactly
    bool filledGrown = false;    // a filled shape catches inside, grown by the band
};
[[nodiscard]] Tolerances tolerancesOf(HitTest test, int size);

// Whether p lies on `stroke` for `test`. Text and notes are caught by their
// views' boxes, which they do not have yet: they never hit.
[[nodiscard]] bool strokeContains(const Stroke& stroke, QPointF p, HitTest test);

// The visible strokes newest snapshot first, each once: the first hit wins,
// which is the topmost as painted (the stroke changed last). Undone
// snapshots are not there to be hit.
[[nodiscard]] std::optional<Stroke> strokeUnderMouse(const StrokeState& state, QPointF p,
                                                     HitTest test = HitTest::Press);

// The press: on a hit the stroke becomes the active one, as a fresh copy of
// its snapshot. On a miss nothing changes.
bool getdicOfCurrentStrokeUnderMouse(StrokeState& state, QPointF p);

// Whether p lies on the active stroke.
[[nodiscard]] bool isOnActiveStroke(const StrokeState& state, QPointF p);

} // namespace annotation::hittest
