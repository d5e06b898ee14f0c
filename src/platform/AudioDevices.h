// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace platform {

class AudioDevices
{
public:
    virtual ~AudioDevices() = default;
    // A microphone exists and may be opened.
    [[nodiscard]] virtual bool microphoneAvailable() = 0;
};

} // namespace platform
