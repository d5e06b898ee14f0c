// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/CanberraSoundPlayer.h"

#include <canberra.h>

namespace platform::linux_desktop {

CanberraSoundPlayer::CanberraSoundPlayer()
{
    if (ca_context_create(&m_context) != CA_SUCCESS)
        m_context = nullptr;
}

CanberraSoundPlayer::~CanberraSoundPlayer()
{
    if (m_context != nullptr)
        ca_context_destroy(m_context);
}

void CanberraSoundPlayer::playShutter()
{
    if (m_context == nullptr)
        return;
    ca_context_play(m_context, 0, CA_PROP_EVENT_ID, "camera-shutter", CA_PROP_EVENT_DESCRIPTION,
                    "Screenshot taken", nullptr);
}

} // namespace platform::linux_desktop
