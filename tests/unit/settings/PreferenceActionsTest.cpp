// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/PreferenceActions.h"
#include "settings/Defaults.h"
#include "settings/Keys.h"
#include "settings/MemoryStore.h"
#include "settings/Preferences.h"

#include "Printers.h"

#include <gtest/gtest.h>

using namespace settings;

namespace {

struct SettingsActions : ::testing::Test
{
    MemoryStore store;
    Defaults defaults{store};
};

} // namespace

TEST_F(SettingsActions, AClickOnTheButtonThatIsOnWritesNothing)
{
    defaults.setBool(keys::nomalQualityImage, true);
    store.clearJournal();
    EXPECT_EQ(normalImageButtonClick(defaults), (QualityButtons{true, false}));
    EXPECT_TRUE(store.journal().isEmpty());
    EXPECT_EQ(store.syncCount(), 0);

    defaults.setObject(keys::nomalQualityImage, QStringLiteral("NO"));
    store.clearJournal();
    EXPECT_EQ(retinaImageButtonClick(defaults), (QualityButtons{false, true}));
    EXPECT_TRUE(store.journal().isEmpty());
}

TEST_F(SettingsActions, QualityFollowsTheStoredTextForm)
{
    // After a restart the INI file gives the boolean back as text.
    defaults.setObject(keys::nomalQualityImage, QStringLiteral("true"));
    EXPECT_EQ(qualityButtons(defaults), (QualityButtons{true, false}));
    defaults.setObject(keys::nomalQualityImage, QStringLiteral("rubbish"));
    EXPECT_EQ(qualityButtons(defaults), (QualityButtons{false, true}));
}

TEST_F(SettingsActions, TypedReadsHaveTheirOwnFallbacks)
{
    const Preferences prefs(defaults);
    EXPECT_EQ(prefs.formatOfSavePhoto(), QStringLiteral("jpg"));
    EXPECT_EQ(prefs.qualityOfVideo(), 1);
    EXPECT_FALSE(prefs.playSoundWhenScreenShots());
    EXPECT_EQ(prefs.timeOfDelayScreenshots(), 0);

    defaults.setObject(keys::formatOfSavePhoto, QStringLiteral("bmp"));
    defaults.setObject(keys::qualityOfVideo, 0);
    defaults.setObject(keys::timeOfDelayScreenshots, QStringLiteral("25"));
    defaults.setObject(keys::delayTimeOfPopupToolbar, QStringLiteral("0.5"));
    defaults.setObject(keys::pathofSaveScreenShotsPhoto, QStringLiteral("Not Specified"));
    EXPECT_EQ(prefs.formatOfSavePhoto(), QStringLiteral("bmp"));
    EXPECT_EQ(prefs.qualityOfVideo(), 0);
    EXPECT_EQ(prefs.timeOfDelayScreenshots(), 25);
    EXPECT_DOUBLE_EQ(prefs.delayTimeOfPopupToolbar(), 0.5);
    EXPECT_TRUE(prefs.asksForSavePath());
}

TEST_F(SettingsActions, ExclusivePairsDefaultToBlurAndRectangleAndLetBlurAndEllipseWin)
{
    // Neither of a pair on: the blur and the rectangle.
    makeExclusivePairsSane(defaults);
    EXPECT_TRUE(defaults.boolForKey(keys::selectedGaussianBlured));
    EXPECT_FALSE(defaults.boolForKey(keys::selectedMosaic));
    EXPECT_TRUE(defaults.boolForKey(keys::squareOfHighlight));
    EXPECT_FALSE(defaults.boolForKey(keys::ellipseOfHighlight));

    // Both on: the blur and the ellipse stay, their partners go.
    for (auto key : {keys::selectedGaussianBlured, keys::selectedMosaic, keys::squareOfHighlight,
                     keys::ellipseOfHighlight})
        defaults.setBool(key, true);
    makeExclusivePairsSane(defaults);
    EXPECT_TRUE(defaults.boolForKey(keys::selectedGaussianBlured));
    EXPECT_FALSE(defaults.boolForKey(keys::selectedMosaic));
    EXPECT_TRUE(defaults.boolForKey(keys::ellipseOfHighlight));
    EXPECT_FALSE(defaults.boolForKey(keys::squareOfHighlight));

    // One on is left alone, whichever it is.
    defaults.setBool(keys::selectedGaussianBlured, false);
    defaults.setBool(keys::selectedMosaic, true);
    makeExclusivePairsSane(defaults);
    EXPECT_TRUE(defaults.boolForKey(keys::selectedMosaic));
    EXPECT_FALSE(defaults.boolForKey(keys::selectedGaussianBlured));
    EXPECT_TRUE(defaults.boolForKey(keys::ellipseOfHighlight));
}
