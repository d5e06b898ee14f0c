// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "capture/logic/ClipEvents.h"

#include <QPointF>
#include <QString>
#include <QVariant>
#include <QVariantMap>

#include <functional>

namespace capture {

// Flags of the tool bar, the annotation window, the text views, the
// scrolling capture and the recorder that gate the overlay's events. They
// live with their own subsystems; the host reads them as each event arrives.
struct ClipGates
{
    bool tipsBoxIsOpening = false;
    bool savePanelOpened = false;
    bool mouseInButtonOfRecordScreen = false;
    bool realStartRecordingScreen = false;
    bool scrollScreenShot = false;
    bool textViewOpened = false;
    double textViewMouseLocation = 0.0;
    // The "type" of dicOfCurrentStroke (0 square ... 8 highlight); -1 while
    // there is no current stroke.
    int currentStrokeType = -1;
    QString selectFunction;  // the current tool's name, "" for none
    int numberOfStrokes = 0; // snapshots in the stroke history
    int undoTimes = 0;
    // The overlay serves a recording region (its controller answers the
    // recording tool bar's question).
    bool isRecordingOverlay = false;
};

// Preferences the overlay reads.
struct ClipPreferences
{
    bool doubleClickToSavePaste = true;
    bool needShadowOfnotSingleWindow = true;
    int sizeOfShadow = 18;
    // Tool short cuts: key name ("squareShortcut", ...) to key ("1", "ㄩ", ...).
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

// Commands to the annotation window's controller.
enum class AnnotationCommand
{
    OpenWindow, // shows the annotation window; must set clipToolbarWindowOpened
    SquareButtonClick,
    EllipseButtonClick,
    LineButtonClick,
    ArrowButtonClick,
    PencilButtonClick,
    MosaicButtonClick,
    TextButtonClick,
    NoteButtonClick,
    HighlightButtonClick,
    MapButtonClick,
    ScrollScreenshotButtonClick,
    SaveButtonClick,
    CopyToPasteButtonClick,
    UndoButton,
    RedoButton,
    DisEnableUndoButton,
    DisableScrollScreenshotButton,
    DeleteCurrentStroke,
    ClearSelectFunction, // selectFunction to ""
    HideSelectionBoxes,  // hides its boxOfSelected, background and indicator while a change runs
};

enum class MouseEventPhase
{
    Down,
    Dragged,
    Up,
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

    // Read as each event arrives.
    [[nodiscard]] virtual ClipGates gates() const = 0;
    [[nodiscard]] virtual ClipPreferences preferences() const = 0;
    [[nodiscard]] virtual CropBorderStatus cropBorder() const = 0;
    // Index in the screen layout of the screen under the pointer, -1 none.
    [[nodiscard]] virtual int screenUnderMouse() const = 0;

    // A capture message by name ("cancelScreenShot", "startAnnotation",
    // "hiddenButtonOfClipToolbarWindow", ...).
    virtual void postMessage(const QString& name) = 0;
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

    // Stroke input and the text views.
    virtual void handleMouseEvent(const ClipMouseEvent& event, MouseEventPhase phase) = 0;
    virtual void endTextEdit() = 0;
    virtual void openTextView() = 0;
    virtual void setKeyDownCode(int code) = 0; // the text view's codes: 51 Delete, 36 Return
    virtual void cropBorderMouseDown(const ClipMouseEvent& event) = 0;
    virtual void setCropBorderIsCanMove(bool canMove) = 0;
    virtual void updateTrackingAreas() = 0;
    virtual void changFullImageToMosaicImage() = 0;
    virtual void annotation(AnnotationCommand command) = 0;

    // Keys: R, H and Z of the colour readout (true when one acted and so
    // ended the capture), the clip view taking the keyboard for undo and
    // redo, and the annotation controller's own handling.
    virtual bool handleColorKey(const ClipKeyEvent& event) = 0;
    virtual void makeClipViewFirstResponder() = 0;
    virtual void forwardKeyToAnnotation(const ClipKeyEvent& event) = 0;
};

} // namespace capture
