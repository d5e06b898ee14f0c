// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ActiveWindow.h"

#include <memory>

namespace platform::x11 {

// The active window of an EWMH desktop: read from _NET_ACTIVE_WINDOW on the
// root, and asked for through the same name as a client message with the
// pager's source indication, which window managers honour without the
// focus-stealing checks they apply to applications. Goes through Qt's own
// connection when there is one, so the request follows the overlay's unmap
// on the wire; opens a connection of its own otherwise.
class X11ActiveWindow final : public ActiveWindow
{
public:
    X11ActiveWindow();
    ~X11ActiveWindow() override;
    X11ActiveWindow(const X11ActiveWindow&) = delete;
    X11ActiveWindow& operator=(const X11ActiveWindow&) = delete;

    [[nodiscard]] bool isConnected() const;
    [[nodiscard]] std::uint32_t current() override;
    bool activate(std::uint32_t window) override;

private:
    struct State;
    std::unique_ptr<State> m;
};

} // namespace platform::x11
