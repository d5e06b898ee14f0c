// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <Qt>

#include <cstdint>

namespace platform::x11 {

// Between Qt's key names and X's. Pure arithmetic, no connection needed.

// The keysym a key produces without Shift (Qt::Key_A -> XK_a); 0 for keys
// that cannot be a hot key (modifiers alone, unknown keys).
[[nodiscard]] std::uint32_t keysymForQtKey(int qtKey);

// The X modifier mask of Qt modifiers: Shift, Control, Mod1 (Alt) and
// Mod4 (Super, Qt's Meta). Keypad and group switch do not take part.
[[nodiscard]] std::uint16_t xModifiersForQt(Qt::KeyboardModifiers modifiers);

// The masks a hot key ignores, because Caps Lock and Num Lock are toggles a
// user does not think of as part of a combination.
inline constexpr std::uint16_t kCapsLockMask = 0x02; // Lock
inline constexpr std::uint16_t kNumLockMask = 0x10;  // Mod2
// Shift, Lock, Control, Mod1 to Mod5: the key state bits of an event.
inline constexpr std::uint16_t kKeyStateMask = 0xff;

// An event's modifier state as a hot key sees it: keys only, without the
// lock toggles and the pointer buttons.
[[nodiscard]] inline std::uint16_t hotKeyState(std::uint16_t eventState)
{
    return static_cast<std::uint16_t>(eventState & kKeyStateMask & ~(kCapsLockMask | kNumLockMask));
}

} // namespace platform::x11
