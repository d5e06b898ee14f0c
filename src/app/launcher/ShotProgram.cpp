// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/launcher/ShotProgram.h"

#include "platform/freedesktop/FreedesktopNotifier.h"
#include "platform/x11/RandrScreens.h"
#include "platform/x11/X11WindowServer.h"
#include "settings/MemoryStore.h"
#include "settings/QSettingsStore.h"
#include "settings/Startup.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QTextStream>
#include <QThread>

#include <cstdio>
#include <memory>

namespace app {

namespace {

constexpr int kError = 1;

QTextStream& err()
{
    static QTextStream stream(stderr);
    return stream;
}

// Connects to the notification server only when there is something to
// tell: a one-shot capture that succeeds never pays for the bus.
class LazyNotifier final : public platform::DesktopNotifier
{
public:
    void notify(const platform::Notification& n, std::function<void()> delivered) override
    {
        if (!m_notifier)
            m_notifier = std::make_unique<platform::freedesktop::FreedesktopNotifier>(
                QDBusConnection::sessionBus());
        m_notifier->notify(n, std::move(delivered));
    }
    void waitForDelivery()
    {
        if (m_notifier)
            m_notifier->waitForDelivery(3000);
    }

private:
    std::unique_ptr<platform::freedesktop::FreedesktopNotifier> m_notifier;
};

} // namespace

int runShot(const output::ShotRequest& request, int argc, char** argv,
            std::function<QString(const QByteArray&)> clipboard)
{
    QCoreApplication core(argc, argv);
    const auto randr = platform::x11::RandrScreens::query();
    if (!randr) {
        err() << "kelvo: cannot connect to the X server (is DISPLAY set?)\n";
        return kError;
    }
    platform::x11::X11WindowServer windows(randr->screens());

    // Before Kelvo's first start its preferences are not written yet; the
    // command then reads the values that start would write, and writes none.
    settings::QSettingsStore userStore;
    settings::MemoryStore firstRunStore;
    auto userDefaults = std::make_unique<settings::Defaults>(userStore);
    std::unique_ptr<settings::Defaults> firstRunDefaults;
    settings::Defaults* defaults = userDefaults.get();
    if (settings::isFirstRun(*userDefaults)) {
        firstRunDefaults = std::make_unique<settings::Defaults>(firstRunStore);
        const auto context = settings::StartContext::current();
        settings::installFirstRunValues(*firstRunDefaults, context);
        settings::installEveryStartValues(*firstRunDefaults, context);
        defaults = firstRunDefaults.get();
    }

    LazyNotifier notifier;
    output::ShotCommand::Services services;
    services.windows = &windows;
    services.defaults = defaults;
    services.notifier = &notifier;
    services.pointer = [&] {
        return randr->screens().toPoints(QRect(randr->pointer(), QSize(1, 1))).topLeft();
    };
    services.clipboard = std::move(clipboard);
    services.writeOut = [](const QByteArray& bytes) {
        std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stdout);
        std::fflush(stdout);
    };
    services.report = [](const QString& line) { err() << "kelvo: " << line << '\n' << Qt::flush; };
    services.sleep = [](int ms) { QThread::msleep(static_cast<unsigned long>(ms)); };
    const int code = output::ShotCommand(services).run(request);
    notifier.waitForDelivery();
    return code;
}

} // namespace app
