// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/FreedesktopNotifier.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QElapsedTimer>
#include <QVariantMap>

namespace platform::freedesktop {

namespace {
const QString kService = QStringLiteral("org.freedesktop.Notifications");
const QString kPath = QStringLiteral("/org/freedesktop/Notifications");
const QString kInterface = QStringLiteral("org.freedesktop.Notifications");
} // namespace

FreedesktopNotifier::FreedesktopNotifier(QDBusConnection bus, QObject* parent)
    : QObject(parent)
    , m_bus(std::move(bus))
{
    m_bus.connect(kService, kPath, kInterface, QStringLiteral("ActionInvoked"), this,
                  SLOT(onActionInvoked(uint, QString)));
    m_bus.connect(kService, kPath, kInterface, QStringLiteral("NotificationClosed"), this,
                  SLOT(onClosed(uint, uint)));
}

QVariantList FreedesktopNotifier::notifyArguments(const Notification& n, bool bodyMarkup)
{
    QVariantMap hints;
    if (n.withSound)
        hints.insert(QStringLiteral("sound-name"), QStringLiteral("message-new-instant"));
    // A path may hold "&" or "<", which a server that reads markup would
    // take for tags.
    const QString body = bodyMarkup ? n.body.toHtmlEscaped() : n.body;
    return {QStringLiteral("Kelvo"),
            0u,
            QStringLiteral("kelvo"),
            n.title,
            body,
            QStringList{QStringLiteral("default"), QString()},
            hints,
            -1};
}

bool FreedesktopNotifier::bodyMarkup()
{
    if (!m_bodyMarkup) {
        const QDBusMessage reply =
            m_bus.call(QDBusMessage::createMethodCall(kService, kPath, kInterface,
                                                      QStringLiteral("GetCapabilities")),
                       QDBus::Block, 2000);
        m_bodyMarkup =
            reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty() &&
            reply.arguments().constFirst().toStringList().contains(QStringLiteral("body-markup"));
    }
    return *m_bodyMarkup;
}

void FreedesktopNotifier::notify(const Notification& notification, std::function<void()> delivered)
{
    if (!m_bus.isConnected())
        return;
    QDBusMessage call =
        QDBusMessage::createMethodCall(kService, kPath, kInterface, QStringLiteral("Notify"));
    call.setArguments(notifyArguments(notification, bodyMarkup()));
    auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    m_pending.append(watcher);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, watcher, notification, delivered = std::move(delivered)] {
                m_pending.removeAll(watcher);
                watcher->deleteLater();
                const QDBusPendingReply<uint> reply = *watcher;
                if (reply.isError())
                    return;
                m_shown.insert(reply.value(), notification);
                if (delivered)
                    delivered();
                if (m_delivered)
                    m_delivered();
            });
}

bool FreedesktopNotifier::waitForDelivery(int timeoutMs)
{
    QElapsedTimer clock;
    clock.start();
    bool allAnswered = true;
    while (!m_pending.isEmpty()) {
        QDBusPendingCallWatcher* watcher = m_pending.constFirst();
        if (clock.elapsed() >= timeoutMs)
            return false;
        watcher->waitForFinished();
        allAnswered = allAnswered && !watcher->isError();
        // waitForFinished() emits finished(), which removes the watcher.
        m_pending.removeAll(watcher);
    }
    return allAnswered;
}

void FreedesktopNotifier::onActionInvoked(uint id, const QString& action)
{
    if (action != QLatin1String("default"))
        return;
    const auto it = m_shown.constFind(id);
    if (it == m_shown.constEnd())
        return; // another program's notice
    const Notification n = *it;
    if (m_activated)
        m_activated(n);
}

void FreedesktopNotifier::onClosed(uint id, uint)
{
    m_shown.remove(id);
}

} // namespace platform::freedesktop
