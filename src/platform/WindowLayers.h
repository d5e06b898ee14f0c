// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

namespace platform {

// The window kinds a desktop announces for its windows (EWMH
// _NET_WM_WINDOW_TYPE). A window may carry several, most specific first;
// kinds the layer rules do not name are Other.
enum class WindowType
{
    Desktop,
    Dock,
    Notification,
    Menu,
    DropdownMenu,
    PopupMenu,
    Tooltip,
    Combo,
    Dnd,
    Normal,
    Dialog,
    Utility,
    Other,
};

// The window states that matter to the list (EWMH _NET_WM_STATE).
enum class WindowState
{
    Above,
    Hidden, // minimised: not on screen, so never listed
    Other,
};

// What the window system tells about one top-level, in its own terms but
// without its types: enough to place the window in a stacking layer.
struct WindowFacts
{
    std::vector<WindowType> types;
    std::vector<WindowState> states;
    bool overrideRedirect = false; // a popup the window manager never sees

    bool operator==(const WindowFacts&) const = default;
};

// The stacking layer of a window (see platform::layers). The kinds decide
// before the state, whatever order they come in: the desktop is at the
// bottom even when asked to stay above, and a dock stays a dock even when it
// bypasses the window manager. Only an ordinary managed window can be raised
// to "above".
[[nodiscard]] int layerOf(const WindowFacts& facts);

[[nodiscard]] bool hasState(const WindowFacts& facts, WindowState state);

} // namespace platform
