// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/CaptureRequest.h"
#include "app/output/ShotCommand.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace app {

// Exit codes every verb keeps, so scripts can tell the outcomes apart.
namespace exitcode {
inline constexpr int Done = 0;
inline constexpr int Error = 1;
inline constexpr int Cancelled = 2;
} // namespace exitcode

// What one invocation of `kelvo` asks for.
struct CommandLine
{
    enum class Verb
    {
        Tray,  // start the tray application (or do nothing if it runs)
        Gui,   // a region capture in the running instance
        Prefs, // the Preferences window of the running instance
        Help,
        Version,
        Offline, // a verb that needs no desktop (stitch, colour-name, ...)
        Shot,    // full, screen: a picture at once, without the overlay
        Invalid,
    };

    Verb verb = Verb::Tray;
    QString offlineVerb;
    QStringList arguments;                   // after the verb
    QStringList documents;                   // files handed to the tray application
    QString error;                           // for Invalid
    std::optional<output::ShotRequest> shot; // for Shot
    // For Gui with options: the caller waits for the capture's result.
    // Plain `gui` (nullopt) only starts the capture.
    std::optional<CaptureRequest> capture;

    [[nodiscard]] static CommandLine parse(const QStringList& args);
    [[nodiscard]] static QString usage();
};

} // namespace app
