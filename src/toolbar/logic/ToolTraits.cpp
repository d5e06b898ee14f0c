// SPDX-License-Identifier: GPL-3.0-or-later
#include "toolbar/logic/ToolTraits.h"

namespace toolbar {

overlay::StrokeTraits strokeTraitsOf(const ToolEntry& entry)
{
    overlay::StrokeTraits traits;
    traits.holdsText = entry.can(can::TypeText);
    traits.paintsSparingly = entry.can(can::PaintSparingly);
    traits.repaintsOnRelease = entry.can(can::RepaintOnRelease);
    return traits;
}

} // namespace toolbar
