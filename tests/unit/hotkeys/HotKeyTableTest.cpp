// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/hotkeys/HotKeyTable.h"
#include "app/hotkeys/KeyComboCodec.h"

#include <gtest/gtest.h>

using namespace app::hotkeys;
using platform::KeyCombo;

TEST(HotKeyTable, FirstRunTableIsAltWithASDZXW)
{
    const QVariantMap table = defaultShortcut();
    const std::map<QString, int> expected{
        {QStringLiteral("regionalScreenshotsRecorder"), Qt::Key_A},
        {QStringLiteral("mapFromPasteRecorder"), Qt::Key_S},
        {QStringLiteral("delayScreenshotsRecorder"), Qt::Key_D},
        {QStringLiteral("screenshotWindowUnderCursorRecorder"), Qt::Key_Z},
        {QStringLiteral("screenshotPreviousAreaRecorder"), Qt::Key_X},
        {QStringLiteral("recordScreenRecorder"), Qt::Key_W},
    };
    ASSERT_EQ(table.size(), 6);
    for (const auto& [identifier, key] : expected) {
        ASSERT_TRUE(table.contains(identifier)) << identifier.toStdString();
        const QVariantMap entry = table.value(identifier).toMap();
        EXPECT_EQ(entry.value(QStringLiteral("keyCode")).toInt(), key);
        EXPECT_EQ(entry.value(QStringLiteral("modifierFlags")).toInt(),
                  static_cast<int>(Qt::AltModifier));
    }
    // The editors follow the same order as the defaults.
    ASSERT_EQ(hotKeyDefinitions().size(), 6u);
    EXPECT_EQ(QString(hotKeyDefinitions().front().identifier),
              QStringLiteral("regionalScreenshotsRecorder"));
    EXPECT_EQ(QString(hotKeyDefinitions().back().identifier),
              QStringLiteral("recordScreenRecorder"));
}

TEST(HotKeyTable, EachIdentifierLeadsToItsAction)
{
    const std::pair<const char*, HotKeyAction> rows[] = {
        {"regionalScreenshotsRecorder", HotKeyAction::RegionalScreenshots},
        {"delayScreenshotsRecorder", HotKeyAction::DelayScreenShot},
        {"screenshotWindowUnderCursorRecorder", HotKeyAction::ScreenshotWindowUnderCursor},
        {"screenshotPreviousAreaRecorder", HotKeyAction::ScreenshotPreviousArea},
        {"screenshotWindowUnderCursorSaveToPasteRecorder",
         HotKeyAction::ScreenshotWindowUnderCursorSaveToPaste},
        {"screenshotPreviousAreaSaveToPasteRecorder",
         HotKeyAction::ScreenshotPreviousAreaSaveToPaste},
        {"mapFromPasteRecorder", HotKeyAction::MapFromPaste},
        {"recordScreenRecorder", HotKeyAction::RecordScreenClicked},
    };
    for (const auto& [identifier, action] : rows) {
        const auto found = actionForHotKey(QString::fromLatin1(identifier), false);
        ASSERT_TRUE(found.has_value()) << identifier;
        EXPECT_EQ(*found, action) << identifier;
    }
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
