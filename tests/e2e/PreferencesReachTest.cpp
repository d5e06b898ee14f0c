// SPDX-License-Identifier: GPL-3.0-or-later
// The Preferences window within reach without the tray: a second start of
// kelvo and `kelvo prefs` bring up the running instance's window.
#include "support/CaptureFixture.h"

#include <gtest/gtest.h>

#include <memory>

using namespace e2e;
using namespace std::chrono_literals;

namespace {

class PreferencesReach : public CaptureFixture
{
protected:
    QStringList preferencesWindows() { return kelvoWindowsOf(kelvo->pid()); }

    void startKelvo(const QStringList& arguments = {})
    {
        kelvo = std::make_unique<KelvoProcess>(arguments);
        ASSERT_TRUE(waitFor([] { return kelvoOnBus(); }, 20s)) << kelvo->errors().toStdString();
    }

    // Closes the window as a user would, with Escape while it has the focus.
    void closeWithEscape(const QString& window)
    {
        ASSERT_TRUE(activateWindow(window));
        x->tapKey("Escape");
        ASSERT_TRUE(waitFor([&] { return preferencesWindows().isEmpty(); }, 10s));
    }
};

} // namespace

// One instance, reached every way in turn; each way finds the window
// closed by the one before.
TEST_F(PreferencesReach, PrefsAndASecondStartBringUpTheRunningInstancesWindow)
{
    // An ordinary start keeps the window hidden.
    startKelvo();
    EXPECT_FALSE(waitFor([&] { return !preferencesWindows().isEmpty(); }, 1s));

    // A second plain start only asks the running one to show it.
    const auto second = KelvoProcess::run({}, {}, 30000);
    EXPECT_EQ(second.exitCode, 0) << second.err.toStdString();
    EXPECT_FALSE(second.err.contains(QLatin1String("already running"))) << second.err.toStdString();
    ASSERT_TRUE(waitFor([&] { return preferencesWindows().size() == 1; }, 20s))
        << kelvo->errors().toStdString();
    closeWithEscape(preferencesWindows().constFirst());

    // Arguments after prefs are refused without touching the instance.
    const auto bad = KelvoProcess::run({QStringLiteral("prefs"), QStringLiteral("now")}, {}, 30000);
    EXPECT_EQ(bad.exitCode, 1);
    EXPECT_TRUE(bad.err.contains(QLatin1String("now"))) << bad.err.toStdString();
    EXPECT_FALSE(waitFor([&] { return !preferencesWindows().isEmpty(); }, 1s));

    // `kelvo prefs` opens it again after it was closed.
    const auto prefs = KelvoProcess::run({QStringLiteral("prefs")}, {}, 30000);
    EXPECT_EQ(prefs.exitCode, 0) << prefs.err.toStdString();
    EXPECT_TRUE(waitFor([&] { return preferencesWindows().size() == 1; }, 20s))
        << kelvo->errors().toStdString();
    ASSERT_TRUE(kelvo->isRunning()) << "one instance, still running: the others only asked";

    // Without an instance, `kelvo prefs` becomes it and shows the window.
    kelvo.reset();
    ASSERT_TRUE(waitFor([] { return !kelvoOnBus(); }));
    startKelvo({QStringLiteral("prefs")});
    EXPECT_TRUE(waitFor([&] { return preferencesWindows().size() == 1; }, 20s))
        << kelvo->errors().toStdString();
    EXPECT_TRUE(kelvo->isRunning());
}
