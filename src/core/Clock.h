// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>

namespace core {

// Time for code whose behaviour depends on it (a delay that decides, a
// retry, a release on the next turn of the event loop), so that tests can
// step it instead of waiting on real timers.
class Clock
{
public:
    virtual ~Clock() = default;

    [[nodiscard]] virtual std::chrono::steady_clock::time_point now() const = 0;
    // Runs `task` once, `delay` from now, from the event loop; never when
    // `context` is gone by then. A zero delay means the next turn of the loop.
    virtual void singleShot(std::chrono::milliseconds delay, const QObject* context,
                            std::function<void()> task) = 0;
};

// The real clock: the steady clock and Qt's timers.
class SystemClock final : public Clock
{
public:
    [[nodiscard]] std::chrono::steady_clock::time_point now() const override
    {
        return std::chrono::steady_clock::now();
    }
    void singleShot(std::chrono::milliseconds delay, const QObject* context,
                    std::function<void()> task) override
    {
        QTimer::singleShot(delay, context, std::move(task));
    }
};

} // namespace core
