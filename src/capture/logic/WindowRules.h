// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Geometry.h"
#include "platform/WindowRecord.h"

#include <QRectF>

namespace capture {

// Names by which the window list marks windows that need special handling.
// Several come from other desktops and never match on ours; they are kept so
// that the rules stay one set for every back end.
namespace windownames {
inline constexpr char MenuBar[] = "Menubar";           // window name
inline constexpr char Dock[] = "Dock";                 // window name
inline constexpr char Banner[] = "Banners and Alerts"; // window name
inline constexpr char Desktop[] = "Desktop";           // window name
inline constexpr char Pin[] = "mappingWindowByKelvo";  // window name of our pins
inline constexpr char Lyrics[] = "LyricsX";            // owner name, draws above everything
inline constexpr char FullScreenUtility[] = "Dunmere"; // owner name
inline constexpr char NotificationCentre[] = "com.apple.notificationcenterui"; // bundle id
} // namespace windownames

namespace windowlayers {
inline constexpr int Lyrics = 3;
inline constexpr int Banner = 18;
inline constexpr int Dock = 20;
inline constexpr int NotificationCentre = 21;
inline constexpr int MenuExtraLow = 24;
inline constexpr int MenuExtraHigh = 25;
} // namespace windowlayers

// Height of a menu bar: a shade that leaves it free still counts as full size.
inline constexpr double kMenuBarHeight = 23.0;
// Margin a pin window keeps around its picture, on each side.
inline constexpr double kPinMargin = 6.0;

// Whether the full-size test is asked at all: for layers above the normal
// ones except docks, and for the one utility known to keep a full-screen
// window in a normal layer.
[[nodiscard]] bool fullSizeFilterApplies(const platform::WindowRecord& window);

// Whether bounds have the width of some screen and its height, or its height
// less the menu bar. The window's numbers are cut to whole numbers first.
[[nodiscard]] bool hasSizeOfAScreen(const QRectF& bounds, const core::ScreenLayout& layout);

// Both of the above: a full-screen shade, which is no window to the user.
[[nodiscard]] bool isFullSizeShade(const platform::WindowRecord& window,
                                   const core::ScreenLayout& layout);

// A dock whose window bounds say nothing about its visible part, so that its
// lit pixels are measured: the window named "Dock", or any dock window that
// covers a whole monitor (a transparent dock).
[[nodiscard]] bool isMeasuredDock(const platform::WindowRecord& window,
                                  const core::ScreenLayout& layout);

// A floating lyrics window, left out of hover and pictures.
[[nodiscard]] bool isLyricsOverlay(const platform::WindowRecord& window);

} // namespace capture
