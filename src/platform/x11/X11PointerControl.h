// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/PointerControl.h"

namespace platform::x11 {

// The pointer through Qt's own X connection: QCursor reads and warps it in
// Qt's points, which is what the logic uses (less the primary's origin).
class X11PointerControl final : public PointerControl
{
public:
    QPointF position() override;
    void warpTo(QPointF globalTopLeft) override;
};

} // namespace platform::x11
