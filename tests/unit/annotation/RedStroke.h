// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "annotation/logic/Stroke.h"

#include <QPointF>

namespace annotation::test {

// A red stroke of `type` from a to b, the first of its list.
inline Stroke redStroke(int type, QPointF a, QPointF b, double size = 3)
{
    Stroke s;
    s.type = type;
    s.list = 1;
    s.color = Qt::red;
    s.size = size;
    s.X1 = a.x();
    s.Y1 = a.y();
    s.X2 = b.x();
    s.Y2 = b.y();
    return s;
}

} // namespace annotation::test
