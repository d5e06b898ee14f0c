// SPDX-License-Identifier: GPL-3.0-or-later
// `kelvo-shot`: `kelvo full` and `kelvo screen` without the libraries of the
// whole application (widgets, media, sound, speech), whose loading took
// longer than the picture itself. Whatever it does not take on itself (help,
// an option it cannot parse, a copy to the clipboard, which goes through the
// running instance's bus code) it hands to kelvo-app unchanged, so messages
// and exit codes are the application's own.
#include "app/launcher/ShotProgram.h"
#include "app/launcher/Sibling.h"

#include <QCoreApplication>
#include <QStringList>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <unistd.h>

namespace {

// The request when this program should take it, else nothing.
std::optional<app::output::ShotRequest> ownRequest(int argc, char** argv)
{
    if (argc < 2)
        return std::nullopt;
    const bool full = std::strcmp(argv[1], "full") == 0;
    if (!full && std::strcmp(argv[1], "screen") != 0)
        return std::nullopt;
    QStringList options;
    for (int i = 2; i < argc; ++i)
        options << QString::fromLocal8Bit(argv[i]);
    if (options.contains(QLatin1String("-h")) || options.contains(QLatin1String("--help")))
        return std::nullopt;
    QString error;
    auto request = app::output::ShotRequest::parse(full ? app::output::ShotRequest::Area::Desktop
                                                        : app::output::ShotRequest::Area::Screen,
                                                   options, &error);
    if (!request || request->clipboard)
        return std::nullopt;
    return request;
}

} // namespace

int main(int argc, char** argv)
{
    // The same names as kelvo-app, so the same preferences are read.
    QCoreApplication::setOrganizationName(QStringLiteral("kelvo"));
    QCoreApplication::setApplicationName(QStringLiteral("kelvo"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KELVO_VERSION));

    if (const auto request = ownRequest(argc, argv))
        return app::runShot(*request, argc, argv, {});

    const std::string program = app::launcher::siblingProgram("kelvo-app");
    execv(program.c_str(), argv);
    execvp("kelvo-app", argv);
    std::fprintf(stderr, "kelvo: cannot start %s: %s\n", program.c_str(), std::strerror(errno));
    return 1;
}
