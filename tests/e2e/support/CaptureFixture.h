// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/KelvoProcess.h"
#include "support/TestDesktop.h"
#include "support/XSession.h"

#include <QColor>
#include <QMap>
#include <QProcessEnvironment>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace e2e {

// A private two-monitor desktop with Kelvo in its tray: the starting point
// of every capture test.
class CaptureFixture : public ::testing::Test
{
protected:
    CaptureFixture() = default;
    // A desktop with more parts, e.g. a notification server.
    explicit CaptureFixture(TestDesktop::Options options)
        : desktop(options)
    {}
    // The desktop's background painted in `rootColor`, so what a capture
    // shows around its windows is known.
    explicit CaptureFixture(QColor rootColor)
        : m_rootColor(rootColor)
    {}

    static inline const QRect kPrimary{0, 0, 1920, 1080};
    static inline const QRect kSecond{1920, 0, 1280, 1024};

    void SetUp() override;

    // Starts the tray instance and waits until it answers on the bus.
    void startKelvo(QProcessEnvironment env = {});
    // Kelvo started with these preferences over its first-run values: a
    // first start writes those, then the given ones go in before the real
    // start, which gets `env` too.
    void startKelvoWith(const QMap<QString, QString>& preferences, QProcessEnvironment env = {});
    [[nodiscard]] QString confPath() const;
    // `kelvo gui`, which returns once the instance has taken the request.
    void triggerCapture();
    // Both overlays mapped over their monitors, and the capture holds the
    // keyboard (so it is ready for keys).
    [[nodiscard]] bool overlaysUp();
    [[nodiscard]] bool overlaysGone();
    // Waits until Kelvo's main thread has handled what came before: a D-Bus
    // round trip after the X server has passed on our input.
    void barrier();
    // waitFor that also runs this process' events, for tests that answer
    // or listen on the bus themselves.
    [[nodiscard]] static bool
    pumpUntil(const std::function<bool()>& condition,
              std::chrono::milliseconds timeout = std::chrono::seconds(10));
    // A drag of the left button through `steps` pointer moves. After each
    // move it waits for `reached(point)` when given, as a person's hand
    // waits for the screen to follow.
    void drag(QPoint from, QPoint to, int steps = 12,
              const std::function<bool(QPoint)>& reached = {});

    TestDesktop desktop;
    std::unique_ptr<XSession> x;
    std::unique_ptr<KelvoProcess> kelvo;

private:
    QColor m_rootColor;
};

} // namespace e2e
