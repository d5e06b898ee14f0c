// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "overlay/logic/AnnotationInput.h"
#include "toolbar/logic/DataOfUsers.h"
#include "toolbar/ui/ClipToolBar.h"

#include <QObject>
#include <QPointer>
#include <QRectF>
#include <QVariantMap>

#include <functional>

namespace capture {
class CaptureContext;
struct CaptureState;
} // namespace capture
namespace core {
class Clock;
class MessageBus;
} // namespace core
namespace settings {
class Defaults;
}

namespace toolbar {

struct ToolEntry;

// The annotation window of a capture, one for the process: it lies over
// the screen of the selection with the tool bar under the selection, keeps
// each tool's remembered settings, follows the preferences that change
// them, and turns the four finishing buttons into the capture's end. It is
// the mark-up the overlay drives: strokes and text views come with the
// stroke engine, so until then it answers that there are none.
class AnnotatedImageController final : public QObject, public overlay::AnnotationInput
{
    Q_OBJECT
public:
    // `clock` times the pin's finish after the window closes.
    AnnotatedImageController(capture::CaptureContext& context, settings::Defaults& defaults,
                             core::MessageBus& bus, core::Clock& clock, QObject* parent = nullptr);
    ~AnnotatedImageController() override;

    // Opens over `overlay` (the top-level of the selection's screen);
    // `selection` answers the selection in the overlay's top-left points
    // whenever the bar is placed again.
    void openWindow(QWidget* overlay, std::function<QRectF()> selection);
    void closeWindow();
    void hiddenButton();
    void unhiddenButton();

    void saveButtonClick();
    void copyToPasteButtonClick();
    void mapButtonClick();
    void cancelButtonClick();

    // A button of the bar, or a short cut, chose this tool. The drawing
    // tools take their choice once they can draw.
    void chooseTool(const ToolEntry& entry);

    // What the overlay asks and tells the mark-up.
    [[nodiscard]] bool hasDrawingTool() const override { return false; }
    [[nodiscard]] std::optional<overlay::StrokeTraits> currentStroke() const override
    {
        return std::nullopt;
    }
    [[nodiscard]] bool hasStrokes() const override { return false; }
    // With no history, nothing is left to undo.
    [[nodiscard]] bool everythingUndone() const override { return true; }
    [[nodiscard]] bool textViewOpened() const override { return false; }
    [[nodiscard]] bool caretNearTextStart() const override { return true; }
    void pointerPressed(const overlay::ClipMouseEvent&) override {}
    void pointerDragged(const overlay::ClipMouseEvent&) override {}
    void pointerReleased(const overlay::ClipMouseEvent&) override {}
    void endTextEdit() override {}
    void openTextView() override {}
    void textKey(overlay::TextKey) override {}
    void keyPressed(const overlay::ClipKeyEvent&) override {}
    bool shortcutTyped(const overlay::ClipKeyEvent& event,
                       const overlay::ShortcutContext& context) override;
    void clearTool() override {}
    void hideSelectionBoxes() override {}
    void disableScrollCapture() override {}
    void undo() override {}
    void redo() override {}
    void disableUndo() override {}
    void deleteCurrentStroke() override {}
    void copyToPaste() override { copyToPasteButtonClick(); }

    // Whether the bar is shown and under the global point.
    [[nodiscard]] bool barContains(QPoint global) const;
    [[nodiscard]] ClipToolBar* toolBar() const { return m_bar; }
    [[nodiscard]] DataOfUsers& dataOfUsers() { return m_dataOfUsers; }
    [[nodiscard]] bool isLoaded() const { return m_loaded; }

private:
    void windowDidLoad();
    void resetButtonBox();
    void startFinish();
    void observeValueForKeyPath(const QString& key, const QVariant& value);
    void makeExclusivePairsSane();

    capture::CaptureState& m_state;
    settings::Defaults& m_defaults;
    core::MessageBus& m_bus;
    core::Clock& m_clock;
    DataOfUsers m_dataOfUsers;
    QPointer<ClipToolBar> m_bar; // lives in the overlay while open
    std::function<QRectF()> m_selection;
    bool m_loaded = false;
    // A preference written here, so its change notice is our own echo.
    bool adjustByApp = false;
    bool userCanceled = false;
};

} // namespace toolbar
