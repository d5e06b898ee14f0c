// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace platform {

// Starting Kelvo at login (an XDG autostart entry on Linux).
class Autostart
{
public:
    virtual ~Autostart() = default;
    [[nodiscard]] virtual bool isLoginItem() = 0;
    virtual bool addToLoginItems() = 0;
    virtual bool removeFromLoginItems() = 0;
};

} // namespace platform
