// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/SettingsStore.h"

#include <QSettings>

namespace settings {

// The preferences file: an INI file, by default
// $XDG_CONFIG_HOME/kelvo/kelvo.conf. INI keeps only text, so numbers and
// booleans come back as strings after a restart; Defaults reads both forms.
class QSettingsStore final : public SettingsStore
{
public:
    QSettingsStore();
    explicit QSettingsStore(const QString& iniPath);

    [[nodiscard]] static QString defaultPath();

    // A file that is no INI file (random bytes, a binary copied over it)
    // would be read in part and then written over, losing what it held.
    // Before a store opens it, such a file is moved aside to "NAME.bad"
    // (never replacing an earlier one). Answers a line saying what was
    // done, empty when the file is readable or absent.
    [[nodiscard]] static QString setAsideIfUnreadable(const QString& iniPath);
    [[nodiscard]] QString path() const { return m_settings.fileName(); }

    [[nodiscard]] QVariant value(const QString& key) const override;
    [[nodiscard]] bool contains(const QString& key) const override;
    void setValue(const QString& key, const QVariant& value) override;
    void remove(const QString& key) override;
    bool sync() override;
    [[nodiscard]] QStringList allKeys() const override;

private:
    QSettings m_settings;
};

} // namespace settings
