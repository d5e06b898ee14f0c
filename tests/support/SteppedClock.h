// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Clock.h"

#include <QPointer>

#include <algorithm>
#include <chrono>
#include <functional>
#include <vector>

// A clock that moves only when the test says so: advance() runs, in order
// of their due time, the timers that fall due, as the event loop would.
// A timer whose context is gone is dropped, as Qt's would be.
class SteppedClock final : public core::Clock
{
public:
    [[nodiscard]] std::chrono::steady_clock::time_point now() const override { return m_now; }

    void singleShot(std::chrono::milliseconds delay, const QObject* context,
                    std::function<void()> task) override
    {
        m_pending.push_back({m_now + delay, m_nextOrder++, QPointer<const QObject>(context),
                             context != nullptr, std::move(task)});
    }

    // Moves time on by `step`, running each timer due by then; a timer
    // started by one of them runs too when it falls due within the step.
    void advance(std::chrono::milliseconds step)
    {
        const auto end = m_now + step;
        while (true) {
            auto next = std::min_element(
                m_pending.begin(), m_pending.end(), [](const Timer& a, const Timer& b) {
                    return a.due != b.due ? a.due < b.due : a.order < b.order;
                });
            if (next == m_pending.end() || next->due > end)
                break;
            Timer timer = std::move(*next);
            m_pending.erase(next);
            m_now = std::max(m_now, timer.due);
            if (!timer.hadContext || timer.context)
                timer.task();
        }
        m_now = end;
    }
    // The next turn of the event loop: what is due now, nothing later.
    void turn() { advance(std::chrono::milliseconds(0)); }

    [[nodiscard]] std::size_t pendingCount() const { return m_pending.size(); }

private:
    struct Timer
    {
        std::chrono::steady_clock::time_point due;
        unsigned order = 0;
        QPointer<const QObject> context;
        bool hadContext = false;
        std::function<void()> task;
    };
    std::chrono::steady_clock::time_point m_now{};
    unsigned m_nextOrder = 0;
    std::vector<Timer> m_pending;
};
