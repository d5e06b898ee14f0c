// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "toolbar/logic/ButtonBox.h"

#include <QPointF>
#include <QString>

#include <array>

namespace toolbar {

// How a button of the bar looks.
enum class ButtonLook
{
    Normal,
    Selected, // the chosen tool's "_on" image
    Disabled,
};

// The tool bar of one capture: which tool is on, where the bar stands, the
// pointer over it and its tips. Held by the annotation window; the capture
// reads none of it but through the window.
struct ToolBarState
{
    QString selectFunction;    // the tool that is on, "" for none
    QString oldSelectFunction; // the tool that was on before the last choice
    int numberOfSelectFunction = -1;
    bool toolHaveSelected = false; // a tool was chosen in this capture

    QPointF buttonBoxOrigin; // bottom-left of the bar, window points, y up
    // The bar went inside the selection; the Control key may move it away.
    bool buttonBoxNeedHidden = false;
    bool buttonBoxIsHiddenning = false; // the bar is moving away or back
    qreal barShift = 0; // how far the move under way has taken the bar's widgets, y up

    QPointF mouseLoc;        // the last pointer position the hover kept, y up
    int mouseMovedTimes = 0; // moves seen in this capture
    bool tipsBoxIsOpening = false;
    bool boxColorTipsOpening = false;
    bool popupButtonHaveOpened = false; // a short-cut menu was pulled down and closed
    bool mouseOnButton = false;         // the pointer is over the bar or the settings box
    int mouseOnWhichButtonBox = -1;     // the slot under the pointer, -1 for none

    // The nine tool buttons' images: "_on" or "_off".
    std::array<bool, 9> toolButtonOn{};
    bool scrollScreenshotEnabled = true;

    // The annotation window opens for a capture: the pointer flags start
    // afresh (the slot at 0, as it always has).
    void openWindow();
    // The bar was laid out anew at `placement`. The caller then chooses the
    // tool that was on again, so that it stays on.
    void resetButtonBox(const BarPlacement& placement);
    // A click on a tool's button: false when the tool is on already, which
    // changes nothing.
    [[nodiscard]] bool clickChanges(QStringView tool) const { return oldSelectFunction != tool; }
    // Sets the tool (a drawing tool's number, or anything else for none)
    // and gives the bar the look for it.
    void adjust(int number);
    // The buttons' images after a choice.
    void refreshAllButtonState();
    // A press in the selection draws only with a drawing tool of a real name.
    [[nodiscard]] bool drawingToolChosen() const
    {
        return numberOfSelectFunction >= 0 && selectFunction.size() >= 2;
    }
    [[nodiscard]] ButtonLook look(int slot, bool canUndo) const;
    // The frame of the bar, and of the settings box while a tool is on.
    [[nodiscard]] QRectF buttonBoxFrame() const { return {buttonBoxOrigin, buttonBoxSize()}; }
    // Where the bar's widgets stand now, a move under way included.
    [[nodiscard]] QPointF shownOrigin() const { return buttonBoxOrigin + QPointF(0, barShift); }
    [[nodiscard]] std::optional<ColorBoxPlacement> colorBox() const
    {
        return placeColorBox(selectFunction, shownOrigin());
    }
    void reset() { *this = ToolBarState{}; }
};

} // namespace toolbar
