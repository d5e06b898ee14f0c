// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/FreedesktopFileManager.h"

#include "platform/freedesktop/DesktopEntry.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDesktopServices>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

namespace platform::freedesktop {

FreedesktopFileManager::FreedesktopFileManager(QDBusConnection bus, QObject* parent)
    : QObject(parent)
    , m_bus(std::move(bus))
    , m_openUrl([](const QUrl& url) { return QDesktopServices::openUrl(url); })
    , m_start([](const QString& program, const QStringList& arguments) {
        return QProcess::startDetached(program, arguments);
    })
{}

void FreedesktopFileManager::showItem(const QString& path)
{
    const QUrl folder = QUrl::fromLocalFile(QFileInfo(path).absolutePath());
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"),
        QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    call.setArguments({QStringList{QUrl::fromLocalFile(path).toString()}, QString()});
    if (!m_bus.isConnected()) {
        m_openUrl(folder);
        return;
    }
    auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call, 5000), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, folder] {
        watcher->deleteLater();
        if (watcher->isError())
            m_openUrl(folder);
    });
}

QString FreedesktopFileManager::locateDesktopEntry(const QString& desktopId)
{
    if (desktopId.isEmpty() || desktopId.contains(QLatin1Char('/')))
        return {};
    const QString name = desktopId.endsWith(QLatin1String(".desktop"))
                             ? desktopId
                             : desktopId + QStringLiteral(".desktop");
    return QStandardPaths::locate(QStandardPaths::ApplicationsLocation, name);
}

void FreedesktopFileManager::openWith(const QString& path, const QString& desktopId)
{
    const QString entryPath = locateDesktopEntry(desktopId);
    if (!entryPath.isEmpty()) {
        if (const auto entry = DesktopEntry::load(entryPath)) {
            const QStringList command = entry->commandFor(path);
            if (!command.isEmpty() && m_start(command.constFirst(), command.mid(1)))
                return;
        }
    }
    // No choice, or a choice that no longer starts: the desktop's default.
    m_openUrl(QUrl::fromLocalFile(path));
}

} // namespace platform::freedesktop
