// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/logic/DragMagnifier.h"

#include <cmath>

namespace capture {
namespace {

// The magnifier's side plus the gap: from the mouse or from the selection's
// side to the magnifier's far origin.
constexpr double Step = DragMagnifier::Side + DragMagnifier::Gap;

// Along one axis: before the selection's start, or inside it when that
// would leave the screen.
double before(double start)
{
    const double p = std::trunc(start - Step);
    return p < 0 ? start + DragMagnifier::Gap : p;
}

// Along one axis: after the selection's end, or inside it when that would
// pass the screen's extent.
double after(double end, double extent)
{
    const double p = end + DragMagnifier::Gap;
    return p + DragMagnifier::Side > extent ? end - Step : p;
}

} // namespace

QPointF DragMagnifier::positionOfDragging(QPointF mouse, QSizeF screen, const QRectF& r, int n,
                                          bool onlyClipCurrentWindow)
{
    const double x = std::trunc(mouse.x());
    const double y = std::trunc(mouse.y());
    const double W = std::trunc(screen.width());
    const double H = std::trunc(screen.height());
    const double A = x - Step;
    const double B = y + Gap;
    const double right = r.x() + r.width();
    const double top = r.y() + r.height();

    if (onlyClipCurrentWindow)
        return {A, B};
    // An edge handle: keep to the far side of the edge that moves.
    if (n == 2 || n == 6)
        return {A, r.y() > y - 20 ? before(r.y()) : after(top, H)};
    if (n == 4 || n == 8)
        return {r.x() > x - 20 ? before(r.x()) : after(right, W), B};
    if (n != 0 && n % 2 == 0)
        return {A, B};

    // A corner or a region: keep off the mouse, but stay on the screen.
    if (y + Step > H) {
        double px = 0;
        if (r.x() > x && A >= 0)
            px = A;
        else if (r.x() <= x && x + Step <= W)
            px = x + Gap;
        else
            px = r.x() > x ? r.x() + Gap : right - Step;
        return {px, top - Step};
    }
    if (A < 0) {
        double py = 0;
        if (r.y() > y && r.y() - Step >= 0)
            py = r.y() - Step;
        else
            py = r.y() > y ? r.y() + Gap : top - Step;
        return {r.x() + Gap, py};
    }
    if (x - Gap > r.x() + r.width() / 2 && r.y() + r.height() / 2 > B) {
        if (right + Gap + Side <= W)
            return {right + Gap, r.y() + Gap};
        return {right - Step, r.y() - Step >= 0 ? r.y() - Step : r.y() + Gap};
    }
    return {A, B};
}

} // namespace capture
