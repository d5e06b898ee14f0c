// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "capture/logic/PickMode.h"

namespace capture {

// What one overlay knows when a pointer move reaches it.
struct HoverMoveInput
{
    bool recordingRuns = false;     // the view has a region tool bar and the recording started
    bool pickOnOtherScreen = false; // windows are picked, and the first pick is on another screen
    bool screenUnderMouse = false;  // this overlay's screen is the one under the pointer
    bool annotationWindowOpen = false; // clipToolbarWindowOpened
    bool regionToolbarOpen = false;    // toolbarViewOpend
    bool resizeByKeyBoard = false;
    int clipState = 0;
    bool windowsPicked = false; // arrOfAllSelectedScreenshots is not empty
    PickMode stateOfMultiWindowScreenshots = PickMode::None;
    bool magnifierShown = false; // the magnifier of this overlay is visible
};

// The steps a pointer move takes on one overlay, in the order they run.
struct HoverMoveSteps
{
    bool ignore = false;            // nothing at all happens (count aside)
    bool countMove = false;         // mouseMovedTimes counts up to 10
    bool clearMarks = false;        // the pointer left: no box, no surround, no size label
    bool endKeyboardResize = false; // an arrow-key resize ends with this move
    bool runHover = false;          // the controller's hover pass
    bool blankCursor = false;       // hide the system cursor; the overlay draws its cross
    bool placeMagnifier = false;    // the magnifier and the cross follow the pointer
    bool claimScreen = false;       // the pointer just arrived: other overlays drop their
                                    // magnifier and boxes, this one shows them
    bool checkTips = false;         // then the tips

    bool operator==(const HoverMoveSteps&) const = default;
};

// Decides what a pointer move does on an overlay before a selection stands:
// only the overlay under the pointer hovers, outlines and shows the
// magnifier; the others show their frozen screen plain.
[[nodiscard]] HoverMoveSteps hoverMoveSteps(const HoverMoveInput& in);

} // namespace capture
