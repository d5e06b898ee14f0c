// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace platform {

// The identifier that, chosen as the application that opens captures,
// means "show the file in the file manager".
inline constexpr char kFileManagerChoice[] = "org.freedesktop.FileManager1";

// An application the user can choose to open saved captures with.
struct Application
{
    QString desktopId;      // its desktop entry's file name, "eog.desktop"
    QString name;           // as menus show it
    QString executableName; // Exec's program, "eog"
};

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
