// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace platform {

class FileManager
{
public:
    virtual ~FileManager() = default;
    // Selects the file in the user's file manager, or opens its folder.
    virtual void showItem(const QString& path) = 0;
    // Opens the file with the application named by its desktop id, or the default one.
    virtual void openWith(const QString& path, const QString& desktopId) = 0;
};

} // namespace platform
