// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/ShortcutOfButton.h"

#include "settings/Defaults.h"
#include "settings/Keys.h"
#include "settings/Schema.h"
#include "settings/Startup.h"

#include <algorithm>

namespace settings {

ShortcutOfButton::ShortcutOfButton(Defaults& defaults, QObject* parent)
    : QObject(parent)
    , m_defaults(defaults)
{
    connect(&m_defaults, &Defaults::changed, this, &ShortcutOfButton::observeValueForKeyPath);
}

void ShortcutOfButton::load()
{
    m_table = shortcutOfButton(m_defaults);
}

void ShortcutOfButton::observeValueForKeyPath(const QString& key, const QVariant& value)
{
    const std::vector<ToolShortcut>& tools = toolShortcuts();
    const bool toolKey = std::any_of(tools.begin(), tools.end(),
                                     [&key](const ToolShortcut& tool) { return key == tool.key; });
    if (!toolKey)
        return;
    if (value.isValid())
        m_table.insert(key, value);
    else
        m_table.remove(key);
    m_defaults.setObject(QString(keys::shortcutOfButton), m_table);
}

} // namespace settings
