// SPDX-License-Identifier: GPL-3.0-or-later
#include "toolbar/logic/DataOfUsers.h"

#include "settings/Defaults.h"
#include "settings/Keys.h"
#include "toolbar/logic/ToolRegistry.h"

namespace toolbar {

namespace {

constexpr char kRed[] = "#ffff0000";

} // namespace

const QStringList& DataOfUsers::toolNames()
{
    static const QStringList names = [] {
        QStringList list;
        for (const ToolEntry& entry : kTools) {
            if (entry.can(can::RememberSettings))
                list.append(QString(entry.name));
        }
        return list;
    }();
    return names;
}

QVariantMap DataOfUsers::defaultData()
{
    QVariantMap data;
    for (const ToolEntry& entry : kTools) {
        if (!entry.can(can::RememberSettings))
            continue;
        data.insert(QString(entry.name),
                    QVariantMap{{QStringLiteral("size"), entry.defaultSize},
                                {QStringLiteral("color"), QString::fromLatin1(kRed)}});
    }
    return data;
}

void DataOfUsers::getUsersData(const settings::Defaults& defaults)
{
    const QString key = QString(settings::keys::DataOfUsers);
    // Unreadable text reads as no dictionary: the defaults take its place and
    // overwrite it at the next close.
    const QVariantMap stored = defaults.dictionaryForKey(key);
    m_data = stored.isEmpty() ? defaultData() : stored;
}

void DataOfUsers::store(settings::Defaults& defaults) const
{
    defaults.setObject(QString(settings::keys::DataOfUsers), m_data);
    defaults.synchronize();
}

QVariantMap DataOfUsers::tool(const QString& name) const
{
    return m_data.value(name).toMap();
}

int DataOfUsers::size(const QString& name) const
{
    // Sizes are numbers, or strings of numbers; anything else counts as 0.
    bool ok = false;
    const int value = tool(name).value(QStringLiteral("size")).toString().toInt(&ok);
    return ok ? value : 0;
}

QColor DataOfUsers::color(const QString& name) const
{
    const QString text = tool(name).value(QStringLiteral("color")).toString();
    return text.isEmpty() ? QColor() : QColor::fromString(text);
}

void DataOfUsers::setValue(const QString& name, const QString& key, const QVariant& value)
{
    QVariantMap copy = tool(name);
    copy.insert(key, value);
    m_data.insert(name, copy);
}

} // namespace toolbar
