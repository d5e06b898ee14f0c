// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/HotKeyCenter.h"

#include <QString>

#include <optional>

namespace app::hotkeys {

// What the short-cut editors of the Preferences window ask of the hot keys.
class ShortcutEditing
{
public:
    virtual ~ShortcutEditing() = default;
    // An editor named `identifier` ended recording with `combo`, or was
    // cleared (nothing). Answers whether the new key could be taken.
    virtual platform::HotKeyStatus
    shortcutRecorderDidEndRecording(const QString& identifier,
                                    const std::optional<platform::KeyCombo>& combo) = 0;
    // While an editor records, the hot keys let their keys through to it.
    virtual void setRecording(bool recording) = 0;
};

} // namespace app::hotkeys
