// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/logic/FinishRequest.h"

namespace capture {

void FinishRequest::save()
{
    if (!isPin())
        m_asked = FinishDestination::File;
    m_bySaveButton = true;
}

void FinishRequest::copy()
{
    if (!isPin())
        m_asked = FinishDestination::Clipboard;
}

void FinishRequest::pin()
{
    m_asked = FinishDestination::Pin;
    // The pin button goes through the save path, but the finish is no save.
    m_bySaveButton = false;
}

void FinishRequest::clear()
{
    m_asked.reset();
    m_bySaveButton = false;
}

void FinishRequest::forgetPin()
{
    if (isPin())
        m_asked.reset();
}

bool FinishRequest::shutterSounds(bool annotatedOnMap) const
{
    return !((annotatedOnMap || isPin()) && !m_bySaveButton);
}

} // namespace capture
