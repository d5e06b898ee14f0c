// SPDX-License-Identifier: GPL-3.0-or-later
// Preferences edited by hand or damaged: what a start puts back, what it
// leaves alone, and what it says.
#include "settings/ValueChecks.h"
#include "settings/Defaults.h"
#include "settings/Keys.h"
#include "settings/MemoryStore.h"
#include "settings/QSettingsStore.h"
#include "settings/Startup.h"

#include "Printers.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace settings;

namespace {

StartContext context()
{
    StartContext c;
    c.secondsSince1970 = 1712345678;
    c.downloadsFolder = QStringLiteral("/home/ada/Downloads");
    return c;
}

// A store after an ordinary first start.
struct Checks : ::testing::Test
{
    void SetUp() override
    {
        installFirstRunValues(defaults, context());
        installEveryStartValues(defaults, context());
    }

    MemoryStore store;
    Defaults defaults{store};
};

} // namespace

TEST_F(Checks, WhatAFirstStartWritesPassesEvenAfterARoundTripThroughTheFile)
{
    EXPECT_TRUE(repairBadValues(defaults, context()).empty());

    // The INI file keeps every value as text ("true", "0"): still good.
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString ini = dir.filePath(QStringLiteral("kelvo.conf"));
    {
        QSettingsStore file(ini);
        Defaults written(file);
        installFirstRunValues(written, context());
        installEveryStartValues(written, context());
        written.setObject(keys::shortcutOfButton,
                          QVariantMap{{QStringLiteral("saveShortcut"), QStringLiteral("S")}});
        written.setObject(keys::userColor, QStringLiteral("#ff112233"));
        written.setInteger(keys::popUpTimesOsSaveImageToFile, 3);
        ASSERT_TRUE(written.synchronize());
    }
    QSettingsStore file(ini);
    Defaults reread(file);
    const auto repairs = repairBadValues(reread, context());
    for (const Repair& r : repairs)
        ADD_FAILURE() << r.message().toStdString();
}

TEST_F(Checks, OutOfRangeAndWrongTypedNumbersGoBackToTheirFirstValues)
{
    struct Case
    {
        QLatin1StringView key;
        QVariant bad;
        QVariant restored;
    };
    const Case cases[] = {
        {keys::timeOfDelayScreenshots, QStringLiteral("-5"), QStringLiteral("3")},
        {keys::timeOfDelayScreenshots, QStringLiteral("99999"), QStringLiteral("3")},
        {keys::timeOfDelayScreenshots, QStringLiteral("soon"), QStringLiteral("3")},
        {keys::sizeOfShadow, QStringLiteral("-3"), QStringLiteral("18")},
        {keys::sizeOfShadow, QStringLiteral("12px"), QStringLiteral("18")},
        {keys::sizeOfShadow, 101, QStringLiteral("18")},
        {keys::delayTimeOfPopupToolbar, QStringLiteral("11"), QStringLiteral("0.5")},
        {keys::delayTimeOfPopupToolbar, QStringLiteral("half"), QStringLiteral("0.5")},
        {keys::helpTimesOfPin, QStringLiteral("-1"), 0},
        {keys::helpTimesOfPin, 2.5, 0},
        {keys::formatOfSavePhoto, QStringLiteral("gif"), QStringLiteral("png")},
        {keys::colorOfShadow, QStringLiteral("black"), QStringLiteral("#66000000")},
        {keys::pathofSaveScreenShotsPhoto, QStringLiteral("  "),
         QStringLiteral("/home/ada/Downloads")},
    };
    for (const Case& c : cases) {
        defaults.setObject(c.key, c.bad);
        const auto repairs = repairBadValues(defaults, context());
        ASSERT_EQ(repairs.size(), 1u) << c.key.data() << " = " << c.bad.toString().toStdString();
        EXPECT_EQ(repairs[0].key, QString(c.key));
        EXPECT_EQ(store.value(c.key), c.restored) << c.key.data();
    }

    // The edges of each range are good values.
    for (const auto& [key, value] : std::initializer_list<std::pair<QLatin1StringView, QVariant>>{
             {keys::timeOfDelayScreenshots, QStringLiteral("1")},
             {keys::timeOfDelayScreenshots, QStringLiteral("20")},
             {keys::sizeOfShadow, QStringLiteral("0")},
             {keys::sizeOfShadow, QStringLiteral(" 100")},
             {keys::delayTimeOfPopupToolbar, QStringLiteral("0")},
             {keys::delayTimeOfPopupToolbar, 10},
             {keys::formatOfSavePhoto, QStringLiteral("tiff")},
             {keys::colorOfShadow, QStringLiteral("#123456")},
         }) {
        defaults.setObject(key, value);
        EXPECT_TRUE(repairBadValues(defaults, context()).empty()) << key.data();
        EXPECT_EQ(store.value(key), value);
    }
}

TEST_F(Checks, SwitchesKeepTheirStoredFormsAndOnlyReadableOnesPass)
{
    // YES/NO switches stay strings, in either case; a number is not one.
    defaults.setObject(keys::hideMenuBarIcon, QStringLiteral("yes"));
    defaults.setObject(keys::doubleClickToSavePaste, QStringLiteral("5"));
    defaults.setObject(keys::autoStartAtLogin, true);
    // Boolean switches accept what the INI file and hand edits give them.
    defaults.setObject(keys::notifyWhenComplete, QStringLiteral("false"));
    defaults.setObject(keys::nomalQualityImage, QStringLiteral("maybe"));
    defaults.setObject(keys::playSoundWhenScreenShots, 7);

    const auto repairs = repairBadValues(defaults, context());
    QStringList repaired;
    for (const Repair& r : repairs)
        repaired << r.key;
    repaired.sort();
    EXPECT_EQ(repaired, (QStringList{"autoStartAtLogin", "doubleClickToSavePaste",
                                     "nomalQualityImage", "playSoundWhenScreenShots"}));
    EXPECT_EQ(store.value(keys::doubleClickToSavePaste), QVariant(QStringLiteral("YES")));
    EXPECT_EQ(store.value(keys::autoStartAtLogin), QVariant(QStringLiteral("NO")));
    EXPECT_EQ(store.value(keys::nomalQualityImage), QVariant(false));
    EXPECT_EQ(store.value(keys::playSoundWhenScreenShots), QVariant(true));
    EXPECT_EQ(store.value(keys::hideMenuBarIcon), QVariant(QStringLiteral("yes")));
    EXPECT_EQ(store.value(keys::notifyWhenComplete), QVariant(QStringLiteral("false")));
}

TEST_F(Checks, AKeyWithoutAFirstValueIsRemovedAndUncheckedKeysAreLeftAlone)
{
    defaults.setObject(keys::shortcut, QStringLiteral("{not json"));
    defaults.setObject(keys::userColor, QStringLiteral("#12"));
    // Nothing reads these yet, so nothing judges them.
    defaults.setObject(keys::framesOfVideo, QStringLiteral("lots"));
    defaults.setObject(QStringLiteral("someoneElsesKey"), QStringLiteral("-5"));

    const auto repairs = repairBadValues(defaults, context());
    ASSERT_EQ(repairs.size(), 2u);
    EXPECT_FALSE(store.contains(keys::shortcut));
    EXPECT_FALSE(store.contains(keys::userColor));
    for (const Repair& r : repairs) {
        EXPECT_TRUE(r.replacement.isEmpty());
        EXPECT_TRUE(r.message().contains(QStringLiteral("built-in value")))
            << r.message().toStdString();
    }
    EXPECT_EQ(store.value(keys::framesOfVideo), QVariant(QStringLiteral("lots")));
    EXPECT_EQ(store.value(QStringLiteral("someoneElsesKey")), QVariant(QStringLiteral("-5")));
}

TEST_F(Checks, TheWarningNamesTheKeyTheBadValueAndTheDefaultOnOneShortLine)
{
    defaults.setObject(keys::sizeOfShadow, QStringLiteral("-3"));
    auto repairs = repairBadValues(defaults, context());
    ASSERT_EQ(repairs.size(), 1u);
    EXPECT_EQ(repairs[0].message(),
              QStringLiteral("preference sizeOfShadow is \"-3\", not a whole number from 0 to "
                             "100; using the default \"18\""));

    // Megabytes of anything, with line breaks: one line, and short.
    defaults.setObject(keys::formatOfSavePhoto,
                       QString(QStringLiteral("a\nb\x01") + QString(4 << 20, QLatin1Char('x'))));
    repairs = repairBadValues(defaults, context());
    ASSERT_EQ(repairs.size(), 1u);
    const QString line = repairs[0].message();
    EXPECT_LT(line.size(), 200);
    EXPECT_FALSE(line.contains(QLatin1Char('\n')));
    EXPECT_TRUE(line.contains(QStringLiteral("\"a?b?xxx")));
    EXPECT_TRUE(line.contains(QStringLiteral("using the default \"png\"")));
}

TEST_F(Checks, RepairsAreWrittenOut)
{
    const int before = store.syncCount();
    EXPECT_TRUE(repairBadValues(defaults, context()).empty());
    EXPECT_EQ(store.syncCount(), before);
    defaults.setObject(keys::sizeOfShadow, QStringLiteral("huge"));
    EXPECT_EQ(repairBadValues(defaults, context()).size(), 1u);
    EXPECT_EQ(store.syncCount(), before + 1);
}

TEST(SettingsUnreadableFile, IsMovedAsideWholeBeforeAnythingWritesOverIt)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString ini = dir.filePath(QStringLiteral("kelvo.conf"));
    // Absent, or a good file: nothing to do.
    EXPECT_TRUE(QSettingsStore::setAsideIfUnreadable(ini).isEmpty());
    {
        QSettingsStore store(ini);
        Defaults defaults(store);
        installFirstRunValues(defaults, context());
        ASSERT_TRUE(defaults.synchronize());
    }
    EXPECT_TRUE(QSettingsStore::setAsideIfUnreadable(ini).isEmpty());
    EXPECT_TRUE(QFile::exists(ini));

    // Bytes of every kind, as a damaged disk or a wrong copy leaves them.
    QByteArray garbage;
    quint32 seed = 12345;
    for (int i = 0; i < 8192; ++i) {
        seed = seed * 1103515245u + 12345u;
        garbage.append(char(seed >> 24));
    }
    for (const QString& expectedAside : QStringList{ini + ".bad", ini + ".bad2"}) {
        QFile file(ini);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(garbage);
        file.close();

        const QString said = QSettingsStore::setAsideIfUnreadable(ini);
        EXPECT_TRUE(said.contains(ini) && said.contains(expectedAside)) << said.toStdString();
        EXPECT_FALSE(QFile::exists(ini));
        QFile aside(expectedAside);
        ASSERT_TRUE(aside.open(QIODevice::ReadOnly));
        EXPECT_EQ(aside.readAll(), garbage);

        // The next start is a first run on a fresh file.
        QSettingsStore store(ini);
        Defaults defaults(store);
        EXPECT_TRUE(isFirstRun(defaults));
    }
}
