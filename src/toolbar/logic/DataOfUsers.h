// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QString>
#include <QStringList>
#include <QVariantMap>

namespace settings {
class Defaults;
}

namespace toolbar {

// The remembered settings of each drawing tool ("size", "color", and the
// optional "userColor" and "colorAlpha"), one dictionary per tool name,
// kept in memory while Kelvo runs and written to the preferences when the
// annotation window closes.
class DataOfUsers
{
public:
    // The tools in the order of the tool bar.
    [[nodiscard]] static const QStringList& toolNames();
    // What a first start remembers: every colour red, each tool's default size.
    [[nodiscard]] static QVariantMap defaultData();

    // The stored dictionary, or the defaults in memory when none is stored.
    void getUsersData(const settings::Defaults& defaults);
    // Writes the whole dictionary under "DataOfUsers".
    void store(settings::Defaults& defaults) const;

    [[nodiscard]] const QVariantMap& data() const { return m_data; }
    [[nodiscard]] QVariantMap tool(const QString& name) const;
    // A tool's size; 0 when it is missing or unreadable.
    [[nodiscard]] int size(const QString& name) const;
    // A tool's colour; invalid when it is missing.
    [[nodiscard]] QColor color(const QString& name) const;
    // Sets one key of a tool. The tool's dictionary is replaced by a changed
    // copy, never changed in place, so a copy someone holds stays as it was.
    void setValue(const QString& name, const QString& key, const QVariant& value);

private:
    QVariantMap m_data;
};

} // namespace toolbar
