// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// The overlay's events live in the overlay library, so that the mark-up
// can take them without depending on the capture.
#include "overlay/logic/ClipEvents.h"

namespace capture {

using overlay::ClipKeyEvent;
using overlay::ClipMouseEvent;
using overlay::significantModifiers;

} // namespace capture
