// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/SettingsStore.h"

#include <QMap>

namespace settings {

// A store that forgets everything at exit. It also remembers the order in
// which keys were written, so that tests can check the order of a sequence
// of writes.
class MemoryStore final : public SettingsStore
{
public:
    [[nodiscard]] QVariant value(const QString& key) const override;
    [[nodiscard]] bool contains(const QString& key) const override;
    void setValue(const QString& key, const QVariant& value) override;
    void remove(const QString& key) override;
    bool sync() override;
    [[nodiscard]] QStringList allKeys() const override;

    // Every setValue and remove, in order: "set:key" or "remove:key".
    [[nodiscard]] const QStringList& journal() const { return m_journal; }
    void clearJournal() { m_journal.clear(); }
    [[nodiscard]] int syncCount() const { return m_syncs; }

private:
    QMap<QString, QVariant> m_values;
    QStringList m_journal;
    int m_syncs = 0;
};

} // namespace settings
