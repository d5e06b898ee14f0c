// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/WheelWatcher.h"

#include <memory>

namespace platform::x11 {

// The wheel through XInput 2 raw events on the root, which the server sends
// to every client that asks, whoever holds a grab and whatever window the
// pointer is over. Uses a connection of its own, read on the event loop, so
// that Qt's event handling never sees these events.
class X11WheelWatcher final : public WheelWatcher
{
public:
    X11WheelWatcher();
    ~X11WheelWatcher() override;
    X11WheelWatcher(const X11WheelWatcher&) = delete;
    X11WheelWatcher& operator=(const X11WheelWatcher&) = delete;

    [[nodiscard]] bool start(Handler handler) override;
    void stop() override;
    [[nodiscard]] bool isWatching() const override;

private:
    struct State;
    std::unique_ptr<State> m;
};

} // namespace platform::x11
