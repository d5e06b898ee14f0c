// SPDX-License-Identifier: GPL-3.0-or-later
// `kelvo full` and `kelvo screen` on a real two-monitor desktop: the files
// hold the screen pixel for pixel, a folder that cannot take the picture is
// told on the session bus's notification service and the picture kept, a
// copy lands on the X clipboard through the running instance, and a running
// instance takes the picture for the command with the same pixels.
#include "support/CaptureFixture.h"
#include "support/PrivateBus.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QThread>

#include <gtest/gtest.h>

#include <memory>

using namespace e2e;

namespace {

const QRect kSecond(1920, 0, 1280, 1024);

// A notification server of our own on the test's session bus, in place of
// a real one, so the test sees exactly what Kelvo sent.
class NotificationServer : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")
public:
    struct Received
    {
        QString appName;
        QString summary;
        QString body;
        QStringList actions;
    };
    std::vector<Received> received;

public Q_SLOTS:
    uint Notify(const QString& appName, uint, const QString&, const QString& summary,
                const QString& body, const QStringList& actions, const QVariantMap&, int)
    {
        received.push_back({appName, summary, body, actions});
        return static_cast<uint>(received.size());
    }
    QStringList GetCapabilities() { return {QStringLiteral("actions"), QStringLiteral("body")}; }
    void CloseNotification(uint) {}
};

// Kelvo's name on the bus held by the test: records what `kelvo` asks of
// the running instance and answers as told, or declines.
class InstanceStandIn : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kelvo.Kelvo")
public:
    bool decline = false;
    int calls = 0;
    QStringList arguments;
    QString directory;
    QStringList environment;

public Q_SLOTS:
    int Shot(const QStringList& args, const QString& dir, const QStringList& env, QByteArray& out,
             QString& errors)
    {
        ++calls;
        arguments = args;
        directory = dir;
        environment = env;
        if (decline) {
            sendErrorReply(QStringLiteral("org.kelvo.Kelvo.Error.Declined"),
                           QStringLiteral("a capture holds the desktop"));
            return 0;
        }
        out = QByteArray("written\n\0raw", 13);
        errors = QStringLiteral("kelvo: told\n");
        return 3;
    }
};

class ImageOutputE2e : public CaptureFixture
{
protected:
    void SetUp() override
    {
        CaptureFixture::SetUp();
        if (HasFatalFailure())
            return;
        home = desktop.path(QStringLiteral("home"));
        QDir().mkpath(home + QStringLiteral("/Pictures"));
        QDir().mkpath(desktop.path(QStringLiteral("shots")));
        env.insert(QStringLiteral("HOME"), home);
    }

    void TearDown() override
    {
        if (bus)
            bus->unregisterService(QStringLiteral("org.freedesktop.Notifications"));
        bus.reset();
    }

    void serveNotifications()
    {
        bus = std::make_unique<PrivateBus>();
        ASSERT_TRUE(bus->isConnected());
        ASSERT_TRUE(bus->registerObject(QStringLiteral("/org/freedesktop/Notifications"), &server,
                                        QDBusConnection::ExportAllSlots));
        ASSERT_TRUE(bus->registerService(QStringLiteral("org.freedesktop.Notifications")));
    }

    // Runs kelvo to its end while this process keeps answering the bus.
    KelvoProcess::Result run(const QStringList& args, const QString& directory = {})
    {
        return KelvoCommand(args, env, directory).finish();
    }

    QByteArray clipboardPng() { return x->clipboardPng(); }

    QString home;
    QProcessEnvironment env;
    NotificationServer server;
    std::unique_ptr<PrivateBus> bus;
};

} // namespace

TEST_F(ImageOutputE2e, AFolderThatCannotTakeThePictureIsToldOnTheBusAndThePictureKept)
{
    serveNotifications();
    QFile blocker(desktop.path(QStringLiteral("blocker")));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    const QString folder = blocker.fileName() + QStringLiteral("/shots");

    const auto r = run({QStringLiteral("full"), QStringLiteral("-p"), folder});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.contains(folder)) << r.err.toStdString();
    const QStringList kept = QDir(home + QStringLiteral("/Pictures")).entryList(QDir::Files);
    ASSERT_EQ(kept.size(), 1);
    const QString keptPath = home + QStringLiteral("/Pictures/") + kept.first();
    EXPECT_TRUE(r.err.contains(keptPath)) << r.err.toStdString();
    EXPECT_EQ(QImage(keptPath).size(), QSize(3200, 1080));

    ASSERT_TRUE(pumpUntil([&] { return !server.received.empty(); }));
    const auto& n = server.received.front();
    EXPECT_EQ(n.appName, QStringLiteral("Kelvo"));
    EXPECT_EQ(n.summary, QStringLiteral("The picture could not be saved"));
    EXPECT_TRUE(n.body.contains(keptPath)) << n.body.toStdString();
    EXPECT_TRUE(n.actions.contains(QStringLiteral("default")));
}

namespace {

// A tmpfs of 64 KiB, filled up: a disk with no room left.
class FullDisk
{
public:
    explicit FullDisk(const QString& folder)
        : m_folder(folder)
    {
        QDir().mkpath(folder);
        QProcess mount;
        mount.start(QStringLiteral("mount"),
                    {QStringLiteral("-t"), QStringLiteral("tmpfs"), QStringLiteral("-o"),
                     QStringLiteral("size=64k"), QStringLiteral("tmpfs"), folder});
        mount.waitForFinished(20000);
        m_mounted = mount.exitStatus() == QProcess::NormalExit && mount.exitCode() == 0;
        m_error = QString::fromLocal8Bit(mount.readAllStandardError()).trimmed();
        if (!m_mounted)
            return;
        QFile filler(folder + QStringLiteral("/filler"));
        if (filler.open(QIODevice::WriteOnly)) {
            const QByteArray block(4096, 'f');
            while (filler.write(block) == block.size() && filler.flush()) {
            }
        }
    }
    ~FullDisk()
    {
        if (m_mounted)
            QProcess::execute(QStringLiteral("umount"), {m_folder});
    }
    [[nodiscard]] bool mounted() const { return m_mounted; }
    [[nodiscard]] QString error() const { return m_error; }

private:
    QString m_folder;
    QString m_error;
    bool m_mounted = false;
};

} // namespace

TEST_F(ImageOutputE2e, AFullDiskIsToldAndThePictureKeptWithNothingHalfWritten)
{
    const QString folder = desktop.path(QStringLiteral("full"));
    FullDisk disk(folder);
    if (!disk.mounted())
        GTEST_SKIP() << "cannot mount a tmpfs to fill (mount needs root): "
                     << disk.error().toStdString();
    serveNotifications();

    const auto r = run({QStringLiteral("full"), QStringLiteral("-p"), folder});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.out.isEmpty());
    EXPECT_TRUE(r.err.contains(QStringLiteral("No space left on device"))) << r.err.toStdString();
    // The full folder holds what it held, no temporary file beside it.
    EXPECT_EQ(QDir(folder).entryList(QDir::Files | QDir::Hidden | QDir::System),
              QStringList{QStringLiteral("filler")});
    const QStringList kept = QDir(home + QStringLiteral("/Pictures")).entryList(QDir::Files);
    ASSERT_EQ(kept.size(), 1);
    const QString keptPath = home + QStringLiteral("/Pictures/") + kept.first();
    EXPECT_TRUE(r.err.contains(keptPath)) << r.err.toStdString();
    EXPECT_EQ(QImage(keptPath).convertToFormat(QImage::Format_RGB32), x->grabRoot());

    ASSERT_TRUE(pumpUntil([&] { return !server.received.empty(); }));
    EXPECT_EQ(server.received.front().summary, QStringLiteral("The picture could not be saved"));
    EXPECT_TRUE(server.received.front().body.contains(keptPath));
}

TEST_F(ImageOutputE2e, TheCommandHandsThePictureToTheRunningInstanceAndRunsItselfWhenDeclined)
{
    serveNotifications();
    InstanceStandIn standIn;
    ASSERT_TRUE(bus->registerObject(QStringLiteral("/org/kelvo/Kelvo"), &standIn,
                                    QDBusConnection::ExportAllSlots));
    ASSERT_TRUE(bus->registerService(QStringLiteral("org.kelvo.Kelvo")));
    const QString shots = desktop.path(QStringLiteral("shots"));
    env.insert(QStringLiteral("XDG_CONFIG_HOME"), desktop.path(QStringLiteral("config")));

    // The instance's answer is the command's: stdout byte for byte, stderr,
    // exit code; the request is the command line as typed, where it was typed.
    const auto taken = run({QStringLiteral("screen"), QStringLiteral("-n"), QStringLiteral("1"),
                            QStringLiteral("-p"), QStringLiteral("here.png")},
                           shots);
    EXPECT_EQ(standIn.calls, 1);
    EXPECT_EQ(taken.exitCode, 3);
    EXPECT_EQ(taken.raw, QByteArray("written\n\0raw", 13));
    EXPECT_EQ(taken.err, QStringLiteral("kelvo: told\n"));
    EXPECT_EQ(standIn.arguments,
              QStringList({QStringLiteral("screen"), QStringLiteral("-n"), QStringLiteral("1"),
                           QStringLiteral("-p"), QStringLiteral("here.png")}));
    EXPECT_EQ(QFileInfo(standIn.directory).canonicalFilePath(),
              QFileInfo(shots).canonicalFilePath());
    EXPECT_EQ(standIn.environment,
              QStringList({QStringLiteral("DISPLAY=") + qEnvironmentVariable("DISPLAY"),
                           QStringLiteral("HOME=") + home,
                           QStringLiteral("XDG_CONFIG_HOME=") +
                               env.value(QStringLiteral("XDG_CONFIG_HOME"))}));
    EXPECT_TRUE(QDir(shots).isEmpty()) << "the command wrote a file the instance had taken";

    // Declined: the command takes the picture itself, as without an instance.
    SolidWindow red(*x, QRect(300, 200, 400, 300), Qt::red, QStringLiteral("red"));
    ASSERT_TRUE(waitFor([&] { return x->pixel(500, 350) == QColor(Qt::red); }));
    standIn.decline = true;
    const auto declined =
        run({QStringLiteral("full"), QStringLiteral("-p"), QStringLiteral("own.png")}, shots);
    EXPECT_EQ(standIn.calls, 2);
    ASSERT_EQ(declined.exitCode, 0) << declined.err.toStdString();
    const QString own = shots + QStringLiteral("/own.png");
    EXPECT_EQ(declined.out, own + QLatin1Char('\n'));
    EXPECT_EQ(QImage(own).convertToFormat(QImage::Format_RGB32), x->grabRoot());
    bus->unregisterService(QStringLiteral("org.kelvo.Kelvo"));
}

TEST_F(ImageOutputE2e, FullAndScreenHoldTheScreenPixelForPixelAloneAndThroughTheInstance)
{
    SolidWindow red(*x, QRect(300, 200, 400, 300), Qt::red, QStringLiteral("red"));
    SolidWindow blue(*x, QRect(2100, 150, 300, 200), Qt::blue, QStringLiteral("blue"));
    ASSERT_TRUE(waitFor([&] { return x->pixel(500, 350) == QColor(Qt::red); }));
    ASSERT_TRUE(waitFor([&] { return x->pixel(2250, 250) == QColor(Qt::blue); }));
    const QString shots = desktop.path(QStringLiteral("shots"));

    // Without an instance the command takes the picture itself: the whole
    // desktop into a named file in the folder, one monitor, and stdout.
    const auto alone = run({QStringLiteral("full"), QStringLiteral("-p"), shots});
    ASSERT_EQ(alone.exitCode, 0) << alone.err.toStdString();
    const QString alonePath = alone.out.trimmed();
    EXPECT_TRUE(QFileInfo(alonePath).fileName().startsWith(QStringLiteral("Kelvo")));
    EXPECT_EQ(QImage(alonePath).convertToFormat(QImage::Format_RGB32), x->grabRoot());
    const auto aloneScreen =
        run({QStringLiteral("screen"), QStringLiteral("-n"), QStringLiteral("1"),
             QStringLiteral("-p"), shots + QStringLiteral("/second-alone.png")});
    ASSERT_EQ(aloneScreen.exitCode, 0) << aloneScreen.err.toStdString();
    EXPECT_EQ(
        QImage(shots + QStringLiteral("/second-alone.png")).convertToFormat(QImage::Format_RGB32),
        x->grabRoot(kSecond));
    const auto aloneRaw = run({QStringLiteral("full"), QStringLiteral("--raw")});
    ASSERT_EQ(aloneRaw.exitCode, 0) << aloneRaw.err.toStdString();
    EXPECT_EQ(QImage::fromData(aloneRaw.raw, "PNG").convertToFormat(QImage::Format_RGB32),
              x->grabRoot());
    // Only the first two wrote into the folder.
    EXPECT_EQ(QDir(shots).entryList(QDir::Files).size(), 2);

    serveNotifications();
    KelvoProcess instance({}, env);
    ASSERT_TRUE(pumpUntil([&] {
        return bus->interface()->isServiceRegistered(QStringLiteral("org.kelvo.Kelvo")).value();
    })) << instance.errors().toStdString();

    // A copy goes to the instance, so it outlives the command on the
    // clipboard, and the instance tells it.
    const auto copy = run({QStringLiteral("screen"), QStringLiteral("-n"), QStringLiteral("0"),
                           QStringLiteral("-c")});
    ASSERT_EQ(copy.exitCode, 0) << copy.err.toStdString();
    EXPECT_EQ(QImage::fromData(clipboardPng(), "PNG").convertToFormat(QImage::Format_RGB32),
              x->grabRoot(QRect(0, 0, 1920, 1080)));
    ASSERT_TRUE(pumpUntil([&] { return !server.received.empty(); }))
        << instance.errors().toStdString();
    EXPECT_EQ(server.received.front().summary, QStringLiteral("Kelvo"));
    EXPECT_EQ(server.received.front().body,
              QStringLiteral("Screenshot saved to pasteboard, and 5 more reminders"));

    // Asked as `kelvo` asks it, with this process's display and preferences.
    QStringList environment;
    for (const char* name : {"DISPLAY", "HOME", "XDG_CONFIG_HOME"}) {
        const QString key = QString::fromLatin1(name);
        environment << key + QLatin1Char('=') +
                           env.value(key, QProcessEnvironment::systemEnvironment().value(key));
    }
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.kelvo.Kelvo"), QStringLiteral("/org/kelvo/Kelvo"),
        QStringLiteral("org.kelvo.Kelvo"), QStringLiteral("Shot"));
    call.setArguments({QStringList({QStringLiteral("full"), QStringLiteral("-p"),
                                    QStringLiteral("instance.png")}),
                       shots, environment});
    const QDBusMessage reply = bus->call(call, QDBus::Block, 30000);
    ASSERT_EQ(reply.type(), QDBusMessage::ReplyMessage)
        << reply.errorMessage().toStdString() << instance.errors().toStdString();
    ASSERT_EQ(reply.arguments().size(), 3);
    EXPECT_EQ(reply.arguments().at(0).toInt(), 0)
        << reply.arguments().at(2).toString().toStdString();
    const QString written = shots + QStringLiteral("/instance.png");
    EXPECT_EQ(reply.arguments().at(1).toByteArray(), written.toLocal8Bit() + '\n');
    const QImage fromInstance = QImage(written).convertToFormat(QImage::Format_RGB32);
    EXPECT_EQ(fromInstance, QImage(alonePath).convertToFormat(QImage::Format_RGB32));
    EXPECT_EQ(fromInstance, x->grabRoot());

    // Through the command: the monitor and stdout forms too.
    const auto screen = run({QStringLiteral("screen"), QStringLiteral("-n"), QStringLiteral("1"),
                             QStringLiteral("-p"), QStringLiteral("second.png")},
                            shots);
    ASSERT_EQ(screen.exitCode, 0) << screen.err.toStdString();
    EXPECT_EQ(QImage(shots + QStringLiteral("/second.png")).convertToFormat(QImage::Format_RGB32),
              x->grabRoot(kSecond));
    const auto raw = run({QStringLiteral("full"), QStringLiteral("--raw")});
    ASSERT_EQ(raw.exitCode, 0) << raw.err.toStdString();
    EXPECT_EQ(QImage::fromData(raw.raw, "PNG").convertToFormat(QImage::Format_RGB32), fromInstance);
    EXPECT_TRUE(instance.isRunning()) << instance.errors().toStdString();
}

#include "ImageOutputTest.moc"
