// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "capture/logic/ClipEvents.h"
#include "capture/logic/ClipViewHost.h"
#include "capture/logic/ModifierDoubleTap.h"

#include <QString>

namespace capture {

class ClipStateMachine;

// The keys of a capture for one screen's overlay: the monitor's table, which
// sees every key first, and the clip view's own keyDown, which acts once the
// annotation window is open (undo, delete, tool short cuts, arrow keys).
// What the keys mean to the mark-up (which tool a short cut chooses, what a
// text view does with Delete) is the mark-up's: it gets them through
// AnnotationInput.
class ClipKeyHandler
{
public:
    explicit ClipKeyHandler(ClipStateMachine& machine);

    // From the event filter, for every key press. True when the key was
    // consumed; otherwise it has been forwarded to the annotation
    // controller and goes on to the focused widget.
    bool monitorKeyDown(const ClipKeyEvent& event);

    // The clip view's keyDown (the focused view, or the monitor during a
    // mark-up of a pin).
    void keyDown(const ClipKeyEvent& event);

    // From the view's mouseMoved: the first move after arrow-key changes
    // ends them and brings the tool bar back.
    void mouseMoved();

    // A modifier went down or up; `held` is what is held once it has. With
    // the tool bar open, two taps of the chosen modifier save and open.
    void flagsChanged(Qt::KeyboardModifiers held, double timestamp);

private:
    void arrowKey(const ClipKeyEvent& event);

    ClipStateMachine& m_machine;
    ModifierDoubleTap m_doubleTap;
};

} // namespace capture
