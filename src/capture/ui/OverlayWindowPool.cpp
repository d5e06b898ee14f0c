// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/ui/OverlayWindowPool.h"

#include "capture/ui/QNClipWindow.h"

#include <QScreen>

namespace capture {

OverlayWindowPool::OverlayWindowPool(QObject* parent)
    : QObject(parent)
{
    m_release.setSingleShot(true);
    m_release.setInterval(60000);
    connect(&m_release, &QTimer::timeout, this, &OverlayWindowPool::clear);
}

OverlayWindowPool::~OverlayWindowPool() = default;

QNClipWindow* OverlayWindowPool::acquire(QScreen* screen)
{
    m_release.stop();
    auto& slot = m_windows[screen];
    if (!slot) {
        slot = std::make_unique<QNClipWindow>(screen);
        // A screen that goes away takes its overlay with it.
        connect(screen, &QObject::destroyed, this, [this, screen] { m_windows.erase(screen); });
    } else if (slot->geometry() != screen->geometry()) {
        slot->setGeometry(screen->geometry());
    }
    slot->prepareForCapture();
    return slot.get();
}

void OverlayWindowPool::idle()
{
    m_release.start();
}

void OverlayWindowPool::clear()
{
    m_windows.clear();
}

} // namespace capture
