// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "capture/logic/CaptureState.h"
#include "capture/logic/ClipViewHost.h"

#include <QVariantMap>

#include <functional>
#include <utility>
#include <vector>

namespace capture::testing {

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
    ClipGates gateValues;
    ClipPreferences prefs;
    CropBorderStatus border;
    int underMouse = 0;
    bool colourKeyActs = false;
    // What the hover does at the press (a test sets the window it finds).
    std::function<void()> onClipViewMouseDown;

    // Records.
    std::vector<QString> messages;
    std::vector<AnnotationCommand> commands;
    std::vector<MouseEventPhase> strokeInput;
    std::vector<std::pair<int, std::function<void()>>> later;
    std::vector<QPointF> warps;
    std::vector<ClipCursor> cursors;
    std::vector<int> keyDownCodes;
    std::vector<int> colourKeys;
    std::vector<int> forwardedKeys;
    QVariantMap written;
    bool cursorRectsEnabled = true;
    int activations = 0;
    int magnifierRefreshes = 0;
    int synchronizations = 0;
    int firstResponderRequests = 0;
    int picksEntered = 0;
    int picksToggled = 0;
    int textEditsEnded = 0;
    int windowBackgroundsCleared = 0;
    int borderCanMoveCleared = 0;

    [[nodiscard]] bool posted(const QString& name) const
    {
        return std::find(messages.begin(), messages.end(), name) != messages.end();
    }
    [[nodiscard]] bool sent(AnnotationCommand command) const
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

    ClipGates gates() const override { return gateValues; }
    ClipPreferences preferences() const override { return prefs; }
    CropBorderStatus cropBorder() const override { return border; }
    int screenUnderMouse() const override { return underMouse; }

    void postMessage(const QString& name) override { messages.push_back(name); }
    void runLater(int milliseconds, std::function<void()> task) override
    {
        later.emplace_back(milliseconds, std::move(task));
    }
    void needsDisplay() override {}
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
        m_state.stateOfMultiWindowScreenshots = 1;
    }
    void toggleMultiWindowPick(const ClipMouseEvent&) override { ++picksToggled; }
    void handleMouseEvent(const ClipMouseEvent&, MouseEventPhase phase) override
    {
        strokeInput.push_back(phase);
    }
    void endTextEdit() override { ++textEditsEnded; }
    void openTextView() override {}
    void setKeyDownCode(int code) override { keyDownCodes.push_back(code); }
    void cropBorderMouseDown(const ClipMouseEvent&) override {}
    void setCropBorderIsCanMove(bool canMove) override
    {
        if (!canMove)
            ++borderCanMoveCleared;
    }
    void updateTrackingAreas() override {}
    void changFullImageToMosaicImage() override {}
    void annotation(AnnotationCommand command) override
    {
        commands.push_back(command);
        // The annotation controller marks its window open.
        if (command == AnnotationCommand::OpenWindow)
            m_state.clipToolbarWindowOpened = true;
    }
    bool handleColorKey(const ClipKeyEvent& event) override
    {
        colourKeys.push_back(event.key);
        return colourKeyActs;
    }
    void makeClipViewFirstResponder() override { ++firstResponderRequests; }
    void forwardKeyToAnnotation(const ClipKeyEvent& event) override
    {
        forwardedKeys.push_back(event.key);
    }

private:
    CaptureState& m_state;
};

} // namespace capture::testing
