// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/WindowRecord.h"

#include <QString>

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace capture {

// The executable name (last path component) of a running process, or
// nothing when no such process is known.
using ExecutableLookup = std::function<std::optional<QString>(std::int64_t pid)>;

// Whether this process may see other processes' windows, judged from a
// window list: a system that withholds the permission withholds the titles
// of other processes' windows. So the answer is yes at the first window that
// belongs to another known process, is not the dock's, and has a title.
// An empty list answers no. The X11 back end does not need this (X lets any
// client read every window), but a back end that filters the list does.
[[nodiscard]] bool isScreenRecordingEnable(const std::vector<platform::WindowRecord>& windows,
                                           std::int64_t ownPid,
                                           const ExecutableLookup& executableOf);

} // namespace capture
