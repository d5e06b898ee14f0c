// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/AppDelegate.h"
#include "app/CaptureClient.h"
#include "app/CommandLine.h"
#include "app/KelvoBus.h"
#include "app/OfflineCommands.h"
#include "app/WarmInstance.h"
#include "app/launcher/ShotProgram.h"
#include "app/output/ImageOutput.h"
#include "capture/ui/QNClipScreenManager.h"
#include "core/MessageBus.h"
#include "platform/freedesktop/FreedesktopFileManager.h"
#include "platform/freedesktop/FreedesktopNotifier.h"
#include "platform/freedesktop/XdgAutostart.h"
#include "platform/linux/CanberraSoundPlayer.h"
#include "platform/linux/PulseAudioDevices.h"
#include "platform/linux/TextToSpeechSpeaker.h"
#include "platform/x11/X11ActiveWindow.h"
#include "platform/x11/X11HotKeyCenter.h"
#include "platform/x11/X11NotificationStacking.h"
#include "platform/x11/X11PointerControl.h"
#include "platform/x11/X11WindowServer.h"
#include "settings/QSettingsStore.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QTextStream>
#include <QTimer>

#include <cstdlib>
#include <unistd.h>

namespace {

constexpr char kInstanceMarker[] = "KELVO_BECOME_INSTANCE";

QTextStream& err()
{
    static QTextStream stream(stderr);
    return stream;
}

// A second start, or `kelvo prefs`: the running instance shows its
// Preferences window, the one way in when its tray icon is hidden.
int showPreferencesOfRunningInstance()
{
    const QString error = app::KelvoBus::callRunningInstance(QStringLiteral("ShowPreferences"));
    if (!error.isEmpty()) {
        err() << "kelvo: the running instance did not answer: " << error << '\n';
        return app::exitcode::Error;
    }
    return app::exitcode::Done;
}

// Hands the request to the instance that already runs. Answers the exit
// code, or -1 when no instance runs and this process should become it.
int forwardToRunningInstance(const app::CommandLine& cl, int argc, char** argv)
{
    QCoreApplication probe(argc, argv);
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return -1;
    const auto owner = bus.interface()->isServiceRegistered(QString::fromLatin1(app::kBusService));
    if (!owner.isValid() || !owner.value())
        return -1;
    if (cl.verb == app::CommandLine::Verb::Gui) {
        const QString error =
            app::KelvoBus::callRunningInstance(QStringLiteral("ScreenShotsByTessikGroup"));
        if (!error.isEmpty()) {
            err() << "kelvo: the running instance did not answer: " << error << '\n';
            return app::exitcode::Error;
        }
        return app::exitcode::Done;
    }
    if (!cl.documents.isEmpty()) {
        err()
            << "kelvo: Kelvo is already running; pictures are opened by the running instance only "
               "when it was started with them\n";
        return app::exitcode::Error;
    }
    return showPreferencesOfRunningInstance();
}

// `kelvo gui` with options: the running instance captures, this process
// waits for the end and tells it.
int runCaptureRequest(const app::CommandLine& cl, int argc, char** argv)
{
    QCoreApplication core(argc, argv);
    app::CaptureClient client(
        {[](const QString& path) { QTextStream(stdout) << path << '\n'
                                                       << Qt::flush; },
         [](const QString& line) { err() << "kelvo: " << line << '\n'
                                         << Qt::flush; }});
    return client.run(*cl.capture);
}

int runInstance(const app::CommandLine& cl, int argc, char** argv)
{
    // The selection counts drag events (the eighth turns a window pick into
    // a region), so every pointer move must arrive, not a merged one.
    QCoreApplication::setAttribute(Qt::AA_CompressHighFrequencyEvents, false);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);

    app::AppDelegate::Services services;
    const QString unreadable =
        settings::QSettingsStore::setAsideIfUnreadable(settings::QSettingsStore::defaultPath());
    if (!unreadable.isEmpty())
        services.preferenceNotes << unreadable;
    services.store = std::make_unique<settings::QSettingsStore>();
    auto windowServer = std::make_unique<platform::x11::X11WindowServer>();
    if (!windowServer->isConnected()) {
        err() << "kelvo: cannot connect to the X server (is DISPLAY set?)\n";
        return app::exitcode::Error;
    }
    platform::x11::X11WindowServer& windows = *windowServer;
    services.windowServer = std::move(windowServer);
    services.pointer = std::make_unique<platform::x11::X11PointerControl>();
    services.sound = std::make_unique<platform::linux_desktop::CanberraSoundPlayer>();
    services.autostart = std::make_unique<platform::freedesktop::XdgAutostart>(
        platform::freedesktop::XdgAutostart::defaultPath(),
        QCoreApplication::applicationFilePath());
    services.audio = std::make_unique<platform::linux_desktop::PulseAudioDevices>();
    services.hotKeys = std::make_unique<platform::x11::X11HotKeyCenter>();
    services.speaker = std::make_unique<platform::linux_desktop::TextToSpeechSpeaker>();
    auto notifier =
        std::make_unique<platform::freedesktop::FreedesktopNotifier>(QDBusConnection::sessionBus());
    platform::freedesktop::FreedesktopNotifier& notices = *notifier;
    services.notifier = std::move(notifier);
    services.files = std::make_unique<platform::freedesktop::FreedesktopFileManager>(
        QDBusConnection::sessionBus());
    // Before the delegate, so that they outlive the capture manager.
    platform::x11::X11ActiveWindow activeWindow;
    platform::x11::X11NotificationStacking notificationStacking;
    app::AppDelegate delegate(std::move(services));
    // A click on one of our notices shows the picture it tells of.
    notices.setActivatedHandler([&delegate](const platform::Notification& n) {
        delegate.imageOutput().didActivateNotification(n);
    });
    capture::QNClipScreenManager& captures = delegate.clipScreenManager();
    captures.setDesktopWindows(&activeWindow, &notificationStacking);
    // A notice shown during a capture must not hide under its overlay.
    notices.setDeliveredHandler([&messages = delegate.messages()] {
        messages.post(core::Message::DidDeliverNotification);
    });

    if (!delegate.registerOnBus()) {
        if (app::KelvoBus::sessionBusAvailable()) {
            // Another instance won the race for the name: hand over to it.
            if (cl.verb == app::CommandLine::Verb::Gui)
                return app::KelvoBus::callRunningInstance(
                           QStringLiteral("ScreenShotsByTessikGroup"))
                               .isEmpty()
                           ? app::exitcode::Done
                           : app::exitcode::Error;
            if (!cl.documents.isEmpty()) {
                err() << "kelvo: Kelvo is already running\n";
                return app::exitcode::Error;
            }
            return showPreferencesOfRunningInstance();
        }
        err() << "kelvo: no D-Bus session bus; running without single-instance control\n";
    }
    delegate.applicationDidFinishLaunching();
    app::WarmInstance warm(windows, notices, delegate.findChild<app::KelvoBus*>());
    if (!cl.documents.isEmpty())
        delegate.openURLs(cl.documents);
    if (cl.verb == app::CommandLine::Verb::Gui)
        QTimer::singleShot(0, &delegate, &app::AppDelegate::regionalScreenshots);
    if (cl.verb == app::CommandLine::Verb::Prefs)
        QTimer::singleShot(0, &delegate, &app::AppDelegate::OpenPreferences);
    return QApplication::exec();
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication::setOrganizationName(QStringLiteral("kelvo"));
    QCoreApplication::setApplicationName(QStringLiteral("kelvo"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KELVO_VERSION));

    QStringList args;
    for (int i = 1; i < argc; ++i)
        args << QString::fromLocal8Bit(argv[i]);
    const app::CommandLine cl = app::CommandLine::parse(args);

    switch (cl.verb) {
    case app::CommandLine::Verb::Help:
        QTextStream(stdout) << app::CommandLine::usage();
        return app::exitcode::Done;
    case app::CommandLine::Verb::Version:
        QTextStream(stdout) << "kelvo " << KELVO_VERSION << '\n';
        return app::exitcode::Done;
    case app::CommandLine::Verb::Invalid:
        // One line, so scripts and hot-key daemons log all of it.
        err() << "kelvo: " << cl.error << " (see kelvo --help)\n";
        return app::exitcode::Error;
    case app::CommandLine::Verb::Shot:
        return app::runShot(*cl.shot, argc, argv, [](const QByteArray& png) {
            return app::KelvoBus::copyImageToRunningInstance(png);
        });
    case app::CommandLine::Verb::Offline: {
        QCoreApplication core(argc, argv);
        return app::findOfflineCommand(cl.offlineVerb)->run(cl.arguments);
    }
    case app::CommandLine::Verb::Gui:
        if (cl.capture)
            return runCaptureRequest(cl, argc, argv);
        break;
    case app::CommandLine::Verb::Tray:
    case app::CommandLine::Verb::Prefs:
        break;
    }

    // The quick path: a plain core application asks the bus whether Kelvo
    // runs and forwards the request. Only when it does not does this process
    // become the instance, started afresh so that it can be a full GUI
    // application.
    if (std::getenv(kInstanceMarker) == nullptr) {
        const int forwarded = forwardToRunningInstance(cl, argc, argv);
        if (forwarded >= 0)
            return forwarded;
        setenv(kInstanceMarker, "1", 1);
        execv("/proc/self/exe", argv);
        err() << "kelvo: cannot start the instance\n";
        return app::exitcode::Error;
    }
    unsetenv(kInstanceMarker);
    return runInstance(cl, argc, argv);
}
