// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/XdgAutostart.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

namespace platform::freedesktop {

namespace {

// The value of a key in the [Desktop Entry] group, without localised
// variants; a null QString when the key is missing.
QString entryValue(const QByteArray& contents, QLatin1StringView key)
{
    bool inMainGroup = false;
    for (const QByteArray& raw : contents.split('\n')) {
        const QString line = QString::fromUtf8(raw).trimmed();
        if (line.startsWith(u'[')) {
            inMainGroup = line == QLatin1StringView("[Desktop Entry]");
            continue;
        }
        if (!inMainGroup || line.startsWith(u'#'))
            continue;
        const qsizetype eq = line.indexOf(u'=');
        if (eq > 0 && QStringView(line).left(eq).trimmed() == key)
            return line.mid(eq + 1).trimmed();
    }
    return {};
}

} // namespace

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
    entry += "Exec=" + command.toUtf8() + "\n";
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
    const QByteArray contents = file.readAll();
    if (entryValue(contents, QLatin1StringView("Hidden")).compare(u"true", Qt::CaseInsensitive) ==
        0)
        return false;
    const QString exec = entryValue(contents, QLatin1StringView("Exec"));
    return exec.section(u' ', 0, 0, QString::SectionSkipEmpty) == m_command;
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
