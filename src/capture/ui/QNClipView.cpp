// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/ui/QNClipView.h"

#include "capture/ui/QNClipWindow.h"
#include "platform/WindowServer.h"

namespace capture {

QNClipView::QNClipView(QNClipWindow* window, CaptureState& state,
                       platform::WindowServer& windowServer, int screenIndex,
                       const QRectF& screenFrame, double scale)
    : QWidget(window)
    , m_window(window)
    , m_state(state)
    , m_windowServer(windowServer)
    , m_screenIndex(screenIndex)
    , m_screenFrame(screenFrame)
    , m_scale(scale)
{
    setObjectName(QStringLiteral("QNClipView"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setGeometry(0, 0, qRound(screenFrame.width()), qRound(screenFrame.height()));
}

void QNClipView::CaptureFullScreen()
{
    QImage picture = m_windowServer.pictureOfRect(m_screenFrame);
    if (picture.isNull())
        return;
    m_fullImage = core::Picture::pixelsAsPoints(picture);
    picture.setDevicePixelRatio(m_scale);
    m_window->setBackgroundPicture(picture);
}

void QNClipView::showClipViewWithFrame(const QRectF& frame, bool, bool isRecordScreen)
{
    m_state.isRecordScreen = isRecordScreen;
    m_contentRect = QRectF(QPointF(0, 0), frame.size());
    update();
}

void QNClipView::mousedown(QPointF) {}

void QNClipView::mousedragged(QPointF) {}

void QNClipView::mouseup(QPointF) {}

void QNClipView::mouseMoved(QPointF) {}

} // namespace capture
