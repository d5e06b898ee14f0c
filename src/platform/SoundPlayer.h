// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace platform {

// The shutter sound. Silent where no sound server runs.
class SoundPlayer
{
public:
    virtual ~SoundPlayer() = default;
    virtual void playShutter() = 0;
};

} // namespace platform
