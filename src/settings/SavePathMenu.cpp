// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/SavePathMenu.h"

#include "settings/FolderAccess.h"
#include "settings/Keys.h"

#include <QCoreApplication>

namespace settings {

SavePathMenu::SavePathMenu(Defaults& defaults)
    : m_defaults(defaults)
{
    rebuild();
}

void SavePathMenu::rebuild()
{
    const QString path = m_defaults.stringForKey(keys::pathofSaveScreenShotsPhoto);
    if (m_defaults.contains(keys::pathofSaveScreenShotsPhoto) && path != keys::notSpecified) {
        m_folder = path;
        m_selected = static_cast<int>(Item::Folder);
    } else {
        m_folder = m_defaults.stringForKey(keys::oldPathofSaveScreenShotsPhoto);
        m_selected = static_cast<int>(Item::AskWhenSaving);
    }
}

QStringList SavePathMenu::titles() const
{
    return {displayName(m_folder),
            QCoreApplication::translate("Localizable", "Select path when save"),
            QCoreApplication::translate("Localizable", "Other...")};
}

void SavePathMenu::resumePathofSaveScreenShotsPhoto()
{
    // Copying an absent old path removes the path, as storing nil does.
    m_defaults.setObject(keys::pathofSaveScreenShotsPhoto,
                         m_defaults.objectForKey(keys::oldPathofSaveScreenShotsPhoto));
    m_defaults.synchronize();
    m_selected = static_cast<int>(Item::Folder);
}

void SavePathMenu::cancelPathofSaveScreenShotsPhoto()
{
    m_defaults.setObject(keys::oldPathofSaveScreenShotsPhoto,
                         m_defaults.objectForKey(keys::pathofSaveScreenShotsPhoto));
    m_defaults.setObject(keys::pathofSaveScreenShotsPhoto, QString(keys::notSpecified));
    m_defaults.synchronize();
    m_selected = static_cast<int>(Item::AskWhenSaving);
}

bool SavePathMenu::selectPathofSaveScreenShotsPhoto(const QString& chosen)
{
    if (chosen.isEmpty())
        return false;
    persistPermissionURL(chosen);
    m_defaults.setObject(keys::pathofSaveScreenShotsPhoto, chosen);
    m_defaults.synchronize();
    rebuild();
    m_selected = static_cast<int>(Item::Folder);
    return true;
}

QString SavePathMenu::displayName(const QString& path)
{
    qsizetype end = path.size();
    while (end > 1 && path[end - 1] == u'/')
        --end;
    const QString trimmed = path.left(end);
    if (trimmed == QStringLiteral("/"))
        return trimmed;
    return trimmed.mid(trimmed.lastIndexOf(u'/') + 1);
}

} // namespace settings
