// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace platform {

// The window the desktop calls active, read before a capture takes the
// keyboard and given the focus back when the capture ends, so that the user
// lands where the capture began.
class ActiveWindow
{
public:
    virtual ~ActiveWindow() = default;

    // The active window now (the client window, not its frame); 0 when no
    // window is active or the desktop does not say.
    [[nodiscard]] virtual std::uint32_t current() = 0;
    // Asks the desktop to make `window` active, as a pager asks, so that no
    // focus-stealing rule refuses it, and returns once the desktop has done
    // so or a short while has passed. False, and nothing asked, when the
    // window is gone.
    virtual bool activate(std::uint32_t window) = 0;
};

} // namespace platform
