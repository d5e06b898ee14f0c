// SPDX-License-Identifier: GPL-3.0-or-later
// Starting the application the user chose for captures from its desktop
// entry, without a shell.
#include "platform/freedesktop/DesktopEntry.h"

#include <gtest/gtest.h>

using platform::freedesktop::DesktopEntry;
using platform::freedesktop::splitExec;

TEST(DesktopEntry, ReadsOnlyTheDesktopEntryGroup)
{
    const auto e = DesktopEntry::parse("# comment\n[Desktop Entry]\nName=Image Viewer\n"
                                       "Exec=/usr/bin/eog --new-window %U\nIcon=eog\n"
                                       "[Desktop Action x]\nExec=evil\n");
    ASSERT_TRUE(e);
    EXPECT_EQ(e->name, QStringLiteral("Image Viewer"));
    EXPECT_EQ(e->exec, QStringLiteral("/usr/bin/eog --new-window %U"));
    EXPECT_EQ(e->executableName(), QStringLiteral("eog"));
    EXPECT_FALSE(DesktopEntry::parse("Exec=x\n"));
}

TEST(DesktopEntry, FieldCodesBecomeTheFileAndQuotingIsKept)
{
    DesktopEntry e;
    e.exec = QStringLiteral("gimp-2.10 %F");
    EXPECT_EQ(e.commandFor(QStringLiteral("/p/a b.png")),
              (QStringList{QStringLiteral("gimp-2.10"), QStringLiteral("/p/a b.png")}));
    e.exec = QStringLiteral("viewer --title \"My \\\"View\\\"\" %u %i %c");
    EXPECT_EQ(e.commandFor(QStringLiteral("/p/a b.png")),
              (QStringList{QStringLiteral("viewer"), QStringLiteral("--title"),
                           QStringLiteral("My \"View\""), QStringLiteral("file:///p/a b.png")}));
    // No field code: the file goes last. A literal %% stays one percent.
    e.exec = QStringLiteral("show 100%%");
    EXPECT_EQ(
        e.commandFor(QStringLiteral("/f.png")),
        (QStringList{QStringLiteral("show"), QStringLiteral("100%"), QStringLiteral("/f.png")}));
    e.exec = QStringLiteral("broken \"quote");
    EXPECT_TRUE(e.commandFor(QStringLiteral("/f.png")).isEmpty());
    EXPECT_FALSE(splitExec(QStringLiteral("a \"b")));
    EXPECT_EQ(splitExec(QStringLiteral("  a   \"\"  b ")),
              (QStringList{QStringLiteral("a"), QString(), QStringLiteral("b")}));
}
