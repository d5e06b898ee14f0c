// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/ui/QNClipWindowController.h"

#include "capture/logic/ClipStateMachine.h"
#include "capture/ui/QNClipScreenManager.h"
#include "capture/ui/QNClipView.h"
#include "capture/ui/QNClipWindow.h"
#include "settings/Defaults.h"
#include "settings/Keys.h"
#include "toolbar/ui/AnnotatedImageController.h"

#include <QTextStream>

#include <utility>

namespace capture {

QNClipWindowController::QNClipWindowController(QNClipScreenManager* delegate,
                                               const QNClipViewServices& services)
    : m_delegate(delegate)
    , m_services(services)
    , m_state(m_services.context.capture())
    , m_defaults(m_services.defaults)
    , m_layout(m_services.layout)
{}

QNClipWindowController::~QNClipWindowController()
{
    endCapture();
    // The window may already be gone with its children.
    delete m_endedView.data();
}

void QNClipWindowController::startCaptureWithScreen(int screenIndex, QNClipWindow* window,
                                                    const QRectF& frame)
{
    m_screenIndex = screenIndex;
    m_window = window;
    m_clipView = new QNClipView(m_window, m_services, screenIndex);
    m_clipView->haveSetClearColor = false;
    m_clipView->CaptureFullScreen();
    m_clipView->showClipViewWithFrame(QRectF(QPointF(0, 0), frame.size()), false, false);
    lastWindowRect = QRectF(QPointF(0, 0), frame.size());
    m_window->show();
    m_window->raise();
}

QWidget* QNClipWindowController::overlayWindow() const
{
    return m_window;
}

void QNClipWindowController::retire()
{
    clearDelegate();
    endCapture();
}

void QNClipWindowController::endCapture()
{
    m_state.pointerRole = PointerRole::Arrow;
    if (m_window != nullptr) {
        m_window->releaseKeyboard();
        m_window->releaseMouse();
        m_window->hide();
        m_window->setBackgroundPicture(QImage());
        // The view may be deep in its own handling of the event that ended
        // the capture: it is hidden now and goes with this controller.
        if (m_clipView != nullptr) {
            m_clipView->hide();
            m_endedView = m_clipView;
        }
        m_window = nullptr;
        m_clipView = nullptr;
    }
}

void QNClipWindowController::cancel()
{
    endCapture();
    if (m_delegate != nullptr)
        m_delegate->clipWindowControllerDidCancel(this);
}

void QNClipWindowController::startAnnotation(bool underMouse)
{
    if (m_window == nullptr)
        return;
    if (underMouse) {
        if (m_clipView != nullptr)
            m_clipView->startAnnotation();
        return;
    }
    // Another screen holds the selection: this one shows the live desktop
    // and takes no further part.
    if (m_clipView != nullptr)
        m_clipView->clearFullImage();
    m_window->unfreeze();
}

void QNClipWindowController::startScreenShots()
{
    clipScreen();
}

void QNClipWindowController::clipScreen()
{
    if (m_delegate == nullptr || m_clipView == nullptr)
        return;
    const core::ScreenLayout& layout = m_layout;
    const int chosen = m_state.screenOfScreenShot;
    if (chosen < 0 || chosen >= layout.count() ||
        layout.screen(chosen).frame != layout.screen(m_screenIndex).frame)
        return;

    // The shutter sounds at once, not after the composition; a pin is
    // silent unless it came from the save button.
    if (m_defaults.boolForKey(settings::keys::playSoundWhenScreenShots) &&
        m_state.finish.shutterSounds(m_state.annotatedOnMap))
        m_delegate->clipWindowController(this);
    m_state.startScreenShot = false;

    CompositionInput input = m_clipView->compositionInput();
    input.marks = m_delegate->annotatedImageController().renderMarks(marksArea(input), input.scale);
    FinishedCapture result;
    result.picture = composeCapture(input);
    result.screen = m_screenIndex;
    result.destination = m_state.finish.destination();
    result.openAfterSave =
        result.destination == FinishDestination::File && m_state.doubleClickModifierkey;
    const QRectF selection = m_state.currentRectOfAnnotatedImageView.adjusted(6, 6, -6, -6);
    result.rect = layout.overlayLocalToTopLeft(m_screenIndex, selection);
    if (result.picture.isNull())
        QTextStream(stderr) << "kelvo: the selection holds no picture; nothing was kept\n";
    m_delegate->finishCapture(this, result);
}

} // namespace capture
