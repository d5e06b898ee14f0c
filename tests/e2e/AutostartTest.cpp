// SPDX-License-Identifier: GPL-3.0-or-later
// Start at login from a folder whose name has spaces: the autostart entry
// Kelvo writes must start it again when a session runs its Exec line.
#include "support/KelvoProcess.h"
#include "support/TestDesktop.h"
#include "support/XSession.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <memory>

using namespace e2e;
using namespace std::chrono_literals;

namespace {

// The Exec line of a desktop file as a session starts it: the file's string
// escapes first, then words split at blanks outside double quotes, where a
// backslash takes the next character literally; "%%" is a percent sign.
QStringList execArguments(const QByteArray& desktopFile)
{
    QString exec;
    for (const QByteArray& line : desktopFile.split('\n')) {
        if (line.startsWith("Exec="))
            exec = QString::fromUtf8(line.mid(5));
    }
    QString value;
    for (int i = 0; i < exec.size(); ++i) {
        if (exec[i] != u'\\' || i + 1 == exec.size()) {
            value += exec[i];
            continue;
        }
        const QChar next = exec[++i];
        value += next == u's'   ? QChar(u' ')
                 : next == u'n' ? QChar(u'\n')
                 : next == u't' ? QChar(u'\t')
                 : next == u'r' ? QChar(u'\r')
                                : next;
    }
    QStringList words;
    QString word;
    bool quoted = false, any = false;
    for (int i = 0; i < value.size(); ++i) {
        const QChar c = value[i];
        if (quoted && c == u'\\' && i + 1 < value.size()) {
            word += value[++i];
        } else if (c == u'"') {
            quoted = !quoted;
            any = true;
        } else if (!quoted && c.isSpace()) {
            if (any)
                words << word.replace(QStringLiteral("%%"), QStringLiteral("%"));
            word.clear();
            any = false;
        } else {
            word += c;
            any = true;
        }
    }
    if (any)
        words << word.replace(QStringLiteral("%%"), QStringLiteral("%"));
    return quoted ? QStringList() : words;
}

} // namespace

TEST(Autostart, TheEntryWrittenFromAFolderWithSpacesStartsKelvo)
{
    TestDesktop desktop;
    ASSERT_TRUE(desktop.isRunning()) << desktop.error().toStdString();
    XSession x;
    ASSERT_TRUE(x.isConnected());

    // Kelvo installed in a folder with spaces and a dollar sign: both
    // programs, the launcher and the one it hands over to.
    const QString folder = desktop.path(QStringLiteral("My Apps/Kelvo $HOME"));
    ASSERT_TRUE(QDir().mkpath(folder));
    const QString builtFolder = QFileInfo(kelvoBinary()).absolutePath();
    for (const QString& name : {QStringLiteral("kelvo"), QStringLiteral("kelvo-app")}) {
        ASSERT_TRUE(QFile::copy(builtFolder + u'/' + name, folder + u'/' + name))
            << name.toStdString();
        QFile(folder + u'/' + name)
            .setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                            QFileDevice::ExeOwner);
    }
    auto kelvo =
        std::make_unique<KelvoProcess>(QStringList{QStringLiteral("prefs")}, QProcessEnvironment(),
                                       folder + QStringLiteral("/kelvo"));
    ASSERT_TRUE(waitFor([] { return kelvoOnBus(); }, 20s)) << kelvo->errors().toStdString();
    QString window;
    ASSERT_TRUE(waitFor(
        [&] {
            window = kelvoWindowsOf(kelvo->pid()).value(0);
            return !window.isEmpty();
        },
        20s));

    // "Start Kelvo when I log in", by its mnemonic, as a keyboard user would.
    const QString entryPath = desktop.configHome() + QStringLiteral("/autostart/kelvo.desktop");
    ASSERT_FALSE(QFile::exists(entryPath));
    ASSERT_TRUE(activateWindow(window));
    x.tapKeyWithAlt("l");
    ASSERT_TRUE(waitFor([&] { return QFile::exists(entryPath); }, 10s))
        << kelvo->errors().toStdString();
    QFile entryFile(entryPath);
    ASSERT_TRUE(entryFile.open(QIODevice::ReadOnly));
    const QByteArray entry = entryFile.readAll();
    const QStringList command = execArguments(entry);
    ASSERT_EQ(command.size(), 1) << entry.toStdString();
    EXPECT_EQ(QFileInfo(command.constFirst()).absolutePath(), QFileInfo(folder).canonicalFilePath())
        << entry.toStdString();

    // The next login: Kelvo is not running, the session runs the entry.
    kelvo.reset();
    ASSERT_TRUE(waitFor([] { return !kelvoOnBus(); }, 10s));
    KelvoProcess atLogin({}, QProcessEnvironment(), command.constFirst());
    EXPECT_TRUE(waitFor([] { return kelvoOnBus(); }, 20s)) << atLogin.errors().toStdString();
    EXPECT_TRUE(atLogin.isRunning());
}
