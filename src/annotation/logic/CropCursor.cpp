// SPDX-License-Identifier: GPL-3.0-or-later
#include "annotation/logic/CropCursor.h"

namespace annotation {

overlay::PointerRole pointerRoleOf(CropCursor cursor)
{
    using overlay::PointerRole;
    switch (cursor) {
    case CropCursor::OpenHand:
    case CropCursor::ClosedHand:
        return PointerRole::OverStroke;
    case CropCursor::ToolCrosshair:
        return PointerRole::ToolCrosshair;
    case CropCursor::ResizeDiagonalDown:
    case CropCursor::ResizeDiagonalUp:
    case CropCursor::Move:
        return PointerRole::ResizeAlternate;
    case CropCursor::ResizeVertical:
    case CropCursor::ResizeHorizontal:
        return PointerRole::Resize;
    case CropCursor::Arrow:
        break;
    }
    return PointerRole::Arrow;
}

std::optional<CropCursor> resizeCursorOf(int zone)
{
    switch (zone) {
    case 3:
    case 7:
        return CropCursor::ResizeDiagonalDown;
    case 2:
    case 6:
        return CropCursor::ResizeVertical;
    case 1:
    case 5:
        return CropCursor::ResizeDiagonalUp;
    case 4:
    case 8:
        return CropCursor::ResizeHorizontal;
    default:
        return std::nullopt;
    }
}

} // namespace annotation
