// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <chrono>

namespace core {
class Clock;
}
namespace platform {
class NotificationStacking;
}

namespace capture {

// A notice of ours delivered during a capture must not hide under the
// overlay: the overlay it arrived over lets the desktop's notification
// popups stand above it until they are gone, then it is back on top. The
// popups are looked for five seconds on, then every half second, thirty
// times at most. Each notice starts a wait of its own; the first to end
// raises the overlay, and a wait still under way puts the popups above it
// again at its next look.
class BannerWait : public QObject
{
    Q_OBJECT
public:
    static constexpr std::chrono::milliseconds kQuietTime{5000};
    static constexpr std::chrono::milliseconds kLookInterval{500};
    static constexpr int kLooks = 30;

    BannerWait(platform::NotificationStacking& stacking, core::Clock& clock,
               QObject* parent = nullptr);

    // A notice was delivered. `overlay` lets the popups show over it until
    // the wait ends; null when no overlay is to make way, and the wait then
    // only runs its course.
    void begin(QWidget* overlay);
    // The capture is over: the waits under way stop and touch no overlay,
    // whose window may serve the next capture by then.
    void cancel();
    // Waits under way.
    [[nodiscard]] int running() const { return m_running; }

private:
    void look(unsigned generation, const QPointer<QWidget>& overlay, int looksDone);
    void end(const QPointer<QWidget>& overlay);
    void makeWay(const QPointer<QWidget>& overlay);

    platform::NotificationStacking& m_stacking;
    core::Clock& m_clock;
    unsigned m_generation = 0; // counts cancels: a wait of an earlier one stops
    int m_running = 0;
};

} // namespace capture
