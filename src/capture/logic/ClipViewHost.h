// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "capture/logic/ClipEvents.h"
#include "core/MessageBus.h"
#include "overlay/logic/AnnotationInput.h"
#include "overlay/logic/RecorderInput.h"

#include <QPointF>
#include <QString>
#include <QVariant>
#include <QVariantMap>

#include <functional>

namespace capture {

using overlay::AnnotationInput;
using overlay::RecorderInput;

// Preferences the overlay reads.
struct ClipPreferences
{
    bool doubleClickToSavePaste = true;
    // The modifier tapped twice to save and open: "Command", "Option" or "Control".
    QString doubleClickModifierKey = QStringLiteral("Option");
    bool needShadowOfnotSingleWindow = true;
    int sizeOfShadow = 18;
    // The tool short cuts, key name to the text each holds; handed on to the
    // mark-up, which alone knows the names.
    QVariantMap shortcutOfButton;
};

// What the crop border's tracking knows about the pointer.
struct CropBorderStatus
{
    bool isCanMove = false;      // over the body, a press moves the selection
    bool isInResizeRect = false; // on a handle zone
    int whichInResizeRect = -1;  // the handle zone under the pointer, -1 none
    int numberOfReSize = 0;      // the last handle zone entered
};

// The cursors the state machine itself sets. Setting Arrow also makes the
// state machine's pointer role Arrow.
enum class ClipCursor
{
    Arrow,
    Null, // invisible: the overlay draws its own cross hair
};

// What the state machine of one screen's overlay needs from the world: the
// real view implements it, tests record the calls.
class ClipViewHost
{
public:
    virtual ~ClipViewHost() = default;

    // The mark-up on the overlay and the recorder: strokes, tools, text
    // views and the recording tool bar are theirs, asked through these.
    [[nodiscard]] virtual AnnotationInput& markup() = 0;
    [[nodiscard]] virtual const RecorderInput& recorder() const = 0;

    // Read as each event arrives.
    // The tips box or a save panel has the user.
    [[nodiscard]] virtual bool tipsBoxIsOpening() const = 0;
    [[nodiscard]] virtual bool savePanelOpened() const = 0;
    // A scrolling capture runs on the selection.
    [[nodiscard]] virtual bool scrollScreenShot() const = 0;
    [[nodiscard]] virtual ClipPreferences preferences() const = 0;
    [[nodiscard]] virtual CropBorderStatus cropBorder() const = 0;
    // Index in the screen layout of the screen under the pointer, -1 none.
    [[nodiscard]] virtual int screenUnderMouse() const = 0;

    // Posts a capture message on the bus (queued: it never runs inside the
    // handler that posts it).
    virtual void postMessage(core::Message message) = 0;
    // Runs `task` on the main thread after `milliseconds`.
    virtual void runLater(int milliseconds, std::function<void()> task) = 0;

    virtual void needsDisplay() = 0;           // the clip view repaints
    virtual void cropBorderNeedsDisplay() = 0; // the crop border repaints
    virtual void magnifierNeedsDisplay() = 0;  // the magnifier takes a new picture
    virtual void setCursor(ClipCursor cursor) = 0;
    virtual void setCursorRectsEnabled(bool enabled) = 0;
    virtual void warpPointer(QPointF local) = 0; // the real pointer to this overlay-local point
    virtual void activateApplication() = 0;
    virtual void makeKeyAndOrderFront() = 0;
    virtual void setWindowBackgroundClear() = 0; // the overlay stops showing the frozen screen

    virtual void writePreference(const QString& key, const QVariant& value) = 0;
    virtual void synchronizePreferences() = 0;

    // The hover hit test at the press (it may call setContentFrame).
    virtual void clipViewMouseDown(const ClipMouseEvent& event) = 0;
    // Multi-window picking: Shift pressed over a window, and a click while picking.
    virtual void enterMultiWindowPick(const ClipMouseEvent& event) = 0;
    virtual void toggleMultiWindowPick(const ClipMouseEvent& event) = 0;

    // The mark-up's window goes up over this overlay, with the selection.
    virtual void openAnnotationWindow() = 0;
    virtual void cropBorderMouseDown(const ClipMouseEvent& event) = 0;
    virtual void setCropBorderIsCanMove(bool canMove) = 0;
    virtual void updateTrackingAreas() = 0;
    virtual void changFullImageToMosaicImage() = 0;

    // Keys: R, H and Z of the colour readout (true when one acted and so
    // ended the capture), and the clip view taking the keyboard for undo
    // and redo.
    virtual bool handleColorKey(const ClipKeyEvent& event) = 0;
    virtual void makeClipViewFirstResponder() = 0;
    // The overlay holds the keyboard, so the global hot keys reach it as
    // keys: true when `event` is one of them, whose action then runs.
    virtual bool globalHotKey(const ClipKeyEvent& event) = 0;
    // The tool bar's save, asked for by the modifier's double tap: the saved
    // file is opened too.
    virtual void saveAndOpen() = 0;
};

} // namespace capture
