// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/hotkeys/HotKeyTable.h"

#include "app/hotkeys/KeyComboCodec.h"

namespace app::hotkeys {

namespace {

using platform::KeyCombo;

constexpr Qt::KeyboardModifiers kOption = Qt::AltModifier;

const HotKeyDefinition kHotKeys[] = {
    {QLatin1StringView("regionalScreenshotsRecorder"), HotKeyAction::RegionalScreenshots,
     QT_TRANSLATE_NOOP("Localizable", "ScreenShot"), KeyCombo{Qt::Key_A, kOption}},
    {QLatin1StringView("mapFromPasteRecorder"), HotKeyAction::MapFromPaste,
     QT_TRANSLATE_NOOP("Localizable", "Pin From Pasteboard"), KeyCombo{Qt::Key_S, kOption}},
    {QLatin1StringView("delayScreenshotsRecorder"), HotKeyAction::DelayScreenShot,
     QT_TRANSLATE_NOOP("Localizable", "Delay ScreenShot"), KeyCombo{Qt::Key_D, kOption}},
    {QLatin1StringView("screenshotWindowUnderCursorRecorder"),
     HotKeyAction::ScreenshotWindowUnderCursor,
     QT_TRANSLATE_NOOP("Localizable", "Window Under the Pointer"), KeyCombo{Qt::Key_Z, kOption}},
    {QLatin1StringView("screenshotPreviousAreaRecorder"), HotKeyAction::ScreenshotPreviousArea,
     QT_TRANSLATE_NOOP("Localizable", "Previous Area"), KeyCombo{Qt::Key_X, kOption}},
    {QLatin1StringView("recordScreenRecorder"), HotKeyAction::RecordScreenClicked,
     QT_TRANSLATE_NOOP("Localizable", "Start/Stop Record Screen"), KeyCombo{Qt::Key_W, kOption}},
};

} // namespace

std::span<const HotKeyDefinition> hotKeyDefinitions()
{
    return kHotKeys;
}

const HotKeyDefinition* hotKeyDefinition(const QString& identifier)
{
    for (const HotKeyDefinition& definition : kHotKeys) {
        if (identifier == definition.identifier)
            return &definition;
    }
    return nullptr;
}

std::optional<HotKeyAction> actionForHotKey(const QString& identifier, bool recordingScreen)
{
    if (identifier == QLatin1StringView("screenshotWindowUnderCursorSaveToPasteRecorder"))
        return HotKeyAction::ScreenshotWindowUnderCursorSaveToPaste;
    if (identifier == QLatin1StringView("screenshotPreviousAreaSaveToPasteRecorder"))
        return HotKeyAction::ScreenshotPreviousAreaSaveToPaste;
    const HotKeyDefinition* definition = hotKeyDefinition(identifier);
    if (definition == nullptr)
        return std::nullopt;
    if (definition->action == HotKeyAction::RecordScreenClicked && recordingScreen)
        return HotKeyAction::StopRecorder;
    return definition->action;
}

QVariantMap defaultShortcut()
{
    QVariantMap table;
    for (const HotKeyDefinition& definition : kHotKeys)
        table.insert(QString(definition.identifier), toStoredForm(definition.defaultCombo));
    return table;
}

} // namespace app::hotkeys
