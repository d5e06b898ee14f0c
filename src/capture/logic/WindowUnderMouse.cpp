// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/logic/WindowUnderMouse.h"

#include "capture/logic/WindowRules.h"

#include <optional>

namespace capture {

namespace {

constexpr int kHighestHoverLayer = 1000;

// Half-open on both axes, as a rectangle holds a point.
bool rectContains(const QRectF& r, QPointF p)
{
    return p.x() >= r.left() && p.x() < r.left() + r.width() && p.y() >= r.top() &&
           p.y() < r.top() + r.height();
}

} // namespace

WindowUnderMouseChoice chooseWindowUnderMouse(const std::vector<platform::WindowRecord>& windows,
                                              QPointF pointerTopLeft,
                                              const core::ScreenLayout& layout)
{
    const QPointF mouse = layout.topLeftToBottomLeft(pointerTopLeft);
    std::optional<std::uint32_t> hit;
    for (const platform::WindowRecord& window : windows) {
        if (window.layer < 0)
            continue;
        const QRectF flipped = layout.cgWindowRectToScreenRect(window.bounds);
        const bool holdsMouse = rectContains(flipped, mouse);
        if (holdsMouse)
            hit = window.number;
        if (isLyricsOverlay(window) || isMeasuredDock(window, layout) ||
            isFullSizeShade(window, layout)) {
            hit.reset();
            continue;
        }
        if (holdsMouse && window.layer <= kHighestHoverLayer)
            break;
    }

    WindowUnderMouseChoice choice;
    if (!hit) {
        choice.screen = layout.currentScreenForMouseLocation(mouse);
        if (choice.screen < 0)
            return choice;
        choice.kind = WindowUnderMouseChoice::Kind::WholeScreen;
        choice.screenRect = layout.screen(choice.screen).frame;
        return choice;
    }
    if (*hit > 0) {
        choice.kind = WindowUnderMouseChoice::Kind::Window;
        choice.number = *hit;
    }
    return choice;
}

} // namespace capture
