// SPDX-License-Identifier: GPL-3.0-or-later
// The table from a short cut's stored name to its key, and the two global
// hot keys a scrolling capture makes of the save and copy short cuts.
#include "toolbar/logic/KeyNames.h"
#include "settings/Defaults.h"
#include "settings/Keys.h"
#include "settings/MemoryStore.h"
#include "toolbar/logic/ScrollHotKeys.h"
#include "toolbar/logic/ToolRegistry.h"
#include "unit/hotkeys/FakeHotKeyCenter.h"

#include <gtest/gtest.h>

#include <vector>

namespace toolbar {
namespace {

constexpr int kKeypad = static_cast<int>(Qt::KeypadModifier);

TEST(KeyNames, LettersDigitsAndFunctionKeysNameTheirOwnKeys)
{
    // The table lists them in the keyboard's scan order, not the
    // alphabet's; each must still land on its own key.
    for (char c = 'a'; c <= 'z'; ++c)
        EXPECT_EQ(keyCodeFormKeyString(QString(QLatin1Char(c))), Qt::Key_A + (c - 'a')) << c;
    for (char c = '0'; c <= '9'; ++c)
        EXPECT_EQ(keyCodeFormKeyString(QString(QLatin1Char(c))), Qt::Key_0 + (c - '0')) << c;
    for (int n = 1; n <= 15; ++n)
        EXPECT_EQ(keyCodeFormKeyString(QStringLiteral("F%1").arg(n)), Qt::Key_F1 + n - 1) << n;

    const std::vector<std::pair<QString, int>> named{
        {QStringLiteral("="), Qt::Key_Equal},        {QStringLiteral("-"), Qt::Key_Minus},
        {QStringLiteral("]"), Qt::Key_BracketRight}, {QStringLiteral("["), Qt::Key_BracketLeft},
        {QStringLiteral("'"), Qt::Key_Apostrophe},   {QStringLiteral(";"), Qt::Key_Semicolon},
        {QStringLiteral("\\"), Qt::Key_Backslash},   {QStringLiteral(","), Qt::Key_Comma},
        {QStringLiteral("/"), Qt::Key_Slash},        {QStringLiteral("."), Qt::Key_Period},
        {QStringLiteral("`"), Qt::Key_QuoteLeft},    {QStringLiteral("TAB"), Qt::Key_Tab},
        {QStringLiteral("ESCAPE"), Qt::Key_Escape},  {QStringLiteral("HELP"), Qt::Key_Help},
        {QStringLiteral("HOME"), Qt::Key_Home},      {QStringLiteral("END"), Qt::Key_End},
        {QStringLiteral("PGUP"), Qt::Key_PageUp},    {QStringLiteral("PGDN"), Qt::Key_PageDown},
        {QStringLiteral("LEFT"), Qt::Key_Left},      {QStringLiteral("RIGHT"), Qt::Key_Right},
        {QStringLiteral("UP"), Qt::Key_Up},          {QStringLiteral("DOWN"), Qt::Key_Down},
    };
    for (const auto& [name, key] : named)
        EXPECT_EQ(keyCodeFormKeyString(name), key) << name.toStdString();
}

TEST(KeyNames, TheFirstRowOfANameWinsSoTheKeypadIsReachedOnlyByItsOwnNames)
{
    // Names the keypad shares with the main keyboard mean the main one.
    for (const char* name : {"0", "1", "5", "9", ".", "/", "="})
        EXPECT_EQ(keyCodeFormKeyString(QString::fromLatin1(name)) & kKeypad, 0) << name;
    EXPECT_EQ(keyCodeFormKeyString(u"ENTER"), Qt::Key_Enter);
    // "DELETE" is the key left of the backspace's place, not forward delete.
    EXPECT_EQ(keyCodeFormKeyString(u"DELETE"), Qt::Key_Backspace);
    // Only these three names are the keypad's alone.
    EXPECT_EQ(keyCodeFormKeyString(u"*"), Qt::Key_Asterisk | kKeypad);
    EXPECT_EQ(keyCodeFormKeyString(u"+"), Qt::Key_Plus | kKeypad);
    EXPECT_EQ(keyCodeFormKeyString(u"CLEAR"), Qt::Key_Clear | kKeypad);
}

TEST(KeyNames, StoredShortCutsReachTheTableAsTheyStand)
{
    // Space and Return are stored as the characters their buttons show.
    EXPECT_EQ(keyCodeFormKeyString(tool(ToolId::Save).defaultShortcutText()), Qt::Key_Space);
    EXPECT_EQ(keyCodeFormKeyString(tool(ToolId::CopyToPaste).defaultShortcutText()),
              Qt::Key_Return);
    EXPECT_EQ(keyCodeFormKeyString(tool(ToolId::Square).defaultShortcutText()), Qt::Key_1);
    // Letters are stored in upper case and the table knows them in lower
    // case only: no key.
    EXPECT_EQ(keyCodeFormKeyString(tool(ToolId::Map).defaultShortcutText()), 0);
    for (const char* name : {"A", "S", "Z", "f1", "Tab", "escape", "", " ", "F16", "F1 ", "ab"})
        EXPECT_EQ(keyCodeFormKeyString(QString::fromLatin1(name)), 0) << '"' << name << '"';
}

// The two short cuts as a user stored them (the defaults when empty).
class ScrollHotKeysTest : public ::testing::Test
{
protected:
    void store(const QString& save, const QString& copy)
    {
        defaults.setObject(QString(settings::keys::shortcutOfButton),
                           QVariantMap{{QString(settings::keys::saveShortcut), save},
                                       {QString(settings::keys::copyToPasteShortcut), copy}});
    }

    settings::MemoryStore memory;
    settings::Defaults defaults{memory};
    FakeHotKeyCenter center;
    std::vector<ScrollHotKeys::Action> actions;
    ScrollHotKeys keys{center, defaults,
                       [this](ScrollHotKeys::Action action) { actions.push_back(action); }};
};

using Action = ScrollHotKeys::Action;

TEST_F(ScrollHotKeysTest, TheDefaultsMakeSpaceSaveAndReturnCopyWithoutModifiers)
{
    keys.costomHotKey(true);
    ASSERT_EQ(center.registered.size(), 2u);
    EXPECT_EQ(center.registered.at(ScrollHotKeys::identifierOf(1)),
              (platform::KeyCombo{Qt::Key_Space, {}}));
    EXPECT_EQ(center.registered.at(ScrollHotKeys::identifierOf(2)),
              (platform::KeyCombo{Qt::Key_Return, {}}));

    center.press(ScrollHotKeys::identifierOf(1));
    center.press(ScrollHotKeys::identifierOf(2));
    // The cancel row stands ready although nothing registers it; numbers
    // past the table and other identifiers do nothing.
    keys.hotKeyHandler(ScrollHotKeys::identifierOf(0));
    keys.hotKeyHandler(ScrollHotKeys::identifierOf(3));
    keys.hotKeyHandler(ScrollHotKeys::identifierOf(-1));
    keys.hotKeyHandler(QStringLiteral("regionalScreenshots"));
    EXPECT_EQ(actions, (std::vector{Action::Save, Action::CopyToPaste, Action::Cancel}));
}

TEST_F(ScrollHotKeysTest, OnlyAScrollingCaptureRegistersKeysAndANameTheTableLacksRegistersNone)
{
    keys.costomHotKey(false);
    EXPECT_TRUE(center.registered.empty());
    EXPECT_TRUE(keys.handlerInstalled());

    store(QStringLiteral("F1"), QStringLiteral("C"));
    keys.costomHotKey(true);
    EXPECT_EQ(center.registered.at(ScrollHotKeys::identifierOf(1)),
              (platform::KeyCombo{Qt::Key_F1, {}}));
    EXPECT_FALSE(center.isRegistered(ScrollHotKeys::identifierOf(2)));
    EXPECT_FALSE(keys.copyToPasteHotKeyRegistered());

    // A keypad name keeps the keypad in its combination.
    store(QStringLiteral("*"), QStringLiteral("1"));
    keys.costomHotKey(true);
    EXPECT_EQ(center.registered.at(ScrollHotKeys::identifierOf(1)),
              (platform::KeyCombo{Qt::Key_Asterisk, Qt::KeypadModifier}));
    EXPECT_EQ(center.registered.at(ScrollHotKeys::identifierOf(2)),
              (platform::KeyCombo{Qt::Key_1, {}}));

    // Another program's key stays unregistered and is not let go later.
    center.heldElsewhere.append(platform::KeyCombo{Qt::Key_1, {}});
    keys.costomHotKey(true);
    EXPECT_TRUE(keys.saveHotKeyRegistered());
    EXPECT_FALSE(keys.copyToPasteHotKeyRegistered());
    EXPECT_EQ(center.registered.size(), 1u);
}

TEST_F(ScrollHotKeysTest, UnregisteringTwiceLetsGoOnceAndAPressQueuedBeforeFindsNothing)
{
    keys.costomHotKey(true);
    keys.costomHotKey(true); // twice: still one grab each
    EXPECT_EQ(center.registered.size(), 2u);

    keys.unregisterAllHotKey();
    EXPECT_TRUE(center.registered.empty());
    EXPECT_FALSE(keys.handlerInstalled());
    const int calls = center.unregisterCalls;
    keys.unregisterAllHotKey();
    EXPECT_EQ(center.unregisterCalls, calls);

    center.press(ScrollHotKeys::identifierOf(1));
    EXPECT_TRUE(actions.empty());
}

// A centre that queues its presses, as the window system's does: it keeps
// a copy of the handler as it was at the press.
class QueueingCenter final : public platform::HotKeyCenter
{
public:
    void setHandler(Handler handler) override { m_handler = std::move(handler); }
    platform::HotKeyStatus registerHotKey(const QString&, const platform::KeyCombo&) override
    {
        return platform::HotKeyStatus::Registered;
    }
    bool unregisterHotKey(const QString&) override { return true; }
    bool isRegistered(const QString&) const override { return true; }
    Handler pressLater() const { return m_handler; }

private:
    Handler m_handler;
};

TEST(ScrollHotKeysEnd, APressHandedOnAfterTheCaptureLetGoDoesNothing)
{
    settings::MemoryStore memory;
    settings::Defaults defaults{memory};
    QueueingCenter center;
    int presses = 0;
    platform::HotKeyCenter::Handler queued;
    {
        ScrollHotKeys keys(center, defaults, [&](ScrollHotKeys::Action) { ++presses; });
        keys.costomHotKey(true);
        queued = center.pressLater();
        ASSERT_TRUE(queued);
        queued(ScrollHotKeys::identifierOf(1));
        EXPECT_EQ(presses, 1);
        keys.unregisterAllHotKey();
        queued(ScrollHotKeys::identifierOf(1));
        EXPECT_EQ(presses, 1);
        keys.costomHotKey(true);
        queued = center.pressLater();
    }
    // The keys are gone with the capture's controller.
    queued(ScrollHotKeys::identifierOf(1));
    EXPECT_EQ(presses, 1);
}

} // namespace
} // namespace toolbar
