// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/logic/HoverHitTest.h"

namespace capture {

namespace {

constexpr int kHighestHoverLayer = 1000;

// A rectangle holds a point on its minimum edges but not on its maximum ones.
bool rectContainsPoint(const QRectF& r, QPointF p)
{
    return r.width() > 0.0 && r.height() > 0.0 && p.x() >= r.left() && p.x() < r.right() &&
           p.y() >= r.top() && p.y() < r.bottom();
}

} // namespace

HoverResult hoverHitTest(const std::vector<platform::WindowRecord>& frozenWindows,
                         QPointF mouseBottomLeft, const core::ScreenLayout& layout, int screen)
{
    HoverResult result;
    if (layout.isEmpty() || screen < 0 || screen >= layout.count())
        return result;
    const QPointF screenOrigin = layout.frameBottomLeft(screen).topLeft();
    const int screenUnderMouse = layout.currentScreenForMouseLocation(mouseBottomLeft);

    const auto writeDown = [&](const platform::WindowRecord& window, const QRectF& rect,
                               bool final) {
        HoverHit hit;
        hit.number = window.number;
        hit.rect = rect.translated(-screenOrigin);
        hit.name = window.name;
        hit.layer = static_cast<std::int32_t>(window.layer);
        hit.bundleIdentifier = window.bundleIdentifier;
        hit.final = final;
        result.hit = hit;
        result.focusScreen = screenUnderMouse;
        result.appIDUnderMouse = window.bundleIdentifier;
    };

    for (const platform::WindowRecord& window : frozenWindows) {
        const QRectF rect = layout.cgWindowRectToScreenRect(window.bounds);
        if (rectContainsPoint(rect, mouseBottomLeft))
            writeDown(window, rect, false);
        if (window.layer >= 0 && window.layer <= kHighestHoverLayer &&
            core::mouseInRect(mouseBottomLeft, rect)) {
            writeDown(window, rect, true);
            break;
        }
    }
    return result;
}

} // namespace capture
