// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "overlay/logic/AnnotationInput.h"
#include "toolbar/logic/ToolRegistry.h"

namespace toolbar {

// How the overlay is to treat a stroke made with `entry`, as the mark-up
// answers AnnotationInput::currentStroke(): read from what the tool can do.
[[nodiscard]] overlay::StrokeTraits strokeTraitsOf(const ToolEntry& entry);

} // namespace toolbar
