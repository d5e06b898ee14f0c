// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/prefs/ShortcutRecorder.h"
#include "app/hotkeys/HotKeyTable.h"
#include "app/hotkeys/KeyComboCodec.h"
#include "app/hotkeys/ShortcutEditing.h"
#include "app/prefs/PreferencesWindow.h"
#include "platform/null/NullServices.h"
#include "settings/Defaults.h"
#include "settings/Keys.h"
#include "settings/MemoryStore.h"

#include <QApplication>
#include <QKeyEvent>
#include <QKeySequenceEdit>
#include <QLabel>
#include <QToolButton>

#include <gtest/gtest.h>

using app::ShortcutRecorder;
using platform::KeyCombo;

namespace {

struct Recorder : ::testing::Test
{
    ShortcutRecorder recorder;
    std::vector<std::string> events;

    Recorder()
    {
        QObject::connect(&recorder, &ShortcutRecorder::recordingChanged,
                         [this](bool on) { events.push_back(on ? "recording" : "not recording"); });
        QObject::connect(&recorder, &ShortcutRecorder::didEndRecording,
                         [this] { events.push_back("ended"); });
    }
    QKeySequenceEdit* edit() { return recorder.findChild<QKeySequenceEdit*>("keys"); }
    void focus()
    {
        QFocusEvent in(QEvent::FocusIn, Qt::TabFocusReason);
        QApplication::sendEvent(edit(), &in);
    }
    void type(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QKeyEvent press(QEvent::KeyPress, key, modifiers);
        QApplication::sendEvent(edit(), &press);
        QKeyEvent release(QEvent::KeyRelease, key, modifiers);
        QApplication::sendEvent(edit(), &release);
    }
};

} // namespace

TEST_F(Recorder, TakesOneCombinationAndGivesTheHotKeysBackFirst)
{
    focus();
    type(Qt::Key_Alt, Qt::AltModifier); // the modifier alone waits for its key
    EXPECT_FALSE(recorder.objectValue().has_value());
    type(Qt::Key_A, Qt::AltModifier);
    EXPECT_EQ(recorder.objectValue(), (KeyCombo{Qt::Key_A, Qt::AltModifier}));
    EXPECT_EQ(recorder.stringValue(), QStringLiteral("⌥A"));
    EXPECT_EQ(edit()->keySequence(), QKeySequence(QStringLiteral("Alt+A")));
    EXPECT_EQ(events, (std::vector<std::string>{"recording", "not recording", "ended"}));
    EXPECT_FALSE(recorder.isRecording());
}

TEST_F(Recorder, ABareKeyNeedsAModifierExceptF1ToF20)
{
    focus();
    type(Qt::Key_A);
    type(Qt::Key_F21);
    EXPECT_FALSE(recorder.objectValue().has_value());
    EXPECT_TRUE(recorder.isRecording());
    type(Qt::Key_F5);
    EXPECT_EQ(recorder.objectValue(), (KeyCombo{Qt::Key_F5, Qt::NoModifier}));

    // Only allowed modifiers count.
    recorder.setAllowedModifierFlags(Qt::AltModifier | Qt::ShiftModifier);
    focus();
    type(Qt::Key_B, Qt::ControlModifier);
    EXPECT_EQ(recorder.objectValue(), (KeyCombo{Qt::Key_F5, Qt::NoModifier}));
    type(Qt::Key_B, Qt::ShiftModifier | Qt::AltModifier);
    EXPECT_EQ(recorder.objectValue(), (KeyCombo{Qt::Key_B, Qt::ShiftModifier | Qt::AltModifier}));
}

TEST_F(Recorder, EscapeKeepsTheKeyWhileBackspaceAndTheClearButtonRemoveIt)
{
    recorder.setObjectValue(KeyCombo{Qt::Key_S, Qt::AltModifier});
    auto* clear = recorder.findChild<QToolButton*>("clear");
    ASSERT_NE(clear, nullptr);
    EXPECT_TRUE(clear->isEnabled());
    EXPECT_TRUE(events.empty()); // setting it is no recording

    focus();
    type(Qt::Key_Escape);
    EXPECT_EQ(recorder.objectValue(), (KeyCombo{Qt::Key_S, Qt::AltModifier}));
    EXPECT_EQ(std::count(events.begin(), events.end(), "ended"), 0);

    focus();
    type(Qt::Key_Backspace);
    EXPECT_FALSE(recorder.objectValue().has_value());
    EXPECT_EQ(std::count(events.begin(), events.end(), "ended"), 1);
    EXPECT_FALSE(clear->isEnabled());

    recorder.setObjectValue(KeyCombo{Qt::Key_S, Qt::AltModifier});
    clear->click();
    EXPECT_FALSE(recorder.objectValue().has_value());
    EXPECT_EQ(std::count(events.begin(), events.end(), "ended"), 2);
    EXPECT_TRUE(edit()->keySequence().isEmpty());
}

namespace {

class RecordingEditing final : public app::hotkeys::ShortcutEditing
{
public:
    std::vector<std::pair<QString, std::optional<KeyCombo>>> ended;
    std::vector<bool> recording;
    platform::HotKeyStatus answer = platform::HotKeyStatus::Registered;

    platform::HotKeyStatus
    shortcutRecorderDidEndRecording(const QString& identifier,
                                    const std::optional<KeyCombo>& combo) override
    {
        ended.emplace_back(identifier, combo);
        return answer;
    }
    void setRecording(bool on) override { recording.push_back(on); }
};

} // namespace

TEST(PreferencesHotKeys, TheSixEditorsShowTheStoredKeysAndReportWhatIsRecorded)
{
    settings::MemoryStore store;
    settings::Defaults defaults(store);
    QVariantMap table = app::hotkeys::defaultShortcut();
    table.remove(QStringLiteral("mapFromPasteRecorder"));
    defaults.setObject(settings::keys::shortcut, table);
    platform::null::MemoryAutostart autostart;
    app::PreferencesWindow window(defaults, autostart);
    RecordingEditing editing;
    window.setShortcutEditing(&editing);

    for (const auto& definition : app::hotkeys::hotKeyDefinitions()) {
        auto* recorder = window.findChild<ShortcutRecorder*>(QString(definition.identifier));
        ASSERT_NE(recorder, nullptr) << QString(definition.identifier).toStdString();
        if (definition.identifier == QLatin1StringView("mapFromPasteRecorder"))
            EXPECT_FALSE(recorder->objectValue().has_value());
        else
            EXPECT_EQ(recorder->objectValue(), definition.defaultCombo);
    }

    auto* delay = window.findChild<ShortcutRecorder*>(QStringLiteral("delayScreenshotsRecorder"));
    auto* keys = delay->findChild<QKeySequenceEdit*>("keys");
    QFocusEvent in(QEvent::FocusIn, Qt::MouseFocusReason);
    QApplication::sendEvent(keys, &in);
    editing.answer = platform::HotKeyStatus::HeldByAnotherProgram;
    QKeyEvent press(QEvent::KeyPress, Qt::Key_D, Qt::ControlModifier | Qt::ShiftModifier);
    QApplication::sendEvent(keys, &press);

    ASSERT_EQ(editing.ended.size(), 1u);
    EXPECT_EQ(editing.ended[0].first, QStringLiteral("delayScreenshotsRecorder"));
    EXPECT_EQ(editing.ended[0].second,
              (KeyCombo{Qt::Key_D, Qt::ControlModifier | Qt::ShiftModifier}));
    EXPECT_EQ(editing.recording, (std::vector<bool>{true, false}));
    auto* error = window.findChild<QLabel*>(QStringLiteral("hotKeyError"));
    ASSERT_NE(error, nullptr);
    EXPECT_FALSE(error->isHidden());
    EXPECT_TRUE(error->text().contains(QStringLiteral("⇧⌘D")));

    // The stored table changes behind the window: showing it again follows.
    defaults.setObject(settings::keys::shortcut, QVariantMap{});
    window.showShortcuts();
    EXPECT_FALSE(delay->objectValue().has_value());
}
