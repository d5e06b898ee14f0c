// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QVariantMap>

namespace settings {

class Defaults;

// The live tool short cuts (key name to the text each holds) that the
// overlay's keys are matched against. A change of one of the thirteen
// "...Shortcut" preferences lands in this table, and the whole table is
// stored as "shortcutOfButton": the stored dictionary is only ever a copy of
// the live one, so a change never drops the other twelve.
class ShortcutOfButton final : public QObject
{
    Q_OBJECT
public:
    // Follows `defaults` from now on; the table is empty until load().
    explicit ShortcutOfButton(Defaults& defaults, QObject* parent = nullptr);

    // Fills the table at start: the stored dictionary when it has an entry,
    // else the defaults.
    void load();
    [[nodiscard]] const QVariantMap& table() const { return m_table; }

private:
    void observeValueForKeyPath(const QString& key, const QVariant& value);

    Defaults& m_defaults;
    QVariantMap m_table;
};

} // namespace settings
