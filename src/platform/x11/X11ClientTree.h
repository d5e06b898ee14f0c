// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/WindowLayers.h"
#include "platform/x11/X11Atoms.h"

#include <QRect>
#include <QString>

#include <xcb/xcb.h>

#include <cstdint>
#include <vector>

namespace platform::x11 {

// One viewable top-level of the root with the properties of the client
// window inside it (the window itself when it is unmanaged).
struct X11Client
{
    xcb_window_t frame = 0;
    xcb_window_t client = 0;
    QRect frameRect; // device pixels, root coordinates
    std::int64_t pid = 0;
    QString name;
    bool hasName = false;
    QString windowClass;
    WindowFacts facts;
    double opacity = 1.0;
};

// The clients stacked on `root`, top of the stack first. Each stage sends
// its requests for every window before it reads the first reply, so the
// walk costs a handful of round trips, not a few per window.
[[nodiscard]] std::vector<X11Client> stackedClients(xcb_connection_t* connection, xcb_window_t root,
                                                    const X11Atoms& atoms);

} // namespace platform::x11
