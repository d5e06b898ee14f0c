// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/ui/OverlayWindowPool.h"

#include "capture/ui/QNClipWindow.h"
#include "core/Clock.h"

#include <QScreen>

#include <chrono>

namespace capture {

OverlayWindowPool::OverlayWindowPool(core::Clock& clock, QObject* parent)
    : QObject(parent)
    , m_clock(clock)
{}

OverlayWindowPool::~OverlayWindowPool() = default;

QNClipWindow* OverlayWindowPool::acquire(QScreen* screen)
{
    ++m_generation;
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
    const unsigned generation = ++m_generation;
    m_clock.singleShot(std::chrono::minutes(1), this, [this, generation] {
        if (generation == m_generation)
            clear();
    });
}

void OverlayWindowPool::clear()
{
    m_windows.clear();
}

} // namespace capture
