// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPoint>

#include <functional>

namespace platform {

// The user's scroll wheel, seen wherever the pointer is and whichever
// window takes the input: a scrolling capture watches the wheel turn the
// window under its overlay while the overlay itself lets every event
// through. Watching takes nothing away from the window that scrolls.
class WheelWatcher
{
public:
    // One turn as QWheelEvent::angleDelta() gives it: eighths of a degree,
    // 120 a notch; y > 0 turns away from the user (up), x > 0 to the left.
    using Handler = std::function<void(QPoint angleDelta)>;

    virtual ~WheelWatcher() = default;

    // Reports every turn from now on to `handler` on the thread's event
    // loop, replacing an earlier handler. False when the wheel cannot be
    // watched on this desktop.
    [[nodiscard]] virtual bool start(Handler handler) = 0;
    virtual void stop() = 0;
    [[nodiscard]] virtual bool isWatching() const = 0;
};

} // namespace platform
