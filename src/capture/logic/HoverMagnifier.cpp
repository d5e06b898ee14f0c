// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/logic/HoverMagnifier.h"

#include <cmath>

namespace capture {

QRectF HoverMagnifier::square(QPointF pointer, QSizeF screenSize)
{
    const double x = std::trunc(pointer.x());
    const double y = std::trunc(pointer.y());
    double left = x - kSide - kGap;
    if (left < 0.0)
        left = x + kGap;
    double bottom = y + kGap;
    if (y + kSide + kGap > screenSize.height())
        bottom = y - kSide - kGap;
    return {left, bottom, kSide, kSide};
}

QRectF HoverMagnifier::cross(QPointF pointer)
{
    const double x = std::trunc(pointer.x());
    const double y = std::trunc(pointer.y());
    return {x - kCrossSide / 2.0, y - kCrossSide / 2.0, kCrossSide, kCrossSide};
}

} // namespace capture
