// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/ui/QNClipView.h"

#include "annotation/logic/CropBorderTracker.h"
#include "annotation/ui/GKCropBorderView.h"
#include "capture/logic/ClipKeyHandler.h"
#include "capture/logic/ClipStateMachine.h"
#include "capture/logic/HoverMagnifier.h"
#include "capture/logic/HoverMoveDecision.h"
#include "capture/logic/WindowRules.h"
#include "capture/ui/QNClipViewHost.h"
#include "capture/ui/QNClipWindow.h"
#include "core/Shadow.h"
#include "platform/WindowServer.h"
#include "settings/Defaults.h"
#include "settings/Keys.h"
#include "toolbar/ui/AnnotatedImageController.h"

#include <QPainter>

namespace capture {

QNClipView::QNClipView(QNClipWindow* window, const QNClipViewServices& services, int screenIndex)
    : QWidget(window)
    , m_window(window)
    , m_services(services)
    , m_screenIndex(screenIndex)
    , m_host(std::make_unique<QNClipViewHost>(*this, m_services))
    , m_machine(std::make_unique<ClipStateMachine>(captureState(), *m_host, m_services.layout,
                                                   screenIndex))
    , m_keys(std::make_unique<ClipKeyHandler>(*m_machine))
    , m_hover(m_services.layout, screenIndex)
    , m_readout(m_services.readoutState)
    , m_painter(&m_readout)
{
    setObjectName(QStringLiteral("QNClipView"));
    // Events come through the manager's filter; the view only paints.
    setAttribute(Qt::WA_TransparentForMouseEvents);
    const QRectF frame = m_services.layout.screen(screenIndex).frame;
    setGeometry(0, 0, qRound(frame.width()), qRound(frame.height()));
}

QNClipView::~QNClipView() = default;

QPointF QNClipView::bottomLeftOf(QPointF local) const
{
    const core::ScreenLayout& layout = m_services.layout;
    return layout.topLeftToBottomLeft(layout.overlayLocalToTopLeft(m_screenIndex, local));
}

void QNClipView::CaptureFullScreen()
{
    const core::ScreenInfo& info = m_services.layout.screen(m_screenIndex);
    QImage picture = m_services.windowServer.pictureOfRect(info.frame);
    if (picture.isNull())
        return;
    m_fullImage = core::Picture::pixelsAsPoints(picture);
    picture.setDevicePixelRatio(info.scale);
    m_window->setBackgroundPicture(picture);
    // The magnifier reads the frozen screen, never the overlay drawn over it.
    m_readout.setFrozenScreen(picture, info.scale);
}

void QNClipView::showClipViewWithFrame(const QRectF& frame, bool withToolbar, bool isRecordScreen)
{
    m_machine->showClipViewWithFrame(frame, withToolbar, isRecordScreen);
    update();
}

void QNClipView::mousedown(const ClipMouseEvent& event)
{
    m_pointer = event.location;
    if (m_cropBorder != nullptr)
        m_cropBorder->mouseMovedInOverlay(event.location);
    m_machine->mousedown(event);
    syncCropBorder();
    update();
}

void QNClipView::mousedragged(const ClipMouseEvent& event)
{
    m_pointer = event.location;
    m_machine->mousedragged(event);
    if (m_cropBorder != nullptr)
        m_cropBorder->mouseDragged();
    syncCropBorder();
    update();
}

void QNClipView::mouseup(const ClipMouseEvent& event)
{
    m_pointer = event.location;
    m_machine->mouseup(event);
    if (m_cropBorder != nullptr)
        m_cropBorder->mouseUp(event.clickCount);
    syncCropBorder();
    update();
}

void QNClipView::mouseMoved(QPointF local)
{
    // The crop border tracks the pointer over its zones whatever else the
    // move means, as its cursors and handles depend on it.
    if (m_cropBorder != nullptr && m_cropBorder->isVisible()) {
        m_cropBorder->mouseMovedInOverlay(local);
        m_services.delegate.markup().pointerMoved(local);
    }
    CaptureState& state = captureState();
    HoverMoveInput in;
    in.screenUnderMouse = m_services.delegate.currentScreenForMouseLocation() == m_screenIndex;
    in.annotationWindowOpen = state.clipToolbarWindowOpened;
    in.regionToolbarOpen = state.toolbarViewOpend;
    in.resizeByKeyBoard = state.resizeByKeyBoard;
    in.clipState = static_cast<int>(m_machine->clipState());
    in.windowsPicked = !state.arrOfAllSelectedScreenshots.empty();
    in.stateOfMultiWindowScreenshots = state.stateOfMultiWindowScreenshots;
    in.magnifierShown = m_magnifierShown;
    const HoverMoveSteps steps = hoverMoveSteps(in);
    if (steps.ignore)
        return;
    if (steps.countMove && state.mouseMovedTimes < 10)
        ++state.mouseMovedTimes;
    if (steps.endKeyboardResize)
        m_keys->mouseMoved();
    if (steps.claimScreen) {
        // The pointer just came to this screen: it shows the boxes, the
        // others drop theirs.
        m_services.delegate.claimScreen(m_screenIndex);
        m_machine->look().selectedBoxTransparent = false;
        m_machine->look().backgroundBoxTransparent = false;
    }
    if (steps.clearMarks)
        clearMarks();
    if (steps.runHover) {
        const HoverMoveOutcome outcome = m_hover.clipViewMouseMoved(state, bottomLeftOf(local));
        if (outcome.outlineChanged)
            m_machine->showHoveredWindow(outcome.windowRect);
        if (outcome.focusScreen >= 0)
            m_services.delegate.giveKeyboardTo(outcome.focusScreen);
    }
    if (steps.blankCursor)
        m_window->setCursor(Qt::BlankCursor);
    m_pointer = local;
    m_pointerHere = true;
    if (steps.placeMagnifier) {
        m_magnifierShown = true;
        m_readout.mouseMoved(local, height());
    }
    if (steps.checkTips)
        m_machine->checkTips(state.mouseMovedTimes == 1);
    update();
}

bool QNClipView::keyDown(const ClipKeyEvent& event)
{
    const bool consumed = m_keys->monitorKeyDown(event);
    if (!consumed)
        m_keys->keyDown(event);
    syncCropBorder();
    update();
    return true;
}

void QNClipView::fullScreenCapture()
{
    m_machine->fullScreenCapture();
    syncCropBorder();
    update();
}

void QNClipView::startAnnotation()
{
    m_machine->startAnnotation();
    syncCropBorder();
    update();
}

void QNClipView::clearMarks()
{
    m_pointerHere = false;
    m_magnifierShown = false;
    if (!captureState().clipToolbarWindowOpened) {
        m_machine->look().selectedBoxTransparent = true;
        m_machine->look().backgroundBoxTransparent = true;
    }
    update();
}

void QNClipView::syncCropBorder()
{
    const ClipLook& look = m_machine->look();
    if (!look.cropBorderAdded) {
        if (m_cropBorder != nullptr)
            m_cropBorder->hide();
        return;
    }
    if (m_cropBorder == nullptr) {
        m_cropBorder = new annotation::GKCropBorderView(this);
        connect(m_cropBorder, &annotation::GKCropBorderView::cursorChanged, this,
                [this](PointerRole role, Qt::CursorShape, const QCursor& cursor) {
                    // Qt applies a child's cursor only where it gets events,
                    // and the overlay's filter takes them all: set it on the window.
                    captureState().pointerRole = role;
                    m_window->setCursor(cursor);
                });
        m_cropBorder->setContextProvider([this] {
            const CaptureState& state = captureState();
            annotation::CropBorderContext context;
            context.toolbarViewOpend = state.toolbarViewOpend;
            context.clipToolbarWindowOpened = state.clipToolbarWindowOpened;
            overlay::AnnotationInput& markup = m_services.delegate.markup();
            // A chosen drawing tool takes the selection's body for itself.
            context.toolSelected = markup.hasDrawingTool();
            // The stroke layer above takes the pointer where it has painted.
            context.mouseEnterSingleStrokeTrackRect = markup.handleHasPointer();
            context.pointerOnMarkup = [&markup](QPointF p) { return markup.pointerOnMarkup(p); };
            context.strokeUnderPointer = [&markup](QPointF p) {
                return markup.strokeUnderPointer(p);
            };
            // Scrolling and recording are not part of the overlay yet, so
            // they never claim the pointer.
            return context;
        });
    }
    m_cropBorder->setFrameInOverlay(m_machine->selection().cropBorderFrame);
    m_cropBorder->setOnlyClipCurrentWindow(look.cropBorderOnlyClipCurrentWindow);
    m_cropBorder->setHideHandleRect(look.cropBorderHideHandleRect);
    m_cropBorder->updateTrackingAreas();
    m_cropBorder->show();
    // Rebuilt zones know nothing of the pointer; a press right where the
    // last release was must still find the handle under it.
    m_cropBorder->mouseMovedInOverlay(m_pointer);
}

OverlayFrame QNClipView::frameToPaint() const
{
    OverlayFrame f;
    f.screenSize = size();
    const ClipLook& look = m_machine->look();
    const SurroundBands bands = m_machine->surround();
    if (look.backgroundBoxAdded && !look.backgroundBoxTransparent)
        f.dimHole = bands.hole;
    if (look.selectedBoxAdded && !look.selectedBoxTransparent)
        f.outlineBox = bands.outlineBox;
    if (look.sizeLabel)
        f.sizeLabelFor = m_machine->selection().contentRect;
    f.pointer = m_pointer;
    if (m_machine->clipState() == ClipState::Waiting) {
        if (m_magnifierShown && m_pointerHere && look.magnifierAdded) {
            f.magnifier = HoverMagnifier::square(m_pointer, f.screenSize);
            f.cross = HoverMagnifier::cross(m_pointer);
        }
    } else if (look.magnifierAdded && look.magnifierShown) {
        f.magnifier =
            QRectF(look.magnifierOrigin, QSizeF(HoverMagnifier::kSide, HoverMagnifier::kSide));
        if (look.cursorImageShown)
            f.cross = look.cursorImageFrame;
    }
    if (look.tipViewShown && look.tipViewAdded && m_pointerHere)
        f.tip = look.tipText;
    return f;
}

void QNClipView::flagsChanged(Qt::KeyboardModifiers held, double timestamp)
{
    m_machine->flagsChanged(held.testFlag(Qt::ShiftModifier));
    m_keys->flagsChanged(held, timestamp);
    syncCropBorder();
    update();
}

void QNClipView::picksChanged()
{
    const CaptureState& state = captureState();
    m_picksPreview = {};
    if (m_machine->multiWindowScreenshots() && !state.arrOfAllSelectedScreenshots.empty() &&
        state.arrOfAllSelectedScreenshots.front().screen == m_screenIndex)
        m_picksPreview = composeCapture(compositionInput());
    update();
}

CompositionInput QNClipView::compositionInput() const
{
    const CaptureState& state = captureState();
    const settings::Defaults& defaults = m_services.defaults;
    CompositionInput in;
    in.R = state.currentRectOfAnnotatedImageView;
    in.S = defaults.boolForKey(settings::keys::needShadowOfnotSingleWindow)
               ? static_cast<int>(defaults.integerForKey(settings::keys::sizeOfShadow))
               : 0;
    in.shadowColour = core::shadowColourFrom(defaults.stringForKey(settings::keys::colorOfShadow));
    in.onlyClipCurrentWindow = m_machine->onlyClipCurrentWindow();
    in.mapImage = state.finish.isPin();
    in.fillet = defaults.boolForKey(settings::keys::needFilletOfnotSingleWindow);
    in.picks = state.arrOfAllSelectedScreenshots;
    in.fullImage = m_fullImage;
    in.windowSize = size();
    in.scale = m_services.layout.screen(m_screenIndex).scale;
    if (in.onlyClipCurrentWindow && in.picks.empty() && !m_fullImage.isNull()) {
        // A window without a frozen picture of its own: take it from the
        // frozen screen rather than lose the capture.
        const qreal inset = 6 + in.S;
        const QRectF r = in.R.adjusted(inset, inset, -inset, -inset);
        const QRectF pixels =
            QRectF(core::flipped(r, height()).topLeft() * in.scale, r.size() * in.scale);
        in.picks.push_back(
            {state.currentWindowID, r, m_screenIndex,
             core::Picture::withScale(m_fullImage.pixels.copy(pixels.toRect()), in.scale),
             state.currentWindowName});
    }
    return in;
}

void QNClipView::paintPicks(QPainter& painter)
{
    const CaptureState& state = captureState();
    const auto& picks = state.arrOfAllSelectedScreenshots;
    if (!m_picksPreview.isNull()) {
        // The fixed picks on white, as one picture, inside the selection.
        const QRectF selection = core::flipped(m_machine->selection().contentRect, height());
        painter.fillRect(selection, Qt::white);
        painter.drawImage(selection, m_picksPreview.pixels);
        return;
    }
    if (state.stateOfMultiWindowScreenshots != PickMode::Picking || picks.empty() ||
        picks.front().screen != m_screenIndex)
        return;
    // Every frozen window again, back to front, with a tint on each pick,
    // so covered picks show whole.
    const core::ScreenLayout& layout = m_services.layout;
    const QColor tint = QColor::fromRgbF(0.16862745098039217f, 0.6705882352941176f, 1.0f, 0.3f);
    for (auto it = state.imageAllWindowArray.rbegin(); it != state.imageAllWindowArray.rend();
         ++it) {
        QRectF local = layout.topLeftToOverlayLocal(m_screenIndex, it->kCGWindowBounds);
        if (it->kCGWindowName == QLatin1String(windownames::Pin))
            local.adjust(-6, -6, 6, 6);
        painter.drawImage(core::flipped(local, height()), it->KCGWindowImage.pixels());
        for (const PickedWindow& p : picks) {
            if (p.windowId == it->number)
                painter.fillRect(core::flipped(p.rect, height()), tint);
        }
    }
}

void QNClipView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    paintPicks(painter);
    m_painter.paint(painter, frameToPaint());
}

} // namespace capture
