// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/logic/MultiWindowPick.h"

#include <algorithm>

namespace capture {

namespace {

const WindowPicture* frozenPicture(const CaptureState& state, std::uint32_t windowId)
{
    for (const WindowPicture& w : state.imageAllWindowArray) {
        if (w.number == windowId)
            return &w;
    }
    return nullptr;
}

} // namespace

PickClick togglePick(CaptureState& state, std::uint32_t windowId, const QRectF& frame, int screen)
{
    // Picks stay on one screen.
    if (!state.arrOfAllSelectedScreenshots.empty() &&
        state.arrOfAllSelectedScreenshots.front().screen != screen)
        return PickClick::OtherScreen;

    PickClick result = PickClick::NotPickable;
    auto& clicked = state.arrOfPreAllSelectedScreenshots;
    const auto picked = std::find_if(clicked.begin(), clicked.end(),
                                     [windowId](const auto& p) { return p.windowId == windowId; });
    if (picked != clicked.end()) {
        clicked.erase(picked);
        result = PickClick::Removed;
    } else if (const WindowPicture* w = frozenPicture(state, windowId)) {
        clicked.push_back({windowId, frame, screen, w->KCGWindowImage.picture(), w->kCGWindowName});
        result = PickClick::Added;
    }

    // The same picks again, front to back, as the finish draws them.
    state.arrOfAllSelectedScreenshots.clear();
    for (const WindowPicture& w : state.imageAllWindowArray) {
        for (const PickedWindow& p : clicked) {
            if (p.windowId == w.number)
                state.arrOfAllSelectedScreenshots.push_back(p);
        }
    }
    return result;
}

bool isPicked(const CaptureState& state, std::uint32_t windowId)
{
    return std::any_of(state.arrOfAllSelectedScreenshots.begin(),
                       state.arrOfAllSelectedScreenshots.end(),
                       [windowId](const PickedWindow& p) { return p.windowId == windowId; });
}

QRectF pickedFrame(const std::vector<PickedWindow>& picks, int shadow)
{
    int left = 10000;
    int bottom = 10000;
    int right = -10000;
    int top = -10000;
    for (const PickedWindow& p : picks) {
        // Each edge is cut to a whole number on its own.
        left = std::min(left, static_cast<int>(p.rect.x() - shadow));
        bottom = std::min(bottom, static_cast<int>(p.rect.y() - shadow));
        right = std::max(right, static_cast<int>(p.rect.x() + p.rect.width() + shadow));
        top = std::max(top, static_cast<int>(p.rect.y() + p.rect.height() + shadow));
    }
    return {static_cast<qreal>(left - 6), static_cast<qreal>(bottom - 6),
            static_cast<qreal>(right + 12 - left), static_cast<qreal>(top + 12 - bottom)};
}

bool addPickOfOne(CaptureState& state, bool onlyClipCurrentWindow, const QRectF& contentRect,
                  const QRectF& screenFrame, int shadow, int screen)
{
    if (!state.arrOfAllSelectedScreenshots.empty() || state.annotatedOnMap ||
        !onlyClipCurrentWindow || contentRect == screenFrame)
        return false;
    const WindowPicture* w = frozenPicture(state, state.currentWindowID);
    if (w == nullptr || w->KCGWindowImage.isNull())
        return false;
    const qreal inset = 6 + shadow;
    const QRectF r = state.currentRectOfAnnotatedImageView.adjusted(inset, inset, -inset, -inset);
    state.arrOfAllSelectedScreenshots.push_back(
        {state.currentWindowID, r, screen, w->KCGWindowImage.picture(), w->kCGWindowName});
    return true;
}

} // namespace capture
