// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/SoundPlayer.h"

struct ca_context;

namespace platform::linux_desktop {

// The "camera-shutter" event of the desktop's sound theme through
// libcanberra. Silent, without complaint, where no sound server runs.
class CanberraSoundPlayer final : public SoundPlayer
{
public:
    CanberraSoundPlayer();
    ~CanberraSoundPlayer() override;
    CanberraSoundPlayer(const CanberraSoundPlayer&) = delete;
    CanberraSoundPlayer& operator=(const CanberraSoundPlayer&) = delete;

    void playShutter() override;

private:
    ca_context* m_context = nullptr;
};

} // namespace platform::linux_desktop
