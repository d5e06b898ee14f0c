// SPDX-License-Identifier: GPL-3.0-or-later
#include "overlay/logic/PointerRole.h"

namespace overlay {

QPointF hotSpotOf(PointerRole role)
{
    switch (role) {
    case PointerRole::TextIBeam:
        return {4.0, 9.0};
    case PointerRole::OverStroke:
        return {16.0, 16.0};
    case PointerRole::ToolCrosshair:
        return {16.01, 16.01};
    case PointerRole::Resize:
        return {9.0, 9.0};
    case PointerRole::ResizeAlternate:
        return {12.0, 12.0};
    case PointerRole::Arrow:
        break;
    }
    return {0.0, 0.0};
}

} // namespace overlay
