// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/DesktopNotifier.h"

#include <QDBusConnection>
#include <QHash>
#include <QObject>
#include <QStringList>

#include <functional>
#include <optional>

class QDBusPendingCallWatcher;

namespace platform::freedesktop {

// Notifications through org.freedesktop.Notifications. Every notice offers
// the "default" action, which servers invoke on a click; the click comes
// back as ActionInvoked and is handed to `activated` with the notice as it
// was sent.
class FreedesktopNotifier final : public QObject, public DesktopNotifier
{
    Q_OBJECT
public:
    using Activated = std::function<void(const Notification&)>;

    explicit FreedesktopNotifier(QDBusConnection bus, QObject* parent = nullptr);

    void setActivatedHandler(Activated handler) { m_activated = std::move(handler); }
    // Runs whenever the server has accepted one of our notices, after that
    // notice's own `delivered`.
    void setDeliveredHandler(std::function<void()> handler) { m_delivered = std::move(handler); }
    void notify(const Notification& notification, std::function<void()> delivered = {}) override;

    // Waits up to `timeoutMs` for the server to accept every notice sent so
    // far; a process about to exit calls this. False on a timeout or when
    // no server answered.
    bool waitForDelivery(int timeoutMs);

    // The argument list of a Notify call for `n`, e.g. for tests.
    [[nodiscard]] static QVariantList notifyArguments(const Notification& n, bool bodyMarkup);

private Q_SLOTS:
    void onActionInvoked(uint id, const QString& action);
    void onClosed(uint id, uint reason);

private:
    [[nodiscard]] bool bodyMarkup();

    QDBusConnection m_bus;
    Activated m_activated;
    std::function<void()> m_delivered;
    QHash<uint, Notification> m_shown;
    QList<QDBusPendingCallWatcher*> m_pending;
    std::optional<bool> m_bodyMarkup;
};

} // namespace platform::freedesktop
