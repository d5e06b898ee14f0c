// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/Startup.h"
#include "settings/Defaults.h"
#include "settings/Keys.h"
#include "settings/MemoryStore.h"
#include "settings/Migrations.h"
#include "settings/Schema.h"

#include "Printers.h"

#include <gtest/gtest.h>

using namespace settings;

namespace {

StartContext testContext()
{
    StartContext c;
    c.secondsSince1970 = 1700000000.6;
    c.downloadsFolder = QStringLiteral("/home/ada/Downloads");
    return c;
}

struct SettingsStart : ::testing::Test
{
    MemoryStore store;
    Defaults defaults{store};

    QVariant at(QLatin1StringView key) const { return store.value(key); }
};

// What the application does with the preferences at each start, in its
// order, answering whether the Preferences window is brought forward.
struct StartOutcome
{
    bool firstRun = false;
    bool showsPreferences = false;
};

StartOutcome startApplication(Defaults& defaults)
{
    StartOutcome outcome;
    outcome.firstRun = installFirstRunValues(defaults, testContext());
    installEveryStartValues(defaults, testContext());
    removeRetiredKeys(defaults);
    outcome.showsPreferences = takeRestartRequest(defaults);
    return outcome;
}

} // namespace

TEST_F(SettingsStart, FirstRunValuesKeepTheirStoredForms)
{
    store.setValue(QStringLiteral("kDefaultMicIdKey"), QStringLiteral("NONE"));
    store.setValue(QStringLiteral("appOfUserSpecified"), QStringLiteral("{}"));
    ASSERT_TRUE(installFirstRunValues(defaults, testContext()));

    // Rounded, no decimals.
    EXPECT_EQ(at(keys::installTime), QVariant(QStringLiteral("1700000001")));
    EXPECT_EQ(at(keys::helpTimesOfPin).typeId(), QMetaType::Int);
    EXPECT_EQ(at(keys::helpTimesOfPin).toInt(), 0);
    EXPECT_EQ(at(keys::colorOfShadow), QVariant(QStringLiteral("#66000000")));
    EXPECT_EQ(at(keys::pathofSaveScreenShotsPhoto),
              QVariant(QStringLiteral("/home/ada/Downloads")));
    EXPECT_EQ(at(keys::saveShortcut), QVariant(QStringLiteral("ㄩ")));
    EXPECT_EQ(at(keys::copyToPasteShortcut), QVariant(QStringLiteral("↩")));
    EXPECT_EQ(at(keys::mapShortcut), QVariant(QStringLiteral("T")));
    EXPECT_EQ(at(keys::doubleClickModifierKey), QVariant(QStringLiteral("Option")));
    EXPECT_EQ(at(keys::playSoundWhenScreenShots), QVariant(true));
    EXPECT_EQ(at(keys::formatOfSavePhoto), QVariant(QStringLiteral("png")));
    EXPECT_EQ(at(keys::sizeOfShadow), QVariant(QStringLiteral("18")));
    EXPECT_EQ(at(keys::nomalQualityImage), QVariant(false));
    EXPECT_EQ(at(keys::timeOfDelayScreenshots), QVariant(QStringLiteral("3")));
    EXPECT_EQ(at(keys::delayTimeOfPopupToolbar), QVariant(QStringLiteral("0.5")));
    // The switches are the strings "YES" and "NO", not booleans.
    for (auto [key, text] : {std::pair{keys::doubleClickToSavePaste, "YES"},
                             {keys::hideMenuBarIcon, "NO"},
                             {keys::needShadowOfnotSingleWindow, "YES"},
                             {keys::needFilletOfnotSingleWindow, "YES"},
                             {keys::autoStartAtLogin, "NO"},
                             {keys::playSoundWhenDelayScreenShots, "YES"}}) {
        EXPECT_EQ(at(key).typeId(), QMetaType::QString) << key.data();
        EXPECT_EQ(at(key).toString(), QLatin1StringView(text)) << key.data();
    }
    EXPECT_FALSE(store.contains(keys::kDefaultMicIdKey));
    EXPECT_FALSE(store.contains(keys::appOfUserSpecified));
    for (auto key : {keys::noPopupAlertOfScrollToColorAlph, keys::noPopUpHelp2OfDraggedRect,
                     keys::noPopupAlertOfClosePinWindow, keys::KAutoOpenWhenEndKey})
        EXPECT_EQ(at(key), QVariant(false)) << key.data();
}

TEST(SettingsInstallTime, IsPrintedAsWholeSeconds)
{
    EXPECT_EQ(installTimeText(1700000000.4), QStringLiteral("1700000000"));
    EXPECT_EQ(installTimeText(1700000000.5), QStringLiteral("1700000000")); // to even, as printf
    EXPECT_EQ(installTimeText(1700000001.5), QStringLiteral("1700000002"));
    EXPECT_EQ(installTimeText(0), QStringLiteral("0"));
}

TEST_F(SettingsStart, AnInstalledSystemKeepsItsValues)
{
    defaults.setObject(keys::installTime, QStringLiteral("1"));
    defaults.setObject(keys::formatOfSavePhoto, QStringLiteral("tiff"));
    store.clearJournal();
    EXPECT_FALSE(installFirstRunValues(defaults, testContext()));
    EXPECT_TRUE(store.journal().isEmpty());
    EXPECT_EQ(at(keys::formatOfSavePhoto), QVariant(QStringLiteral("tiff")));
}

TEST_F(SettingsStart, EveryStartValuesAreWrittenOnlyWhenAbsent)
{
    installEveryStartValues(defaults, testContext());
    EXPECT_EQ(at(keys::videoFormat), QVariant(QStringLiteral("mov")));
    EXPECT_EQ(at(keys::kVideoFormatKey), QVariant(QStringLiteral("mov")));
    EXPECT_EQ(at(keys::qualityOfVideo), QVariant(1));
    EXPECT_EQ(at(keys::framesOfVideo), QVariant(QStringLiteral("30")));
    EXPECT_EQ(at(keys::kShowCursorKey), QVariant(QStringLiteral("1")));
    EXPECT_EQ(at(keys::notifyWhenComplete), QVariant(true));
    EXPECT_EQ(at(keys::oldPathofSaveScreenShotsPhoto),
              QVariant(QStringLiteral("/home/ada/Downloads")));
    EXPECT_EQ(store.syncCount(), 1);

    defaults.setObject(keys::qualityOfVideo, 5);
    defaults.setObject(keys::framesOfVideo, QStringLiteral("60"));
    defaults.setBool(keys::notifyWhenComplete, false);
    defaults.setObject(keys::oldPathofSaveScreenShotsPhoto, QStringLiteral("/srv/shots"));
    store.clearJournal();
    installEveryStartValues(defaults, testContext());
    EXPECT_TRUE(store.journal().isEmpty());
    EXPECT_EQ(at(keys::qualityOfVideo), QVariant(5));
    EXPECT_EQ(at(keys::notifyWhenComplete), QVariant(false));
    EXPECT_EQ(at(keys::oldPathofSaveScreenShotsPhoto), QVariant(QStringLiteral("/srv/shots")));
}

TEST_F(SettingsStart, VideoFormatDecidesTheRecordingFormatToo)
{
    // The pair is decided by videoFormat alone: without it a chosen
    // recording format goes back to "mov".
    defaults.setObject(keys::kVideoFormatKey, QStringLiteral("gif"));
    installEveryStartValues(defaults, testContext());
    EXPECT_EQ(at(keys::kVideoFormatKey), QVariant(QStringLiteral("mov")));

    // With videoFormat present, a missing recording format stays missing.
    defaults.removeObjectForKey(keys::kVideoFormatKey);
    installEveryStartValues(defaults, testContext());
    EXPECT_FALSE(store.contains(keys::kVideoFormatKey));
}

TEST_F(SettingsStart, TheThreeKindsOfStart)
{
    // First run: everything installed, the window stays hidden.
    StartOutcome first = startApplication(defaults);
    EXPECT_TRUE(first.firstRun);
    EXPECT_FALSE(first.showsPreferences);

    // Ordinary start: nothing reinstalled.
    defaults.setObject(keys::formatOfSavePhoto, QStringLiteral("jpg"));
    StartOutcome ordinary = startApplication(defaults);
    EXPECT_FALSE(ordinary.firstRun);
    EXPECT_FALSE(ordinary.showsPreferences);
    EXPECT_EQ(at(keys::formatOfSavePhoto), QVariant(QStringLiteral("jpg")));

    // Reset: the first-run marker goes, the next start installs anew and
    // shows the window, once.
    store.clearJournal();
    const int syncs = store.syncCount();
    EXPECT_TRUE(markForRestart(defaults));
    EXPECT_EQ(store.journal(), (QStringList{"remove:installTime", "set:restart"}));
    EXPECT_EQ(at(keys::restart), QVariant(QStringLiteral("YES")));
    EXPECT_EQ(store.syncCount(), syncs + 1);
    StartOutcome restarted = startApplication(defaults);
    EXPECT_TRUE(restarted.firstRun);
    EXPECT_TRUE(restarted.showsPreferences);
    EXPECT_EQ(at(keys::formatOfSavePhoto), QVariant(QStringLiteral("png")));
    EXPECT_EQ(at(keys::restart), QVariant(QStringLiteral("NO")));

    StartOutcome after = startApplication(defaults);
    EXPECT_FALSE(after.showsPreferences);
}

TEST_F(SettingsStart, ResetWithoutInstallTimeDoesNotAskForTheWindow)
{
    store.clearJournal();
    EXPECT_FALSE(markForRestart(defaults));
    EXPECT_TRUE(store.journal().isEmpty());
    EXPECT_EQ(store.syncCount(), 0);
    EXPECT_FALSE(startApplication(defaults).showsPreferences);
}

TEST_F(SettingsStart, RestartIsReadAsABoolean)
{
    defaults.setObject(keys::installTime, QStringLiteral("1"));
    for (const QVariant& v : {QVariant(QStringLiteral("yes")), QVariant(true), QVariant(1)}) {
        defaults.setObject(keys::restart, v);
        EXPECT_TRUE(takeRestartRequest(defaults)) << v.toString().toStdString();
        EXPECT_EQ(at(keys::restart), QVariant(QStringLiteral("NO")));
    }
    defaults.setObject(keys::restart, QStringLiteral("garbage"));
    EXPECT_FALSE(takeRestartRequest(defaults));
    EXPECT_EQ(at(keys::restart), QVariant(QStringLiteral("garbage")));
}

TEST_F(SettingsStart, RetiredKeyIsRemoved)
{
    defaults.setObject(keys::mapWindowCloseed, QStringLiteral("x"));
    removeRetiredKeys(defaults);
    EXPECT_FALSE(store.contains(keys::mapWindowCloseed));
}

TEST_F(SettingsStart, ToolShortcutsComeFromTheStoreWhenItHasAny)
{
    const QVariantMap fallback = shortcutOfButton(defaults);
    EXPECT_EQ(fallback.size(), 13);
    EXPECT_EQ(fallback.value(QStringLiteral("squareShortcut")), QVariant(QStringLiteral("1")));
    EXPECT_EQ(fallback.value(QStringLiteral("highlightShortcut")), QVariant(QStringLiteral("9")));
    EXPECT_EQ(fallback.value(QStringLiteral("scrollScreenshotShortcut")),
              QVariant(QStringLiteral("S")));
    EXPECT_EQ(fallback.value(QStringLiteral("copyToPasteShortcut")), QVariant(QStringLiteral("↩")));

    defaults.setObject(keys::shortcutOfButton, QVariantMap());
    EXPECT_EQ(shortcutOfButton(defaults), fallback);
    defaults.setObject(keys::shortcutOfButton, QStringLiteral("not a dictionary"));
    EXPECT_EQ(shortcutOfButton(defaults), fallback);

    // One entry is enough: the missing tools stay missing.
    defaults.setObject(keys::shortcutOfButton, QVariantMap{{"textShortcut", "X"}});
    EXPECT_EQ(shortcutOfButton(defaults), (QVariantMap{{"textShortcut", "X"}}));
}

TEST(SettingsSchema, EveryKeyIsListedOnceAndEveryStartKeysDecideOnListedKeys)
{
    QStringList seen;
    for (const KeySpec& spec : schema()) {
        EXPECT_FALSE(seen.contains(spec.key)) << spec.key.data();
        seen << spec.key;
        if (!spec.decidedBy.isEmpty()) {
            EXPECT_NE(findKey(spec.decidedBy), nullptr) << spec.key.data();
        }
        if (spec.initial == Initial::FirstRun || spec.initial == Initial::EveryStart) {
            EXPECT_TRUE(spec.value.isValid() || spec.source != Source::Literal) << spec.key.data();
        }
    }
    EXPECT_EQ(toolShortcuts().size(), 13u);
    ASSERT_NE(findKey(QStringLiteral("nomalQualityImage")), nullptr);
    EXPECT_EQ(findKey(QStringLiteral("nomalQualityImage"))->type, ValueType::Boolean);
    EXPECT_EQ(findKey(QStringLiteral("hideMenuBarIcon"))->type, ValueType::String);
    EXPECT_EQ(findKey(QStringLiteral("normalQualityImage")), nullptr);
}

TEST_F(SettingsStart, MigrationsRunOnceInVersionOrder)
{
    QStringList ran;
    const std::vector<Migration> steps = {
        {3, [&](Defaults&) { ran << "3"; }},
        {2,
         [&](Defaults& d) {
             ran << "2";
             d.setObject(QStringLiteral("renamed"), d.objectForKey(QStringLiteral("old")));
         }},
        {1, [&](Defaults&) { ran << "1"; }},
    };
    defaults.setObject(QStringLiteral("old"), QStringLiteral("v"));
    defaults.setInteger(keys::schemaVersion, 1);
    EXPECT_EQ(migrate(defaults, steps, 3), 3);
    EXPECT_EQ(ran, (QStringList{"2", "3"}));
    EXPECT_EQ(at(QLatin1StringView("renamed")), QVariant(QStringLiteral("v")));
    EXPECT_EQ(defaults.integerForKey(keys::schemaVersion), 3);

    ran.clear();
    EXPECT_EQ(migrate(defaults, steps, 3), 3);
    EXPECT_TRUE(ran.isEmpty());
    // A file from a newer build is not touched.
    defaults.setInteger(keys::schemaVersion, 9);
    EXPECT_EQ(migrate(defaults, steps, 3), 9);
    EXPECT_TRUE(ran.isEmpty());
    EXPECT_EQ(defaults.integerForKey(keys::schemaVersion), 9);
}

TEST_F(SettingsStart, AFileWithoutVersionIsBroughtToTheCurrentOne)
{
    EXPECT_EQ(migrate(defaults), currentSchemaVersion);
    EXPECT_EQ(defaults.integerForKey(keys::schemaVersion), currentSchemaVersion);
}
