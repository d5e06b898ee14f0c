// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/x11/XcbHandles.h"

#include <xcb/xcb.h>

namespace platform::x11 {

// Qt's own connection to the X server when the process runs a Qt GUI on
// xcb, else one of our own that goes with this object. Requests on Qt's
// connection keep their order with Qt's own (a window Qt maps, raises or
// hides), which requests on a second connection would not.
class X11SharedConnection
{
public:
    X11SharedConnection();

    // Qt's own connection; null when the process runs no Qt GUI on xcb.
    [[nodiscard]] static xcb_connection_t* qtConnection();

    // Null when no X server could be reached.
    [[nodiscard]] xcb_connection_t* get() const { return m_connection; }
    // The root of the display's default screen; XCB_NONE when not connected.
    [[nodiscard]] xcb_window_t root() const { return m_root; }

private:
    XcbConnectionPtr m_owned;
    xcb_connection_t* m_connection = nullptr;
    xcb_window_t m_root = XCB_NONE;
};

} // namespace platform::x11
