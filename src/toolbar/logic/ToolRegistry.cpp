// SPDX-License-Identifier: GPL-3.0-or-later
#include "toolbar/logic/ToolRegistry.h"

namespace toolbar {

const ToolEntry* toolNamed(QStringView name)
{
    for (const ToolEntry& entry : kTools) {
        if (name == entry.name)
            return &entry;
    }
    return nullptr;
}

QString shortcutText(int qtKey, const QString& typed)
{
    if (qtKey == Qt::Key_Space)
        return QString(QChar(kSpaceKeyText));
    if (qtKey == Qt::Key_Return)
        return QString(QChar(kReturnKeyText));
    return typed.toUpper();
}

const ToolEntry* toolForShortcut(const QString& text, const QVariantMap& shortcutOfButton)
{
    if (text.isEmpty())
        return nullptr;
    for (const ToolEntry& entry : kTools) {
        if (entry.shortcutKey.isEmpty())
            continue;
        const auto it = shortcutOfButton.constFind(QString(entry.shortcutKey));
        if (it != shortcutOfButton.constEnd() && it->toString() == text)
            return &entry;
    }
    return nullptr;
}

const ToolEntry* chooseByShortcut(int qtKey, const QString& typed,
                                  const QVariantMap& shortcutOfButton, bool scrolling,
                                  bool windowSelection)
{
    const ToolEntry* entry = toolForShortcut(shortcutText(qtKey, typed), shortcutOfButton);
    if (entry == nullptr)
        return nullptr;
    if (scrolling && entry->can(can::IgnoredWhileScrolling))
        return nullptr;
    if (windowSelection && entry->can(can::NeedRegion))
        return nullptr;
    return entry;
}

} // namespace toolbar
