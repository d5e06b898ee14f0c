// SPDX-License-Identifier: GPL-3.0-or-later
#include "toolbar/logic/ToolRegistry.h"
#include "settings/Defaults.h"
#include "settings/MemoryStore.h"
#include "settings/Schema.h"
#include "settings/Startup.h"
#include "toolbar/logic/ButtonBox.h"
#include "toolbar/logic/DataOfUsers.h"
#include "toolbar/logic/ToolTraits.h"

#include <gtest/gtest.h>

#include <set>

namespace toolbar {
namespace {

// The key event that types a short cut's text: space and Return for the two
// characters that stand for them, otherwise the character in lower case.
struct TypedKey
{
    int key;
    QString text;
};

TypedKey keyTyping(char16_t shortcut)
{
    if (shortcut == kSpaceKeyText)
        return {Qt::Key_Space, QStringLiteral(" ")};
    if (shortcut == kReturnKeyText)
        return {Qt::Key_Return, QStringLiteral("\r")};
    const QString text = QString(QChar(shortcut)).toLower();
    return {text.at(0).toUpper().unicode(), text};
}

TEST(ToolRegistry, NumbersNamesAndShortCutsAreEachUnique)
{
    std::set<int> numbers;
    std::set<QString> names, icons, shortcutKeys, defaults;
    for (std::size_t i = 0; i < kTools.size(); ++i) {
        const ToolEntry& entry = kTools[i];
        // tool(id) indexes the table by number.
        EXPECT_EQ(entry.number(), static_cast<int>(i)) << entry.name.data();
        EXPECT_TRUE(numbers.insert(entry.number()).second);
        EXPECT_FALSE(entry.name.isEmpty());
        EXPECT_TRUE(names.insert(QString(entry.name)).second) << entry.name.data();
        EXPECT_TRUE(icons.insert(QString(entry.iconName)).second) << entry.name.data();
        EXPECT_EQ(toolNamed(QString(entry.name)), &entry);
        if (entry.shortcutKey.isEmpty()) {
            EXPECT_EQ(entry.defaultShortcut, 0) << entry.name.data();
            continue;
        }
        EXPECT_TRUE(entry.shortcutKey.endsWith(QLatin1StringView("Shortcut")));
        EXPECT_TRUE(shortcutKeys.insert(QString(entry.shortcutKey)).second)
            << entry.shortcutKey.data();
        // Two tools with one default key would leave the later unreachable.
        EXPECT_NE(entry.defaultShortcut, 0) << entry.name.data();
        EXPECT_TRUE(defaults.insert(entry.defaultShortcutText()).second) << entry.name.data();
    }
    EXPECT_EQ(toolNamed(u"pencil"), nullptr);
    EXPECT_EQ(toolNamed(u""), nullptr);
}

TEST(ToolRegistry, EveryButtonAndEveryRememberedToolHasItsEntry)
{
    const QStringList buttons = buttonNames();
    EXPECT_EQ(buttons.size(), 15);
    for (const QString& name : buttons) {
        const ToolEntry* entry = toolNamed(name);
        ASSERT_NE(entry, nullptr) << qPrintable(name);
        EXPECT_TRUE(entry->can(can::ShowButton));
        EXPECT_STRNE(entry->tip, "") << qPrintable(name);
        EXPECT_FALSE(entry->iconName.isEmpty());
    }
    EXPECT_EQ(buttons.first(), QStringLiteral("square"));

    const QVariantMap remembered = DataOfUsers::defaultData();
    EXPECT_EQ(DataOfUsers::toolNames(), buttons.mid(0, 9));
    for (const QString& name : DataOfUsers::toolNames()) {
        const ToolEntry* entry = toolNamed(name);
        ASSERT_NE(entry, nullptr);
        EXPECT_TRUE(entry->can(can::Draw));
        EXPECT_GT(entry->defaultSize, 0);
        EXPECT_EQ(remembered.value(name).toMap().value(QStringLiteral("size")).toInt(),
                  entry->defaultSize);
    }
    EXPECT_EQ(remembered.size(), 9);
}

TEST(ToolRegistry, ShortCutDefaultsRoundTripThroughTheSchemaToTheirTools)
{
    settings::MemoryStore store;
    settings::Defaults defaults{store};
    settings::StartContext context;
    context.downloadsFolder = QStringLiteral("/tmp");
    ASSERT_TRUE(settings::installFirstRunValues(defaults, context));

    // The live table a first start builds, from the stored defaults.
    const QVariantMap live = settings::shortcutOfButton(defaults);
    int withShortcut = 0;
    for (const ToolEntry& entry : kTools) {
        if (entry.shortcutKey.isEmpty())
            continue;
        ++withShortcut;
        const settings::KeySpec* spec = settings::findKey(QString(entry.shortcutKey));
        ASSERT_NE(spec, nullptr) << entry.shortcutKey.data();
        EXPECT_EQ(spec->initial, settings::Initial::FirstRun);
        EXPECT_EQ(defaults.stringForKey(entry.shortcutKey), entry.defaultShortcutText());
        EXPECT_EQ(live.value(QString(entry.shortcutKey)).toString(), entry.defaultShortcutText());

        // Typing the default key chooses exactly this tool.
        const TypedKey typed = keyTyping(entry.defaultShortcut);
        EXPECT_EQ(chooseByShortcut(typed.key, typed.text, live, false, false), &entry)
            << entry.name.data();
    }
    EXPECT_EQ(withShortcut, 13);
    EXPECT_EQ(static_cast<int>(settings::toolShortcuts().size()), withShortcut);
}

TEST(ToolRegistry, ShortCutsAreRefusedByWhatTheToolCanDo)
{
    const QVariantMap live = settings::defaultShortcutOfButton();
    const auto choose = [&](int key, const QString& text, bool scrolling, bool window) {
        const ToolEntry* entry = chooseByShortcut(key, text, live, scrolling, window);
        return entry != nullptr ? QString(entry->name) : QString();
    };
    // While a scrolling capture runs only saving and copying act.
    EXPECT_EQ(choose(Qt::Key_4, QStringLiteral("4"), true, false), QString());
    EXPECT_EQ(choose(Qt::Key_T, QStringLiteral("t"), true, false), QString());
    EXPECT_EQ(choose(Qt::Key_S, QStringLiteral("s"), true, false), QString());
    EXPECT_EQ(choose(Qt::Key_Space, QStringLiteral(" "), true, false), QStringLiteral("save"));
    EXPECT_EQ(choose(Qt::Key_Return, QStringLiteral("\r"), true, false),
              QStringLiteral("copyToPaste"));
    // A window cannot scroll; the other tools do not care.
    EXPECT_EQ(choose(Qt::Key_S, QStringLiteral("s"), false, true), QString());
    EXPECT_EQ(choose(Qt::Key_S, QStringLiteral("s"), false, false),
              QStringLiteral("scrollScreenshot"));
    EXPECT_EQ(choose(Qt::Key_T, QStringLiteral("t"), false, true), QStringLiteral("map"));

    // Only the drawing tools end a pending move of the selection.
    for (const ToolEntry& entry : kTools)
        EXPECT_EQ(entry.can(can::EndPendingMove), entry.can(can::Draw)) << entry.name.data();
}

TEST(ToolRegistry, TheOverlaySeesEachDrawingToolsStrokesByTheirTraits)
{
    using overlay::StrokeTraits;
    const auto traits = [](ToolId id) { return strokeTraitsOf(tool(id)); };
    // Text boxes and notes hold text; the mosaic paints sparingly; the
    // mosaic and the highlight renew the overlay at the release.
    EXPECT_EQ(traits(ToolId::Text), (StrokeTraits{.holdsText = true}));
    EXPECT_EQ(traits(ToolId::Note), (StrokeTraits{.holdsText = true}));
    EXPECT_EQ(traits(ToolId::Mosaic),
              (StrokeTraits{.paintsSparingly = true, .repaintsOnRelease = true}));
    EXPECT_EQ(traits(ToolId::Highlight), (StrokeTraits{.repaintsOnRelease = true}));
    for (ToolId plain :
         {ToolId::Square, ToolId::Ellipse, ToolId::Line, ToolId::Arrow, ToolId::PencilPen})
        EXPECT_EQ(traits(plain), StrokeTraits{}) << tool(plain).name.data();
}

TEST(ToolRegistry, OnAClashTheEarlierToolWinsAndARefusedOneHidesTheLater)
{
    QVariantMap live = settings::defaultShortcutOfButton();
    live.insert(QString(settings::keys::lineShortcut), QStringLiteral("Q"));
    live.insert(QString(settings::keys::arrowShortcut), QStringLiteral("Q"));
    EXPECT_EQ(toolForShortcut(QStringLiteral("Q"), live), &tool(ToolId::Line));
    // Letters are matched in upper case.
    EXPECT_EQ(chooseByShortcut(Qt::Key_Q, QStringLiteral("q"), live, false, false),
              &tool(ToolId::Line));

    // The scrolling capture's key also held by save: during a scroll the
    // key does nothing rather than saving.
    live.insert(QString(settings::keys::scrollScreenshotShortcut), QString(QChar(kSpaceKeyText)));
    EXPECT_EQ(chooseByShortcut(Qt::Key_Space, QStringLiteral(" "), live, true, false), nullptr);
    EXPECT_EQ(chooseByShortcut(Qt::Key_Space, QStringLiteral(" "), live, false, false),
              &tool(ToolId::ScrollScreenshot));
    // An unknown key and a key that types nothing choose nothing.
    EXPECT_EQ(chooseByShortcut(Qt::Key_F1, QString(), live, false, false), nullptr);
    EXPECT_EQ(chooseByShortcut(Qt::Key_X, QStringLiteral("x"), live, false, false), nullptr);
}

} // namespace
} // namespace toolbar
