// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace capture {

// How far a multi-window pick has come in this capture.
enum class PickMode
{
    None,    // no pick: a press selects a window or starts a region
    Picking, // Shift went down over a window: clicks add and drop windows
    Fixed,   // Shift was let go with picks: they are the selection
};

} // namespace capture
