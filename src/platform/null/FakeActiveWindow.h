// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ActiveWindow.h"

#include <set>
#include <vector>

namespace platform::null {

// A desktop whose active window is set by hand; activations of windows
// that exist make them active, and every one asked for is remembered.
class FakeActiveWindow final : public ActiveWindow
{
public:
    std::uint32_t active = 0;
    std::set<std::uint32_t> existing;
    std::vector<std::uint32_t> activated; // granted, in order

    [[nodiscard]] std::uint32_t current() override { return active; }
    bool activate(std::uint32_t window) override
    {
        if (existing.count(window) == 0)
            return false;
        active = window;
        activated.push_back(window);
        return true;
    }
};

} // namespace platform::null
