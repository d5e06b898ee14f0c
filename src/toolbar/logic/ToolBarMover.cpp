// SPDX-License-Identifier: GPL-3.0-or-later
#include "toolbar/logic/ToolBarMover.h"

#include "core/Clock.h"

namespace toolbar {

ToolBarMover::ToolBarMover(ToolBarState& state, core::Clock& clock, std::function<void()> moved)
    : m_state(state)
    , m_clock(clock)
    , m_moved(std::move(moved))
{}

bool ToolBarMover::flagsChanged(Qt::KeyboardModifiers held, bool doubleTapIsControl,
                                const std::function<void()>& closeTips)
{
    constexpr Qt::KeyboardModifiers mask =
        Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    const Qt::KeyboardModifiers mods = held & mask;
    // The double tap of Control reads the same release first and leaves
    // nothing for this one.
    if (doubleTapIsControl) {
        m_ctrDown = false;
        return false;
    }
    if (!m_state.buttonBoxNeedHidden)
        return false;
    if (mods != Qt::NoModifier) {
        m_ctrDown = mods == Qt::MetaModifier;
        return false;
    }
    if (!m_ctrDown)
        return false;
    m_ctrDown = false;
    if (m_state.buttonBoxIsHiddenning)
        return false;
    if (m_state.buttonBoxOrigin.y() < kHiddenBelow) {
        unhideAllToolBar();
    } else {
        if (closeTips)
            closeTips();
        hideAllToolBar();
    }
    return true;
}

void ToolBarMover::hideAllToolBar()
{
    if (!m_state.buttonBoxNeedHidden)
        return;
    m_state.tipsBoxIsOpening = false;
    move(-1);
}

void ToolBarMover::unhideAllToolBar()
{
    if (!m_state.buttonBoxNeedHidden)
        return;
    move(+1);
}

void ToolBarMover::move(qreal direction)
{
    m_state.buttonBoxIsHiddenning = true;
    m_state.barShift = 0;
    step(1, direction, ++m_generation);
}

void ToolBarMover::step(int i, qreal direction, unsigned generation)
{
    m_clock.singleShot(kStepTime, &m_timers, [this, i, direction, generation] {
        if (generation != m_generation)
            return;
        m_state.barShift = direction * kStep * i;
        if (i < kSteps) {
            if (m_moved)
                m_moved();
            step(i + 1, direction, generation);
            return;
        }
        // The move ends where its steps took the bar.
        m_state.barShift = 0;
        m_state.buttonBoxOrigin.ry() += direction * kStep * kSteps;
        m_state.buttonBoxIsHiddenning = false;
        if (direction < 0)
            m_state.mouseOnButton = false;
        if (m_moved)
            m_moved();
    });
}

void ToolBarMover::stop()
{
    ++m_generation;
    m_state.buttonBoxIsHiddenning = false;
    m_state.barShift = 0;
    m_ctrDown = false;
}

} // namespace toolbar
