// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "capture/logic/CaptureState.h"
#include "capture/logic/ClipViewHost.h"
#include "toolbar/logic/ToolRegistry.h"

#include <QVariantMap>

#include <algorithm>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace capture::testing {

// What the overlay told the mark-up (and its host to open the mark-up's
// window), in the words of the tool bar's buttons.
enum class Cmd
{
    OpenWindow,
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
    CancelButtonClick,
    SaveButtonClick,
    CopyToPasteButtonClick,
    UndoButton,
    RedoButton,
    DisEnableUndoButton,
    DisableScrollScreenshotButton,
    DeleteCurrentStroke,
    ClearSelectFunction,
    HideSelectionBoxes,
};

enum class MouseEventPhase
{
    Down,
    Dragged,
    Up,
};

// The mark-up's side: answers from plain fields, records what it is told,
// and chooses tools by short cut through the real tool table.
class FakeMarkup final : public AnnotationInput
{
public:
    // Answers.
    bool drawingTool = false;
    std::optional<overlay::StrokeTraits> stroke;
    int numberOfStrokes = 0;
    int undoTimes = 0;
    bool textView = false;
    double textViewMouseLocation = 0.0;

    // Records.
    std::vector<Cmd> commands;
    std::vector<MouseEventPhase> strokeInput;
    std::vector<int> keyDownCodes; // the text view's codes: 51 Delete, 36 Return
    std::vector<int> forwardedKeys;
    int textEditsEnded = 0;

    bool hasDrawingTool() const override { return drawingTool; }
    std::optional<overlay::StrokeTraits> currentStroke() const override { return stroke; }
    bool hasStrokes() const override { return numberOfStrokes != 0; }
    bool everythingUndone() const override { return numberOfStrokes == undoTimes; }
    bool textViewOpened() const override { return textView; }
    bool caretNearTextStart() const override { return textViewMouseLocation < 2; }
    void pointerPressed(const ClipMouseEvent&) override
    {
        strokeInput.push_back(MouseEventPhase::Down);
    }
    void pointerDragged(const ClipMouseEvent&) override
    {
        strokeInput.push_back(MouseEventPhase::Dragged);
    }
    void pointerReleased(const ClipMouseEvent&) override
    {
        strokeInput.push_back(MouseEventPhase::Up);
    }
    void endTextEdit() override { ++textEditsEnded; }
    void openTextView() override {}
    void textKey(overlay::TextKey key) override
    {
        keyDownCodes.push_back(key == overlay::TextKey::Delete ? 51 : 36);
    }
    void keyPressed(const ClipKeyEvent& event) override { forwardedKeys.push_back(event.key); }
    bool shortcutTyped(const ClipKeyEvent& event, const overlay::ShortcutContext& context) override
    {
        const toolbar::ToolEntry* entry =
            toolbar::chooseByShortcut(event.key, event.text, context.shortcutOfButton,
                                      context.scrolling, context.windowSelection);
        if (entry == nullptr)
            return false;
        // The button commands follow the tool numbers, from Square on.
        commands.push_back(
            static_cast<Cmd>(static_cast<int>(Cmd::SquareButtonClick) + entry->number()));
        return entry->can(toolbar::can::EndPendingMove);
    }
    void clearTool() override { commands.push_back(Cmd::ClearSelectFunction); }
    void hideSelectionBoxes() override { commands.push_back(Cmd::HideSelectionBoxes); }
    void disableScrollCapture() override { commands.push_back(Cmd::DisableScrollScreenshotButton); }
    void undo() override { commands.push_back(Cmd::UndoButton); }
    void redo() override { commands.push_back(Cmd::RedoButton); }
    void disableUndo() override { commands.push_back(Cmd::DisEnableUndoButton); }
    void deleteCurrentStroke() override { commands.push_back(Cmd::DeleteCurrentStroke); }
    void copyToPaste() override { commands.push_back(Cmd::CopyToPasteButtonClick); }
};

// The recorder's side: plain answers.
class FakeRecorder final : public RecorderInput
{
public:
    bool recordingOverlay = false;
    bool toolbarView = false;
    bool mouseInButton = false;
    bool recording = false;

    bool isRecordingOverlay() const override { return recordingOverlay; }
    bool toolbarViewOpend() const override { return toolbarView; }
    bool mouseInButtonOfRecordScreen() const override { return mouseInButton; }
    bool realStartRecordingScreen() const override { return recording; }
};

// Records what the overlay's state machine asks of its view, and answers
// its questions from plain fields a test sets.
class FakeClipViewHost final : public ClipViewHost
{
public:
    explicit FakeClipViewHost(CaptureState& state)
        : m_state(state)
    {
        prefs.shortcutOfButton = {{"squareShortcut", "1"},
                                  {"ellipseShortcut", "2"},
                                  {"lineShortcut", "3"},
                                  {"arrowShortcut", "4"},
                                  {"pencilShortcut", "5"},
                                  {"mosaicShortcut", "6"},
                                  {"textShortcut", "7"},
                                  {"noteShortcut", "8"},
                                  {"highlightShortcut", "9"},
                                  {"mapShortcut", "T"},
                                  {"scrollScreenshotShortcut", "S"},
                                  {"saveShortcut", QString(QChar(0x3129))},
                                  {"copyToPasteShortcut", QString(QChar(0x21A9))}};
    }

    // Answers.
    FakeMarkup mark;
    FakeRecorder rec;
    bool tipsBox = false;
    bool savePanel = false;
    bool scrolling = false;
    ClipPreferences prefs;
    CropBorderStatus border;
    int underMouse = 0;
    bool colourKeyActs = false;
    // The one global hot key the tests type.
    std::pair<int, Qt::KeyboardModifiers> globalKey{Qt::Key_Z, Qt::AltModifier};
    // What the hover does at the press (a test sets the window it finds).
    std::function<void()> onClipViewMouseDown;

    // Records.
    std::vector<QString> messages;
    // What the mark-up was told, with the opening of its window.
    std::vector<Cmd>& commands = mark.commands;
    std::vector<MouseEventPhase>& strokeInput = mark.strokeInput;
    std::vector<int>& keyDownCodes = mark.keyDownCodes;
    std::vector<int>& forwardedKeys = mark.forwardedKeys;
    std::vector<std::pair<int, std::function<void()>>> later;
    std::vector<QPointF> warps;
    std::vector<ClipCursor> cursors;
    std::vector<int> colourKeys;
    QVariantMap written;
    bool cursorRectsEnabled = true;
    int activations = 0;
    int magnifierRefreshes = 0;
    int repaints = 0;
    int synchronizations = 0;
    int firstResponderRequests = 0;
    int picksEntered = 0;
    int picksToggled = 0;
    int windowBackgroundsCleared = 0;
    int borderCanMoveCleared = 0;
    int hotKeysRun = 0;
    int savesAndOpens = 0;

    [[nodiscard]] bool posted(const QString& name) const
    {
        return std::find(messages.begin(), messages.end(), name) != messages.end();
    }
    [[nodiscard]] bool sent(Cmd command) const
    {
        return std::find(commands.begin(), commands.end(), command) != commands.end();
    }
    void runLater()
    {
        auto pending = std::move(later);
        later.clear();
        for (auto& [delay, task] : pending)
            task();
    }

    AnnotationInput& markup() override { return mark; }
    const RecorderInput& recorder() const override { return rec; }
    bool tipsBoxIsOpening() const override { return tipsBox; }
    bool savePanelOpened() const override { return savePanel; }
    bool scrollScreenShot() const override { return scrolling; }
    ClipPreferences preferences() const override { return prefs; }
    CropBorderStatus cropBorder() const override { return border; }
    int screenUnderMouse() const override { return underMouse; }

    void postMessage(core::Message message) override
    {
        messages.push_back(QString::fromLatin1(core::MessageBus::nameOf(message)));
    }
    void runLater(int milliseconds, std::function<void()> task) override
    {
        later.emplace_back(milliseconds, std::move(task));
    }
    void needsDisplay() override { ++repaints; }
    void cropBorderNeedsDisplay() override {}
    void magnifierNeedsDisplay() override { ++magnifierRefreshes; }
    void setCursor(ClipCursor cursor) override { cursors.push_back(cursor); }
    void setCursorRectsEnabled(bool enabled) override { cursorRectsEnabled = enabled; }
    void warpPointer(QPointF local) override { warps.push_back(local); }
    void activateApplication() override { ++activations; }
    void makeKeyAndOrderFront() override {}
    void setWindowBackgroundClear() override { ++windowBackgroundsCleared; }
    void writePreference(const QString& key, const QVariant& value) override
    {
        written.insert(key, value);
    }
    void synchronizePreferences() override { ++synchronizations; }
    void clipViewMouseDown(const ClipMouseEvent&) override
    {
        if (onClipViewMouseDown)
            onClipViewMouseDown();
    }
    void enterMultiWindowPick(const ClipMouseEvent&) override
    {
        ++picksEntered;
        m_state.stateOfMultiWindowScreenshots = PickMode::Picking;
    }
    void toggleMultiWindowPick(const ClipMouseEvent&) override { ++picksToggled; }
    void openAnnotationWindow() override
    {
        commands.push_back(Cmd::OpenWindow);
        // The annotation controller marks its window open.
        m_state.clipToolbarWindowOpened = true;
    }
    void cropBorderMouseDown(const ClipMouseEvent&) override {}
    void setCropBorderIsCanMove(bool canMove) override
    {
        if (!canMove)
            ++borderCanMoveCleared;
    }
    void updateTrackingAreas() override {}
    void changFullImageToMosaicImage() override {}
    bool handleColorKey(const ClipKeyEvent& event) override
    {
        colourKeys.push_back(event.key);
        return colourKeyActs;
    }
    void makeClipViewFirstResponder() override { ++firstResponderRequests; }
    void saveAndOpen() override { ++savesAndOpens; }
    bool globalHotKey(const ClipKeyEvent& event) override
    {
        const bool isHotKey = event.key == globalKey.first &&
                              significantModifiers(event.modifiers) == globalKey.second;
        if (isHotKey)
            ++hotKeysRun;
        return isHotKey;
    }

private:
    CaptureState& m_state;
};

} // namespace capture::testing
