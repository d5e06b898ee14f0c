// SPDX-License-Identifier: GPL-3.0-or-later
#include "FakeHotKeyCenter.h"

#include "app/hotkeys/HotKeyController.h"
#include "app/hotkeys/KeyComboCodec.h"
#include "platform/null/NullServices.h"
#include "settings/Defaults.h"
#include "settings/Keys.h"
#include "settings/MemoryStore.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <memory>

using namespace app::hotkeys;
using platform::KeyCombo;
namespace keys = settings::keys;

namespace {

const QString kRegion = QStringLiteral("regionalScreenshotsRecorder");
const QString kPin = QStringLiteral("mapFromPasteRecorder");
const QString kRecord = QStringLiteral("recordScreenRecorder");
const KeyCombo kAltA{Qt::Key_A, Qt::AltModifier};
const KeyCombo kAltS{Qt::Key_S, Qt::AltModifier};

struct HotKeyControllerTest : ::testing::Test
{
    settings::MemoryStore store;
    settings::Defaults defaults{store};
    FakeHotKeyCenter center;
    platform::null::RecordingNotifier notifier;
    std::unique_ptr<HotKeyController> controller = makeController();
    int menuRebuilds = 0;
    int loads = 0;

    std::unique_ptr<HotKeyController> makeController()
    {
        auto made = std::make_unique<HotKeyController>(defaults, center);
        made->setNotifier(&notifier);
        QObject::connect(made.get(), &HotKeyController::freshStatusItemMenu,
                         [this] { ++menuRebuilds; });
        QObject::connect(made.get(), &HotKeyController::shortcutsLoaded, [this] { ++loads; });
        return made;
    }
    // What the first-run values do right after the hot keys are set up.
    void finishFirstRun() { defaults.setObject(keys::installTime, QStringLiteral("1700000000")); }
    [[nodiscard]] QVariantMap stored() const { return defaults.dictionaryForKey(keys::shortcut); }
};

} // namespace

TEST_F(HotKeyControllerTest, FirstRunInstallsAndRegistersTheSixDefaults)
{
    controller->registerAllHotKey();
    EXPECT_EQ(stored(), defaultShortcut());
    ASSERT_EQ(center.registered.size(), 6u);
    for (const HotKeyDefinition& definition : hotKeyDefinitions())
        EXPECT_EQ(center.registered.at(QString(definition.identifier)), definition.defaultCombo);
    EXPECT_EQ(loads, 1);
    EXPECT_TRUE(notifier.sent.empty());
}

TEST_F(HotKeyControllerTest, AClearedShortcutStaysClearedOverRestartsUntilAReset)
{
    controller->registerAllHotKey();
    finishFirstRun();
    controller->shortcutRecorderDidEndRecording(kPin, std::nullopt);
    EXPECT_FALSE(center.isRegistered(kPin));
    EXPECT_FALSE(stored().contains(kPin));

    // The next start: the same table, less the cleared key.
    center.registered.clear();
    controller = makeController();
    controller->registerAllHotKey();
    EXPECT_EQ(stored().size(), 5);
    EXPECT_EQ(center.registered.size(), 5u);
    EXPECT_FALSE(center.isRegistered(kPin));

    // A reset removes installTime, and the defaults come back.
    defaults.removeObjectForKey(keys::installTime);
    controller->registerAllHotKey();
    EXPECT_EQ(stored(), defaultShortcut());
    EXPECT_TRUE(center.isRegistered(kPin));
}

TEST_F(HotKeyControllerTest, AnInstallTimeThatReadsAsZeroIsAFirstRunToo)
{
    defaults.setObject(keys::installTime, QStringLiteral("0"));
    defaults.setObject(keys::shortcut, QVariantMap{{kRegion, toStoredForm({Qt::Key_Q, {}})}});
    controller->registerAllHotKey();
    EXPECT_EQ(stored(), defaultShortcut());
}

TEST_F(HotKeyControllerTest, EveryStoredEntryIsRegisteredAndUnregisteredNotOnlyTheSix)
{
    finishFirstRun();
    const KeyCombo ctrlF9{Qt::Key_F9, Qt::ControlModifier};
    defaults.setObject(keys::shortcut,
                       QVariantMap{{kRegion, toStoredForm(kAltS)},
                                   {QStringLiteral("screenshotPreviousAreaSaveToPasteRecorder"),
                                    toStoredForm(ctrlF9)},
                                   {QStringLiteral("broken"), QStringLiteral("nonsense")}});
    controller->registerAllHotKey();
    EXPECT_EQ(center.registered.size(), 2u);
    EXPECT_EQ(center.registered.at(kRegion), kAltS);
    EXPECT_EQ(center.registered.at(QStringLiteral("screenshotPreviousAreaSaveToPasteRecorder")),
              ctrlF9);

    controller->unregisterAllHotKey();
    EXPECT_TRUE(center.registered.empty());
}

TEST_F(HotKeyControllerTest, ARecordedKeyReplacesTheGrabIsStoredAndRebuildsTheMenu)
{
    controller->registerAllHotKey();
    finishFirstRun();
    const KeyCombo shiftCtrl4{Qt::Key_4, Qt::ShiftModifier | Qt::ControlModifier};
    EXPECT_EQ(controller->shortcutRecorderDidEndRecording(kRegion, shiftCtrl4),
              platform::HotKeyStatus::Registered);
    EXPECT_EQ(center.registered.at(kRegion), shiftCtrl4);
    EXPECT_EQ(controller->shortcutFor(kRegion), shiftCtrl4);
    EXPECT_GT(store.syncCount(), 0);
    EXPECT_EQ(menuRebuilds, 1);

    // Clearing writes the table but leaves the menu as it is.
    controller->shortcutRecorderDidEndRecording(kRegion, std::nullopt);
    EXPECT_FALSE(center.isRegistered(kRegion));
    EXPECT_FALSE(controller->shortcutFor(kRegion).has_value());
    EXPECT_EQ(menuRebuilds, 1);
}

TEST_F(HotKeyControllerTest, AnEditorThatIsNoneOfTheSixChangesNothing)
{
    controller->registerAllHotKey();
    const QVariantMap before = stored();
    const int unregisters = center.unregisterCalls;
    controller->shortcutRecorderDidEndRecording(QStringLiteral("squareShortcut"),
                                                KeyCombo{Qt::Key_1, Qt::AltModifier});
    EXPECT_EQ(stored(), before);
    EXPECT_EQ(center.unregisterCalls, unregisters);
    EXPECT_EQ(menuRebuilds, 0);
}

TEST_F(HotKeyControllerTest, KeysAnotherProgramHoldsAreToldOnceAndKept)
{
    center.heldElsewhere = {kAltA, kAltS};
    testing::internal::CaptureStderr();
    controller->registerAllHotKey();
    const std::string err = testing::internal::GetCapturedStderr();
    ASSERT_EQ(notifier.sent.size(), 1u);
    EXPECT_TRUE(notifier.sent[0].body.contains(QStringLiteral("⌥A")));
    EXPECT_TRUE(notifier.sent[0].body.contains(QStringLiteral("⌥S")));
    EXPECT_NE(err.find("⌥A"), std::string::npos);
    EXPECT_EQ(center.registered.size(), 4u);
    // The table keeps them: they work once that program lets go.
    EXPECT_EQ(stored(), defaultShortcut());

    // Recording a held key: told again, stored all the same.
    finishFirstRun();
    testing::internal::CaptureStderr();
    EXPECT_EQ(controller->shortcutRecorderDidEndRecording(kRecord, kAltA),
              platform::HotKeyStatus::HeldByAnotherProgram);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("⌥A"), std::string::npos);
    EXPECT_EQ(notifier.sent.size(), 2u);
    EXPECT_EQ(controller->shortcutFor(kRecord), kAltA);
}

TEST_F(HotKeyControllerTest, APressRunsItsActionAndTheRecordKeyStopsARecording)
{
    std::vector<HotKeyAction> ran;
    for (auto action : {HotKeyAction::RegionalScreenshots, HotKeyAction::MapFromPaste,
                        HotKeyAction::RecordScreenClicked, HotKeyAction::StopRecorder})
        controller->setAction(action, [&ran, action] { ran.push_back(action); });
    controller->registerAllHotKey();

    center.press(kRegion);
    center.press(kPin);
    center.press(kRecord);
    bool recording = true;
    controller->setRecordingScreen([&recording] { return recording; });
    center.press(kRecord);
    // An action nobody handles is no failure.
    center.press(QStringLiteral("delayScreenshotsRecorder"));
    EXPECT_EQ(ran, (std::vector<HotKeyAction>{
                       HotKeyAction::RegionalScreenshots, HotKeyAction::MapFromPaste,
                       HotKeyAction::RecordScreenClicked, HotKeyAction::StopRecorder}));
}

TEST_F(HotKeyControllerTest, WhileAnEditorRecordsTheGrabsAreOff)
{
    controller->registerAllHotKey();
    finishFirstRun();
    controller->setRecording(true);
    EXPECT_TRUE(center.registered.empty());
    controller->setRecording(false);
    EXPECT_EQ(center.registered.size(), 6u);

    // Ending a recording with a key brings the others back and takes it.
    controller->setRecording(true);
    controller->shortcutRecorderDidEndRecording(kPin, KeyCombo{Qt::Key_P, Qt::MetaModifier});
    EXPECT_EQ(center.registered.size(), 6u);
    EXPECT_EQ(center.registered.at(kPin), (KeyCombo{Qt::Key_P, Qt::MetaModifier}));
}

TEST_F(HotKeyControllerTest, AHeldKeyIsTakenOnceTheOtherProgramLetsItGo)
{
    std::vector<HotKeyAction> ran;
    controller->setAction(HotKeyAction::RegionalScreenshots,
                          [&ran] { ran.push_back(HotKeyAction::RegionalScreenshots); });
    center.heldElsewhere = {kAltA};
    testing::internal::CaptureStderr();
    controller->registerAllHotKey();
    finishFirstRun();
    EXPECT_EQ(controller->hotKeyReport().value(kRegion), QStringLiteral("held"));

    // Still held: nothing changes, and nothing is told again.
    controller->retryHeldHotKeys();
    EXPECT_FALSE(center.isRegistered(kRegion));
    EXPECT_EQ(notifier.sent.size(), 1u);

    center.heldElsewhere.clear();
    controller->retryHeldHotKeys();
    const std::string err = testing::internal::GetCapturedStderr();
    EXPECT_EQ(controller->hotKeyReport().value(kRegion), QStringLiteral("registered"));
    EXPECT_NE(err.find("free again"), std::string::npos) << err;
    center.press(kRegion);
    EXPECT_EQ(ran, std::vector<HotKeyAction>{HotKeyAction::RegionalScreenshots});
    EXPECT_EQ(center.registered.size(), 6u);
}

TEST_F(HotKeyControllerTest, NoKeyIsTakenBackWhileAnEditorRecords)
{
    center.heldElsewhere = {kAltA};
    testing::internal::CaptureStderr();
    controller->registerAllHotKey();
    finishFirstRun();
    controller->setRecording(true);
    center.heldElsewhere.clear();
    controller->retryHeldHotKeys();
    (void)testing::internal::GetCapturedStderr();
    // The editor must see every key typed, the freed one too.
    EXPECT_TRUE(center.registered.empty());
    controller->setRecording(false);
    EXPECT_TRUE(center.isRegistered(kRegion));
}

TEST_F(HotKeyControllerTest, AKeyTypedWhileKelvoHoldsTheKeyboardRunsItsHotKeyFromTheEventLoop)
{
    int argc = 1;
    char name[] = "test";
    char* argv[] = {name, nullptr};
    std::unique_ptr<QCoreApplication> app;
    if (QCoreApplication::instance() == nullptr)
        app = std::make_unique<QCoreApplication>(argc, argv);

    center.heldElsewhere = {kAltS};
    controller->registerAllHotKey();
    int windowShots = 0;
    int pins = 0;
    controller->setAction(HotKeyAction::ScreenshotWindowUnderCursor, [&] { ++windowShots; });
    controller->setAction(HotKeyAction::MapFromPaste, [&] { ++pins; });

    const KeyCombo altZ{Qt::Key_Z, Qt::AltModifier};
    EXPECT_TRUE(controller->hotKeyTypedWhileKeyboardIsHeld(altZ));
    // Not inside the holder's key handling: the action may end its window.
    EXPECT_EQ(windowShots, 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(windowShots, 1);

    // Other modifiers, or none, are other keys; a key another program holds
    // is no hot key of Kelvo's.
    EXPECT_FALSE(controller->hotKeyTypedWhileKeyboardIsHeld({Qt::Key_Z, Qt::NoModifier}));
    EXPECT_FALSE(controller->hotKeyTypedWhileKeyboardIsHeld(
        {Qt::Key_Z, Qt::AltModifier | Qt::ShiftModifier}));
    EXPECT_FALSE(controller->hotKeyTypedWhileKeyboardIsHeld(kAltS));
    // An editor recording a new short cut takes every key itself.
    controller->setRecording(true);
    EXPECT_FALSE(controller->hotKeyTypedWhileKeyboardIsHeld(altZ));
    controller->setRecording(false);
    // A changed key counts from the change on.
    const KeyCombo ctrlZ{Qt::Key_Z, Qt::ControlModifier};
    controller->shortcutRecorderDidEndRecording(
        QStringLiteral("screenshotWindowUnderCursorRecorder"), ctrlZ);
    EXPECT_FALSE(controller->hotKeyTypedWhileKeyboardIsHeld(altZ));
    EXPECT_TRUE(controller->hotKeyTypedWhileKeyboardIsHeld(ctrlZ));
    QCoreApplication::processEvents();
    EXPECT_EQ(windowShots, 2);
    EXPECT_EQ(pins, 0);
}
