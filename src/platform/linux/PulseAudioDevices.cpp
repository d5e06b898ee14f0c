// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/PulseAudioDevices.h"

#include <pulse/simple.h>

#include <memory>

namespace platform::linux_desktop {

bool PulseAudioDevices::microphoneAvailable()
{
    const pa_sample_spec spec{PA_SAMPLE_S16LE, 44100, 1};
    int error = 0;
    std::unique_ptr<pa_simple, decltype(&pa_simple_free)> stream(
        pa_simple_new(nullptr, "Kelvo", PA_STREAM_RECORD, nullptr, "microphone check", &spec,
                      nullptr, nullptr, &error),
        &pa_simple_free);
    return stream != nullptr;
}

} // namespace platform::linux_desktop
