// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/KelvoBus.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>

namespace app {

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

void KelvoBus::onBroadcastScreenShots()
{
    Q_EMIT regionalScreenshotsRequested();
}

void KelvoBus::onBroadcastPin()
{
    Q_EMIT pinFromDragPasteboardRequested();
}

} // namespace app
