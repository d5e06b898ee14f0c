// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/logic/HoverMoveDecision.h"

namespace capture {

HoverMoveSteps hoverMoveSteps(const HoverMoveInput& in)
{
    HoverMoveSteps steps;
    if (in.recordingRuns) {
        steps.ignore = true;
        return steps;
    }
    steps.countMove = true;
    // A multi-window pick stays on the screen where it began.
    if (in.pickOnOtherScreen) {
        steps.ignore = true;
        return steps;
    }
    steps.clearMarks = !in.screenUnderMouse && !in.annotationWindowOpen && !in.regionToolbarOpen;
    steps.endKeyboardResize = in.resizeByKeyBoard;
    steps.checkTips = true;
    if (in.clipState != 0 || in.annotationWindowOpen)
        return steps;
    steps.runHover = true;
    steps.blankCursor = !in.windowsPicked;
    // While Shift picks windows the magnifier would cover the windows.
    if (in.stateOfMultiWindowScreenshots == PickMode::Picking) {
        steps.checkTips = false;
        return steps;
    }
    if (in.screenUnderMouse) {
        steps.placeMagnifier = true;
        steps.claimScreen = !in.magnifierShown;
    }
    return steps;
}

} // namespace capture
