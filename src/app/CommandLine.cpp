// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/CommandLine.h"

#include "app/OfflineCommands.h"
#include "core/ShortText.h"

namespace app {

CommandLine CommandLine::parse(const QStringList& args)
{
    CommandLine cl;
    if (args.isEmpty())
        return cl;
    const QString& first = args.first();
    cl.arguments = args.mid(1);
    if (first == QLatin1String("-h") || first == QLatin1String("--help") ||
        first == QLatin1String("help")) {
        cl.verb = Verb::Help;
    } else if (first == QLatin1String("-v") || first == QLatin1String("--version")) {
        cl.verb = Verb::Version;
    } else if (first == QLatin1String("gui")) {
        if (cl.arguments.contains(QLatin1String("-h")) ||
            cl.arguments.contains(QLatin1String("--help"))) {
            cl.verb = Verb::Help;
            return cl;
        }
        cl.verb = Verb::Gui;
        if (!cl.arguments.isEmpty()) {
            cl.capture = CaptureRequest::parse(cl.arguments, &cl.error);
            if (!cl.capture)
                cl.verb = Verb::Invalid;
        }
    } else if (first == QLatin1String("prefs")) {
        cl.verb = Verb::Prefs;
        if (!cl.arguments.isEmpty()) {
            cl.verb = Verb::Invalid;
            cl.error = QStringLiteral("prefs takes no arguments: %1")
                           .arg(core::shortForMessage(cl.arguments.join(QLatin1Char(' '))));
        }
    } else if (first == QLatin1String("full") || first == QLatin1String("screen")) {
        if (cl.arguments.contains(QLatin1String("-h")) ||
            cl.arguments.contains(QLatin1String("--help"))) {
            cl.verb = Verb::Help;
            return cl;
        }
        const auto area = first == QLatin1String("full") ? output::ShotRequest::Area::Desktop
                                                         : output::ShotRequest::Area::Screen;
        cl.shot = output::ShotRequest::parse(area, cl.arguments, &cl.error);
        cl.verb = cl.shot ? Verb::Shot : Verb::Invalid;
    } else if (findOfflineCommand(first) != nullptr) {
        cl.verb = Verb::Offline;
        cl.offlineVerb = first;
    } else if (first.startsWith(QLatin1Char('-'))) {
        cl.verb = Verb::Invalid;
        cl.error = QStringLiteral("unknown option: %1").arg(core::shortForMessage(first));
    } else if (first.contains(QLatin1Char('/')) || first.contains(QLatin1Char('.'))) {
        // Files handed to the application, as a file manager's "Open with".
        cl.verb = Verb::Tray;
        cl.documents = args;
        cl.arguments.clear();
    } else {
        cl.verb = Verb::Invalid;
        cl.error = QStringLiteral("unknown command: %1").arg(core::shortForMessage(first));
    }
    return cl;
}

QString CommandLine::usage()
{
    QString text =
        QStringLiteral("Usage: kelvo [COMMAND] [OPTIONS]\n"
                       "\n"
                       "Screenshots, mark-up and screen recording for the Linux desktop.\n"
                       "Without a command, Kelvo starts in the system tray (once per session).\n"
                       "\n"
                       "Commands:\n");
    text += CaptureRequest::usage();
    text +=
        QStringLiteral("  prefs               open the Preferences window of the running Kelvo,\n"
                       "                      starting Kelvo first if needed\n");
    text += output::ShotRequest::usage();
    for (const OfflineCommand& c : offlineCommands())
        text += QStringLiteral("  %1\n").arg(QString::fromUtf8(c.usage));
    text += QStringLiteral("  FILE...             hand pictures to Kelvo\n"
                           "\n"
                           "Options:\n"
                           "  -h, --help          show this help\n"
                           "  -v, --version       show the version\n"
                           "\n"
                           "Exit codes: 0 done, 1 error, 2 cancelled.\n"
                           "Preferences: $XDG_CONFIG_HOME/kelvo/kelvo.conf\n");
    return text;
}

} // namespace app
