// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/ui/BannerWait.h"

#include "core/Clock.h"
#include "platform/NotificationStacking.h"

namespace capture {

BannerWait::BannerWait(platform::NotificationStacking& stacking, core::Clock& clock,
                       QObject* parent)
    : QObject(parent)
    , m_stacking(stacking)
    , m_clock(clock)
{}

void BannerWait::begin(QWidget* overlay)
{
    const QPointer<QWidget> guarded(overlay);
    makeWay(guarded);
    ++m_running;
    const unsigned generation = m_generation;
    m_clock.singleShot(kQuietTime + kLookInterval, this,
                       [this, generation, guarded] { look(generation, guarded, 0); });
}

void BannerWait::cancel()
{
    ++m_generation;
    m_running = 0;
}

void BannerWait::look(unsigned generation, const QPointer<QWidget>& overlay, int looksDone)
{
    if (generation != m_generation)
        return;
    const int looks = looksDone + 1;
    if (!m_stacking.notificationShown() || looks >= kLooks) {
        end(overlay);
        return;
    }
    // The overlay is raised whenever the keyboard follows the pointer onto
    // it, which covers the popups again; each look puts them back on top.
    makeWay(overlay);
    m_clock.singleShot(kLookInterval, this,
                       [this, generation, overlay, looks] { look(generation, overlay, looks); });
}

void BannerWait::end(const QPointer<QWidget>& overlay)
{
    --m_running;
    if (overlay != nullptr && overlay->isVisible())
        m_stacking.raiseAboveAll(overlay->winId());
}

void BannerWait::makeWay(const QPointer<QWidget>& overlay)
{
    if (overlay != nullptr && overlay->isVisible())
        m_stacking.showNotificationsAbove(overlay->winId());
}

} // namespace capture
