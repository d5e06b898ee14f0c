// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/OfflineCommands.h"

#include <QCoreApplication>
#include <QTextStream>

#include <cstdio>

int main(int argc, char** argv)
{
    QStringList args;
    for (int i = 1; i < argc; ++i)
        args << QString::fromLocal8Bit(argv[i]);
    if (!args.isEmpty()) {
        if (const app::OfflineCommand* command = app::findOfflineCommand(args.first())) {
            QCoreApplication core(argc, argv);
            return command->run(args.mid(1));
        }
    }
    QTextStream(stderr) << "kelvo: nothing to do yet\n";
    return 1;
}
