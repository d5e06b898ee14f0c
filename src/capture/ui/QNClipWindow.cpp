// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/ui/QNClipWindow.h"

#include <QPaintEvent>
#include <QPainter>
#include <QScreen>

#include <utility>

namespace capture {

QNClipWindow::QNClipWindow(QScreen* screen)
    : QWidget(nullptr, Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                           Qt::X11BypassWindowManagerHint | Qt::Tool)
{
    setObjectName(QStringLiteral("QNClipWindow"));
    setAttribute(Qt::WA_DeleteOnClose, false);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_NoSystemBackground);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setWindowTitle(QStringLiteral("Kelvo capture"));
    if (screen != nullptr) {
        setScreen(screen);
        setGeometry(screen->geometry());
    }
}

void QNClipWindow::setBackgroundPicture(QImage picture)
{
    m_background = std::move(picture);
    update();
}

void QNClipWindow::prepareForCapture()
{
    m_painted = false;
}

void QNClipWindow::unfreeze()
{
    m_background = QImage();
    hide();
}

void QNClipWindow::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    if (m_background.isNull()) {
        painter.fillRect(event->rect(), Qt::black);
    } else {
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.drawImage(QPointF(0, 0), m_background);
    }
    if (!m_painted) {
        m_painted = true;
        Q_EMIT firstFramePainted();
    }
}

} // namespace capture
