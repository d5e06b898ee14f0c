// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/logic/ClipKeyHandler.h"

#include "capture/logic/ClipStateMachine.h"
#include "capture/logic/SelectionGeometry.h"
#include "core/MessageBus.h"

namespace capture {
namespace {

bool isDeleteKey(int key)
{
    return key == Qt::Key_Backspace || key == Qt::Key_Delete;
}

bool isColorKey(int key)
{
    return key == Qt::Key_R || key == Qt::Key_H || key == Qt::Key_Z;
}

// The keypad's Enter is Return to the capture: it copies, and a text view
// takes it as a new line. X gives it its own key.
ClipKeyEvent asTyped(const ClipKeyEvent& event)
{
    if (event.key != Qt::Key_Enter)
        return event;
    ClipKeyEvent typed = event;
    typed.key = Qt::Key_Return;
    typed.text = QStringLiteral("\r");
    return typed;
}

} // namespace

ClipKeyHandler::ClipKeyHandler(ClipStateMachine& machine)
    : m_machine(machine)
{}

bool ClipKeyHandler::monitorKeyDown(const ClipKeyEvent& pressed)
{
    const ClipKeyEvent event = asTyped(pressed);
    CaptureState& state = m_machine.state();
    ClipViewHost& host = m_machine.host();
    const Qt::KeyboardModifiers modifiers = significantModifiers(event.modifiers);
    const bool plain = modifiers == Qt::NoModifier;

    m_doubleTap.keyDown();
    // The global hot keys work during a capture as at any other time.
    if (host.globalHotKey(event))
        return true;
    // The colour keys and F only act while hovering, before the annotation window opens.
    if (!state.clipToolbarWindowOpened) {
        if (isColorKey(event.key) && host.handleColorKey(event))
            return true;
        if (event.key == Qt::Key_F && host.screenUnderMouse() == m_machine.screen()) {
            m_machine.fullScreenCapture();
            return true;
        }
    }

    AnnotationInput& markup = host.markup();
    // A modifier with Escape belongs to someone else's short cut.
    if (plain && event.key == Qt::Key_Escape) {
        host.postMessage(core::Message::CancelScreenShot);
        return true;
    }
    // Read before the text view hears of the key, which may change them.
    const bool textViewOpened = markup.textViewOpened();
    const bool caretNearTextStart = markup.caretNearTextStart();
    const bool hasStrokes = markup.hasStrokes();
    if (plain && textViewOpened && isDeleteKey(event.key)) {
        markup.textKey(overlay::TextKey::Delete);
        if (caretNearTextStart)
            return true;
    }
    if (plain && textViewOpened && event.key == Qt::Key_Return)
        markup.textKey(overlay::TextKey::Return);
    if (event.key == Qt::Key_Z && (modifiers == Qt::ControlModifier ||
                                   modifiers == (Qt::ControlModifier | Qt::ShiftModifier)))
        host.makeClipViewFirstResponder();

    // A pin's mark-up from its menu has no annotation window to take the
    // keys before the first stroke.
    if (state.annotatedOnMapFromRightMouse && plain && !hasStrokes && !textViewOpened) {
        keyDown(event);
        return true;
    }
    markup.keyPressed(event);
    return false;
}

void ClipKeyHandler::keyDown(const ClipKeyEvent& pressed)
{
    const ClipKeyEvent event = asTyped(pressed);
    CaptureState& state = m_machine.state();
    ClipViewHost& host = m_machine.host();
    if (!state.clipToolbarWindowOpened)
        return;
    const Qt::KeyboardModifiers modifiers = significantModifiers(event.modifiers);
    AnnotationInput& markup = host.markup();

    if (isDeleteKey(event.key) && markup.currentStroke()) {
        markup.deleteCurrentStroke();
        host.setCursor(ClipCursor::Arrow);
        state.pointerRole = PointerRole::Arrow;
    }
    if (markup.everythingUndone())
        markup.disableUndo();

    if (event.key == Qt::Key_Z && modifiers.testFlag(Qt::ControlModifier) &&
        !modifiers.testFlag(Qt::AltModifier) && !modifiers.testFlag(Qt::MetaModifier)) {
        if (modifiers.testFlag(Qt::ShiftModifier))
            markup.redo();
        else
            markup.undo();
        host.needsDisplay();
    }

    if (modifiers != Qt::NoModifier)
        return;
    overlay::ShortcutContext context;
    context.shortcutOfButton = host.preferences().shortcutOfButton;
    context.scrolling = host.scrollScreenShot();
    context.windowSelection = m_machine.onlyClipCurrentWindow();
    if (markup.shortcutTyped(event, context))
        host.setCropBorderIsCanMove(false);
    arrowKey(event);
}

void ClipKeyHandler::arrowKey(const ClipKeyEvent& event)
{
    CaptureState& state = m_machine.state();
    ClipViewHost& host = m_machine.host();
    // The pointer must rest on a handle, showing a resize cursor.
    const int handle = host.cropBorder().whichInResizeRect;
    if (!isResizeRole(state.pointerRole) || handle < 1 || handle > 8)
        return;
    const std::optional<KeyboardStep> step = SelectionGeometry::arrowKeyStep(
        m_machine.selection().cropBorderFrame, event.key, handle, event.mouseLocation);
    if (step) {
        host.warpPointer(step->pointer);
        state.resizeByKeyBoard = true;
        m_machine.resetFramesToThisOne(step->borderFrame);
        m_machine.setFrameForContentView(
            SelectionGeometry::grown(step->borderFrame, -SelectionGeometry::BorderBand),
            step->pointer, event.timestamp);
    }
    if (!state.resizeByKeyBoard)
        return;
    if (!state.buttonBoxHiddened) {
        state.buttonBoxHiddened = true;
        host.postMessage(core::Message::HiddenButtonOfClipToolbarWindow);
    }
    const RecorderInput& recorder = host.recorder();
    if (recorder.toolbarViewOpend() && !recorder.realStartRecordingScreen())
        m_machine.look().toolbarViewShown = false;
    host.setCursorRectsEnabled(false);
}

void ClipKeyHandler::flagsChanged(Qt::KeyboardModifiers held, double timestamp)
{
    ClipViewHost& host = m_machine.host();
    // The tool bar's save: nothing to save before a selection stands.
    if (!m_machine.state().clipToolbarWindowOpened)
        return;
    if (m_doubleTap.flagsChanged(held, host.preferences().doubleClickModifierKey,
                                 timestamp * 1000.0))
        host.saveAndOpen();
}

void ClipKeyHandler::mouseMoved()
{
    CaptureState& state = m_machine.state();
    ClipViewHost& host = m_machine.host();
    if (!state.resizeByKeyBoard)
        return;
    state.resizeByKeyBoard = false;
    if (state.buttonBoxHiddened) {
        state.buttonBoxHiddened = false;
        host.postMessage(core::Message::UnhiddenButtonOfClipToolbarWindow);
    }
    const RecorderInput& recorder = host.recorder();
    if (recorder.toolbarViewOpend() && !recorder.realStartRecordingScreen())
        m_machine.look().toolbarViewShown = true;
    host.setCursorRectsEnabled(true);
    m_machine.look().magnifierShown = false;
}

} // namespace capture
