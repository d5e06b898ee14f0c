// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointF>

namespace overlay {

// What the pointer is over, set by the code that chooses the cursor (the
// crop border, the tools) and read back by the code that acts on a press, a
// move or a wheel turn. The cursor
// shown is only the picture of this role.
enum class PointerRole
{
    Arrow,
    TextIBeam,       // over a text box
    OverStroke,      // open hand over a stroke
    ToolCrosshair,   // the drawing tool's own cross hair: free space in the region
    Resize,          // on a handle of the selection or a stroke
    ResizeAlternate, // the second family of resize and move cursors
};

// The hot spot that stands for a role where rules compare hot spots (the
// tips compare the last one seen with the current one). The cross hair's
// 16.01 marks it as the tool's own.
[[nodiscard]] QPointF hotSpotOf(PointerRole role);

// True for both resize families.
[[nodiscard]] constexpr bool isResizeRole(PointerRole role)
{
    return role == PointerRole::Resize || role == PointerRole::ResizeAlternate;
}

} // namespace overlay
