// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Geometry.h"
#include "platform/WindowRecord.h"

#include <QPointF>
#include <QRectF>
#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace capture {

// One window the hover pass wrote down: the last one holding the pointer, or
// the one it stopped at.
struct HoverHit
{
    std::uint32_t number = 0;
    // The window's bounds, overlay-local to the screen that asked (so it may
    // lie outside that screen when the pointer is on another one).
    QRectF rect;
    QString name;
    std::int32_t layer = 0;
    QString bundleIdentifier;
    // True when the pass stopped at this window (layer 0 to 1000). A window
    // above 1000 or the desktop picture is only written down on the way.
    bool final = false;

    bool operator==(const HoverHit&) const = default;
};

struct HoverResult
{
    // Nothing when no window of the frozen list holds the pointer; the
    // previous hover then stays as it was.
    std::optional<HoverHit> hit;
    // The screen whose overlay should have keyboard focus: the screen under
    // the pointer. -1 when nothing was hit, so focus stays where it is.
    int focusScreen = -1;
    // Owner of the last window written down; empty when none.
    QString appIDUnderMouse;

    bool operator==(const HoverResult&) const = default;
};

// The hover pass over the window list frozen at the start of the capture
// (front to back). It never asks the window server, so a window opened
// after the freeze cannot be hit, and one closed since still can.
//
// The pass walks from the front. A window whose bounds hold the pointer
// (half-open on both axes) is written down; the first window of a layer from
// 0 to 1000 that holds the pointer in the mouse-in-rect sense ends the pass.
// The two tests differ on the bottom and top edges on purpose: a point on
// the bottom edge is written down without ending the pass.
//
// `mouseBottomLeft` is the pointer in global bottom-left points; `screen` is
// the index of the overlay asking, whose local coordinates the rectangle
// comes back in.
[[nodiscard]] HoverResult hoverHitTest(const std::vector<platform::WindowRecord>& frozenWindows,
                                       QPointF mouseBottomLeft, const core::ScreenLayout& layout,
                                       int screen);

} // namespace capture
