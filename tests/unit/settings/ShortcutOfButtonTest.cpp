// SPDX-License-Identifier: GPL-3.0-or-later
// The live tool short cuts and the preference they are stored under.
#include "settings/ShortcutOfButton.h"
#include "settings/Defaults.h"
#include "settings/Keys.h"
#include "settings/MemoryStore.h"
#include "settings/Startup.h"

#include <gtest/gtest.h>

using namespace settings;

TEST(ShortcutOfButton, AChangedShortCutLandsInTheLiveTableAndKeepsTheOtherTwelve)
{
    // A first run stores no table: the live one is the defaults.
    MemoryStore store;
    Defaults defaults(store);
    ShortcutOfButton live(defaults);
    live.load();
    ASSERT_EQ(live.table(), defaultShortcutOfButton());

    defaults.setObject(keys::saveShortcut, QStringLiteral("K"));
    EXPECT_EQ(live.table().value(QStringLiteral("saveShortcut")), QVariant(QStringLiteral("K")));
    // What is stored is the whole live table, so the next start reads all
    // thirteen back, not only the one that changed.
    const QVariantMap stored = defaults.dictionaryForKey(keys::shortcutOfButton);
    EXPECT_EQ(stored.size(), 13);
    EXPECT_EQ(stored, live.table());
    ShortcutOfButton nextStart(defaults);
    nextStart.load();
    EXPECT_EQ(nextStart.table().value(QStringLiteral("copyToPasteShortcut")),
              QVariant(QString(QChar(0x21A9))));
    EXPECT_EQ(nextStart.table().value(QStringLiteral("saveShortcut")),
              QVariant(QStringLiteral("K")));

    // A second change builds on the live table, not on a stale copy.
    defaults.setObject(keys::squareShortcut, QStringLiteral("Q"));
    EXPECT_EQ(
        defaults.dictionaryForKey(keys::shortcutOfButton).value(QStringLiteral("saveShortcut")),
        QVariant(QStringLiteral("K")));
    EXPECT_EQ(live.table().value(QStringLiteral("squareShortcut")), QVariant(QStringLiteral("Q")));

    // Keys that merely end alike, and the hot key table, are no tool short cuts.
    defaults.setObject(keys::shortcut, QVariantMap{{QStringLiteral("x"), 1}});
    defaults.setObject(QStringLiteral("mysteryShortcut"), QStringLiteral("M"));
    EXPECT_EQ(live.table().size(), 13);
    EXPECT_FALSE(live.table().contains(QStringLiteral("shortcut")));

    // A removed short cut leaves the table.
    defaults.removeObjectForKey(keys::lineShortcut);
    EXPECT_FALSE(live.table().contains(QStringLiteral("lineShortcut")));
    EXPECT_EQ(defaults.dictionaryForKey(keys::shortcutOfButton).size(), 12);
}
