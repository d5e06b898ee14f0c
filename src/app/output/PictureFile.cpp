// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/output/PictureFile.h"

#include "core/Localized.h"
#include "settings/FolderAccess.h"

#include <QDir>
#include <QSaveFile>
#include <QStandardPaths>

namespace app::output {

QString writeAtomically(const QString& path, const QByteArray& bytes)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return file.errorString();
    // A file smaller than Qt's write buffer reaches the disk only at the
    // flush, and commit() does not report a flush that fails (a full disk
    // would leave an empty file behind a success), so flush here.
    if (file.write(bytes) != bytes.size() || !file.flush()) {
        const QString error = file.errorString();
        file.cancelWriting();
        return error;
    }
    if (!file.commit())
        return file.errorString();
    return {};
}

QString folderProblem(const QString& folder)
{
    switch (settings::checkFolder(folder)) {
    case settings::FolderState::Usable:
        return {};
    case settings::FolderState::Missing:
        return core::localized("The folder %1 does not exist.").arg(folder);
    case settings::FolderState::NotAFolder:
        return core::localized("%1 is not a folder.").arg(folder);
    case settings::FolderState::NotWritable:
        break;
    }
    return core::localized("The folder %1 cannot be written.").arg(folder);
}

QStringList fallbackFolders()
{
    QStringList folders;
    const QString pictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    if (!pictures.isEmpty())
        folders << pictures;
    folders << QDir::homePath() << QDir::tempPath();
    folders.removeDuplicates();
    return folders;
}

} // namespace app::output
