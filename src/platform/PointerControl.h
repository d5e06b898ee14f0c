// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointF>

namespace platform {

class PointerControl
{
public:
    virtual ~PointerControl() = default;
    // Pointer position in global top-left points.
    [[nodiscard]] virtual QPointF position() = 0;
    virtual void warpTo(QPointF globalTopLeft) = 0;
};

} // namespace platform
