// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "capture/logic/CaptureState.h"
#include "capture/logic/HoverHitTest.h"
#include "core/Geometry.h"

#include <QPointF>
#include <QRectF>

#include <cstdint>

namespace capture {

// What the overlay must change after a hover pass. The view is touched only
// when the window under the pointer is another one than the overlay shows,
// which is the one throttle of hovering: the pass itself runs on every move.
struct HoverMoveOutcome
{
    bool outlineChanged = false;
    QRectF windowRect;   // overlay-local: the outline box and the bright hole follow it
    QRectF contentFrame; // the crop border's frame: windowRect grown by 6
    // Screen whose overlay should take the keyboard; -1 to leave focus alone.
    int focusScreen = -1;

    bool operator==(const HoverMoveOutcome&) const = default;
};

struct HoverPressOutcome
{
    // The press is the first: the view drops its dark backdrop for a clear one.
    bool setClearColor = false;
    enum class Frame
    {
        Unchanged,
        ContentFrame,        // give `frame` to setContentFrame (the state is pressed)
        FrameForContentView, // give `frame` to setFrameForContentView (still waiting)
    };
    Frame apply = Frame::Unchanged;
    QRectF frame;
    int focusScreen = -1;

    bool operator==(const HoverPressOutcome&) const = default;
};

// The hover side of one screen's controller: which window it shows and
// which one the last pass hit. A pass writes the window under the pointer
// into the capture's shared state; the tracker decides whether the overlay
// has to follow.
class HoverTracker
{
public:
    // `screen` is the controller's screen; the last window rectangle starts
    // as that whole screen, overlay-local. `layout` is the capture's and
    // must outlive the tracker.
    HoverTracker(const core::ScreenLayout& layout, int screen);

    // A pointer move while nothing is pressed.
    [[nodiscard]] HoverMoveOutcome clipViewMouseMoved(CaptureState& state, QPointF mouseBottomLeft);
    // The press: the same pass, so that a click right after a jump of the
    // pointer takes the window now under it. `clipState` is the view's state
    // at the call (1 once the press was taken).
    [[nodiscard]] HoverPressOutcome clipViewMouseDown(CaptureState& state, QPointF mouseBottomLeft,
                                                      int clipState, bool haveSetClearColor);

    [[nodiscard]] std::uint32_t currentWindowNumber() const { return m_currentWindowNumber; }
    [[nodiscard]] std::uint32_t lastWindowNumber() const { return m_lastWindowNumber; }
    [[nodiscard]] QRectF lastWindowRect() const { return m_lastWindowRect; }
    void setLastWindowRect(const QRectF& rect) { m_lastWindowRect = rect; }

private:
    HoverResult pass(CaptureState& state, QPointF mouseBottomLeft);

    const core::ScreenLayout& m_layout;
    int m_screen;
    std::uint32_t m_currentWindowNumber = 0;
    std::uint32_t m_lastWindowNumber = 0;
    QRectF m_lastWindowRect;
};

// Writes a pass's result into the capture's shared state: the window fields
// when a window was written down, its owner only when the pass stopped at
// it, and the owner under the pointer at every pass (empty when none).
void storeHoverResult(CaptureState& state, const HoverResult& result);

} // namespace capture
