// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/logic/HoverTracker.h"

namespace capture {

namespace {

constexpr double kBorderGrowth = 6.0;

QRectF grown(const QRectF& r, double by)
{
    return r.adjusted(-by, -by, by, by);
}

} // namespace

void storeHoverResult(CaptureState& state, const HoverResult& result)
{
    state.appIDUnderMouse = result.appIDUnderMouse;
    if (!result.hit)
        return;
    const HoverHit& hit = *result.hit;
    state.currentWindowID = hit.number;
    state.currentWindowRect = hit.rect;
    state.currentWindowName = hit.name;
    state.currentWindowLayer = hit.layer;
    if (hit.final)
        state.currentWindowAppId = hit.bundleIdentifier;
}

HoverTracker::HoverTracker(const core::ScreenLayout& layout, int screen)
    : m_layout(layout)
    , m_screen(screen)
{
    if (screen >= 0 && screen < layout.count())
        m_lastWindowRect = QRectF(QPointF(0.0, 0.0), layout.screen(screen).frame.size());
}

HoverResult HoverTracker::pass(CaptureState& state, QPointF mouseBottomLeft)
{
    const HoverResult result = hoverHitTest(state.arrayRect, mouseBottomLeft, m_layout, m_screen);
    storeHoverResult(state, result);
    if (result.hit) {
        m_lastWindowRect = result.hit->rect;
        m_currentWindowNumber = result.hit->number;
    }
    return result;
}

HoverMoveOutcome HoverTracker::clipViewMouseMoved(CaptureState& state, QPointF mouseBottomLeft)
{
    HoverMoveOutcome outcome;
    outcome.focusScreen = pass(state, mouseBottomLeft).focusScreen;
    if (m_currentWindowNumber == m_lastWindowNumber)
        return outcome;
    m_lastWindowNumber = m_currentWindowNumber;
    outcome.outlineChanged = true;
    outcome.windowRect = state.currentWindowRect;
    outcome.contentFrame = grown(state.currentWindowRect, kBorderGrowth);
    return outcome;
}

HoverPressOutcome HoverTracker::clipViewMouseDown(CaptureState& state, QPointF mouseBottomLeft,
                                                  int clipState, bool haveSetClearColor)
{
    HoverPressOutcome outcome;
    outcome.setClearColor = !haveSetClearColor;
    outcome.focusScreen = pass(state, mouseBottomLeft).focusScreen;
    if (m_currentWindowNumber == m_lastWindowNumber)
        return outcome;
    m_lastWindowNumber = m_currentWindowNumber;
    if (clipState == 0) {
        outcome.apply = HoverPressOutcome::Frame::FrameForContentView;
        outcome.frame = m_lastWindowRect;
    } else {
        outcome.apply = HoverPressOutcome::Frame::ContentFrame;
        outcome.frame = grown(m_lastWindowRect, kBorderGrowth);
    }
    return outcome;
}

} // namespace capture
