// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/AudioDevices.h"

namespace platform::linux_desktop {

// The microphone is the sound server's default source: it is available when
// a recording stream on it can be opened.
class PulseAudioDevices final : public AudioDevices
{
public:
    bool microphoneAvailable() override;
};

} // namespace platform::linux_desktop
