// SPDX-License-Identifier: GPL-3.0-or-later
// File names, file types and the counters of the result notices.
#include "app/output/FileNaming.h"
#include "app/output/ResultNotices.h"
#include "settings/Defaults.h"
#include "settings/Keys.h"
#include "settings/MemoryStore.h"

#include <gtest/gtest.h>

#include <set>

using namespace app::output;
namespace keys = settings::keys;

namespace {
QDateTime at(int h, int m, int s)
{
    return QDateTime(QDate(2024, 3, 5), QTime(h, m, s));
}
} // namespace

TEST(FileNaming, KelvoThenTheDateWithTheMarkerBeforeATwelveHourTime)
{
    const QLocale c = QLocale::c();
    EXPECT_EQ(pictureBaseName(at(13, 2, 3), c), QStringLiteral("Kelvo2024-03-05PM01.02.03"));
    EXPECT_EQ(pictureBaseName(at(9, 41, 59), c), QStringLiteral("Kelvo2024-03-05AM09.41.59"));
    // Midnight and noon read 12 on a twelve-hour clock.
    EXPECT_EQ(pictureBaseName(at(0, 5, 0), c), QStringLiteral("Kelvo2024-03-05AM12.05.00"));
    EXPECT_EQ(pictureBaseName(at(12, 0, 0), c), QStringLiteral("Kelvo2024-03-05PM12.00.00"));
}

TEST(FileNaming, ASecondPictureInTheSameSecondGetsTheNextFreeNumber)
{
    std::set<QString> taken;
    auto exists = [&](const QString& p) { return taken.count(p) > 0; };
    const QString base = QStringLiteral("Kelvo2024-03-05PM01.02.03");
    const QString first =
        freePicturePath(QStringLiteral("/pics"), base, ImageFileType::Png, exists);
    EXPECT_EQ(first, QStringLiteral("/pics/Kelvo2024-03-05PM01.02.03.png"));
    taken.insert(first);
    const QString second =
        freePicturePath(QStringLiteral("/pics"), base, ImageFileType::Png, exists);
    EXPECT_EQ(second, QStringLiteral("/pics/Kelvo2024-03-05PM01.02.03 2.png"));
    taken.insert(second);
    EXPECT_EQ(freePicturePath(QStringLiteral("/pics"), base, ImageFileType::Png, exists),
              QStringLiteral("/pics/Kelvo2024-03-05PM01.02.03 3.png"));
    // Another type's name is free even when the PNG's is taken.
    EXPECT_EQ(freePicturePath(QStringLiteral("/pics"), base, ImageFileType::Jpeg, exists),
              QStringLiteral("/pics/Kelvo2024-03-05PM01.02.03.jpg"));
}

TEST(FileNaming, FormatWordsPickTheTypeAndAnythingElseIsTiff)
{
    EXPECT_EQ(fileTypeForFormat(QStringLiteral("jpg")), ImageFileType::Jpeg);
    EXPECT_EQ(fileTypeForFormat(QStringLiteral("png")), ImageFileType::Png);
    for (const char* other : {"tiff", "gif", "PNG", "jpeg", ""})
        EXPECT_EQ(fileTypeForFormat(QString::fromLatin1(other)), ImageFileType::Tiff) << other;
    EXPECT_EQ(extensionOf(ImageFileType::Tiff), QStringLiteral("tiff"));
}

class Notices : public ::testing::Test
{
protected:
    settings::MemoryStore store;
    settings::Defaults defaults{store};
    ResultNotices notices{defaults};
};

TEST_F(Notices, PasteboardNoticesCountDownFiveRemindersThenGoQuiet)
{
    QStringList bodies;
    for (int i = 0; i < 6; ++i) {
        const auto n = notices.savedImage({}, false);
        EXPECT_EQ(n.title, QStringLiteral("Kelvo"));
        bodies << n.body;
    }
    EXPECT_EQ(bodies.first(),
              QStringLiteral("Screenshot saved to pasteboard, and 5 more reminders"));
    EXPECT_EQ(bodies.last(),
              QStringLiteral("Screenshot saved to pasteboard, and 0 more reminders"));
    EXPECT_EQ(defaults.integerForKey(keys::timesOfSavedtoPasteboardNotification), 6);

    const auto seventh = notices.savedImage({}, false);
    EXPECT_TRUE(seventh.title.isEmpty());
    EXPECT_TRUE(seventh.body.isEmpty());
    EXPECT_EQ(defaults.integerForKey(keys::timesOfSavedtoPasteboardNotification), 6);
}

TEST_F(Notices, TheClickHintStaysUntilSixSavedFileNoticesWereClicked)
{
    const QString path = QStringLiteral("/pics/a & b.png");
    for (int i = 0; i < 6; ++i) {
        const auto n = notices.savedImage(path, false);
        EXPECT_EQ(n.title, QStringLiteral("The file saved ( click to open the save path )"));
        EXPECT_EQ(n.body, path);
        EXPECT_EQ(notices.activated(n), path);
    }
    const auto later = notices.savedImage(path, false);
    EXPECT_EQ(later.title, QStringLiteral("The file saved..."));
    // Still a saved-file notice: a click shows the file and counts.
    EXPECT_EQ(notices.activated(later), path);
    EXPECT_EQ(defaults.integerForKey(keys::popUpTimesOsSaveImageToFile), 7);
    // Saved-file notices leave the pasteboard counter alone.
    EXPECT_EQ(defaults.integerForKey(keys::timesOfSavedtoPasteboardNotification), 0);
}

TEST_F(Notices, OnlyRecordingsSoundAndOnlySavedFilesReactToAClick)
{
    EXPECT_TRUE(notices.savedImage(QStringLiteral("/m.mp4"), true).withSound);
    EXPECT_FALSE(notices.savedImage(QStringLiteral("/p.png"), false).withSound);
    EXPECT_TRUE(ResultNotices::content(QStringLiteral("t"), QStringLiteral("T")).withSound);

    EXPECT_EQ(notices.activated(notices.savedImage({}, false)), std::nullopt);
    EXPECT_EQ(
        notices.activated(ResultNotices::saveFailed(QStringLiteral("x"), QStringLiteral("/k.png"))),
        std::nullopt);
    EXPECT_EQ(defaults.integerForKey(keys::popUpTimesOsSaveImageToFile), 0);
}

TEST_F(Notices, AFailedSaveSaysWhyAndWhereThePictureWent)
{
    const auto kept = ResultNotices::saveFailed(QStringLiteral("The folder /x does not exist."),
                                                QStringLiteral("/home/u/Pictures/K.png"));
    EXPECT_FALSE(kept.title.isEmpty());
    EXPECT_TRUE(kept.body.contains(QStringLiteral("/x does not exist")));
    EXPECT_TRUE(kept.body.contains(QStringLiteral("/home/u/Pictures/K.png")));
    EXPECT_EQ(kept.filePath, QStringLiteral("/home/u/Pictures/K.png"));
    const auto lost = ResultNotices::saveFailed(QStringLiteral("disk full"), {});
    EXPECT_EQ(lost.body, QStringLiteral("disk full"));
}
