// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "capture/logic/PointerRole.h"

#include <QString>

#include <optional>

namespace capture {

// A change of the tip box in the overlay's lower-left corner.
struct TipChange
{
    enum class Kind
    {
        Show, // show the box with `text`
        Hide, // clear and hide the box
    };
    Kind kind = Kind::Hide;
    QString text;

    bool operator==(const TipChange&) const = default;
};

// The opening tip, shown until the first press.
[[nodiscard]] QString openingTipText();

// The pointer over the annotation tool bar's buttons.
struct ButtonTipInput
{
    int mouseOnWhichButtonBox = -1; // -1: on no button
    bool onlyClipCurrentWindow = false;
    bool scrolling = false;
    bool buttonBoxNeedHidden = false;
    bool tipHidden = true;
    bool tipsBoxIsOpening = false;
    QString shownText; // what the tip box shows now
};

// The button tips; nothing when the box stays as it is.
[[nodiscard]] std::optional<TipChange> buttonTip(const ButtonTipInput& in);

// What the pointer role says lies under the pointer, for the tips that hint
// at the arrow keys and the wheel. Asked only when the role changed.
struct CursorTipInput
{
    bool isInResizeRect = false;
    bool onlyClipCurrentWindow = false;
    int whichInResizeRect = -1;
    PointerRole role = PointerRole::Arrow;
    QString selectFunction; // the tool's name, "" for none
    int strokeType = -1;    // type of the active stroke, -1 for none
    bool mouseIsOnActivedStroke = false;
    bool mouseOnCycleOfNote = false; // within the square around a note's number
};

struct CursorTip
{
    TipChange change;
    // The active stroke's "mousePosition" afterwards; nothing leaves it.
    std::optional<QString> mousePosition;

    bool operator==(const CursorTip&) const = default;
};

[[nodiscard]] CursorTip cursorTip(const CursorTipInput& in);

// The cursor tips of one pointer move. They are tested only when the hot
// spot of the pointer's role differs from `lastHotSpot`, which then takes
// it; the first move of all only notes it. Nothing: the tip box stays as it
// is, so a tip is not shown again on every move over the same handle.
[[nodiscard]] std::optional<CursorTip> checkCursorTip(QPointF& lastHotSpot, bool firstMove,
                                                      const CursorTipInput& in);

} // namespace capture
