// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/logic/ClipStateMachine.h"

#include "capture/logic/MultiWindowPick.h"
#include "capture/logic/OverlayTips.h"
#include "capture/logic/SelectionGeometry.h"
#include "capture/logic/SizeLabelPlacement.h"
#include "capture/logic/WindowRules.h"
#include "core/MessageBus.h"
#include "settings/Keys.h"

#include <algorithm>
#include <utility>

namespace capture {
namespace {

using G = SelectionGeometry;

constexpr double BorderBand = SelectionGeometry::BorderBand;
// The drag event that turns a click on a window into a region: events, not
// distance, so a slightly shaky click still takes the window.
constexpr int RegionDragEvent = 8;

const QString kDesktopPicturePrefix = QStringLiteral("Desktop Picture - ");

// The current stroke holds text (a text box or a note).
bool holdsText(const AnnotationInput& markup)
{
    const std::optional<overlay::StrokeTraits> stroke = markup.currentStroke();
    return stroke && stroke->holdsText;
}

} // namespace

ClipStateMachine::ClipStateMachine(CaptureState& state, ClipViewHost& host,
                                   core::ScreenLayout layout, int screen)
    : m_state(state)
    , m_host(host)
    , m_layout(std::move(layout))
    , m_screen(screen)
    , m_hover(state, host, m_layout, m_selection, m_look)
{
    m_state.stateOfMultiWindowScreenshots = PickMode::None;
}

QSizeF ClipStateMachine::windowSize() const
{
    if (m_screen < 0 || m_screen >= m_layout.count())
        return {};
    return m_layout.screen(m_screen).frame.size();
}

void ClipStateMachine::setOverlayAlpha(double alpha)
{
    m_overlayAlpha = alpha;
    m_host.needsDisplay();
}

void ClipStateMachine::showClipViewWithFrame(const QRectF& frame, bool withToolbar,
                                             bool isRecordScreen)
{
    m_clipState = ClipState::Waiting;
    m_selection.contentRect = frame;
    m_look = ClipLook{};
    m_look.toolbarViewShown = withToolbar;
    m_state.isRecordScreen = isRecordScreen;
    m_look.tipViewShown = !isRecordScreen && !m_state.annotatedOnMapFromRightMouse;
    m_look.tipText = openingTipText();
    // The pointer comes in as the arrow, so the opening tip stays until the
    // first press, whatever the last capture's pointer was.
    m_state.lastHotSpot = hotSpotOf(PointerRole::Arrow);
    // The surround covers the window until the first selection is shown.
    m_selection.contentViewFrame = m_selection.contentRect;
    m_selection.backgroundBoxFrame = QRectF(QPointF(0, 0), windowSize());
    setContentFrame(G::grown(m_selection.contentRect, BorderBand));
    m_state.mouseDraggedTimes = 0;
    // A change the last capture ended in the middle of (a drag with the
    // button still down, an arrow key with no move after it) hid its tool
    // bar; left set, the first selection here would be taken for the end of
    // that change and the annotation window would never open.
    m_state.buttonBoxHiddened = false;
    m_state.resizeByKeyBoard = false;
}

void ClipStateMachine::setContentFrame(const QRectF& borderFrame)
{
    m_selection.setContentFrame(borderFrame);
    m_host.needsDisplay();
}

void ClipStateMachine::setFrame()
{
    m_selection.contentViewFrame = m_selection.contentRect;
    m_selection.cropBorderFrame = G::grown(m_selection.contentRect, BorderBand);
    setContentFrame(m_selection.cropBorderFrame);
}

void ClipStateMachine::resetFramesToThisOne(const QRectF& frame)
{
    m_look.magnifierShown = true;
    m_selection.cropBorderFrame = frame;
    m_state.currentRectOfAnnotatedImageView = G::truncated(frame);
}

void ClipStateMachine::showHoveredWindow(const QRectF& windowRect)
{
    m_hover.showHoveredWindow(windowRect);
}

void ClipStateMachine::setFrameForContentView(const QRectF& rect, QPointF mouse, double now)
{
    m_hover.setFrameForContentView(rect, mouse, now, m_onlyClipCurrentWindow,
                                   m_clipState == ClipState::Dragging);
}

void ClipStateMachine::mousedown(const ClipMouseEvent& event)
{
    if (eventsHeldElsewhere())
        return;
    m_look.tipViewShown = false;
    AnnotationInput& markup = m_host.markup();

    if (event.modifiers.testFlag(Qt::ShiftModifier) &&
        m_state.stateOfMultiWindowScreenshots == PickMode::None && m_onlyClipCurrentWindow &&
        !m_state.clipToolbarWindowOpened)
        m_host.enterMultiWindowPick(event);
    // While picking, the press only keeps the overlay waiting; the release picks.
    if (m_state.stateOfMultiWindowScreenshots == PickMode::Picking) {
        m_clipState = ClipState::Waiting;
        return;
    }

    m_state.GKCropBorderViewCanMove = false;
    const bool overStroke = m_state.pointerRole == PointerRole::OverStroke;
    m_state.mouseDraggedTimes = 0;

    const QPointF point = event.location;
    const bool inBorder = G::pointInRect(point, m_selection.cropBorderFrame);
    if (event.clickCount == 2 && inBorder && m_host.preferences().doubleClickToSavePaste) {
        m_host.runLater(10, [this] { m_host.markup().copyToPaste(); });
        return;
    }
    if (holdsText(markup) && !overStroke && inBorder) {
        markup.endTextEdit();
        return;
    }
    const bool scrolling = m_host.scrollScreenShot();
    if (scrolling)
        return;

    if (m_clipState == ClipState::Waiting) {
        m_lastDate = event.timestamp;
        m_clipState = ClipState::Pressed;
        m_rectBeginPoint = G::truncated(point);
    }
    if (m_clipState == ClipState::Pressed && !m_state.clipToolbarWindowOpened)
        m_host.clipViewMouseDown(event);

    m_isCanDrawSelectFunction = false;
    const RecorderInput& recorder = m_host.recorder();
    if (!recorder.toolbarViewOpend() && recorder.isRecordingOverlay())
        m_look.layerBackgroundClear = true;

    chooseDragMode(point, scrolling, m_host.cropBorder());

    if (m_isCanDrawSelectFunction) {
        markup.pointerPressed(event);
        if (overStroke)
            return;
        if (holdsText(markup))
            markup.openTextView();
    } else {
        m_selection.startPoint = point;
        m_host.cropBorderMouseDown(event);
    }
}

bool ClipStateMachine::eventsHeldElsewhere() const
{
    // The tips box, a save panel, or the recording tool bar's start button
    // before the recording runs.
    const RecorderInput& recorder = m_host.recorder();
    return m_host.tipsBoxIsOpening() ||
           (recorder.mouseInButtonOfRecordScreen() && !recorder.realStartRecordingScreen()) ||
           m_host.savePanelOpened();
}

bool ClipStateMachine::recordingBarWaits() const
{
    const RecorderInput& recorder = m_host.recorder();
    return recorder.toolbarViewOpend() && !recorder.realStartRecordingScreen();
}

void ClipStateMachine::chooseDragMode(QPointF point, bool scrolling, const CropBorderStatus& border)
{
    const bool recordingBar = recordingBarWaits();
    const bool overSelection =
        G::pointInRect(point, m_selection.contentViewFrame) && !border.isInResizeRect;
    const bool onBorder = G::pointInRect(point, m_selection.cropBorderFrame) && !overSelection;

    const auto startMove = [&] {
        m_dragMode = DragMode::Move;
        m_state.GKCropBorderViewCanMove = true;
        if (recordingBar && !m_onlyClipCurrentWindow)
            m_host.needsDisplay();
    };

    if (border.isCanMove) {
        startMove();
    } else if (overSelection) {
        if (!recordingBar && m_host.markup().hasDrawingTool() && m_state.clipToolbarWindowOpened)
            m_isCanDrawSelectFunction = true;
        else
            startMove();
    } else if (onBorder && !scrolling) {
        m_dragMode = DragMode::Resize;
        m_selection.lastContentRectBeforeResize = m_selection.contentRect;
        if (recordingBar)
            m_host.needsDisplay();
    } else {
        m_dragMode = DragMode::None;
    }
}

void ClipStateMachine::mousedragged(const ClipMouseEvent& event)
{
    if (m_state.stateOfMultiWindowScreenshots == PickMode::Picking || eventsHeldElsewhere())
        return;
    ++m_state.mouseDraggedTimes;

    if (m_isCanDrawSelectFunction) {
        AnnotationInput& markup = m_host.markup();
        markup.pointerDragged(event);
        // A stroke costly to paint (the mosaic): every third event is enough.
        const std::optional<overlay::StrokeTraits> stroke = markup.currentStroke();
        if (stroke && stroke->paintsSparingly && m_state.mouseDraggedTimes % 3 == 0)
            m_host.needsDisplay();
        return;
    }

    if (m_state.mouseDraggedTimes == RegionDragEvent && !m_state.clipToolbarWindowOpened) {
        m_onlyClipCurrentWindow = false;
        m_look.cropBorderHideHandleRect = false;
        m_look.selectedBoxTransparent = false;
        m_look.backgroundBoxTransparent = false;
    }
    m_clipState = ClipState::Dragging;

    if (!m_state.clipToolbarWindowOpened && !m_host.recorder().toolbarViewOpend())
        dragRegion(event);
    else
        dragSelection(event);
    hideToolbarForChange();
}

void ClipStateMachine::dragRegion(const ClipMouseEvent& event)
{
    QSizeF size = getCurrentScreenSize();
    if (size.width() == 0 || size.height() == 0)
        size = getCurrentScreenSize();
    // Only the end is clamped: the begin point came from this screen.
    m_rectEndPoint = {std::clamp(event.location.x(), 0.0, std::max(0.0, size.width())),
                      std::clamp(event.location.y(), 0.0, std::max(0.0, size.height()))};
    m_look.magnifierShown = true;
    m_look.cursorImageShown = true;
    setFrameForContentView(G::spanned(m_rectEndPoint, m_rectBeginPoint), event.location,
                           event.timestamp);
    m_host.setCursor(ClipCursor::Null);
    m_host.setCursorRectsEnabled(false);
}

void ClipStateMachine::dragSelection(const ClipMouseEvent& event)
{
    // A window selection can be neither moved nor resized.
    if (m_onlyClipCurrentWindow)
        return;
    if (m_dragMode == DragMode::Move) {
        const G::Move move = G::moved(m_selection.contentRect, event.location,
                                      m_selection.startPoint, getCurrentScreenSize());
        m_selection.contentRect = move.contentRect;
        m_selection.startPoint = move.startPoint;
        m_selection.surroundSelection();
        m_look.sizeLabel = placeSizeLabel(m_selection.contentRect, getCurrentScreenSize());
        afterMoveOrResize();
    } else if (m_dragMode == DragMode::Resize) {
        m_host.setCursor(ClipCursor::Null);
        m_host.setCursorRectsEnabled(false);
        m_selection.contentRect = G::resized(m_selection.lastContentRectBeforeResize,
                                             event.location, m_host.cropBorder().numberOfReSize);
        setFrameForContentView(m_selection.contentRect, event.location, event.timestamp);
        m_host.runLater(30, [this] { m_look.magnifierShown = m_look.cursorImageShown = true; });
        afterMoveOrResize();
    }
}

void ClipStateMachine::afterMoveOrResize()
{
    // The annotation layers get the new origin now but keep their size
    // until the release settles the frame.
    const QRectF& r = m_selection.contentRect;
    m_state.currentRectOfAnnotatedImageView =
        QRectF(r.x() - BorderBand, r.y() - BorderBand, r.width(), r.height());
    m_selection.cropBorderFrame = G::grown(r, BorderBand);
    m_host.cropBorderNeedsDisplay();
}

void ClipStateMachine::hideToolbarForChange()
{
    if (!m_state.buttonBoxHiddened && m_state.clipToolbarWindowOpened && !m_onlyClipCurrentWindow) {
        m_state.buttonBoxHiddened = true;
        m_host.postMessage(core::Message::HiddenButtonOfClipToolbarWindow);
        m_look.selectedBoxTransparent = false;
        m_look.backgroundBoxTransparent = false;
        m_host.markup().hideSelectionBoxes();
    }
    if (recordingBarWaits() && m_look.toolbarViewShown && !m_onlyClipCurrentWindow)
        m_look.toolbarViewShown = false;
}

void ClipStateMachine::mouseup(const ClipMouseEvent& event)
{
    if (m_state.stateOfMultiWindowScreenshots == PickMode::Picking &&
        !m_host.recorder().isRecordingOverlay()) {
        m_host.toggleMultiWindowPick(event);
        return;
    }
    m_dragMode = DragMode::None;
    m_look.magnifierShown = false;
    m_look.cursorImageShown = false;
    m_state.lastHotSpot = QPointF(-1.0, -1.0);
    if (m_host.savePanelOpened() || m_host.tipsBoxIsOpening())
        return;
    m_state.GKCropBorderViewCanMove = false;

    if (m_isCanDrawSelectFunction) {
        m_state.mouseDraggedTimes = 0;
        AnnotationInput& markup = m_host.markup();
        markup.pointerReleased(event);
        const std::optional<overlay::StrokeTraits> stroke = markup.currentStroke();
        if (stroke && stroke->repaintsOnRelease) {
            m_host.updateTrackingAreas();
            m_host.needsDisplay();
        }
        return;
    }
    // A click while the annotation window is open changed nothing of the selection.
    if (m_state.clipToolbarWindowOpened && !m_state.buttonBoxHiddened)
        return;

    // The desktop gives the whole screen as a region, with handles: decided
    // before the border learns that a window was taken, or it would keep
    // the handles hidden and the screen could not be resized.
    if (m_state.currentWindowName.startsWith(kDesktopPicturePrefix) &&
        m_state.currentWindowLayer < 0)
        m_onlyClipCurrentWindow = false;
    if (m_onlyClipCurrentWindow) {
        m_look.cropBorderOnlyClipCurrentWindow = true;
        m_look.cropBorderAdded = true;
        // A click on a pin marks that pin up.
        if (!m_state.annotatedOnMap)
            m_state.annotatedOnMap = m_state.currentWindowName == QLatin1String(windownames::Pin);
    }
    QRectF& content = m_selection.contentRect;
    if (content.height() == 0 || content.width() == 0 ||
        (content == QRectF(QPointF(0, 0), windowSize()) && m_onlyClipCurrentWindow))
        content = m_state.currentWindowRect;
    // Nothing under the mouse and no region: nothing to leave the overlay up for.
    if (content.height() < 1.0 || content.width() < 1.0) {
        m_host.postMessage(core::Message::CancelScreenShot);
        return;
    }
    const ClipPreferences prefs = m_host.preferences();
    const int shadow = prefs.needShadowOfnotSingleWindow ? prefs.sizeOfShadow : 0;
    // A window's shadow is part of its picture, so the frame makes room for it.
    const QRectF frame = shadow >= 1 && m_onlyClipCurrentWindow && !m_state.annotatedOnMap
                             ? G::grown(content, BorderBand + shadow)
                             : G::grown(content, BorderBand);
    m_selection.fix(frame);
    m_host.needsDisplay();
    m_look.sizeLabel = placeSizeLabel(m_selection.contentRect, getCurrentScreenSize());

    if (m_state.buttonBoxHiddened) {
        // A move or resize ended while the annotation window was open.
        m_state.currentRectOfAnnotatedImageView = G::truncated(frame);
        m_state.buttonBoxHiddened = false;
        writePreRect(m_state.currentRectOfAnnotatedImageView);
        m_host.postMessage(core::Message::UnhiddenButtonOfClipToolbarWindow);
        m_host.activateApplication();
    } else if (m_state.clipToolbarWindowOpened) {
        m_state.mouseDraggedTimes = 0;
        m_clipState = ClipState::Selected;
        return;
    } else {
        finishFirstSelection(event, shadow);
    }
    m_state.mouseDraggedTimes = 0;
    m_clipState = ClipState::Selected;
}

void ClipStateMachine::finishFirstSelection(const ClipMouseEvent& event, int shadow)
{
    m_host.setCursor(ClipCursor::Arrow);
    m_state.pointerRole = PointerRole::Arrow;
    if (!m_onlyClipCurrentWindow)
        m_look.cropBorderAdded = true;
    m_host.markup().clearTool();

    m_state.currentRectOfAnnotatedImageView =
        G::grown(G::truncated(m_selection.contentRect), BorderBand);
    // The repeated area is the window without its shadow.
    writePreRect(m_onlyClipCurrentWindow
                     ? G::grown(m_state.currentRectOfAnnotatedImageView, -shadow)
                     : m_state.currentRectOfAnnotatedImageView);
    m_host.synchronizePreferences();

    m_host.cropBorderNeedsDisplay();
    m_state.screenOfScreenShot = m_host.screenUnderMouse();
    m_host.changFullImageToMosaicImage();
    m_host.openAnnotationWindow();
    m_host.activateApplication();
    m_host.markup().pointerReleased(event);

    if (m_onlyClipCurrentWindow) {
        m_host.markup().disableScrollCapture();
        if (!G::containsRect(QRectF(QPointF(0, 0), windowSize()), m_selection.selectedBoxFrame))
            m_host.setWindowBackgroundClear();
    }
    m_state.imageAllWindowArray.clear();
    if (m_layout.count() >= 2)
        m_host.postMessage(core::Message::StartAnnotation);
}

void ClipStateMachine::checkTips(bool firstMove)
{
    m_hover.checkTips(firstMove, m_onlyClipCurrentWindow);
}

QString ClipStateMachine::preRectOfScreenShots(const QRectF& frame) const
{
    // The selection inside the border, in the global top-left system.
    const QRectF local = G::grown(frame, -BorderBand);
    return G::stringFromRect(m_layout.overlayLocalToTopLeft(m_screen, local));
}

void ClipStateMachine::writePreRect(const QRectF& frame)
{
    m_host.writePreference(QString(settings::keys::preRectOfScreenShots),
                           preRectOfScreenShots(frame));
}

void ClipStateMachine::startPicking()
{
    m_state.stateOfMultiWindowScreenshots = PickMode::Picking;
    m_look.magnifierShown = false;
    m_look.cursorImageShown = false;
    m_look.backgroundBoxTransparent = true;
    m_host.setCursor(ClipCursor::Arrow);
    m_host.needsDisplay();
}

void ClipStateMachine::flagsChanged(bool shiftDown)
{
    if (shiftDown || m_state.stateOfMultiWindowScreenshots != PickMode::Picking ||
        m_host.recorder().isRecordingOverlay())
        return;
    if (m_state.arrOfAllSelectedScreenshots.empty()) {
        m_host.postMessage(core::Message::CancelScreenShot);
        return;
    }
    m_state.arrOfPreAllSelectedScreenshots.clear();
    m_state.imageAllWindowArray.clear();
    m_state.stateOfMultiWindowScreenshots = PickMode::Fixed;
    m_multiWindowScreenshots = true;
    m_dragMode = DragMode::None;

    const ClipPreferences prefs = m_host.preferences();
    const int shadow = prefs.needShadowOfnotSingleWindow ? prefs.sizeOfShadow : 0;
    const QRectF frame = pickedFrame(m_state.arrOfAllSelectedScreenshots, shadow);
    m_selection.fix(frame);
    m_look.backgroundBoxTransparent = false;
    m_look.selectedBoxTransparent = false;
    m_look.cropBorderAdded = true;
    m_look.cropBorderOnlyClipCurrentWindow = true;
    m_look.sizeLabel = placeSizeLabel(m_selection.contentRect, getCurrentScreenSize());
    m_host.markup().clearTool();
    m_state.currentRectOfAnnotatedImageView = frame;

    m_host.openAnnotationWindow();
    m_host.cropBorderNeedsDisplay();
    m_state.screenOfScreenShot = m_host.screenUnderMouse();
    m_clipState = ClipState::Selected;
    m_host.changFullImageToMosaicImage();
    m_host.setWindowBackgroundClear();
    if (m_layout.count() >= 2)
        m_host.postMessage(core::Message::StartAnnotation);
    m_host.makeKeyAndOrderFront();
    m_host.markup().disableScrollCapture();
    m_host.needsDisplay();
}

void ClipStateMachine::fullScreenCapture()
{
    m_onlyClipCurrentWindow = false;
    m_look.cropBorderOnlyClipCurrentWindow = true;
    const QSizeF size = windowSize();
    m_selection.cropBorderFrame = QRectF(-BorderBand, -BorderBand, size.width() + 2 * BorderBand,
                                         size.height() + 2 * BorderBand);
    m_look.cropBorderAdded = true;

    m_look.selectedBoxAdded = false;
    m_look.backgroundBoxAdded = false;
    m_look.tipViewShown = false;
    m_look.tipViewAdded = false;
    m_look.magnifierAdded = false;
    m_look.cursorImagesCleared = true;
    setContentFrame(m_selection.cropBorderFrame);

    if (m_state.clipToolbarWindowOpened)
        return;
    m_host.markup().clearTool();
    m_state.currentRectOfAnnotatedImageView = G::truncated(m_selection.contentFrame);
    m_host.openAnnotationWindow();
    m_state.screenOfScreenShot = m_host.screenUnderMouse();
    m_host.changFullImageToMosaicImage();
    if (m_layout.count() >= 2)
        m_host.postMessage(core::Message::StartAnnotation);
}

void ClipStateMachine::startAnnotation()
{
    if (!m_state.annotatedOnMapFromRightMouse)
        return;
    m_state.imageAllWindowArray.clear();
    m_look.cursorImageShown = false;
    // A fresh crop border over the pin's rectangle.
    m_selection.cropBorderFrame = m_state.currentRectOfAnnotatedImageView;
    m_look.cropBorderAdded = true;
    m_onlyClipCurrentWindow = true;
    m_look.cropBorderOnlyClipCurrentWindow = true;
    setContentFrame(m_selection.cropBorderFrame);
    m_look.layerBackgroundClear = true;
    m_look.selectedBoxTransparent = false;
    m_look.backgroundBoxTransparent = false;
    m_selection.surroundSelection();
    m_clipState = ClipState::Selected;
    m_host.changFullImageToMosaicImage();
    m_host.makeKeyAndOrderFront();
    m_host.activateApplication();
    m_state.screenOfScreenShot = m_host.screenUnderMouse();
}

} // namespace capture
