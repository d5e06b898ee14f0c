// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

#include <span>

namespace app {

// Verbs of the command line that work on files alone and never need the
// desktop or the running instance (e.g. stitching pictures taken elsewhere).
// They run in a plain QCoreApplication and return the process' exit code:
// 0 done, 1 error.
struct OfflineCommand
{
    const char* name;
    const char* usage;                        // one line for --help
    int (*run)(const QStringList& arguments); // arguments after the verb
};

[[nodiscard]] std::span<const OfflineCommand> offlineCommands();
[[nodiscard]] const OfflineCommand* findOfflineCommand(const QString& verb);

} // namespace app
