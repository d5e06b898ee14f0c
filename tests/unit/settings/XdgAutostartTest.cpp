// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/XdgAutostart.h"

#include <QFile>
#include <QTemporaryDir>

#include "Printers.h"

#include <gtest/gtest.h>

using platform::freedesktop::XdgAutostart;

namespace {

QByteArray readAll(const QString& path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

void writeFile(const QString& path, const QByteArray& contents)
{
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(contents);
}

} // namespace

TEST(XdgAutostart, AddsAValidEntryAndRemovesIt)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    // The autostart folder does not exist yet on a fresh account.
    const QString path = dir.filePath(QStringLiteral("autostart/kelvo.desktop"));
    XdgAutostart autostart(path);
    EXPECT_FALSE(autostart.isLoginItem());

    ASSERT_TRUE(autostart.addToLoginItems()) << autostart.lastError().toStdString();
    EXPECT_TRUE(autostart.lastError().isEmpty());
    EXPECT_TRUE(autostart.isLoginItem());
    const QList<QByteArray> lines = readAll(path).split('\n');
    ASSERT_FALSE(lines.isEmpty());
    EXPECT_EQ(lines.front(), QByteArray("[Desktop Entry]"));
    for (const char* line : {"Type=Application", "Name=Kelvo", "Exec=kelvo"})
        EXPECT_TRUE(lines.contains(QByteArray(line))) << line;
    // Every line but the group header is key=value; nothing else is allowed.
    for (const QByteArray& line : lines.mid(1)) {
        if (!line.isEmpty()) {
            EXPECT_GT(line.indexOf('='), 0) << line.toStdString();
        }
    }

    // Adding twice rewrites the same entry.
    EXPECT_TRUE(autostart.addToLoginItems());
    EXPECT_EQ(readAll(path), XdgAutostart::desktopEntry(QStringLiteral("kelvo")));

    EXPECT_TRUE(autostart.removeFromLoginItems());
    EXPECT_FALSE(QFile::exists(path));
    EXPECT_FALSE(autostart.isLoginItem());
    // Removing what is not there is no failure.
    EXPECT_TRUE(autostart.removeFromLoginItems());
}

TEST(XdgAutostart, ReportsAFolderItCannotWriteTo)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    // A plain file in place of the autostart folder; permissions would not
    // stop a test running as root.
    writeFile(dir.filePath(QStringLiteral("autostart")), "not a folder");
    XdgAutostart autostart(dir.filePath(QStringLiteral("autostart/kelvo.desktop")));
    EXPECT_FALSE(autostart.addToLoginItems());
    EXPECT_FALSE(autostart.lastError().isEmpty());
    EXPECT_FALSE(autostart.isLoginItem());
}

TEST(XdgAutostart, OnlyAVisibleEntryRunningKelvoCounts)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString path = dir.filePath(QStringLiteral("kelvo.desktop"));
    XdgAutostart autostart(path, QStringLiteral("/opt/kelvo/bin/kelvo"));

    writeFile(path, "[Desktop Entry]\nType=Application\nExec=/opt/kelvo/bin/kelvo --tray\n");
    EXPECT_TRUE(autostart.isLoginItem());
    writeFile(path, "[Desktop Entry]\nExec=/opt/kelvo/bin/kelvo\nHidden=true\n");
    EXPECT_FALSE(autostart.isLoginItem());
    writeFile(path, "[Desktop Entry]\nExec=someone-else\n");
    EXPECT_FALSE(autostart.isLoginItem());
    // Exec in another group is not the entry's command.
    writeFile(path, "[Desktop Action x]\nExec=/opt/kelvo/bin/kelvo\n[Desktop Entry]\nName=K\n");
    EXPECT_FALSE(autostart.isLoginItem());
}

TEST(XdgAutostart, AProgramUnderAPathWithSpacesIsQuotedAndRecognised)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString path = dir.filePath(QStringLiteral("autostart/kelvo.desktop"));
    const QString program = QStringLiteral("/home/ada/My Apps/Kelvo $1/kelvo-app");
    XdgAutostart autostart(path, program);
    ASSERT_TRUE(autostart.addToLoginItems()) << autostart.lastError().toStdString();
    EXPECT_TRUE(readAll(path).split('\n').contains(
        QByteArray("Exec=\"/home/ada/My Apps/Kelvo \\\\$1/kelvo-app\"")))
        << readAll(path).toStdString();
    EXPECT_TRUE(autostart.isLoginItem());
    // The same folder without the rest of the name is another program.
    EXPECT_FALSE(XdgAutostart(path, QStringLiteral("/home/ada/My")).isLoginItem());

    // An entry written by hand with the program unquoted runs "/home/ada/My".
    writeFile(path, "[Desktop Entry]\nExec=/home/ada/My Apps/Kelvo $1/kelvo-app\n");
    EXPECT_FALSE(autostart.isLoginItem());
}
