// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/MemoryStore.h"

namespace settings {

QVariant MemoryStore::value(const QString& key) const
{
    return m_values.value(key);
}

bool MemoryStore::contains(const QString& key) const
{
    return m_values.contains(key);
}

void MemoryStore::setValue(const QString& key, const QVariant& value)
{
    m_values.insert(key, value);
    m_journal << QStringLiteral("set:") + key;
}

void MemoryStore::remove(const QString& key)
{
    m_values.remove(key);
    m_journal << QStringLiteral("remove:") + key;
}

bool MemoryStore::sync()
{
    ++m_syncs;
    return true;
}

QStringList MemoryStore::allKeys() const
{
    return m_values.keys();
}

} // namespace settings
