// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/output/ShotCommand.h"

#include <QByteArray>
#include <QString>

#include <functional>

namespace app {

// `kelvo full`, `kelvo screen`: no Qt GUI, no overlay, no instance. Shared
// by kelvo-app and by kelvo-shot, the small program `kelvo` runs for these
// verbs so that a picture to a file does not wait for the libraries of the
// whole application to load. `clipboard` hands PNG data to the running
// instance (an error's text); the exit code is the command's.
int runShot(const output::ShotRequest& request, int argc, char** argv,
            std::function<QString(const QByteArray&)> clipboard);

} // namespace app
