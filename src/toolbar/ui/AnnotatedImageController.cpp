// SPDX-License-Identifier: GPL-3.0-or-later
#include "toolbar/ui/AnnotatedImageController.h"

#include "annotation/logic/StrokeCoverage.h"
#include "annotation/logic/StrokeEdit.h"
#include "annotation/logic/StrokeHitTest.h"
#include "annotation/render/StrokePainter.h"
#include "annotation/ui/AnnotatedImageView.h"
#include "annotation/ui/GKCropBorderView.h"
#include "capture/logic/CaptureContext.h"
#include "core/Clock.h"
#include "core/Geometry.h"
#include "core/Localized.h"
#include "core/MessageBus.h"
#include "platform/DesktopNotifier.h"
#include "settings/Defaults.h"
#include "settings/Keys.h"
#include "settings/PreferenceActions.h"
#include "toolbar/logic/ButtonBox.h"
#include "toolbar/logic/SettingsBox.h"
#include "toolbar/logic/ToolCursor.h"
#include "toolbar/logic/ToolRegistry.h"
#include "toolbar/logic/ToolTraits.h"
#include "toolbar/ui/ClipToolBar.h"
#include "toolbar/ui/ColorAlphaBox.h"
#include "toolbar/ui/SettingsBoxView.h"

#include <QPixmap>
#include <QWidget>

#include <algorithm>
#include <chrono>

namespace toolbar {

namespace keys = settings::keys;

AnnotatedImageController::AnnotatedImageController(capture::CaptureContext& context,
                                                   settings::Defaults& defaults,
                                                   core::MessageBus& bus, core::Clock& clock,
                                                   QObject* parent)
    : QObject(parent)
    , m_state(context.capture())
    , m_defaults(defaults)
    , m_bus(bus)
    , m_clock(clock)
{}

AnnotatedImageController::~AnnotatedImageController()
{
    delete m_imageView.data();
}

void AnnotatedImageController::windowDidLoad()
{
    m_loaded = true;
    m_state.clipToolbarWindowOpened = true;
    userCanceled = true;
    m_dataOfUsers.getUsersData(m_defaults);
    makeExclusivePairsSane();
    connect(&m_bus, &core::MessageBus::hiddenButtonOfClipToolbarWindow, this,
            &AnnotatedImageController::hiddenButton);
    connect(&m_bus, &core::MessageBus::unhiddenButtonOfClipToolbarWindow, this,
            &AnnotatedImageController::unhiddenButton);
    connect(&m_bus, &core::MessageBus::closeClipToolbarWindow, this,
            &AnnotatedImageController::closeWindow);
    connect(&m_defaults, &settings::Defaults::changed, this,
            &AnnotatedImageController::observeValueForKeyPath);
}

void AnnotatedImageController::makeExclusivePairsSane()
{
    settings::makeExclusivePairsSane(m_defaults);
}

void AnnotatedImageController::openWindow(QWidget* overlay, std::function<QRectF()> selection)
{
    if (!m_loaded)
        windowDidLoad();
    m_selection = std::move(selection);
    if (!m_bar) {
        m_bar = std::make_unique<ToolBarController>(m_toolBar, m_defaults, m_clock);
        connect(m_bar.get(), &ToolBarController::clicked, this, [this](const QString& name) {
            if (const ToolEntry* entry = toolNamed(name))
                chooseTool(*entry);
        });
        connectSettingsBox();
    }
    if (m_imageView == nullptr) {
        m_imageView = new annotation::AnnotatedImageView(m_strokes);
        m_imageView->setCurrentFunction([this] { return m_input.currentFunction(); });
    }
    // The stroke layer lies over the overlay's own layers, under the bar.
    m_imageView->setParent(overlay);
    m_imageView->show();
    m_bar->attach(overlay, m_state.annotatedOnMap);

    m_state.finish.clear();
    m_toolBar.openWindow();
    m_state.clipToolbarWindowOpened = true;
    m_state.startScreenShot = false;
    resetButtonBox();
    unhiddenButton();
    resetCursor();
}

void AnnotatedImageController::closeWindow()
{
    m_state.annotatedOnMapFromRightMouse = false;
    m_state.annotatedOnMap = false;
    // The tools' settings reach the disk here, all at once.
    if (m_state.clipToolbarWindowOpened && m_loaded)
        m_dataOfUsers.store(m_defaults);
    m_state.clipToolbarWindowOpened = false;
    // The panel first: it hands the keyboard back only to a shown overlay.
    m_colorPanel.close();
    // Nothing of a capture's mark-up outlives it.
    m_strokes.clear();
    hideColorAlphaBox();
    m_wheel.reset();
    m_toolBar.reset();
    if (m_bar)
        m_bar->detach();
    if (m_imageView != nullptr) {
        m_imageView->hide();
        m_imageView->setParent(nullptr);
    }
    m_selection = nullptr;
    // A pin's finish may still ask where it goes in this turn of the loop.
    m_clock.singleShot(std::chrono::milliseconds(100), this,
                       [this] { m_state.finish.forgetPin(); });
}

void AnnotatedImageController::placeImageView()
{
    if (m_imageView == nullptr || m_imageView->parentWidget() == nullptr)
        return;
    // The selection itself: the crop border's frame less its band.
    m_imageView->setFrameInOverlay(m_state.currentRectOfAnnotatedImageView.adjusted(6, 6, -6, -6));
    m_imageView->raise();
}

void AnnotatedImageController::resetButtonBox()
{
    placeImageView();
    if (!m_bar || !m_bar->attached() || !m_selection)
        return;
    m_bar->place(m_selection());
    // The tool that was on stays on across the new layout.
    if (const ToolEntry* entry = toolNamed(m_toolBar.selectFunction);
        entry != nullptr && entry->can(can::Draw))
        chooseDrawingTool(*entry);
    refreshBar();
}

void AnnotatedImageController::refreshBar()
{
    if (m_bar)
        m_bar->refresh(canUndo(), boxSettings());
}

bool AnnotatedImageController::canUndo() const
{
    return hasStrokes() && !everythingUndone();
}

void AnnotatedImageController::hiddenButton()
{
    if (!m_bar)
        return;
    m_bar->setShown(false);
    m_bar->closeTipAtOnce();
    refreshBar();
}

void AnnotatedImageController::unhiddenButton()
{
    if (!m_bar || !m_bar->attached())
        return;
    m_bar->setShown(true);
    resetButtonBox();
}

void AnnotatedImageController::startFinish()
{
    if (m_bar)
        m_bar->closeTipAtOnce();
    // No handles in the finished picture.
    m_strokes.dicOfCurrentStroke.reset();
    if (m_imageView != nullptr)
        m_imageView->update();
    m_state.startScreenShot = true;
    m_state.screenShotIsFinished = false;
    m_bus.post(core::Message::StartScreenShots);
    hiddenButton();
}

void AnnotatedImageController::saveButtonClick()
{
    m_state.finish.save();
    startFinish();
}

void AnnotatedImageController::copyToPasteButtonClick()
{
    m_state.finish.copy();
    startFinish();
}

void AnnotatedImageController::mapButtonClick()
{
    m_state.finish.pin();
    startFinish();
}

void AnnotatedImageController::chooseTool(const ToolEntry& entry)
{
    switch (entry.id) {
    case ToolId::Save:
        saveButtonClick();
        break;
    case ToolId::CopyToPaste:
        copyToPasteButtonClick();
        break;
    case ToolId::Map:
        mapButtonClick();
        break;
    case ToolId::Cancel:
        cancelButtonClick();
        break;
    case ToolId::Undo:
        if (m_bar)
            m_bar->closeTipAtOnce();
        undo();
        break;
    default:
        if (entry.can(can::Draw))
            chooseDrawingTool(entry);
        // The scrolling capture comes with its own part of the mark-up.
        break;
    }
}

void AnnotatedImageController::chooseDrawingTool(const ToolEntry& entry)
{
    if (m_bar)
        m_bar->closeTipAtOnce();
    // A second choice of the tool that is on leaves it on (and its button
    // pressed, which a click on it would otherwise toggle).
    if (!m_toolBar.clickChanges(QString(entry.name))) {
        refreshBar();
        return;
    }
    const QString left = m_toolBar.selectFunction;
    m_strokes.dicOfCurrentStroke.reset();
    adjustColorAndSizeButton(entry.number());
    if (left == tool(ToolId::Highlight).name)
        m_bus.post(core::Message::RefreshHighlightDrawRect);
    if (left == tool(ToolId::Mosaic).name)
        m_bus.post(core::Message::RefreshMosaicDrawRect);
    if (m_imageView != nullptr)
        m_imageView->update();
}

void AnnotatedImageController::adjustColorAndSizeButton(int number)
{
    m_toolBar.adjust(number);
    // The box shows the active stroke's colour and size, else the tool's.
    refreshBar();
    // Another tool ends the text being typed; until text views exist there
    // is none, and a message posted here would hold back the keys and the
    // drag that follow a tool's key.
    if (number != annotation::stroketype::Text && number != annotation::stroketype::Note &&
        m_imageView != nullptr)
        m_imageView->update();
    resetCursor();
}

bool AnnotatedImageController::hasDrawingTool() const
{
    // Until their layers exist, the other tools leave a press in the
    // selection to the selection itself.
    return m_toolBar.drawingToolChosen() &&
           annotation::stroketype::isShapeType(m_toolBar.numberOfSelectFunction);
}

std::optional<overlay::StrokeTraits> AnnotatedImageController::currentStroke() const
{
    if (!m_strokes.dicOfCurrentStroke)
        return std::nullopt;
    const int type = m_strokes.dicOfCurrentStroke->type;
    if (type < 0 || type >= static_cast<int>(kTools.size()))
        return overlay::StrokeTraits{};
    return strokeTraitsOf(kTools[static_cast<std::size_t>(type)]);
}

bool AnnotatedImageController::hasStrokes() const
{
    return !m_strokes.arrayOfStrokes().empty();
}

bool AnnotatedImageController::everythingUndone() const
{
    return m_strokes.everythingUndone();
}

annotation::NewStrokeSettings AnnotatedImageController::newStrokeSettings() const
{
    annotation::NewStrokeSettings settings;
    const QString name = m_toolBar.selectFunction;
    settings.color = m_dataOfUsers.color(name);
    if (!settings.color.isValid())
        settings.color = Qt::red;
    settings.size = m_dataOfUsers.size(name);
    const QVariant alpha = m_dataOfUsers.tool(name).value(QStringLiteral("colorAlpha"));
    bool ok = false;
    const double value = alpha.toString().toDouble(&ok);
    if (alpha.isValid() && ok)
        settings.colorAlpha = value;
    settings.normalTypeOfArrow = m_defaults.boolForKey(keys::normalTypeOfArrow);
    settings.enableRoundOfSquare = m_defaults.boolForKey(keys::enableRoundOfSquare);
    settings.filledOfSquare = m_defaults.boolForKey(keys::filledOfSquare);
    settings.filledOfEllipse = m_defaults.boolForKey(keys::filledOfEllipse);
    settings.selectedGaussianBlured = m_defaults.boolForKey(keys::selectedGaussianBlured);
    settings.ellipseOfHighlight = m_defaults.boolForKey(keys::ellipseOfHighlight);
    return settings;
}

void AnnotatedImageController::refreshLayers(int type)
{
    if (type == annotation::stroketype::Highlight)
        m_bus.post(core::Message::RefreshHighlightDrawRect);
    if (type == annotation::stroketype::Highlight || type == annotation::stroketype::Mosaic)
        m_bus.post(core::Message::RefreshMosaicDrawRect);
}

void AnnotatedImageController::apply(const annotation::StrokeReaction& reaction)
{
    if (reaction.adjustTool)
        adjustColorAndSizeButton(*reaction.adjustTool);
    if (reaction.refreshHighlight)
        m_bus.post(core::Message::RefreshHighlightDrawRect);
    if (reaction.refreshMosaic)
        m_bus.post(core::Message::RefreshMosaicDrawRect);
    if (reaction.disableTextView)
        m_bus.post(core::Message::DisableTextView);
    if (reaction.redraw && m_imageView != nullptr)
        m_imageView->update();
}

bool AnnotatedImageController::pointerOnMarkup(QPointF location) const
{
    if (!m_state.clipToolbarWindowOpened)
        return false;
    // The stroke layer lies over the selection itself.
    return annotation::layerCoversPoint(
        m_strokes, location, m_state.currentRectOfAnnotatedImageView.adjusted(6, 6, -6, -6));
}

overlay::StrokeUnderPointer AnnotatedImageController::strokeUnderPointer(QPointF location) const
{
    const std::optional<annotation::Stroke> hit = annotation::hittest::strokeUnderMouse(
        m_strokes, location, annotation::hittest::HitTest::Hover);
    if (!hit)
        return overlay::StrokeUnderPointer::None;
    return hit->identity() == m_strokes.currentIdentity()
               ? overlay::StrokeUnderPointer::ActiveStroke
               : overlay::StrokeUnderPointer::Stroke;
}

bool AnnotatedImageController::handleHasPointer() const
{
    return m_strokes.mouseEnterSingleStrokeTrackRect;
}

void AnnotatedImageController::showCursor(annotation::CropCursor cursor)
{
    m_state.pointerRole = annotation::pointerRoleOf(cursor);
    // The overlay's filter takes the pointer events, so the cursor goes on
    // its window, as the crop border's does.
    if (m_imageView == nullptr || m_imageView->parentWidget() == nullptr)
        return;
    if (cursor == annotation::CropCursor::ToolCrosshair)
        m_imageView->window()->setCursor(m_toolCursor);
    else
        m_imageView->window()->setCursor(annotation::GKCropBorderView::cursorShapeOf(cursor));
}

void AnnotatedImageController::resetCursor()
{
    const QString name = m_toolBar.selectFunction;
    std::optional<ActiveStrokeLook> active;
    if (m_strokes.dicOfCurrentStroke)
        active = ActiveStrokeLook{m_strokes.dicOfCurrentStroke->color,
                                  m_strokes.dicOfCurrentStroke->size};
    const ToolCursorLook look =
        toolCursorLook(name, active, m_dataOfUsers.color(name), m_dataOfUsers.size(name));
    QWidget* window = m_imageView != nullptr && m_imageView->parentWidget() != nullptr
                          ? m_imageView->window()
                          : nullptr;
    // Drawn for the overlay's screen, so that it is sharp there.
    const double ratio = window != nullptr ? window->devicePixelRatioF() : 1.0;
    // Qt's X11 cursors (Qt 6.4) take the hot spot in the pixmap's own
    // pixels, not in points.
    const QPoint hotSpot = (QPointF(kToolCursorHotSpot) * ratio).toPoint();
    m_toolCursor =
        QCursor(QPixmap::fromImage(toolCursorImage(look, ratio)), hotSpot.x(), hotSpot.y());
    if (window == nullptr)
        return;
    for (annotation::GKCropBorderView* border :
         window->findChildren<annotation::GKCropBorderView*>())
        border->setToolCursor(m_toolCursor);
    // The pointer over free space shows the new cursor at once.
    if (m_state.pointerRole == overlay::PointerRole::ToolCrosshair)
        window->setCursor(m_toolCursor);
}

void AnnotatedImageController::pointerMoved(QPointF location)
{
    if (!m_state.clipToolbarWindowOpened)
        return;
    annotation::StrokeHoverContext context;
    context.clipToolbarWindowOpened = m_state.clipToolbarWindowOpened;
    context.mouseDraggedTimes = m_input.mouseDraggedTimes();
    const annotation::StrokeHoverReaction reaction =
        m_handles.pointerMoved(location, m_strokes, context);
    if (reaction.cursor)
        showCursor(*reaction.cursor);
    if (reaction.openHandLater) {
        // Off a handle onto the stroke's body, unless something else has
        // claimed the pointer by then (or the capture is over).
        m_clock.singleShot(std::chrono::milliseconds(100), this, [this] {
            if (m_state.clipToolbarWindowOpened && overlay::isResizeRole(m_state.pointerRole))
                showCursor(annotation::CropCursor::OpenHand);
        });
    }
}

void AnnotatedImageController::pointerPressed(const overlay::ClipMouseEvent& event)
{
    hideColorAlphaBox();
    m_input.setCurrentRectOfAnnotatedImageView(m_state.currentRectOfAnnotatedImageView);
    apply(m_input.mouseDown(event.location, m_state.pointerRole, m_toolBar.numberOfSelectFunction,
                            newStrokeSettings(), [this](QPointF p) {
                                return annotation::hittest::getdicOfCurrentStrokeUnderMouse(
                                    m_strokes, p);
                            }));
}

void AnnotatedImageController::pointerDragged(const overlay::ClipMouseEvent& event)
{
    apply(m_input.mouseDragged(event.location));
}

void AnnotatedImageController::pointerReleased(const overlay::ClipMouseEvent& event)
{
    apply(m_input.mouseUp(event.location));
    // A committed or dropped stroke may change what undo can take back.
    refreshBar();
}

void AnnotatedImageController::clearTool()
{
    m_toolBar.adjust(-1);
    refreshBar();
}

void AnnotatedImageController::disableScrollCapture()
{
    if (m_bar)
        m_bar->setWindowSelection(true);
    m_toolBar.scrollScreenshotEnabled = false;
    refreshBar();
}

void AnnotatedImageController::undo()
{
    m_strokes.undoDraw();
    refreshLayers(annotation::stroketype::Highlight);
    if (m_imageView != nullptr)
        m_imageView->update();
    refreshBar();
}

void AnnotatedImageController::redo()
{
    if (!m_strokes.redoDraw())
        return;
    refreshLayers(annotation::stroketype::Highlight);
    if (m_imageView != nullptr)
        m_imageView->update();
    refreshBar();
}

void AnnotatedImageController::deleteCurrentStroke()
{
    const std::optional<int> type = m_strokes.deleteCurrentStroke();
    if (!type)
        return;
    if (*type == annotation::stroketype::Mosaic || *type == annotation::stroketype::Highlight)
        refreshLayers(*type);
    else
        m_bus.post(core::Message::RefreshOthersDrawRect);
    if (m_imageView != nullptr)
        m_imageView->update();
}

QImage AnnotatedImageController::renderMarks(const QRectF& area, double scale) const
{
    return annotation::StrokePainter::renderLayer(m_strokes, area, scale);
}

bool AnnotatedImageController::shortcutTyped(const overlay::ClipKeyEvent& event,
                                             const overlay::ShortcutContext& context)
{
    const ToolEntry* entry = chooseByShortcut(event.key, event.text, context.shortcutOfButton,
                                              context.scrolling, context.windowSelection);
    if (entry == nullptr)
        return false;
    chooseTool(*entry);
    return entry->can(can::EndPendingMove);
}

void AnnotatedImageController::cancelButtonClick()
{
    if (m_bar)
        m_bar->closeTipAtOnce();
    m_bus.post(core::Message::CancelScreenShot);
}

bool AnnotatedImageController::barContains(QPoint global) const
{
    return m_bar && m_bar->view().contains(global);
}

void AnnotatedImageController::mouseMoved(QPointF global)
{
    hideColorAlphaBox();
    if (m_bar)
        m_bar->mouseMoved(global);
}

void AnnotatedImageController::flagsChanged(Qt::KeyboardModifiers held, const QWidget* overlay)
{
    if (m_bar)
        m_bar->flagsChanged(held, overlay);
}

void AnnotatedImageController::keyPressed(const overlay::ClipKeyEvent&)
{
    if (m_bar)
        m_bar->keyDown();
}

void AnnotatedImageController::observeValueForKeyPath(const QString& key, const QVariant&)
{
    struct Pair
    {
        QLatin1StringView key, partner, stored;
    };
    static const Pair pairs[] = {
        {keys::selectedMosaic, keys::selectedGaussianBlured, keys::selectedMosaic},
        {keys::selectedGaussianBlured, keys::selectedMosaic, keys::selectedMosaic},
        {keys::squareOfHighlight, keys::ellipseOfHighlight, keys::squareOfHighlight},
        {keys::ellipseOfHighlight, keys::squareOfHighlight, keys::squareOfHighlight},
    };
    for (const Pair& pair : pairs) {
        if (key != pair.key)
            continue;
        // Our own write of the partner comes back here once; let it pass.
        if (adjustByApp) {
            adjustByApp = false;
            return;
        }
        adjustByApp = true;
        m_defaults.setBool(pair.partner, false);
        m_defaults.synchronize();
        return;
    }
    // The tool short cuts are followed by the live table
    // (settings::ShortcutOfButton), from the start on, not only once this
    // window has loaded. The shape options reach the active stroke.
    static constexpr QLatin1StringView shapeOptions[] = {
        keys::filledOfSquare, keys::enableRoundOfSquare, keys::filledOfEllipse,
        keys::normalTypeOfArrow};
    if (std::find(std::begin(shapeOptions), std::end(shapeOptions), key) == std::end(shapeOptions))
        return;
    if (annotation::edit::followOption(m_strokes, key, m_defaults.boolForKey(key))) {
        if (m_imageView != nullptr)
            m_imageView->update();
        refreshBar();
    }
    m_defaults.synchronize();
}

} // namespace toolbar
