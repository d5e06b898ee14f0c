// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/SettingsStore.h"

#include <QObject>
#include <QVariantList>
#include <QVariantMap>

#include <mutex>

namespace settings {

// The readers and writers every part of Kelvo uses for its preferences,
// with the reading rules of Cocoa's NSUserDefaults. A preference keeps the
// form it was written in ("YES" stays a string, 0 a number), and each
// reader makes what it can of any form: "YES", "1", 1 and true are all true
// to boolForKey, "12px" is 12 to integerForKey. Nothing here throws or
// asserts on an odd value; an absent or unreadable value reads as false, 0,
// an empty string or an empty dictionary.
//
// Dictionaries and arrays are stored as JSON text, so the INI file stays
// readable and needs no binary variants.
//
// Safe to use from several threads: every access to the store is locked.
class Defaults final : public QObject
{
    Q_OBJECT
public:
    explicit Defaults(SettingsStore& store, QObject* parent = nullptr);

    [[nodiscard]] bool contains(const QString& key) const;
    // The stored value as it is, invalid when absent.
    [[nodiscard]] QVariant objectForKey(const QString& key) const;
    // Strings as they are, numbers and booleans in their text form ("1" for
    // true); a null QString for absent keys, dictionaries and arrays.
    [[nodiscard]] QString stringForKey(const QString& key) const;
    [[nodiscard]] bool boolForKey(const QString& key) const;
    [[nodiscard]] qint64 integerForKey(const QString& key) const;
    [[nodiscard]] double doubleForKey(const QString& key) const;
    // Empty unless the value is a dictionary or JSON text of an object.
    [[nodiscard]] QVariantMap dictionaryForKey(const QString& key) const;
    [[nodiscard]] QVariantList arrayForKey(const QString& key) const;
    [[nodiscard]] QStringList allKeys() const;

    // An invalid value removes the key, as storing nil does.
    void setObject(const QString& key, const QVariant& value);
    void setBool(const QString& key, bool value);
    void setInteger(const QString& key, qint64 value);
    void removeObjectForKey(const QString& key);
    // False when the store could not be written.
    bool synchronize();

Q_SIGNALS:
    // Sent synchronously by every write and removal, after the store has
    // the new value; value is invalid after a removal.
    void changed(const QString& key, const QVariant& value);

private:
    SettingsStore& m_store;
    mutable std::mutex m_mutex;
};

} // namespace settings
