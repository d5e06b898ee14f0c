// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/HotKeyCenter.h"

#include <QLatin1StringView>
#include <QString>
#include <QVariantMap>

#include <optional>
#include <span>

namespace app::hotkeys {

// What a global hot key can start.
enum class HotKeyAction
{
    RegionalScreenshots,
    DelayScreenShot,
    ScreenshotWindowUnderCursor,
    ScreenshotPreviousArea,
    ScreenshotWindowUnderCursorSaveToPaste, // reserved: nothing creates it
    ScreenshotPreviousAreaSaveToPaste,      // reserved: nothing creates it
    MapFromPaste,
    RecordScreenClicked,
    StopRecorder,
};

// One of the six user-definable hot keys. The identifier is at once the key
// of its entry in the `shortcut` preference, the name of its editor in the
// Preferences window and the hot key's name in the centre.
struct HotKeyDefinition
{
    QLatin1StringView identifier;
    HotKeyAction action; // the record key stops a recording instead, see actionForHotKey()
    const char* title;   // the editor's caption, an English text to translate
    platform::KeyCombo defaultCombo;
};

// The six, in the order of the defaults and of the editors.
[[nodiscard]] std::span<const HotKeyDefinition> hotKeyDefinitions();
[[nodiscard]] const HotKeyDefinition* hotKeyDefinition(const QString& identifier);

// What a press of the hot key named `identifier` runs. The record key stops
// a recording (or the choice of its region) while one is under way. The
// two reserved "SaveToPaste" identifiers have their (empty) actions too.
// Nothing for an unknown identifier.
[[nodiscard]] std::optional<HotKeyAction> actionForHotKey(const QString& identifier,
                                                          bool recordingScreen);

// The `shortcut` dictionary of a first run: the six default combinations in
// their stored form.
[[nodiscard]] QVariantMap defaultShortcut();

} // namespace app::hotkeys
