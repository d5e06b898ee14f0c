// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/QSettingsStore.h"

#include <QStandardPaths>

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
