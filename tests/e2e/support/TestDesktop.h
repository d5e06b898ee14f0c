// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QVariantMap>

#include <chrono>
#include <functional>

namespace e2e {

// A private desktop for one test: X server, session bus, window manager
// (see scripts/desktop). Its DISPLAY and bus address are put into this
// process' environment, so every program the test starts runs on it. The
// configuration home is a fresh folder too, so no preference leaks between
// tests.
class TestDesktop
{
public:
    struct Options
    {
        bool twoMonitors = true;
        bool compositor = false;
        bool notifications = false;
    };

    explicit TestDesktop(Options options);
    TestDesktop()
        : TestDesktop(Options{})
    {}
    ~TestDesktop();
    TestDesktop(const TestDesktop&) = delete;
    TestDesktop& operator=(const TestDesktop&) = delete;

    [[nodiscard]] bool isRunning() const { return m_running; }
    [[nodiscard]] QString display() const { return m_display; }
    [[nodiscard]] QString configHome() const { return m_dir.path() + QStringLiteral("/config"); }
    [[nodiscard]] QString path(const QString& name) const { return m_dir.path() + u'/' + name; }
    [[nodiscard]] QString error() const { return m_error; }

private:
    QTemporaryDir m_dir;
    QString m_display;
    QString m_error;
    bool m_running = false;
};

// Polls `condition` until it holds or `timeout` passes; the tests wait on
// what they expect to see, never on fixed sleeps.
bool waitFor(const std::function<bool()>& condition,
             std::chrono::milliseconds timeout = std::chrono::seconds(10));

// Kelvo's notifications that the desktop's server (dunst) has shown, oldest
// or newest first as dunst keeps them; shown ones are closed first, so that
// its history holds them all.
QList<QVariantMap> kelvoNotificationHistory();

// The repository's root and the kelvo binary under test.
QString sourceDir();
QString kelvoBinary();

} // namespace e2e
