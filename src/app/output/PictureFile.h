// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace app::output {

// Writes `bytes` to `path` through a temporary file that is renamed into
// place once complete, so a reader never sees half a picture and a failed
// write leaves nothing behind. Answers the error's text, empty when done.
[[nodiscard]] QString writeAtomically(const QString& path, const QByteArray& bytes);

// Why a folder cannot take a picture, in words for the user; empty when it can.
[[nodiscard]] QString folderProblem(const QString& folder);

// Where a picture goes when its folder cannot take it: the Pictures folder,
// the home folder, then the temporary folder, the first that exists.
[[nodiscard]] QStringList fallbackFolders();

} // namespace app::output
