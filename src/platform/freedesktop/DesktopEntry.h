// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include "platform/FileManager.h"

#include <optional>
#include <vector>

namespace platform::freedesktop {

// The few keys of a .desktop file's [Desktop Entry] group that Kelvo needs
// to start an application with a file. Read by hand: QSettings would take
// the keys' slashes and semicolons for its own syntax.
struct DesktopEntry
{
    QString name;
    QString exec;
    QString icon;
    QString type;
    QStringList mimeTypes;
    bool noDisplay = false;
    bool hidden = false; // the entry is deleted, also for the same id in later folders

    [[nodiscard]] static std::optional<DesktopEntry> parse(const QByteArray& text);
    [[nodiscard]] static std::optional<DesktopEntry> load(const QString& path);

    // The program and its arguments for opening `file`: Exec split by its
    // quoting rules, %f %F %u %U replaced by the file (as a path or a
    // file: URL), the other field codes dropped. The file is appended when
    // Exec names no field code. Empty when Exec is empty or badly quoted.
    [[nodiscard]] QStringList commandFor(const QString& file) const;
    // Basename of Exec's first word, e.g. "gimp" for "/usr/bin/gimp %U".
    [[nodiscard]] QString executableName() const;
};

// The applications whose desktop entries (directly in `folders`, the first
// folder winning for one desktop id) say they open PNG, JPEG or TIFF
// pictures, sorted by name. Entries hidden from menus are left out.
[[nodiscard]] std::vector<Application> imageApplications(const QStringList& folders);
// The XDG application folders, most important first.
[[nodiscard]] QStringList applicationFolders();

// The Exec value that runs `arguments`, as written in a desktop file: an
// argument with a reserved character (a space, a quote, `$`, ...) is
// quoted with `"`, `` ` ``, `$` and `\` escaped inside, `%` is doubled so
// it is no field code, and the file's own backslash escapes come last.
[[nodiscard]] QByteArray execValue(const QStringList& arguments);

// Splits an Exec value into words (double quotes, backslash escapes);
// nothing for unbalanced quotes.
[[nodiscard]] std::optional<QStringList> splitExec(const QString& exec);

} // namespace platform::freedesktop
