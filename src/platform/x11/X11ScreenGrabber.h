// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ScreenGrabber.h"

#include <cstdint>
#include <memory>

struct xcb_connection_t;

namespace platform::x11 {

class ShmGrabber;

// The desktop's pixels through MIT-SHM (see ShmGrabber), read from the root
// window of the default screen.
class X11ScreenGrabber final : public ScreenGrabber
{
public:
    // Opens a connection of its own to $DISPLAY.
    X11ScreenGrabber();
    // Grabs the root of screen `screenNumber` through `connection`, which
    // must outlive the grabber.
    X11ScreenGrabber(xcb_connection_t* connection, int screenNumber);
    ~X11ScreenGrabber() override;
    X11ScreenGrabber(const X11ScreenGrabber&) = delete;
    X11ScreenGrabber& operator=(const X11ScreenGrabber&) = delete;

    [[nodiscard]] bool isConnected() const;
    [[nodiscard]] QSize desktopSize() const override;
    [[nodiscard]] QImage grab(const QRect& rect) override;
    void release() override;

    [[nodiscard]] std::uint32_t root() const;
    // The grabber itself, for other drawables (a window's off-screen
    // pixmap) that should share the kept memory.
    [[nodiscard]] ShmGrabber& shm();

private:
    struct State;
    std::unique_ptr<State> m;
};

} // namespace platform::x11
