// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "toolbar/logic/ToolBarState.h"

#include <QObject>
#include <QPointF>
#include <QRectF>
#include <QSizeF>

#include <chrono>
#include <functional>

namespace core {
class Clock;
}

namespace toolbar {

// The tip at the settings box's right end, told apart from the buttons'
// tips by this slot.
inline constexpr int kColorTipSlot = kSlotCount;

// The tip boxes over the bar's buttons, and the settings box's tip, as the
// hover opens and closes them.
class TipBoxes
{
public:
    virtual ~TipBoxes() = default;
    // May make the tip first: it is sized by what it holds.
    [[nodiscard]] virtual QSizeF tipSize(int slot) = 0;
    // Shows the tip of `slot` at `origin` (window points, y up), opaque.
    virtual void showTip(int slot, QPointF origin) = 0;
    virtual void setTipAlpha(int slot, double alpha) = 0;
    virtual void hideTip(int slot) = 0;
};

// What a pointer move over the annotation window is measured against.
struct HoverContext
{
    bool clipToolbarWindowOpened = false;
    bool scrolling = false;    // a scrolling capture runs
    double delaySeconds = 0.5; // the rest before a tip opens
    qreal screenWidth = 0;
};

// The pointer over the tool bar: which button is under it, and the tip that
// opens when it comes to rest on one, closes six seconds later or when it
// leaves, and fades out. Time comes from the clock; a stopped timer is one
// whose turn has been taken by a newer one.
class ToolBarHover
{
public:
    static constexpr std::chrono::milliseconds kTipLife{6000};
    static constexpr std::chrono::milliseconds kFadeStep{50};
    static constexpr int kMoveBeat = 5; // only every fifth move is looked at
    // The settings box's tip is shown this often in the preferences' life.
    static constexpr int kColorTipShowings = 6;

    ToolBarHover(ToolBarState& state, core::Clock& clock, TipBoxes& boxes);

    // Every pointer move that reaches the window (y up). True for the
    // moves it looked at, which find the button under the pointer anew.
    bool mouseMoved(QPointF location, const HoverContext& context);
    // Opens the tip of the button under the last position kept.
    void checkMouseOnWhichButton(const HoverContext& context);
    // How often the settings box's tip has been shown, read and stored in
    // the preferences; without them it is never shown.
    void setColorTipTimes(std::function<int()> read, std::function<void(int)> store)
    {
        m_readTipTimes = std::move(read);
        m_storeTipTimes = std::move(store);
    }
    // Opens the settings box's tip while the last position kept is in the
    // box, unless it has been shown often enough.
    void popupTipsOfColorBox();
    // Closes the open tips with a fade.
    void disableTips();
    // A click on a button, or the bar hidden: no tip is waiting any more,
    // and the open ones go at once.
    void closeTipAtOnce();
    // The window closes: every timer stops, every tip goes.
    void stop();

    [[nodiscard]] int openedSlot() const { return m_openedSlot; }
    [[nodiscard]] bool tipWaiting() const { return m_moveTimerPending; }
    [[nodiscard]] bool colorTipShown() const { return m_colorTipShown; }

private:
    [[nodiscard]] bool inOpenedTip(QPointF p) const;
    [[nodiscard]] bool inColorBox(QPointF p) const;
    // The wait for the pointer's rest over the bar's buttons, or over the
    // settings box.
    void startMoveTimer(const HoverContext& context, bool overColorBox);
    void stopDisableTimer() { ++m_disableTimer; }
    void fade(int slot, double alpha, unsigned generation);

    ToolBarState& m_state;
    core::Clock& m_clock;
    TipBoxes& m_boxes;
    QObject m_timers; // the context of every timer, so none outlives this
    unsigned m_moveTimer = 0;
    unsigned m_disableTimer = 0;
    unsigned m_fades = 0; // a stop ends the fades under way
    bool m_moveTimerPending = false;
    int m_openedSlot = -1;
    bool m_colorTipShown = false; // and not fading
    std::function<int()> m_readTipTimes;
    std::function<void(int)> m_storeTipTimes;
    QRectF m_openedFrame; // the open tip's, window points, y up
};

} // namespace toolbar
