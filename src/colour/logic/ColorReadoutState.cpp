// SPDX-License-Identifier: GPL-3.0-or-later
#include "colour/logic/ColorReadoutState.h"

#include "colour/logic/TextFormat.h"

namespace colour {

void ColorReadoutState::mouseMoved(QPointF locationInWindow, double screenHeight)
{
    mouseMoving = true;
    mousePoint =
        formatWhole(locationInWindow.x()) + u',' + formatWhole(screenHeight - locationInWindow.y());
}

const ColorNamer& ColorReadoutState::colorNamer()
{
    if (!m_colorNamer)
        m_colorNamer = std::make_unique<ColorNamer>();
    return *m_colorNamer;
}

} // namespace colour
