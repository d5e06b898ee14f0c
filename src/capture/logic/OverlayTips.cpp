// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/logic/OverlayTips.h"

#include "core/Localized.h"

namespace capture {

namespace {

constexpr int kScrollButtonBox = 12;

TipChange show(const char* englishText)
{
    return {TipChange::Kind::Show, core::localized(englishText)};
}

TipChange hide()
{
    return {TipChange::Kind::Hide, QString()};
}

const char* const kScrollInWindowMode = "Window screenshot mode cannot take scroll screenshots";
const char* const kControlHidesToolbar = "Tap the Control key to hide or show the toolbar";
const char* const kHoldForSettings =
    "Stop move the mouse on the button for more than 0.5 seconds to enter the setting "
    "options.response time can be set in preferences";

} // namespace

QString openingTipText()
{
    return core::localized("Click F to select FullScreen\nHolding Shift to capture multiple "
                           "windows\nClick ESC or RightMouse to quit screenshot\n\nClick R to "
                           "copy RGB color\nClick H to copy HEX color\nClick Z to copy custom "
                           "color\nHolding Shift Click Z to setting");
}

std::optional<TipChange> buttonTip(const ButtonTipInput& in)
{
    if (in.mouseOnWhichButtonBox == kScrollButtonBox) {
        if (in.onlyClipCurrentWindow && !in.scrolling)
            return show(kScrollInWindowMode);
        return std::nullopt;
    }
    if (in.mouseOnWhichButtonBox >= 0) {
        if (in.buttonBoxNeedHidden)
            return show(kControlHidesToolbar);
        if (in.tipHidden && !in.tipsBoxIsOpening)
            return show(kHoldForSettings);
        return std::nullopt;
    }
    for (const char* text : {kScrollInWindowMode, kControlHidesToolbar, kHoldForSettings}) {
        if (!in.tipHidden && in.shownText == core::localized(text))
            return hide();
    }
    return std::nullopt;
}

CursorTip cursorTip(const CursorTipInput& in)
{
    if (in.isInResizeRect && !in.onlyClipCurrentWindow) {
        switch (in.whichInResizeRect) {
        case 1:
        case 3:
        case 5:
        case 7:
            return {show("Press up, down, left and right direction keys to adjust the size by "
                         "one pixel"),
                    std::nullopt};
        case 2:
        case 6:
            return {show("Press up, down direction keys to adjust the size by one pixel"),
                    std::nullopt};
        case 4:
        case 8:
            return {show("Press left and right direction keys to adjust the size by one pixel"),
                    std::nullopt};
        default:
            return {hide(), std::nullopt};
        }
    }

    CursorTip tip{hide(), QString()};
    switch (in.role) {
    case PointerRole::ToolCrosshair:
        tip.change = in.selectFunction == QLatin1String("highlight")
                         ? show("The up and down scroll wheel can adjust the opacity of the "
                                "highlight")
                         : show("The up and down scroll wheel can adjust size");
        break;
    case PointerRole::OverStroke:
        if (in.selectFunction.size() < 2)
            break;
        if (in.strokeType == 7) {
            if (in.mouseOnCycleOfNote) {
                tip.change =
                    show("The upper and lower rollers can adjust the number of step marking");
                tip.mousePosition = QStringLiteral("onCycleOfNote");
            }
        } else if (in.strokeType != 5 && in.strokeType != 6 && in.strokeType != 8 &&
                   in.mouseIsOnActivedStroke) {
            tip.change =
                show("The up and down scroll wheel can adjust the opacity of the active element");
        }
        break;
    case PointerRole::TextIBeam:
        tip.change = show("The up and down scroll wheel can adjust the opacity of the text");
        break;
    case PointerRole::Arrow:
    case PointerRole::Resize:
    case PointerRole::ResizeAlternate:
        break;
    }
    return tip;
}

std::optional<CursorTip> checkCursorTip(QPointF& lastHotSpot, bool firstMove,
                                        const CursorTipInput& in)
{
    const QPointF hotSpot = hotSpotOf(in.role);
    if (hotSpot == lastHotSpot)
        return std::nullopt;
    lastHotSpot = hotSpot;
    if (firstMove)
        return std::nullopt;
    return cursorTip(in);
}

} // namespace capture
