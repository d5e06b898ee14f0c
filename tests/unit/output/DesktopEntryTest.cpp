// SPDX-License-Identifier: GPL-3.0-or-later
// Starting the application the user chose for captures from its desktop
// entry, without a shell.
#include "platform/freedesktop/DesktopEntry.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

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

namespace {
void writeEntry(const QString& folder, const QString& file, const QByteArray& body)
{
    QDir().mkpath(folder);
    QFile f(folder + QLatin1Char('/') + file);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("[Desktop Entry]\nType=Application\n" + body);
}
} // namespace

TEST(ImageApplications, ListsWhatOpensPicturesFirstFolderWinningSortedByName)
{
    QTemporaryDir dir;
    const QString home = dir.filePath(QStringLiteral("home"));
    const QString system = dir.filePath(QStringLiteral("system"));
    writeEntry(system, QStringLiteral("viewer.desktop"),
               "Name=Viewer\nExec=/usr/bin/viewer %U\nMimeType=image/png;image/gif;\n");
    writeEntry(system, QStringLiteral("paint.desktop"),
               "Name=paint\nExec=paint %f\nMimeType=image/tiff;\n");
    writeEntry(system, QStringLiteral("editor.desktop"),
               "Name=Editor\nExec=editor %F\nMimeType=text/plain;\n");
    writeEntry(system, QStringLiteral("menuless.desktop"),
               "Name=Menuless\nExec=menuless\nMimeType=image/png;\nNoDisplay=true\n");
    writeEntry(system, QStringLiteral("gone.desktop"),
               "Name=Gone\nExec=gone\nMimeType=image/jpeg;\n");
    writeEntry(system, QStringLiteral("link.desktop"),
               "Name=Link\nType=Link\nURL=x\nMimeType=image/png;\n");
    // The user's own entries override the system's of the same id.
    writeEntry(home, QStringLiteral("gone.desktop"), "Name=Gone\nHidden=true\n");
    writeEntry(home, QStringLiteral("viewer.desktop"),
               "Name=Acme Viewer\nExec=\"/opt/acme viewer/bin/view\" %u\nMimeType=image/jpeg\n");

    const auto apps = platform::freedesktop::imageApplications({home, system});
    ASSERT_EQ(apps.size(), 2u);
    EXPECT_EQ(apps[0].desktopId, QStringLiteral("viewer.desktop"));
    EXPECT_EQ(apps[0].name, QStringLiteral("Acme Viewer"));
    EXPECT_EQ(apps[0].executableName, QStringLiteral("view"));
    EXPECT_EQ(apps[1].desktopId, QStringLiteral("paint.desktop"));
    EXPECT_EQ(apps[1].executableName, QStringLiteral("paint"));

    EXPECT_TRUE(
        platform::freedesktop::imageApplications({dir.filePath(QStringLiteral("none"))}).empty());
}

TEST(ExecQuoting, ArgumentsAreQuotedAndEscapedByTheFormatsRules)
{
    using platform::freedesktop::execValue;
    struct Case
    {
        const char* argument;
        const char* written;
    };
    const Case cases[] = {
        {"/usr/bin/kelvo", "/usr/bin/kelvo"},
        {"/opt/My Apps/kelvo", "\"/opt/My Apps/kelvo\""},
        // Inside quotes " ` $ and \ take a backslash, and every backslash
        // is then doubled as the file's string escapes ask.
        {"/opt/a\"b$c`d", "\"/opt/a\\\\\"b\\\\$c\\\\`d\""},
        {"/opt/back\\slash", "\"/opt/back\\\\\\\\slash\""},
        {"/opt/it's;(x)", "\"/opt/it's;(x)\""},
        {"/opt/50%/kelvo", "/opt/50%%/kelvo"},
        {"/opt/tab\there", "\"/opt/tab\\there\""},
        {"", "\"\""},
    };
    for (const Case& c : cases)
        EXPECT_EQ(execValue({QString::fromUtf8(c.argument)}), QByteArray(c.written)) << c.argument;
    EXPECT_EQ(execValue({QStringLiteral("/a b/kelvo"), QStringLiteral("gui")}),
              QByteArray("\"/a b/kelvo\" gui"));
}

TEST(ExecQuoting, AWrittenExecLineReadsBackAsTheSameArguments)
{
    const QStringList programs{
        QStringLiteral("/usr/bin/kelvo"),        QStringLiteral("/home/ada/My Programs/kelvo"),
        QStringLiteral("/opt/\"odd\" $dir/k"),   QStringLiteral("/opt/back\\slash/kelvo"),
        QStringLiteral("/opt/50% off/k`x`"),     QStringLiteral("/opt/new\nline/kelvo"),
        QStringLiteral("/opt/Ünïcode dir/kelvo")};
    for (const QString& program : programs) {
        const QByteArray file = "[Desktop Entry]\nType=Application\nExec=" +
                                platform::freedesktop::execValue({program}) + "\nName=K\n";
        const auto entry = DesktopEntry::parse(file);
        ASSERT_TRUE(entry) << program.toStdString();
        EXPECT_EQ(entry->commandFor(QStringLiteral("/f.png")),
                  (QStringList{program, QStringLiteral("/f.png")}))
            << file.toStdString();
    }
}

TEST(DesktopEntry, StringEscapesOfTheFileAreUndone)
{
    const auto e = DesktopEntry::parse("[Desktop Entry]\nName=A\\sB\\tC\\\\D\n"
                                       "Exec=\"/a b/c\\\\\\\\d\" \"say \\\"hi\\\"\" %f\n");
    ASSERT_TRUE(e);
    EXPECT_EQ(e->name, QStringLiteral("A B\tC\\D"));
    // A single backslash before a quote is no escape of the file: it is
    // left for the Exec quoting, as entries written by hand have it.
    EXPECT_EQ(e->commandFor(QStringLiteral("/f.png")),
              (QStringList{QStringLiteral("/a b/c\\d"), QStringLiteral("say \"hi\""),
                           QStringLiteral("/f.png")}));
}
