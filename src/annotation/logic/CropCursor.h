// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "overlay/logic/PointerRole.h"

#include <optional>

namespace annotation {

// The cursors the crop border and the stroke layer's handles choose. Each stands for a pointer
// role, which is what the rest of the capture reads back; the shape is only its picture.
enum class CropCursor
{
    Arrow,
    OpenHand,           // a press moves the selection or grabs a stroke
    ClosedHand,         // a move of the selection is under way
    ToolCrosshair,      // the drawing tool's own cross
    ResizeDiagonalDown, // handles 3 and 7: top-left to bottom-right
    ResizeDiagonalUp,   // handles 1 and 5: bottom-left to top-right
    ResizeVertical,     // handles 2 and 6
    ResizeHorizontal,   // handles 4 and 8
    Move,               // an end of a line or an arrow
};

// The diagonal cursors and the move cursor belong to the second resize
// family: a press under any of them holds a handle.
[[nodiscard]] overlay::PointerRole pointerRoleOf(CropCursor cursor);

// The resize cursor of a handle zone 1 to 8; nothing for any other number.
[[nodiscard]] std::optional<CropCursor> resizeCursorOf(int zone);

} // namespace annotation
