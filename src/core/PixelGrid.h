// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPainter>
#include <QRectF>

#include <cmath>

namespace core {

// Rounds a rectangle's edges to the device's pixel grid so that fills stay
// sharp on every scale.
[[nodiscard]] inline QRectF snappedToPixels(const QRectF& r, double ratio)
{
    const auto snap = [ratio](double v) { return std::round(v * ratio) / ratio; };
    const double left = snap(r.left());
    const double top = snap(r.top());
    return {left, top, snap(r.right()) - left, snap(r.bottom()) - top};
}

// The pixel ratio a painter draws at: its device transform holds it whether
// the target is a window's backing store or a picture rendered at some scale.
[[nodiscard]] inline double devicePixelRatioOf(const QPainter& painter)
{
    const double scale = painter.deviceTransform().m11();
    return scale > 0.0 ? scale : 1.0;
}

} // namespace core
