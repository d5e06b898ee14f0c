// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/output/ShotCommand.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace app {

// `kelvo full` and `kelvo screen` run inside the tray instance for a client
// that asked over the bus: the instance's grab memory is already mapped and
// its libraries loaded, so the picture costs the grab and the encoding only.
// It takes a request only when its answer is exactly what the client's own
// run would give; anything else it declines and the client runs as before.
class InstanceShots
{
public:
    struct Services : output::ShotSources
    {
        // Whether a capture holds the desktop frozen: pictures would then be
        // of the frozen desktop, not of what the screen shows.
        std::function<bool()> desktopHeld;
        // The instance's own environment; qEnvironmentVariable when empty.
        std::function<QString(const QString& name)> environment;
    };

    // What the client prints and exits with.
    struct Answer
    {
        int exitCode = 0;
        QByteArray out;
        QString errors; // stderr, whole lines
    };

    // The variables a client sends ("NAME=value", unset as empty): they
    // choose the display and the preferences, so they must be the instance's.
    [[nodiscard]] static QStringList sharedVariables();

    explicit InstanceShots(Services services);

    // `arguments` start with the verb, `directory` is the client's working
    // directory (relative paths are its), `environment` its sharedVariables().
    // Nothing when the client should run the command itself; `why` then
    // says why.
    [[nodiscard]] std::optional<Answer> take(const QStringList& arguments, const QString& directory,
                                             const QStringList& environment, QString* why);

private:
    [[nodiscard]] QString ownVariable(const QString& name) const;

    Services m_services;
};

} // namespace app
