// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "annotation/logic/StrokeState.h"

#include <QPointF>
#include <QRectF>

namespace annotation {

// Whether the stroke layer has painted pixels under p: what takes the
// pointer away from the overlay below it, as a transparent window would
// let the pointer through everywhere else. Counted as painted: each
// stroke with its invisible 7-point skirt (shapes, lines, thin pencil
// paths), an arrow's body, a filled shape's inside, and the active
// stroke's handles, as they show during a move or a resize. Nothing
// outside `layerFrame` (the selection, where the layer lies) is covered.
// Points are overlay-local, y up.
[[nodiscard]] bool layerCoversPoint(const StrokeState& state, QPointF p, const QRectF& layerFrame);

} // namespace annotation
