// SPDX-License-Identifier: GPL-3.0-or-later
#include "toolbar/logic/ToolBarHover.h"

#include "core/Clock.h"

namespace toolbar {

ToolBarHover::ToolBarHover(ToolBarState& state, core::Clock& clock, TipBoxes& boxes)
    : m_state(state)
    , m_clock(clock)
    , m_boxes(boxes)
{}

bool ToolBarHover::inOpenedTip(QPointF p) const
{
    return m_openedSlot >= 0 && pointInRect(p, m_openedFrame);
}

bool ToolBarHover::inColorBox(QPointF p) const
{
    const std::optional<ColorBoxPlacement> box = m_state.colorBox();
    return box && pointInRect(p, box->colorBox);
}

bool ToolBarHover::mouseMoved(QPointF location, const HoverContext& context)
{
    if (!context.clipToolbarWindowOpened || ++m_state.mouseMovedTimes % kMoveBeat != 0 ||
        m_state.buttonBoxIsHiddenning)
        return false;
    m_state.mouseLoc = location;
    const bool inBox = pointInRect(location, m_state.buttonBoxFrame());

    if (m_state.boxColorTipsOpening) {
        if (!inColorBox(location)) {
            m_state.boxColorTipsOpening = false;
            if (m_colorTipShown)
                disableTips();
        }
        return true;
    }
    if (m_state.tipsBoxIsOpening) {
        if (inBox) {
            // An open tip follows the pointer from button to button at once.
            m_state.popupButtonHaveOpened = false;
            checkMouseOnWhichButton(context);
        } else if (inOpenedTip(location)) {
            // A tip under the pointer stays open.
            m_state.popupButtonHaveOpened = false;
            stopDisableTimer();
        } else if (!m_state.popupButtonHaveOpened) {
            disableTips();
        }
    }
    // Each beat restarts the wait, so a tip opens once the pointer rests.
    if (!m_state.tipsBoxIsOpening && inBox)
        startMoveTimer(context, false);
    else if (!m_state.tipsBoxIsOpening && inColorBox(location))
        startMoveTimer(context, true);

    m_state.mouseOnWhichButtonBox = inBox ? buttonUnder(location - m_state.buttonBoxOrigin) : -1;
    m_state.mouseOnButton = inBox || inColorBox(location);
    return true;
}

void ToolBarHover::startMoveTimer(const HoverContext& context, bool overColorBox)
{
    const unsigned generation = ++m_moveTimer;
    m_moveTimerPending = true;
    const auto delay = std::chrono::milliseconds(
        static_cast<std::int64_t>(std::max(0.0, context.delaySeconds) * 1000.0));
    m_clock.singleShot(delay, &m_timers, [this, generation, context, overColorBox] {
        if (generation != m_moveTimer)
            return;
        m_moveTimerPending = false;
        if (overColorBox)
            popupTipsOfColorBox();
        else
            checkMouseOnWhichButton(context);
    });
}

void ToolBarHover::checkMouseOnWhichButton(const HoverContext& context)
{
    const QRectF box = m_state.buttonBoxFrame();
    if (!context.clipToolbarWindowOpened || !pointInRect(m_state.mouseLoc, box))
        return;
    const int place = slotUnder(m_state.mouseLoc.x(), box.x());
    if (place < 0)
        return;
    // A scrolling capture's bar shows only its last four buttons.
    const int slot = context.scrolling ? place + 11 : place;
    if (slot >= kSlotCount)
        return;
    if (m_state.tipsBoxIsOpening && m_openedSlot >= 0) {
        m_boxes.hideTip(m_openedSlot);
        stopDisableTimer();
    }
    const QSizeF size = m_boxes.tipSize(slot);
    // Kept, so that the moves over an open tip need not measure it again.
    m_openedFrame = QRectF(tipOrigin(slot, m_state.buttonBoxOrigin, size.width(),
                                     context.screenWidth, context.scrolling),
                           size);
    m_openedSlot = slot;
    m_boxes.showTip(slot, m_openedFrame.topLeft());
    m_state.tipsBoxIsOpening = true;
    const unsigned generation = ++m_disableTimer;
    m_clock.singleShot(kTipLife, &m_timers, [this, generation] {
        if (generation == m_disableTimer)
            disableTips();
    });
}

void ToolBarHover::popupTipsOfColorBox()
{
    const std::optional<ColorBoxPlacement> box = m_state.colorBox();
    const int times = m_readTipTimes ? m_readTipTimes() : kColorTipShowings;
    if (times >= kColorTipShowings || !box || !pointInRect(m_state.mouseLoc, box->colorBox))
        return;
    if (m_storeTipTimes)
        m_storeTipTimes(times + 1);
    m_boxes.showTip(kColorTipSlot, QPointF(box->colorBox.right(), box->colorBox.y()));
    m_colorTipShown = true;
    m_state.boxColorTipsOpening = true;
    const unsigned generation = ++m_disableTimer;
    m_clock.singleShot(kTipLife, &m_timers, [this, generation] {
        if (generation == m_disableTimer)
            disableTips();
    });
}

void ToolBarHover::disableTips()
{
    // The fades run to their end, also when a box opens again meanwhile.
    if (m_state.tipsBoxIsOpening) {
        m_state.tipsBoxIsOpening = false;
        stopDisableTimer();
        fade(m_openedSlot, 1.0, m_fades);
    }
    if (m_colorTipShown) {
        m_colorTipShown = false;
        stopDisableTimer();
        fade(kColorTipSlot, 1.0, m_fades);
    }
}

void ToolBarHover::fade(int slot, double alpha, unsigned generation)
{
    if (generation != m_fades || slot < 0)
        return;
    if (alpha < 0.1) {
        m_boxes.hideTip(slot);
        return;
    }
    m_clock.singleShot(kFadeStep, &m_timers, [this, slot, alpha, generation] {
        if (generation != m_fades)
            return;
        m_boxes.setTipAlpha(slot, alpha);
        fade(slot, alpha - 0.1, generation);
    });
}

void ToolBarHover::closeTipAtOnce()
{
    ++m_moveTimer;
    m_moveTimerPending = false;
    if (m_colorTipShown) {
        m_boxes.hideTip(kColorTipSlot);
        m_colorTipShown = false;
        m_state.boxColorTipsOpening = false;
    }
    if (!m_state.tipsBoxIsOpening)
        return;
    m_boxes.hideTip(m_openedSlot);
    m_state.tipsBoxIsOpening = false;
    stopDisableTimer();
}

void ToolBarHover::stop()
{
    ++m_moveTimer;
    ++m_disableTimer;
    ++m_fades;
    m_moveTimerPending = false;
    if (m_openedSlot >= 0)
        m_boxes.hideTip(m_openedSlot);
    m_openedSlot = -1;
    m_state.tipsBoxIsOpening = false;
    m_boxes.hideTip(kColorTipSlot);
    m_colorTipShown = false;
    m_state.boxColorTipsOpening = false;
}

} // namespace toolbar
