// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/logic/ClipKeyHandler.h"

#include "capture/logic/ClipStateMachine.h"
#include "capture/logic/SelectionGeometry.h"
#include "core/MessageBus.h"

#include <array>

namespace capture {
namespace {

// Key codes the text view of a stroke expects in keyDownCode.
constexpr int TextDeleteCode = 51;
constexpr int TextReturnCode = 36;

struct ShortcutEntry
{
    const char* key;
    AnnotationCommand command;
    bool blockedWhileScrolling;
    bool endsPendingMove; // a tool choice ends a pending move of the selection
};

// In this order: when two names hold the same key, the earlier wins.
constexpr std::array<ShortcutEntry, 13> kShortcuts{{
    {"squareShortcut", AnnotationCommand::SquareButtonClick, true, true},
    {"ellipseShortcut", AnnotationCommand::EllipseButtonClick, true, true},
    {"lineShortcut", AnnotationCommand::LineButtonClick, true, true},
    {"arrowShortcut", AnnotationCommand::ArrowButtonClick, true, true},
    {"pencilShortcut", AnnotationCommand::PencilButtonClick, true, true},
    {"mosaicShortcut", AnnotationCommand::MosaicButtonClick, true, true},
    {"textShortcut", AnnotationCommand::TextButtonClick, true, true},
    {"noteShortcut", AnnotationCommand::NoteButtonClick, true, true},
    {"highlightShortcut", AnnotationCommand::HighlightButtonClick, true, true},
    {"mapShortcut", AnnotationCommand::MapButtonClick, true, false},
    {"scrollScreenshotShortcut", AnnotationCommand::ScrollScreenshotButtonClick, true, false},
    {"saveShortcut", AnnotationCommand::SaveButtonClick, false, false},
    {"copyToPasteShortcut", AnnotationCommand::CopyToPasteButtonClick, false, false},
}};

const ShortcutEntry* shortcutEntry(const ClipKeyEvent& event, const QVariantMap& table)
{
    QString typed;
    if (event.key == Qt::Key_Space)
        typed = QString(QChar(0x3129)); // "ㄩ"
    else if (event.key == Qt::Key_Return)
        typed = QString(QChar(0x21A9)); // "↩"
    else
        typed = event.text.toUpper();
    if (typed.isEmpty())
        return nullptr;
    for (const ShortcutEntry& entry : kShortcuts) {
        const auto it = table.constFind(QString::fromLatin1(entry.key));
        if (it != table.constEnd() && it->toString() == typed)
            return &entry;
    }
    return nullptr;
}

bool isDeleteKey(int key)
{
    return key == Qt::Key_Backspace || key == Qt::Key_Delete;
}

bool isColorKey(int key)
{
    return key == Qt::Key_R || key == Qt::Key_H || key == Qt::Key_Z;
}

} // namespace

ClipKeyHandler::ClipKeyHandler(ClipStateMachine& machine)
    : m_machine(machine)
{}

std::optional<AnnotationCommand>
ClipKeyHandler::shortcutCommand(const ClipKeyEvent& event, const QVariantMap& shortcutOfButton)
{
    const ShortcutEntry* entry = shortcutEntry(event, shortcutOfButton);
    if (entry == nullptr)
        return std::nullopt;
    return entry->command;
}

bool ClipKeyHandler::monitorKeyDown(const ClipKeyEvent& event)
{
    CaptureState& state = m_machine.state();
    ClipViewHost& host = m_machine.host();
    const Qt::KeyboardModifiers modifiers = significantModifiers(event.modifiers);
    const bool plain = modifiers == Qt::NoModifier;

    // The colour keys and F only act while hovering, before the annotation window opens.
    if (!state.clipToolbarWindowOpened) {
        if (isColorKey(event.key) && host.handleColorKey(event))
            return true;
        if (event.key == Qt::Key_F && host.screenUnderMouse() == m_machine.screen()) {
            m_machine.fullScreenCapture();
            return true;
        }
    }

    const ClipGates gates = host.gates();
    // A modifier with Escape belongs to someone else's short cut.
    if (plain && event.key == Qt::Key_Escape) {
        host.postMessage(QString::fromLatin1(core::MessageBus::CancelScreenShot));
        return true;
    }
    if (plain && gates.textViewOpened && isDeleteKey(event.key)) {
        host.setKeyDownCode(TextDeleteCode);
        if (gates.textViewMouseLocation < 2)
            return true;
    }
    if (plain && gates.textViewOpened && event.key == Qt::Key_Return)
        host.setKeyDownCode(TextReturnCode);
    if (event.key == Qt::Key_Z && (modifiers == Qt::ControlModifier ||
                                   modifiers == (Qt::ControlModifier | Qt::ShiftModifier)))
        host.makeClipViewFirstResponder();

    // A pin's mark-up from its menu has no annotation window to take the
    // keys before the first stroke.
    if (state.annotatedOnMapFromRightMouse && plain && gates.numberOfStrokes == 0 &&
        !gates.textViewOpened) {
        keyDown(event);
        return true;
    }
    host.forwardKeyToAnnotation(event);
    return false;
}

void ClipKeyHandler::keyDown(const ClipKeyEvent& event)
{
    CaptureState& state = m_machine.state();
    ClipViewHost& host = m_machine.host();
    if (!state.clipToolbarWindowOpened)
        return;
    const Qt::KeyboardModifiers modifiers = significantModifiers(event.modifiers);

    if (isDeleteKey(event.key) && host.gates().currentStrokeType >= 0) {
        host.annotation(AnnotationCommand::DeleteCurrentStroke);
        host.setCursor(ClipCursor::Arrow);
        state.pointerRole = PointerRole::Arrow;
    }
    const ClipGates gates = host.gates();
    if (gates.numberOfStrokes == gates.undoTimes)
        host.annotation(AnnotationCommand::DisEnableUndoButton);

    if (event.key == Qt::Key_Z && modifiers.testFlag(Qt::ControlModifier) &&
        !modifiers.testFlag(Qt::AltModifier) && !modifiers.testFlag(Qt::MetaModifier)) {
        host.annotation(modifiers.testFlag(Qt::ShiftModifier) ? AnnotationCommand::RedoButton
                                                              : AnnotationCommand::UndoButton);
        host.needsDisplay();
    }

    if (modifiers != Qt::NoModifier)
        return;
    if (const ShortcutEntry* entry = shortcutEntry(event, host.preferences().shortcutOfButton)) {
        const bool blocked = entry->blockedWhileScrolling && gates.scrollScreenShot;
        const bool scrollRefused =
            entry->command == AnnotationCommand::ScrollScreenshotButtonClick &&
            m_machine.onlyClipCurrentWindow();
        if (!blocked && !scrollRefused) {
            host.annotation(entry->command);
            if (entry->endsPendingMove)
                host.setCropBorderIsCanMove(false);
        }
    }
    arrowKey(event, gates);
}

void ClipKeyHandler::arrowKey(const ClipKeyEvent& event, const ClipGates& gates)
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
        host.postMessage(QStringLiteral("hiddenButtonOfClipToolbarWindow"));
    }
    if (state.toolbarViewOpend && !gates.realStartRecordingScreen)
        m_machine.look().toolbarViewShown = false;
    host.setCursorRectsEnabled(false);
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
        host.postMessage(QStringLiteral("unhiddenButtonOfClipToolbarWindow"));
    }
    if (state.toolbarViewOpend && !host.gates().realStartRecordingScreen)
        m_machine.look().toolbarViewShown = true;
    host.setCursorRectsEnabled(true);
    m_machine.look().magnifierShown = false;
}

} // namespace capture
