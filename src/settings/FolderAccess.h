// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <functional>

namespace settings {

// Folder access for everything that writes into a folder the user chose.
// Kelvo runs unconfined, so no access grant has to be kept per folder: the
// folder is only checked, and a folder that cannot take a file is reported
// on stderr before the block runs, so the write that then fails has a
// cause in the log. The writer reports its own failure to the user.

enum class FolderState
{
    Usable,
    Missing,
    NotAFolder,
    NotWritable
};

[[nodiscard]] FolderState checkFolder(const QString& folder);

// Runs block once, synchronously, whatever the folder's state; answers true.
bool accessFileURL(const QString& folder, const std::function<void()>& block);

// Would keep the right to use the folder across restarts; nothing needs
// keeping, so it stores nothing.
void persistPermissionURL(const QString& folder);

} // namespace settings
