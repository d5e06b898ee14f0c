// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QRectF>
#include <QString>

#include <cstdint>

namespace platform {

// One on-screen window as the window server lists it. Layers follow the
// stacking classes the capture logic knows: negative for the desktop, 0 for
// normal windows, 3 for "above", 18 for notifications, 20 for docks and
// panels, 101 for menus and popups.
struct WindowRecord
{
    std::uint32_t number = 0; // the X id of the top-level (frame) window
    QString name;             // empty when the window has none
    bool hasName = false;     // a title is present at all (even an empty one)
    QString ownerName;        // the owning process' command name
    std::int64_t ownerPid = 0;
    QString bundleIdentifier; // the class part of WM_CLASS
    int layer = 0;
    QRectF bounds; // frame in global top-left coordinates, points
    double alpha = 1.0;

    bool operator==(const WindowRecord&) const = default;
};

namespace layers {
inline constexpr int Desktop = -2147483624;
inline constexpr int Normal = 0;
inline constexpr int Above = 3;
inline constexpr int Notification = 18;
inline constexpr int Dock = 20;
inline constexpr int Popup = 101;
} // namespace layers

} // namespace platform
