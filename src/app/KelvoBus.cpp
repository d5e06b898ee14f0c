// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/KelvoBus.h"

#include "app/output/ImageOutput.h"
#include "platform/freedesktop/FreedesktopFileManager.h"
#include "platform/freedesktop/FreedesktopNotifier.h"
#include "settings/Defaults.h"
#include "settings/QSettingsStore.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QMimeData>
#include <QProcess>
#include <QThread>

namespace app {

// The output CopyImage falls back on when the application has not handed
// the bus its own.
struct KelvoBus::OwnOutput
{
    settings::QSettingsStore store;
    settings::Defaults defaults{store};
    platform::freedesktop::FreedesktopNotifier notifier{QDBusConnection::sessionBus()};
    platform::freedesktop::FreedesktopFileManager files{QDBusConnection::sessionBus()};
    output::ImageOutput output;

    OwnOutput()
        : output({&defaults,
                  &notifier,
                  &files,
                  [](const QByteArray& png) {
                      auto* mime = new QMimeData;
                      mime->setData(QStringLiteral("image/png"), png);
                      if (auto* clipboard = QGuiApplication::clipboard())
                          clipboard->setMimeData(mime);
                      else
                          delete mime;
                  },
                  {},
                  {},
                  {}})
    {
        notifier.setActivatedHandler(
            [this](const platform::Notification& n) { output.didActivateNotification(n); });
    }
};

bool KelvoBus::sessionBusAvailable()
{
    return QDBusConnection::sessionBus().isConnected();
}

bool KelvoBus::registerOnBus()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return false;
    if (!bus.registerService(QString::fromLatin1(kBusService)))
        return false;
    bus.registerObject(QString::fromLatin1(kBusPath), this, QDBusConnection::ExportAllSlots);
    const QString iface = QString::fromLatin1(kBusInterface);
    bus.connect(QString(), QString(), iface, QStringLiteral("ScreenShotsByTessikGroup"), this,
                SLOT(onBroadcastScreenShots()));
    bus.connect(QString(), QString(), iface, QStringLiteral("PinFromPasteboardByGorvane"), this,
                SLOT(onBroadcastPin()));
    return true;
}

QString KelvoBus::callRunningInstance(const QString& method)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return QStringLiteral("no D-Bus session bus");
    QDBusMessage call = QDBusMessage::createMethodCall(QString::fromLatin1(kBusService),
                                                       QString::fromLatin1(kBusPath),
                                                       QString::fromLatin1(kBusInterface), method);
    const QDBusMessage reply = bus.call(call, QDBus::Block, 10000);
    if (reply.type() == QDBusMessage::ErrorMessage)
        return reply.errorMessage();
    return {};
}

QString KelvoBus::copyImageToRunningInstance(const QByteArray& png)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return QStringLiteral("no D-Bus session bus, so no Kelvo to keep the clipboard");
    const QString service = QString::fromLatin1(kBusService);
    if (!bus.interface()->isServiceRegistered(service).value()) {
        // The tray instance keeps the clipboard once this process is gone.
        if (!QProcess::startDetached(QCoreApplication::applicationFilePath(), {}))
            return QStringLiteral("Kelvo is not running and could not be started");
        QElapsedTimer waited;
        waited.start();
        while (!bus.interface()->isServiceRegistered(service).value()) {
            if (waited.elapsed() > 15000)
                return QStringLiteral("Kelvo was started but did not answer");
            QThread::msleep(50);
        }
    }
    QDBusMessage call = QDBusMessage::createMethodCall(service, QString::fromLatin1(kBusPath),
                                                       QString::fromLatin1(kBusInterface),
                                                       QStringLiteral("CopyImage"));
    call.setArguments({png});
    const QDBusMessage reply = bus.call(call, QDBus::Block, 15000);
    if (reply.type() == QDBusMessage::ErrorMessage)
        return reply.errorMessage();
    return reply.arguments().isEmpty() ? QString() : reply.arguments().constFirst().toString();
}

output::ImageOutput& KelvoBus::imageOutput()
{
    if (m_output != nullptr)
        return *m_output;
    if (!m_ownOutput)
        m_ownOutput = std::make_shared<OwnOutput>();
    return m_ownOutput->output;
}

QString KelvoBus::CopyImage(const QByteArray& png)
{
    return imageOutput().copyPngToClipboard(png);
}

uint KelvoBus::Capture(const QVariantMap& options)
{
    QString error;
    const auto request = CaptureRequest::fromOptions(options, &error);
    if (!request) {
        if (calledFromDBus())
            sendErrorReply(QDBusError::InvalidArgs, error);
        return 0;
    }
    if (!m_captureHandler) {
        if (calledFromDBus())
            sendErrorReply(QDBusError::NotSupported,
                           QStringLiteral("this Kelvo cannot take capture requests"));
        return 0;
    }
    // Ids never repeat within one run; 0 is never an id.
    const uint id = ++m_lastCaptureId;
    error = m_captureHandler(id, *request);
    if (!error.isEmpty()) {
        if (calledFromDBus())
            sendErrorReply(QDBusError::Failed, error);
        return 0;
    }
    return id;
}

namespace {
void broadcast(const QString& name, const QVariantList& arguments)
{
    QDBusMessage signal = QDBusMessage::createSignal(QString::fromLatin1(kBusPath),
                                                     QString::fromLatin1(kBusInterface), name);
    signal.setArguments(arguments);
    QDBusConnection::sessionBus().send(signal);
}
} // namespace

void KelvoBus::captureDone(uint id, const QString& path)
{
    broadcast(QStringLiteral("CaptureDone"), {id, path});
}

void KelvoBus::captureCancelled(uint id)
{
    broadcast(QStringLiteral("CaptureCancelled"), {id});
}

void KelvoBus::captureFailed(uint id, const QString& error)
{
    broadcast(QStringLiteral("CaptureFailed"), {id, error});
}

void KelvoBus::ScreenShotsByTessikGroup()
{
    Q_EMIT regionalScreenshotsRequested();
}

void KelvoBus::PinFromPasteboardByGorvane()
{
    Q_EMIT pinFromDragPasteboardRequested();
}

QString KelvoBus::Version()
{
    return QCoreApplication::applicationVersion();
}

QVariantMap KelvoBus::HotKeys()
{
    return m_hotKeyReport ? m_hotKeyReport() : QVariantMap();
}

void KelvoBus::ShowPreferences()
{
    Q_EMIT preferencesRequested();
}

int KelvoBus::Shot(const QStringList& arguments, const QString& directory,
                   const QStringList& environment, QByteArray& out, QString& errors)
{
    QString why = QStringLiteral("this Kelvo takes no pictures for others");
    const auto answer =
        m_shotHandler ? m_shotHandler(arguments, directory, environment, &why) : std::nullopt;
    if (!answer) {
        if (calledFromDBus())
            sendErrorReply(QStringLiteral("org.kelvo.Kelvo.Error.Declined"), why);
        return 0;
    }
    out = answer->out;
    errors = answer->errors;
    return answer->exitCode;
}

void KelvoBus::onBroadcastScreenShots()
{
    Q_EMIT regionalScreenshotsRequested();
}

void KelvoBus::onBroadcastPin()
{
    Q_EMIT pinFromDragPasteboardRequested();
}

} // namespace app
