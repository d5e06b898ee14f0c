// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// The pointer's role lives in the overlay library, which the crop border and
// the mark-up share with the capture; the capture keeps reading it by its
// own names.
#include "overlay/logic/PointerRole.h"

namespace capture {

using overlay::hotSpotOf;
using overlay::isResizeRole;
using overlay::PointerRole;

} // namespace capture
