// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/ui/QNClipWindowController.h"

#include "capture/ui/QNClipScreenManager.h"
#include "capture/ui/QNClipView.h"
#include "capture/ui/QNClipWindow.h"

namespace capture {

QNClipWindowController::QNClipWindowController(QNClipScreenManager* delegate, CaptureState& state,
                                               platform::WindowServer& windowServer)
    : m_delegate(delegate)
    , m_state(state)
    , m_windowServer(windowServer)
{}

QNClipWindowController::~QNClipWindowController()
{
    endCapture();
}

void QNClipWindowController::startCaptureWithScreen(int screenIndex, QNClipWindow* window,
                                                    const QRectF& frame)
{
    m_screenIndex = screenIndex;
    m_window = window;
    m_clipView = new QNClipView(m_window, *m_delegate, screenIndex);
    m_clipView->haveSetClearColor = false;
    m_clipView->CaptureFullScreen();
    m_clipView->showClipViewWithFrame(QRectF(QPointF(0, 0), frame.size()), false, false);
    lastWindowRect = QRectF(QPointF(0, 0), frame.size());
    m_window->show();
    m_window->raise();
}

void QNClipWindowController::endCapture()
{
    m_state.pointerRole = PointerRole::Arrow;
    if (m_window != nullptr) {
        m_window->releaseKeyboard();
        m_window->releaseMouse();
        m_window->hide();
        m_window->setBackgroundPicture(QImage());
        if (m_clipView != nullptr)
            m_clipView->deleteLater();
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

} // namespace capture
