// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "toolbar/logic/ToolBarState.h"

#include <QObject>
#include <Qt>

#include <chrono>
#include <functional>

namespace core {
class Clock;
}

namespace toolbar {

// A bar that had to go inside a selection at the screen's bottom moves off
// the screen and back when the Control key (Meta here) is tapped alone: 46
// steps of 2 points, one every 3 milliseconds on the clock.
class ToolBarMover
{
public:
    static constexpr int kSteps = 46;
    static constexpr qreal kStep = 2;
    static constexpr std::chrono::milliseconds kStepTime{3};
    // Below this the bar is off the screen, and a tap brings it back.
    static constexpr qreal kHiddenBelow = 5;

    // `moved` is told after every step, to place the bar's widgets.
    ToolBarMover(ToolBarState& state, core::Clock& clock, std::function<void()> moved);

    // A modifier went down or up (`held`: what is held now). A tap of
    // Control alone moves the bar, unless that key's double tap saves.
    // `closeTips` runs before the bar moves away. True when it moved.
    bool flagsChanged(Qt::KeyboardModifiers held, bool doubleTapIsControl,
                      const std::function<void()>& closeTips);
    // A key that is no modifier spoils the tap.
    void keyDown() { m_ctrDown = false; }

    void hideAllToolBar();
    void unhideAllToolBar();
    // The window closes: a move under way stops where it is.
    void stop();

private:
    void move(qreal direction);
    void step(int i, qreal direction, unsigned generation);

    ToolBarState& m_state;
    core::Clock& m_clock;
    std::function<void()> m_moved;
    QObject m_timers;
    unsigned m_generation = 0;
    bool m_ctrDown = false;
};

} // namespace toolbar
