// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/logic/ModifierDoubleTap.h"

#include "overlay/logic/ClipEvents.h"

namespace capture {

Qt::KeyboardModifiers heldAfter(int key, bool pressed, Qt::KeyboardModifiers reported)
{
    Qt::KeyboardModifier flag = Qt::NoModifier;
    switch (key) {
    case Qt::Key_Shift:
        flag = Qt::ShiftModifier;
        break;
    case Qt::Key_Control:
        flag = Qt::ControlModifier;
        break;
    case Qt::Key_Alt:
        flag = Qt::AltModifier;
        break;
    case Qt::Key_Meta:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
        flag = Qt::MetaModifier;
        break;
    default:
        return reported;
    }
    reported.setFlag(flag, pressed);
    return reported;
}

ModifierDoubleTap::Tap* ModifierDoubleTap::tapFor(const QString& chosen, Qt::KeyboardModifier* flag)
{
    if (chosen == QLatin1String("Command")) {
        *flag = Qt::ControlModifier;
        return &m_cmd;
    }
    if (chosen == QLatin1String("Option")) {
        *flag = Qt::AltModifier;
        return &m_opt;
    }
    if (chosen == QLatin1String("Control")) {
        *flag = Qt::MetaModifier;
        return &m_ctr;
    }
    return nullptr;
}

bool ModifierDoubleTap::flagsChanged(Qt::KeyboardModifiers held, const QString& chosen,
                                     double milliseconds)
{
    Qt::KeyboardModifier flag = Qt::NoModifier;
    Tap* tap = tapFor(chosen, &flag);
    if (tap == nullptr)
        return false;
    const Qt::KeyboardModifiers mods = overlay::significantModifiers(held);
    if (mods != Qt::NoModifier) {
        tap->down = mods == flag;
        return false;
    }
    if (!tap->down)
        return false;
    // Every release alone counts from now, so a third quick tap would
    // complete another pair.
    const bool twice = tap->lastRelease && milliseconds - *tap->lastRelease < kWindowMs;
    tap->lastRelease = milliseconds;
    tap->down = false;
    return twice;
}

void ModifierDoubleTap::keyDown()
{
    m_cmd.down = false;
    m_opt.down = false;
    m_ctr.down = false;
}

} // namespace capture
