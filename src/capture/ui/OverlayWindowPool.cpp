// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/ui/OverlayWindowPool.h"

#include "capture/ui/QNClipWindow.h"
#include "core/Clock.h"

#include <QGuiApplication>
#include <QScreen>

#include <chrono>

namespace capture {

OverlayWindowPool::OverlayWindowPool(core::Clock& clock, QObject* parent)
    : QObject(parent)
{
    // After the start's own work: the tray shows first.
    clock.singleShot(std::chrono::milliseconds(0), this,
                     [this] { warm(QGuiApplication::screens()); });
}

OverlayWindowPool::~OverlayWindowPool() = default;

QNClipWindow& OverlayWindowPool::windowFor(QScreen* screen)
{
    auto& slot = m_windows[screen];
    if (!slot) {
        slot = std::make_unique<QNClipWindow>(screen);
        // A screen that goes away takes its overlay with it.
        connect(screen, &QObject::destroyed, this, [this, screen] { m_windows.erase(screen); });
    } else if (slot->geometry() != screen->geometry()) {
        slot->setGeometry(screen->geometry());
    }
    return *slot;
}

QNClipWindow* OverlayWindowPool::acquire(QScreen* screen)
{
    QNClipWindow& window = windowFor(screen);
    window.prepareForCapture();
    return &window;
}

void OverlayWindowPool::warm(const QList<QScreen*>& screens)
{
    for (QScreen* screen : screens) {
        if (screen == nullptr || m_windows.contains(screen))
            continue;
        QNClipWindow& window = windowFor(screen);
        // Shown to Qt only: the paint fills the backing store, nothing is
        // mapped on the display.
        window.setAttribute(Qt::WA_DontShowOnScreen);
        window.show();
        window.repaint();
        window.hide();
        window.setAttribute(Qt::WA_DontShowOnScreen, false);
    }
}

void OverlayWindowPool::clear()
{
    m_windows.clear();
}

} // namespace capture
