// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>
#include <QVariant>

namespace settings {

// Where preference values live. The application keeps them in an INI file;
// tests use a map in memory. Values go in and come out as they were stored;
// reading them the way their readers expect is the job of Defaults.
class SettingsStore
{
public:
    virtual ~SettingsStore() = default;

    // An invalid QVariant when the key is absent.
    [[nodiscard]] virtual QVariant value(const QString& key) const = 0;
    [[nodiscard]] virtual bool contains(const QString& key) const = 0;
    virtual void setValue(const QString& key, const QVariant& value) = 0;
    virtual void remove(const QString& key) = 0;
    // Writes pending changes out; false when the store could not be written.
    virtual bool sync() = 0;
    [[nodiscard]] virtual QStringList allKeys() const = 0;
};

} // namespace settings
