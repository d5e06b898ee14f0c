// SPDX-License-Identifier: GPL-3.0-or-later
// The global hot keys on a real X server, typed through XTest while some
// other window has the focus.
#include "support/CaptureFixture.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>

#include <gtest/gtest.h>

#include <memory>

using namespace e2e;
using namespace std::chrono_literals;

namespace {

constexpr std::uint16_t kAlt = 0x08; // Mod1

class HotKeys : public CaptureFixture
{
protected:
    HotKeys() = default;
    explicit HotKeys(TestDesktop::Options options)
        : CaptureFixture(options)
    {}

    // Kelvo on the bus with all its hot keys tried, as it reports them.
    void startKelvo()
    {
        CaptureFixture::startKelvo();
        if (HasFatalFailure())
            return;
        ASSERT_TRUE(waitFor([&] {
            report = kelvoHotKeys();
            return report.size() == 6;
        })) << kelvo->errors().toStdString();
    }

    // Whether some other client holds Alt plus the key: our own grab is then
    // refused. A grab that succeeds is given back at once. Asked only once
    // Kelvo has reported its grabs, so it never races them.
    bool altKeyHeldElsewhere(const char* key)
    {
        if (!x->grabKey(key, kAlt))
            return true;
        x->ungrabKey(key, kAlt);
        return false;
    }

    QVariantMap report;
};

const QString kRegistered = QStringLiteral("registered");

} // namespace

TEST_F(HotKeys, AltAStartsOneCaptureWhileAnotherWindowHasTheFocus)
{
    SolidWindow other(*x, QRect(300, 200, 400, 300), Qt::darkCyan, QStringLiteral("editor"));
    startKelvo();
    // The six defaults are taken at start, and really held on the server.
    for (const QVariant& status : report)
        EXPECT_EQ(status.toString(), kRegistered);
    for (const char* key : {"a", "s", "d", "z", "x", "w"})
        ASSERT_TRUE(altKeyHeldElsewhere(key)) << "Alt+" << key << '\n'
                                              << kelvo->errors().toStdString();
    x->movePointer(500, 350);
    x->click(1); // the other window is the active one

    x->tapKeyWithAlt("a");
    ASSERT_TRUE(waitFor([&] { return overlaysUp(); })) << kelvo->errors().toStdString();
    const auto first = x->overlaysOf(kelvo->pid());
    // Again during the capture: a second capture would replace the overlays;
    // give it a second to.
    x->tapKeyWithAlt("a");
    EXPECT_FALSE(waitFor(
        [&] {
            const auto now = x->overlaysOf(kelvo->pid());
            return now.size() != first.size() || now.front().id != first.front().id ||
                   now.back().id != first.back().id;
        },
        1s))
        << "Alt+A during a capture opened another";
    x->tapKey("Escape");
    ASSERT_TRUE(waitFor([&] { return overlaysGone(); }));

    // Caps Lock does not hide the key.
    x->toggleCapsLock();
    x->tapKeyWithAlt("a");
    EXPECT_TRUE(waitFor([&] { return overlaysUp(); })) << kelvo->errors().toStdString();
    x->tapKey("Escape");
    EXPECT_TRUE(waitFor([&] { return overlaysGone(); }));
    x->toggleCapsLock();
    EXPECT_TRUE(kelvo->isRunning());
}

namespace {

// What the notification server (dunst) was asked to show, by body: the
// shown ones are closed first, so that its history holds them all.
QStringList notificationBodies()
{
    QStringList bodies;
    for (const QVariantMap& n : kelvoNotificationHistory())
        bodies << n.value(QStringLiteral("body")).toString();
    return bodies;
}

} // namespace

// With a notification server on the desktop, so that what Kelvo tells the
// user can be read back.
class HotKeysHeld : public HotKeys
{
protected:
    HotKeysHeld()
        : HotKeys({.twoMonitors = true, .compositor = false, .notifications = true})
    {}
};

TEST_F(HotKeysHeld, AKeyAnotherProgramHoldsIsToldTheOthersWorkAndItIsTakenOnceFree)
{
    ASSERT_TRUE(x->grabKey("a", kAlt)); // another program has Alt+A first
    startKelvo();
    ASSERT_FALSE(HasFatalFailure());
    EXPECT_EQ(report.value(QStringLiteral("regionalScreenshotsRecorder")), QStringLiteral("held"));
    EXPECT_EQ(report.value(QStringLiteral("mapFromPasteRecorder")), kRegistered);
    EXPECT_EQ(report.value(QStringLiteral("recordScreenRecorder")), kRegistered);
    EXPECT_TRUE(altKeyHeldElsewhere("s"));
    EXPECT_TRUE(altKeyHeldElsewhere("w"));
    // Told on stderr (the pipe from Kelvo is read by the event loop) ...
    EXPECT_TRUE(waitFor([&] {
        QCoreApplication::processEvents();
        return kelvo->errors().contains(QStringLiteral("⌥A"));
    })) << kelvo->errors().toStdString();
    EXPECT_TRUE(kelvo->errors().contains(QStringLiteral("Another program already uses")))
        << kelvo->errors().toStdString();
    // ... and to the user: the notification server has it.
    QStringList bodies;
    ASSERT_TRUE(waitFor(
        [&] {
            bodies = notificationBodies();
            return !bodies.isEmpty();
        },
        20s))
        << kelvo->errors().toStdString();
    ASSERT_EQ(bodies.size(), 1) << bodies.join(u'|').toStdString();
    EXPECT_TRUE(bodies.constFirst().contains(QStringLiteral("⌥A")))
        << bodies.constFirst().toStdString();
    EXPECT_TRUE(bodies.constFirst().contains(QStringLiteral("Another program already uses")));

    // The key stays with the program that has it: no capture.
    x->movePointer(700, 400);
    x->tapKeyWithAlt("a");
    EXPECT_FALSE(waitFor([&] { return !overlaysGone(); }, 1s));

    // The other program lets go: Kelvo takes the key and it works.
    x->ungrabKey("a", kAlt);
    ASSERT_TRUE(waitFor(
        [] {
            return kelvoHotKeys().value(QStringLiteral("regionalScreenshotsRecorder")) ==
                   kRegistered;
        },
        20s))
        << kelvo->errors().toStdString();
    x->tapKeyWithAlt("a");
    EXPECT_TRUE(waitFor([&] { return overlaysUp(); }, 20s)) << kelvo->errors().toStdString();
    x->tapKey("Escape");
    EXPECT_TRUE(waitFor([&] { return overlaysGone(); }, 20s));
    EXPECT_TRUE(kelvo->isRunning());
}
