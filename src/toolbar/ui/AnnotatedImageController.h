// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "annotation/logic/StrokeHandleTracker.h"
#include "annotation/logic/StrokeInput.h"
#include "annotation/logic/StrokeState.h"
#include "overlay/logic/AnnotationInput.h"
#include "toolbar/logic/DataOfUsers.h"
#include "toolbar/logic/SettingsAdjust.h"
#include "toolbar/logic/ToolBarState.h"
#include "toolbar/logic/WheelAdjust.h"
#include "toolbar/ui/ClipToolBar.h"
#include "toolbar/ui/ToolBarController.h"
#include "toolbar/ui/UserColorPanel.h"

#include <QCursor>
#include <QImage>
#include <QObject>
#include <QPointer>
#include <QRectF>
#include <QVariantMap>

#include <functional>
#include <memory>

namespace annotation {
class AnnotatedImageView;
}
namespace capture {
class CaptureContext;
struct CaptureState;
} // namespace capture
namespace core {
class Clock;
class MessageBus;
} // namespace core
namespace platform {
class DesktopNotifier;
}
namespace settings {
class Defaults;
}

namespace toolbar {

class ColorAlphaBox;
struct ToolEntry;

// The annotation window of a capture, one for the process: it lies over
// the screen of the selection with the tool bar under the selection, keeps
// each tool's remembered settings, follows the preferences that change
// them, and turns the four finishing buttons into the capture's end. It is
// the mark-up the overlay drives: it holds the capture's strokes, turns the
// pointer into them and shows them in the stroke layer over the selection.
// Text views come later, so it answers that none is open.
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
    [[nodiscard]] bool hasDrawingTool() const override;
    [[nodiscard]] std::optional<overlay::StrokeTraits> currentStroke() const override;
    [[nodiscard]] bool hasStrokes() const override;
    [[nodiscard]] bool everythingUndone() const override;
    [[nodiscard]] bool textViewOpened() const override { return false; }
    [[nodiscard]] bool caretNearTextStart() const override { return true; }
    [[nodiscard]] bool pointerOnMarkup(QPointF location) const override;
    [[nodiscard]] overlay::StrokeUnderPointer strokeUnderPointer(QPointF location) const override;
    [[nodiscard]] bool handleHasPointer() const override;
    void pointerMoved(QPointF location) override;
    void pointerPressed(const overlay::ClipMouseEvent& event) override;
    void pointerDragged(const overlay::ClipMouseEvent& event) override;
    void pointerReleased(const overlay::ClipMouseEvent& event) override;
    void endTextEdit() override {}
    void openTextView() override {}
    void textKey(overlay::TextKey) override {}
    void keyPressed(const overlay::ClipKeyEvent&) override;
    bool shortcutTyped(const overlay::ClipKeyEvent& event,
                       const overlay::ShortcutContext& context) override;
    void clearTool() override;
    void hideSelectionBoxes() override {}
    void disableScrollCapture() override;
    void undo() override;
    void redo() override;
    void disableUndo() override {}
    void deleteCurrentStroke() override;
    void copyToPaste() override { copyToPasteButtonClick(); }

    // The wheel over the picture: the tool's size, a note's number or the
    // active stroke's opacity.
    void scrollWheel(const overlay::ClipWheelEvent& event) override;
    // A tick reached the mark-up less than 0.1 s ago: its gesture goes on.
    [[nodiscard]] bool scrollAcceptedInAnnotatedWindow() const { return scrollAccepted; }
    // The overlay the window is open on, or none.
    [[nodiscard]] QWidget* openOverlay() const;

    // Whether the bar, its settings box or a tip of it is shown and under
    // the global point.
    [[nodiscard]] bool barContains(QPoint global) const;
    // A pointer move over the overlay (global points): the bar's hover
    // sees every one, also those the bar's own widgets do not get.
    void mouseMoved(QPointF global);
    // A modifier went down or up over `overlay` (`held`: what is held now):
    // a tap of Control alone moves a bar that stands inside the selection
    // off the screen and back, on the overlay that holds it.
    void flagsChanged(Qt::KeyboardModifiers held, const QWidget* overlay);
    [[nodiscard]] ClipToolBar* toolBar() const { return m_bar ? m_bar->view().bar() : nullptr; }
    [[nodiscard]] ToolBarView* toolBarView() const { return m_bar ? &m_bar->view() : nullptr; }
    [[nodiscard]] DataOfUsers& dataOfUsers() { return m_dataOfUsers; }
    [[nodiscard]] bool isLoaded() const { return m_loaded; }
    [[nodiscard]] const annotation::StrokeState& strokes() const { return m_strokes; }
    [[nodiscard]] const ToolBarState& toolBarState() const { return m_toolBar; }

    // The stroke layer alone over `area` (overlay-local points, y up) at
    // `scale` pixels per point: the marks of the finished picture.
    [[nodiscard]] QImage renderMarks(const QRectF& area, double scale) const;

    // The settings box under the tool: its dots, size menu, swatches and
    // the colour panel of the user's own colour. The notifier tells that
    // the own colour is still to be chosen; none: nobody is told.
    void setNotifier(platform::DesktopNotifier* notifier) { m_notifier = notifier; }
    void size1ButtonClick() { sizeButtonClick(0); }
    void size2ButtonClick() { sizeButtonClick(1); }
    void size3ButtonClick() { sizeButtonClick(2); }
    // A shape option of the box turned on or off.
    void optionButtonClick(int option);
    void selectSizeButtonClick(const QString& title);
    // Swatches 1 to 5 and the user's own, 6.
    void selectColorButtonClick(int swatch);
    void showPicker();
    void colorChanged(const QColor& color);
    // The box, the active stroke and the picture in line with the tool's
    // remembered colour and size.
    void refreshBoxSizeAndDrawRect(const QString& tool);
    [[nodiscard]] const UserColorPanel& colorPanel() const { return m_colorPanel; }

private:
    void windowDidLoad();
    void resetButtonBox();
    void startFinish();
    void observeValueForKeyPath(const QString& key, const QVariant& value);
    void makeExclusivePairsSane();
    // A drawing tool chosen by its button or its short cut.
    void chooseDrawingTool(const ToolEntry& entry);
    // Sets the tool and shows it on the bar.
    void adjustColorAndSizeButton(int number);
    [[nodiscard]] annotation::NewStrokeSettings newStrokeSettings() const;
    void apply(const annotation::StrokeReaction& reaction);
    // The stroke layer's cursor, shown on the overlay and read back as its role.
    void showCursor(annotation::CropCursor cursor);
    // Rebuilds the tool's own cursor after a change of tool, colour or size.
    void resetCursor();
    void refreshLayers(int type);
    void placeImageView();
    // The bar's looks and its settings box after a change of tool or history.
    void refreshBar();
    [[nodiscard]] bool canUndo() const;
    void connectSettingsBox();
    void sizeButtonClick(int dot);
    // The user's own colour of `tool`, once it has been saved.
    [[nodiscard]] QColor userColorOf(const QString& tool) const;
    [[nodiscard]] BoxSettings boxSettings() const;

    // The wheel.
    [[nodiscard]] WheelScene wheelScene(QPointF location) const;
    void applyWheelSize(int size);
    void applyWheelTextSize(int size);
    void leftAndRightScrollWheel(const WheelOutcome& outcome);
    void openColorAlphaBox(QPointF location, const QString& percent);
    void hideColorAlphaBox();
    void scrollFinished() { scrollAccepted = false; }

    capture::CaptureState& m_state;
    settings::Defaults& m_defaults;
    core::MessageBus& m_bus;
    core::Clock& m_clock;
    DataOfUsers m_dataOfUsers;
    ToolBarState m_toolBar;
    annotation::StrokeState m_strokes; // emptied when the capture ends
    annotation::StrokeInput m_input{m_strokes};
    annotation::StrokeHandleTracker m_handles;
    QPointer<annotation::AnnotatedImageView> m_imageView; // lives in the overlay while open
    QCursor m_toolCursor{Qt::CrossCursor};                // the tool's own, see resetCursor()
    // The bar, made at the first opening: on the overlay while open.
    std::unique_ptr<ToolBarController> m_bar;
    UserColorPanel m_colorPanel;
    platform::DesktopNotifier* m_notifier = nullptr;
    std::function<QRectF()> m_selection;
    bool m_loaded = false;
    // A preference written here, so its change notice is our own echo.
    bool adjustByApp = false;
    bool userCanceled = false;

    // The wheel's state.
    WheelAdjust m_wheel;
    bool scrollAccepted = false; // scrollAcceptedInAnnotatedWindow
    unsigned timerScroll = 0;    // the newest tick's timer; older ones find it moved on
    QPointer<ColorAlphaBox> m_boxOfColorAlpha; // on the overlay once it has opened
};

} // namespace toolbar
