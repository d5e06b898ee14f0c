// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Geometry.h"
#include "platform/WindowRecord.h"

#include <QPointF>
#include <QRectF>

#include <cstdint>
#include <vector>

namespace capture {

// What the "window under the cursor" action pictures.
struct WindowUnderMouseChoice
{
    enum class Kind
    {
        Window,      // the window `number` alone
        WholeScreen, // no window was hit: the screen `screen`, whose frame is `screenRect`
        Nothing,     // a window was hit that has no number
    };

    Kind kind = Kind::Nothing;
    std::uint32_t number = 0;
    int screen = -1;
    QRectF screenRect; // global top-left points

    bool operator==(const WindowUnderMouseChoice&) const = default;
};

// Picks the window under the pointer with the hover rules, on a fresh window
// list and independent of any running capture. `pointerTopLeft` is the
// pointer in global top-left points.
//
// Windows of negative layers are never hit. A window that holds the pointer
// is remembered, but a lyrics overlay, a measured dock or a full-screen shade
// forgets any remembered hit; the first other window that holds the pointer
// and lies at layer 1000 or below is taken. A remembered window above layer
// 1000 that nothing made forget is taken as well.
[[nodiscard]] WindowUnderMouseChoice
chooseWindowUnderMouse(const std::vector<platform::WindowRecord>& windows, QPointF pointerTopLeft,
                       const core::ScreenLayout& layout);

} // namespace capture
