// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/QSettingsStore.h"
#include "settings/Defaults.h"
#include "settings/Keys.h"
#include "settings/Startup.h"

#include <QFile>
#include <QTemporaryDir>

#include "Printers.h"

#include <gtest/gtest.h>

using namespace settings;

namespace {

StartContext context()
{
    StartContext c;
    c.secondsSince1970 = 1712345678;
    c.downloadsFolder = QStringLiteral("/home/zoë/Downloads");
    return c;
}

} // namespace

TEST(SettingsIniFile, ValuesSurviveARestartAndKeepTheirReadings)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString ini = dir.filePath(QStringLiteral("kelvo/kelvo.conf"));
    {
        QSettingsStore store(ini);
        Defaults defaults(store);
        ASSERT_TRUE(installFirstRunValues(defaults, context()));
        installEveryStartValues(defaults, context());
        defaults.setObject(keys::shortcutOfButton,
                           QVariantMap{{QStringLiteral("saveShortcut"), QStringLiteral("ㄩ")}});
        defaults.setObject(QStringLiteral("note"), QStringLiteral("line one\nline two = \"x\"; y"));
        EXPECT_TRUE(defaults.synchronize());
    }
    ASSERT_TRUE(QFile::exists(ini));

    QSettingsStore store(ini);
    Defaults defaults(store);
    EXPECT_FALSE(isFirstRun(defaults));
    EXPECT_EQ(defaults.stringForKey(keys::installTime), QStringLiteral("1712345678"));
    EXPECT_EQ(defaults.stringForKey(keys::saveShortcut), QStringLiteral("ㄩ"));
    EXPECT_EQ(defaults.stringForKey(keys::copyToPasteShortcut), QStringLiteral("↩"));
    EXPECT_EQ(defaults.stringForKey(keys::pathofSaveScreenShotsPhoto),
              QStringLiteral("/home/zoë/Downloads"));
    EXPECT_EQ(defaults.stringForKey(keys::hideMenuBarIcon), QStringLiteral("NO"));
    EXPECT_EQ(defaults.stringForKey(keys::colorOfShadow), QStringLiteral("#66000000"));
    EXPECT_EQ(defaults.stringForKey(QStringLiteral("note")),
              QStringLiteral("line one\nline two = \"x\"; y"));
    // Booleans and numbers come back as text and read the same.
    EXPECT_TRUE(defaults.boolForKey(keys::playSoundWhenScreenShots));
    EXPECT_FALSE(defaults.boolForKey(keys::nomalQualityImage));
    EXPECT_TRUE(defaults.boolForKey(keys::notifyWhenComplete));
    EXPECT_EQ(defaults.integerForKey(keys::qualityOfVideo), 1);
    EXPECT_EQ(defaults.integerForKey(keys::helpTimesOfPin), 0);
    EXPECT_TRUE(defaults.contains(keys::helpTimesOfPin));
    EXPECT_EQ(
        defaults.dictionaryForKey(keys::shortcutOfButton).value(QStringLiteral("saveShortcut")),
        QVariant(QStringLiteral("ㄩ")));
    EXPECT_FALSE(defaults.contains(keys::kDefaultMicIdKey));

    defaults.removeObjectForKey(keys::installTime);
    defaults.removeObjectForKey(QString()); // removes no other key
    EXPECT_TRUE(defaults.synchronize());
    QSettingsStore again(ini);
    EXPECT_FALSE(again.contains(keys::installTime));
    EXPECT_TRUE(again.allKeys().contains(QStringLiteral("saveShortcut")));
}

TEST(SettingsIniFile, TheFileIsPlainUtf8Text)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString ini = dir.filePath(QStringLiteral("kelvo.conf"));
    {
        QSettingsStore store(ini);
        store.setValue(QStringLiteral("copyToPasteShortcut"), QStringLiteral("↩"));
        store.setValue(QStringLiteral("hideMenuBarIcon"), QStringLiteral("YES"));
        ASSERT_TRUE(store.sync());
    }
    QFile file(ini);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(file.readAll());
    EXPECT_TRUE(text.contains(QStringLiteral("hideMenuBarIcon=YES"))) << text.toStdString();
    EXPECT_TRUE(text.contains(QStringLiteral("copyToPasteShortcut="))) << text.toStdString();
}

TEST(SettingsIniFile, AnUnwritableFileIsReportedBySync)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    // A plain file where the folder should be: no one, root included, can
    // create the preferences file below it.
    QFile blocker(dir.filePath(QStringLiteral("kelvo")));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    QSettingsStore store(dir.filePath(QStringLiteral("kelvo/kelvo.conf")));
    store.setValue(QStringLiteral("formatOfSavePhoto"), QStringLiteral("png"));
    EXPECT_FALSE(store.sync());
}

TEST(SettingsIniFile, DefaultsToTheXdgConfigFolder)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QByteArray saved = qgetenv("XDG_CONFIG_HOME");
    qputenv("XDG_CONFIG_HOME", dir.path().toUtf8());
    EXPECT_EQ(QSettingsStore::defaultPath(), dir.filePath(QStringLiteral("kelvo/kelvo.conf")));
    if (saved.isNull())
        qunsetenv("XDG_CONFIG_HOME");
    else
        qputenv("XDG_CONFIG_HOME", saved);
}
