// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/hotkeys/HotKeyTable.h"

#include <gtest/gtest.h>

using namespace app::hotkeys;

TEST(HotKeyTable, FirstRunKeysAreAltWithASDZXWInTheEditorsOrder)
{
    // Region, pin, delay, window, previous area, recording.
    QString letters;
    for (const HotKeyDefinition& definition : hotKeyDefinitions()) {
        EXPECT_EQ(definition.defaultCombo.modifierFlags, Qt::AltModifier);
        letters += QChar(definition.defaultCombo.keyCode);
    }
    EXPECT_EQ(letters, QStringLiteral("ASDZXW"));
}

TEST(HotKeyTable, ThePasteVariantsHaveActionsOfTheirOwnAndOtherNamesNone)
{
    // They have no editor, so the definitions do not list them.
    EXPECT_EQ(
        actionForHotKey(QStringLiteral("screenshotWindowUnderCursorSaveToPasteRecorder"), false),
        HotKeyAction::ScreenshotWindowUnderCursorSaveToPaste);
    EXPECT_EQ(actionForHotKey(QStringLiteral("screenshotPreviousAreaSaveToPasteRecorder"), false),
              HotKeyAction::ScreenshotPreviousAreaSaveToPaste);
    EXPECT_FALSE(actionForHotKey(QStringLiteral("squareShortcut"), false).has_value());
    EXPECT_FALSE(actionForHotKey(QString(), false).has_value());
}

TEST(HotKeyTable, TheRecordKeyStopsWhileARecordingRunsAndOnlyIt)
{
    EXPECT_EQ(actionForHotKey(QStringLiteral("recordScreenRecorder"), true),
              HotKeyAction::StopRecorder);
    for (const HotKeyDefinition& definition : hotKeyDefinitions()) {
        if (definition.action == HotKeyAction::RecordScreenClicked)
            continue;
        EXPECT_EQ(actionForHotKey(QString(definition.identifier), true), definition.action)
            << QString(definition.identifier).toStdString();
    }
}
