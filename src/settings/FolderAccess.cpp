// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/FolderAccess.h"

#include <QFileInfo>
#include <QtDebug>

namespace settings {

FolderState checkFolder(const QString& folder)
{
    const QFileInfo info(folder);
    if (folder.isEmpty() || !info.exists())
        return FolderState::Missing;
    if (!info.isDir())
        return FolderState::NotAFolder;
    if (!info.isWritable())
        return FolderState::NotWritable;
    return FolderState::Usable;
}

bool accessFileURL(const QString& folder, const std::function<void()>& block)
{
    switch (checkFolder(folder)) {
    case FolderState::Usable:
        break;
    case FolderState::Missing:
        qWarning().noquote() << "kelvo: the folder" << folder << "does not exist";
        break;
    case FolderState::NotAFolder:
        qWarning().noquote() << "kelvo:" << folder << "is not a folder";
        break;
    case FolderState::NotWritable:
        qWarning().noquote() << "kelvo: the folder" << folder << "is not writable";
        break;
    }
    if (block)
        block();
    return true;
}

void persistPermissionURL(const QString& folder)
{
    Q_UNUSED(folder);
}

} // namespace settings
