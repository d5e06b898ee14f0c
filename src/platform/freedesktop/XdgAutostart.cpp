// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/XdgAutostart.h"

#include "platform/freedesktop/DesktopEntry.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

namespace platform::freedesktop {

XdgAutostart::XdgAutostart()
    : XdgAutostart(defaultPath())
{}

XdgAutostart::XdgAutostart(QString desktopFilePath, QString command)
    : m_path(std::move(desktopFilePath))
    , m_command(std::move(command))
{}

QString XdgAutostart::defaultPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/autostart/kelvo.desktop");
}

QByteArray XdgAutostart::desktopEntry(const QString& command)
{
    QByteArray entry;
    entry += "[Desktop Entry]\n";
    entry += "Type=Application\n";
    entry += "Name=Kelvo\n";
    entry += "Comment=Screenshot, mark-up and screen recording\n";
    // Quoted by the format's rules: installed under a path with spaces,
    // an unquoted program would be cut at the first one.
    entry += "Exec=" + execValue({command}) + "\n";
    entry += "Icon=kelvo\n";
    entry += "Terminal=false\n";
    entry += "Categories=Utility;Graphics;\n";
    entry += "X-GNOME-Autostart-enabled=true\n";
    return entry;
}

bool XdgAutostart::isLoginItem()
{
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const auto entry = DesktopEntry::parse(file.readAll());
    if (!entry || entry->hidden)
        return false;
    const auto words = splitExec(entry->exec);
    if (!words || words->isEmpty())
        return false;
    QString program = words->constFirst();
    program.replace(QLatin1String("%%"), QLatin1String("%"));
    return program == m_command;
}

bool XdgAutostart::addToLoginItems()
{
    m_lastError.clear();
    const QString folder = QFileInfo(m_path).absolutePath();
    if (!QDir().mkpath(folder)) {
        m_lastError = QStringLiteral("cannot create the folder %1").arg(folder);
        return false;
    }
    QSaveFile file(m_path);
    if (!file.open(QIODevice::WriteOnly)) {
        m_lastError = file.errorString();
        return false;
    }
    const QByteArray entry = desktopEntry(m_command);
    if (file.write(entry) != entry.size() || !file.commit()) {
        m_lastError = file.errorString();
        return false;
    }
    return true;
}

bool XdgAutostart::removeFromLoginItems()
{
    m_lastError.clear();
    QFile file(m_path);
    if (!file.exists())
        return true;
    if (!file.remove()) {
        m_lastError = file.errorString();
        return false;
    }
    return true;
}

} // namespace platform::freedesktop
