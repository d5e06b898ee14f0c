// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/QSettingsStore.h"

#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>

namespace settings {

QSettingsStore::QSettingsStore()
    : QSettingsStore(defaultPath())
{}

QSettingsStore::QSettingsStore(const QString& iniPath)
    : m_settings(iniPath, QSettings::IniFormat)
{}

QString QSettingsStore::defaultPath()
{
    // GenericConfigLocation is $XDG_CONFIG_HOME, or ~/.config without it.
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/kelvo/kelvo.conf");
}

QString QSettingsStore::setAsideIfUnreadable(const QString& iniPath)
{
    if (!QFile::exists(iniPath))
        return {};
    {
        // QSettings keeps what it parsed of a path for the whole process
        // and answers later readers from that, status included; a copy
        // under a new name is read afresh.
        QTemporaryDir dir;
        const QString copy = dir.filePath(QStringLiteral("probe.conf"));
        if (!dir.isValid() || !QFile::copy(iniPath, copy))
            return {};
        const QSettings probe(copy, QSettings::IniFormat);
        // The file is read on the first look at its keys, not before.
        (void)probe.allKeys();
        if (probe.status() != QSettings::FormatError)
            return {};
    }
    QString aside = iniPath + QStringLiteral(".bad");
    for (int n = 2; QFile::exists(aside); ++n)
        aside = QStringLiteral("%1.bad%2").arg(iniPath).arg(n);
    if (!QFile::rename(iniPath, aside))
        return QStringLiteral("%1 is not a preferences file and could not be moved aside; "
                              "what Kelvo can read of it is used")
            .arg(iniPath);
    return QStringLiteral("%1 is not a preferences file; it was moved to %2 and Kelvo starts "
                          "with its first-run preferences")
        .arg(iniPath, aside);
}

QVariant QSettingsStore::value(const QString& key) const
{
    return m_settings.value(key);
}

bool QSettingsStore::contains(const QString& key) const
{
    return m_settings.contains(key);
}

void QSettingsStore::setValue(const QString& key, const QVariant& value)
{
    m_settings.setValue(key, value);
}

void QSettingsStore::remove(const QString& key)
{
    // QSettings reads an empty key as "every key".
    if (key.isEmpty())
        return;
    m_settings.remove(key);
}

bool QSettingsStore::sync()
{
    m_settings.sync();
    return m_settings.status() == QSettings::NoError;
}

QStringList QSettingsStore::allKeys() const
{
    return m_settings.allKeys();
}

} // namespace settings
