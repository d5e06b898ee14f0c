// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/SavePathMenu.h"
#include "settings/Defaults.h"
#include "settings/FolderAccess.h"
#include "settings/Keys.h"
#include "settings/MemoryStore.h"

#include <QTemporaryDir>

#include "Printers.h"

#include <gtest/gtest.h>

using namespace settings;

namespace {

const QString realPath = QStringLiteral("/home/ada/Pictures/Shots");
const QString oldPath = QStringLiteral("/home/ada/Downloads");
const QString notSpecified = QStringLiteral("Not Specified");

struct SettingsSavePath : ::testing::Test
{
    MemoryStore store;
    Defaults defaults{store};

    void storePaths(const QVariant& path, const QVariant& old)
    {
        defaults.setObject(keys::pathofSaveScreenShotsPhoto, path);
        defaults.setObject(keys::oldPathofSaveScreenShotsPhoto, old);
    }
    QString path() const { return defaults.stringForKey(keys::pathofSaveScreenShotsPhoto); }
    QString old() const { return defaults.stringForKey(keys::oldPathofSaveScreenShotsPhoto); }
};

} // namespace

TEST_F(SettingsSavePath, ARealPathIsShownAndSelected)
{
    storePaths(realPath, oldPath);
    const SavePathMenu menu(defaults);
    EXPECT_EQ(menu.folder(), realPath);
    EXPECT_EQ(menu.selectedIndex(), 0);
    EXPECT_EQ(menu.titles(), (QStringList{"Shots", "Select path when save", "Other..."}));
}

TEST_F(SettingsSavePath, WithoutARealPathTheOldFolderIsShownAndAskingIsSelected)
{
    storePaths(notSpecified, oldPath);
    EXPECT_EQ(SavePathMenu(defaults).folder(), oldPath);
    EXPECT_EQ(SavePathMenu(defaults).selectedIndex(), 1);

    storePaths(QVariant(), oldPath);
    EXPECT_EQ(SavePathMenu(defaults).folder(), oldPath);
    EXPECT_EQ(SavePathMenu(defaults).selectedIndex(), 1);

    // Neither key: an empty folder title, and still no crash.
    storePaths(QVariant(), QVariant());
    const SavePathMenu empty(defaults);
    EXPECT_EQ(empty.selectedIndex(), 1);
    EXPECT_EQ(empty.titles().at(0), QString());
}

TEST_F(SettingsSavePath, AskingTwiceLosesTheOldFolder)
{
    storePaths(realPath, oldPath);
    SavePathMenu menu(defaults);
    menu.cancelPathofSaveScreenShotsPhoto();
    EXPECT_EQ(path(), notSpecified);
    EXPECT_EQ(old(), realPath);
    EXPECT_EQ(menu.selectedIndex(), 1);

    menu.cancelPathofSaveScreenShotsPhoto();
    EXPECT_EQ(path(), notSpecified);
    EXPECT_EQ(old(), notSpecified);

    // The first item now resumes to the marker itself.
    menu.resumePathofSaveScreenShotsPhoto();
    EXPECT_EQ(path(), notSpecified);
    EXPECT_EQ(menu.selectedIndex(), 0);
}

TEST_F(SettingsSavePath, TheFirstItemResumesToTheOldPathNotToTheOneItShows)
{
    storePaths(realPath, oldPath);
    SavePathMenu menu(defaults);
    menu.resumePathofSaveScreenShotsPhoto();
    EXPECT_EQ(path(), oldPath);
    // The menu is not rebuilt: it still names the folder it showed.
    EXPECT_EQ(menu.titles().at(0), QStringLiteral("Shots"));
    EXPECT_EQ(menu.selectedIndex(), 0);
}

TEST_F(SettingsSavePath, AskThenResumeGoesBackToTheFolderThatWasSet)
{
    storePaths(realPath, oldPath);
    SavePathMenu menu(defaults);
    menu.cancelPathofSaveScreenShotsPhoto();
    menu.resumePathofSaveScreenShotsPhoto();
    EXPECT_EQ(path(), realPath);
    EXPECT_EQ(old(), realPath);
}

TEST_F(SettingsSavePath, ResumingWithoutAnOldPathRemovesThePath)
{
    storePaths(realPath, QVariant());
    SavePathMenu menu(defaults);
    menu.resumePathofSaveScreenShotsPhoto();
    EXPECT_FALSE(defaults.contains(keys::pathofSaveScreenShotsPhoto));
    menu.rebuild();
    EXPECT_EQ(menu.selectedIndex(), 1);
}

TEST_F(SettingsSavePath, ChoosingAFolderStoresItAndRebuildsTheMenu)
{
    storePaths(notSpecified, oldPath);
    SavePathMenu menu(defaults);
    ASSERT_EQ(menu.selectedIndex(), 1);
    EXPECT_TRUE(menu.selectPathofSaveScreenShotsPhoto(QStringLiteral("/srv/Team Shots")));
    EXPECT_EQ(path(), QStringLiteral("/srv/Team Shots"));
    EXPECT_EQ(old(), oldPath);
    EXPECT_EQ(menu.folder(), QStringLiteral("/srv/Team Shots"));
    EXPECT_EQ(menu.titles().at(0), QStringLiteral("Team Shots"));
    EXPECT_EQ(menu.selectedIndex(), 0);
    // No permission record is kept under the folder's name.
    EXPECT_FALSE(defaults.contains(QStringLiteral("/srv/Team Shots")));
}

TEST_F(SettingsSavePath, ACancelledFolderDialogChangesNothing)
{
    storePaths(notSpecified, oldPath);
    SavePathMenu menu(defaults);
    store.clearJournal();
    EXPECT_FALSE(menu.selectPathofSaveScreenShotsPhoto(QString()));
    EXPECT_TRUE(store.journal().isEmpty());
    EXPECT_EQ(menu.selectedIndex(), 1);
    EXPECT_EQ(menu.folder(), oldPath);
}

TEST(SettingsSavePathTitle, IsTheLastPathComponent)
{
    EXPECT_EQ(SavePathMenu::displayName(QStringLiteral("/home/ada/Pictures")), "Pictures");
    EXPECT_EQ(SavePathMenu::displayName(QStringLiteral("/home/ada/Pictures//")), "Pictures");
    EXPECT_EQ(SavePathMenu::displayName(QStringLiteral("/")), "/");
    EXPECT_EQ(SavePathMenu::displayName(QStringLiteral("///")), "/");
    EXPECT_EQ(SavePathMenu::displayName(QStringLiteral("Not Specified")), "Not Specified");
    EXPECT_EQ(SavePathMenu::displayName(QString()), QString());
}

TEST(SettingsFolderAccess, RunsTheBlockOnceWhateverTheFolder)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString file = dir.filePath(QStringLiteral("plain"));
    QFile f(file);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.close();

    EXPECT_EQ(checkFolder(dir.path()), FolderState::Usable);
    EXPECT_EQ(checkFolder(file), FolderState::NotAFolder);
    EXPECT_EQ(checkFolder(dir.filePath(QStringLiteral("gone"))), FolderState::Missing);
    EXPECT_EQ(checkFolder(QString()), FolderState::Missing);

    for (const QString& folder : {dir.path(), file, dir.filePath(QStringLiteral("gone"))}) {
        int runs = 0;
        EXPECT_TRUE(accessFileURL(folder, [&] { ++runs; }));
        EXPECT_EQ(runs, 1);
    }
    EXPECT_TRUE(accessFileURL(dir.path(), nullptr));
}
