// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/WindowLayers.h"

#include <xcb/xcb.h>

#include <array>
#include <vector>

namespace platform::x11 {

// The atoms the window list reads, interned once per connection in one
// round trip. Missing ones (a server that never heard of a name) are
// XCB_NONE and match nothing.
class X11Atoms
{
public:
    enum Name
    {
        WmState,
        NetWmName,
        Utf8String,
        NetWmPid,
        Type,
        TypeDesktop,
        TypeDock,
        TypeNotification,
        TypeMenu,
        TypeDropdown,
        TypePopup,
        TypeTooltip,
        TypeCombo,
        TypeDnd,
        TypeNormal,
        TypeDialog,
        TypeUtility,
        State,
        StateAbove,
        StateHidden,
        Opacity,
        Count,
    };

    X11Atoms() = default;
    [[nodiscard]] static X11Atoms intern(xcb_connection_t* connection);

    [[nodiscard]] xcb_atom_t operator[](Name name) const { return m_atoms[name]; }

    // The window kinds and states behind a window's atom lists, for the
    // layer rules; atoms they do not name become Other.
    [[nodiscard]] std::vector<WindowType> typesOf(const std::vector<xcb_atom_t>& atoms) const;
    [[nodiscard]] std::vector<WindowState> statesOf(const std::vector<xcb_atom_t>& atoms) const;

private:
    std::array<xcb_atom_t, Count> m_atoms{};
};

} // namespace platform::x11
