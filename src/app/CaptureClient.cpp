// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/CaptureClient.h"

#include "app/CommandLine.h"
#include "app/KelvoBus.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QEventLoop>
#include <QProcess>
#include <QTimer>

namespace app {

namespace {
constexpr int kStartTimeoutMs = 15000;
constexpr int kCallTimeoutMs = 10000;
} // namespace

CaptureClient::CaptureClient(Output output, QObject* parent)
    : QObject(parent)
    , m_output(std::move(output))
{}

bool CaptureClient::ensureInstance()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    const QString service = QString::fromLatin1(kBusService);
    QDBusServiceWatcher watcher(service, bus, QDBusServiceWatcher::WatchForRegistration);
    QEventLoop loop;
    connect(&watcher, &QDBusServiceWatcher::serviceRegistered, &loop, &QEventLoop::quit);
    if (bus.interface()->isServiceRegistered(service).value())
        return true;
    // The instance lives on in the tray after this command ends.
    if (!QProcess::startDetached(QCoreApplication::applicationFilePath(), {})) {
        m_output.report(QStringLiteral("Kelvo is not running and could not be started"));
        return false;
    }
    QTimer::singleShot(kStartTimeoutMs, &loop, &QEventLoop::quit);
    // The name may have been claimed between the check and the watch.
    if (!bus.interface()->isServiceRegistered(service).value())
        loop.exec();
    if (bus.interface()->isServiceRegistered(service).value())
        return true;
    m_output.report(QStringLiteral("Kelvo was started but did not appear on the session bus"));
    return false;
}

int CaptureClient::run(const CaptureRequest& request)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        m_output.report(QStringLiteral(
            "no D-Bus session bus: 'gui' with options needs one to hear the capture's end"));
        return exitcode::Error;
    }
    const QString service = QString::fromLatin1(kBusService);
    const QString path = QString::fromLatin1(kBusPath);
    const QString iface = QString::fromLatin1(kBusInterface);
    // Listen before asking, so that no end is missed.
    bus.connect(service, path, iface, QStringLiteral("CaptureDone"), this,
                SLOT(onDone(uint, QString)));
    bus.connect(service, path, iface, QStringLiteral("CaptureCancelled"), this,
                SLOT(onCancelled(uint)));
    bus.connect(service, path, iface, QStringLiteral("CaptureFailed"), this,
                SLOT(onFailed(uint, QString)));
    if (!ensureInstance())
        return exitcode::Error;

    QDBusServiceWatcher gone(service, bus, QDBusServiceWatcher::WatchForUnregistration);
    QEventLoop loop;
    bool instanceGone = false;
    connect(&gone, &QDBusServiceWatcher::serviceUnregistered, &loop, [&] {
        instanceGone = true;
        loop.quit();
    });

    QDBusMessage call =
        QDBusMessage::createMethodCall(service, path, iface, QStringLiteral("Capture"));
    call.setArguments({request.toOptions()});
    const QDBusMessage reply = bus.call(call, QDBus::Block, kCallTimeoutMs);
    if (reply.type() == QDBusMessage::ErrorMessage) {
        m_output.report(reply.errorMessage());
        return exitcode::Error;
    }
    if (reply.arguments().isEmpty()) {
        m_output.report(QStringLiteral("the running Kelvo gave no answer to the request"));
        return exitcode::Error;
    }
    const uint id = reply.arguments().constFirst().toUInt();
    auto ended = [&] { return m_endings.contains(id); };
    connect(this, &CaptureClient::endingArrived, &loop, &QEventLoop::quit);
    while (!ended() && !instanceGone)
        loop.exec();
    if (!ended()) {
        m_output.report(QStringLiteral("Kelvo ended before the capture did"));
        return exitcode::Error;
    }
    const Ending e = m_endings.value(id);
    if (e.code == exitcode::Done && !e.text.isEmpty())
        m_output.path(e.text);
    else if (e.code == exitcode::Error)
        m_output.report(e.text);
    return e.code;
}

void CaptureClient::onDone(uint id, const QString& path)
{
    m_endings.insert(id, {exitcode::Done, path});
    Q_EMIT endingArrived();
}

void CaptureClient::onCancelled(uint id)
{
    m_endings.insert(id, {exitcode::Cancelled, {}});
    Q_EMIT endingArrived();
}

void CaptureClient::onFailed(uint id, const QString& error)
{
    m_endings.insert(id, {exitcode::Error, error});
    Q_EMIT endingArrived();
}

} // namespace app
