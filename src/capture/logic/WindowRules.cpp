// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/logic/WindowRules.h"

namespace capture {

bool fullSizeFilterApplies(const platform::WindowRecord& window)
{
    const int layer = window.layer;
    if (layer >= 2 && layer != windowlayers::Dock)
        return true;
    return window.ownerName == QLatin1String(windownames::FullScreenUtility);
}

bool hasSizeOfAScreen(const QRectF& bounds, const core::ScreenLayout& layout)
{
    const auto width = static_cast<double>(static_cast<long long>(bounds.width()));
    const auto height = static_cast<double>(static_cast<long long>(bounds.height()));
    for (const core::ScreenInfo& screen : layout.screens()) {
        const double screenHeight = screen.frame.height();
        if (width == screen.frame.width() &&
            (height == screenHeight || height == screenHeight - kMenuBarHeight))
            return true;
    }
    return false;
}

bool isFullSizeShade(const platform::WindowRecord& window, const core::ScreenLayout& layout)
{
    return fullSizeFilterApplies(window) && hasSizeOfAScreen(window.bounds, layout);
}

bool isMeasuredDock(const platform::WindowRecord& window, const core::ScreenLayout& layout)
{
    if (window.layer != windowlayers::Dock)
        return false;
    if (window.name == QLatin1String(windownames::Dock))
        return true;
    for (const core::ScreenInfo& screen : layout.screens()) {
        if (window.bounds == screen.frame)
            return true;
    }
    return false;
}

bool isLyricsOverlay(const platform::WindowRecord& window)
{
    return window.layer == windowlayers::Lyrics &&
           window.ownerName == QLatin1String(windownames::Lyrics);
}

} // namespace capture
