// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/logic/ScreenRecordingCheck.h"

#include "capture/logic/WindowRules.h"

namespace capture {

bool isScreenRecordingEnable(const std::vector<platform::WindowRecord>& windows,
                             std::int64_t ownPid, const ExecutableLookup& executableOf)
{
    for (const platform::WindowRecord& window : windows) {
        if (window.ownerPid == ownPid)
            continue;
        const std::optional<QString> executable =
            executableOf ? executableOf(window.ownerPid) : std::nullopt;
        if (!executable)
            continue;
        if (!window.hasName)
            continue;
        if (*executable == QLatin1String(windownames::Dock))
            continue;
        return true;
    }
    return false;
}

} // namespace capture
