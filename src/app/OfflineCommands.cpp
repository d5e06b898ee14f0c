// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/OfflineCommands.h"

#include "colour/logic/ColourNameCommand.h"
#include "scroll/cli/StitchCommand.h"

#include <array>

namespace app {

namespace {

// One row per verb; the verbs' code lives with its subsystem.
const std::array<OfflineCommand, 2> kCommands{{
    {"colour-name", "colour-name RRGGBB  print the nearest named colour as JSON",
     &colour::runColourNameCommand},
    {"stitch",
     "stitch [--scale N] [--app-id ID] FRAME.png... -o OUT.png  stitch the frames of a scrolled "
     "window into one picture",
     &scroll::runStitchCommand},
}};

} // namespace

std::span<const OfflineCommand> offlineCommands()
{
    return kCommands;
}

const OfflineCommand* findOfflineCommand(const QString& verb)
{
    for (const OfflineCommand& c : kCommands) {
        if (verb == QLatin1String(c.name))
            return &c;
    }
    return nullptr;
}

} // namespace app
