// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/HotKeyCenter.h"

#include <QKeySequence>
#include <QString>
#include <QVariant>
#include <QVariantMap>

#include <optional>

namespace app::hotkeys {

// A key combination as the `shortcut` preference stores it: a dictionary
// with the numbers "keyCode" (a Qt key) and "modifierFlags" (Qt modifiers).
[[nodiscard]] QVariantMap toStoredForm(const platform::KeyCombo& combo);
// Reads a stored combination back. Numbers may come as text or floating
// point (JSON), a missing number reads as 0, and modifiers other than
// Shift, Ctrl, Alt and Meta are dropped. Nothing when the value is no
// dictionary or names no key.
[[nodiscard]] std::optional<platform::KeyCombo> fromStoredForm(const QVariant& stored);

// The combination as a short-cut editor shows it, in the glyphs of Qt's
// macOS naming: Meta "⌃", Alt "⌥", Shift "⇧", Ctrl "⌘", in that order, then
// the key ("⌥A", "⇧⌘F5", "⌥Space"). Menus strip the glyphs again to find
// the key.
[[nodiscard]] QString glyphString(const platform::KeyCombo& combo);
// The key alone as glyphString() writes it.
[[nodiscard]] QString keyGlyph(int key);

// The combination for a QAction's shortcut.
[[nodiscard]] QKeySequence keySequenceOf(const platform::KeyCombo& combo);

// Whether an editor accepts `key` pressed with `flags` although its usual
// rule (some modifier must be held) is not met: only the function keys F1
// to F20, and only when `flags` hold every required modifier and nothing
// outside the allowed ones.
[[nodiscard]] bool shouldUnconditionallyAllowModifierFlags(Qt::KeyboardModifiers flags, int key,
                                                           Qt::KeyboardModifiers required,
                                                           Qt::KeyboardModifiers allowed);

// The modifiers a hot key can be made of.
inline constexpr Qt::KeyboardModifiers kHotKeyModifiers =
    Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;

} // namespace app::hotkeys
