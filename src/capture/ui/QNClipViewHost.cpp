// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/ui/QNClipViewHost.h"

#include "annotation/ui/GKCropBorderView.h"
#include "capture/logic/ClipStateMachine.h"
#include "capture/logic/MultiWindowPick.h"
#include "capture/ui/QNClipView.h"
#include "capture/ui/QNClipWindow.h"
#include "colour/ui/ColorKeyHandler.h"
#include "core/Clock.h"
#include "core/MessageBus.h"
#include "platform/PointerControl.h"
#include "settings/Defaults.h"
#include "settings/Keys.h"

#include <QGuiApplication>

#include <chrono>

namespace capture {

QNClipViewHost::QNClipViewHost(QNClipView& view, const QNClipViewServices& services)
    : m_view(view)
    , m_services(services)
{}

AnnotationInput& QNClipViewHost::markup()
{
    return m_services.delegate.markup();
}

bool QNClipViewHost::isRecordingOverlay() const
{
    return captureState().isRecordScreen;
}

bool QNClipViewHost::toolbarViewOpend() const
{
    return captureState().toolbarViewOpend;
}

ClipPreferences QNClipViewHost::preferences() const
{
    const settings::Defaults& d = m_services.defaults;
    ClipPreferences p;
    p.doubleClickToSavePaste = d.boolForKey(settings::keys::doubleClickToSavePaste);
    p.doubleClickModifierKey = d.stringForKey(settings::keys::doubleClickModifierKey);
    p.needShadowOfnotSingleWindow = d.boolForKey(settings::keys::needShadowOfnotSingleWindow);
    p.sizeOfShadow = static_cast<int>(d.integerForKey(settings::keys::sizeOfShadow));
    p.shortcutOfButton = m_services.delegate.shortcutOfButton();
    return p;
}

CropBorderStatus QNClipViewHost::cropBorder() const
{
    CropBorderStatus status;
    if (const annotation::GKCropBorderView* border = m_view.cropBorder();
        border != nullptr && border->isVisible()) {
        status.isCanMove = border->isCanMove();
        status.isInResizeRect = border->isInResizeRect();
        status.whichInResizeRect = border->whichInResizeRect();
        status.numberOfReSize = border->numberOfReSize();
    }
    return status;
}

int QNClipViewHost::screenUnderMouse() const
{
    return m_services.delegate.currentScreenForMouseLocation();
}

void QNClipViewHost::postMessage(core::Message message)
{
    m_services.bus.post(message);
}

void QNClipViewHost::runLater(int milliseconds, std::function<void()> task)
{
    m_services.clock.singleShot(std::chrono::milliseconds(milliseconds), &m_view, std::move(task));
}

void QNClipViewHost::needsDisplay()
{
    m_view.update();
}

void QNClipViewHost::cropBorderNeedsDisplay()
{
    if (m_view.cropBorder() != nullptr)
        m_view.cropBorder()->update();
}

void QNClipViewHost::magnifierNeedsDisplay()
{
    m_view.update();
}

void QNClipViewHost::setCursor(ClipCursor cursor)
{
    if (cursor == ClipCursor::Arrow) {
        captureState().pointerRole = PointerRole::Arrow;
        m_view.clipWindow()->setCursor(Qt::ArrowCursor);
    } else {
        // The overlay draws its own cross hair at the pointer.
        m_view.clipWindow()->setCursor(Qt::BlankCursor);
    }
}

void QNClipViewHost::setCursorRectsEnabled(bool) {}

void QNClipViewHost::warpPointer(QPointF local)
{
    m_services.pointer.warpTo(m_services.layout.overlayLocalToTopLeft(m_view.screenIndex(), local));
}

void QNClipViewHost::activateApplication()
{
    m_services.delegate.giveKeyboardTo(m_view.screenIndex());
}

void QNClipViewHost::makeKeyAndOrderFront()
{
    m_services.delegate.giveKeyboardTo(m_view.screenIndex());
}

void QNClipViewHost::setWindowBackgroundClear()
{
    // A window that reaches past its screen is pictured whole from the
    // window list later; the frozen screen stays as the backdrop meanwhile,
    // since without a compositor a clear overlay could not show the desktop.
}

void QNClipViewHost::writePreference(const QString& key, const QVariant& value)
{
    m_services.defaults.setObject(key, value);
}

void QNClipViewHost::synchronizePreferences()
{
    m_services.defaults.synchronize();
}

void QNClipViewHost::clipViewMouseDown(const ClipMouseEvent& event)
{
    ClipStateMachine& machine = m_view.machine();
    const HoverPressOutcome outcome = m_view.hover().clipViewMouseDown(
        captureState(), m_view.bottomLeftOf(event.location), static_cast<int>(machine.clipState()),
        m_view.haveSetClearColor);
    if (outcome.setClearColor)
        m_view.haveSetClearColor = true;
    switch (outcome.apply) {
    case HoverPressOutcome::Frame::Unchanged:
        break;
    case HoverPressOutcome::Frame::ContentFrame:
        machine.setContentFrame(outcome.frame);
        break;
    case HoverPressOutcome::Frame::FrameForContentView:
        machine.setFrameForContentView(outcome.frame, event.location, event.timestamp);
        break;
    }
    if (outcome.focusScreen >= 0)
        m_services.delegate.giveKeyboardTo(outcome.focusScreen);
}

void QNClipViewHost::cropBorderMouseDown(const ClipMouseEvent& event)
{
    if (m_view.cropBorder() != nullptr)
        m_view.cropBorder()->mouseDown(event.clickCount);
}

void QNClipViewHost::updateTrackingAreas()
{
    if (m_view.cropBorder() != nullptr)
        m_view.cropBorder()->updateTrackingAreas();
}

void QNClipViewHost::enterMultiWindowPick(const ClipMouseEvent&)
{
    m_view.machine().startPicking();
}

void QNClipViewHost::toggleMultiWindowPick(const ClipMouseEvent&)
{
    CaptureState& s = captureState();
    // The window the hover outlined is the one under the click.
    togglePick(s, s.currentWindowID, m_view.machine().selection().selectedBoxFrame,
               m_view.screenIndex());
    m_view.update();
}

void QNClipViewHost::changFullImageToMosaicImage()
{
    const ClipPreferences prefs = preferences();
    const int shadow = prefs.needShadowOfnotSingleWindow ? prefs.sizeOfShadow : 0;
    addPickOfOne(captureState(), m_view.machine().onlyClipCurrentWindow(),
                 m_view.machine().selection().contentRect,
                 QRectF(QPointF(0, 0), m_view.machine().windowSize()), shadow,
                 m_view.screenIndex());
    m_view.picksChanged();
}

void QNClipViewHost::openAnnotationWindow()
{
    m_services.delegate.openAnnotationWindow(m_view.clipWindow(), [view = &m_view] {
        return core::flipped(view->machine().selection().contentRect, view->height());
    });
}

bool QNClipViewHost::globalHotKey(const ClipKeyEvent& event)
{
    return m_services.delegate.globalHotKey(event.key, significantModifiers(event.modifiers));
}

void QNClipViewHost::saveAndOpen()
{
    m_services.delegate.saveAndOpen();
}

bool QNClipViewHost::handleColorKey(const ClipKeyEvent& event)
{
    settings::Defaults& defaults = m_services.defaults;
    std::optional<QString> format;
    if (defaults.contains(settings::keys::customizeColorString))
        format = defaults.stringForKey(settings::keys::customizeColorString);
    colour::ColorKeyHost host;
    host.cancelCapture = [&bus = m_services.bus] { bus.post(core::Message::CancelScreenShot); };
    host.storeCustomizeColorString = [&defaults](const QString& text) {
        defaults.setObject(settings::keys::customizeColorString, text);
        defaults.synchronize();
    };
    return colour::handleColorKey(event.key, event.modifiers, m_services.readoutState, format,
                                  *QGuiApplication::clipboard(), host);
}

} // namespace capture
