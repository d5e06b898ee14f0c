// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// Messages the overlay posts to the mark-up's tool bar on the message bus,
// beside the bus's own names.
namespace overlay::messages {

// A move or resize of the selection starts: the tool bar steps aside.
inline constexpr const char* HiddenButtonOfClipToolbarWindow = "hiddenButtonOfClipToolbarWindow";
// It ended: the tool bar comes back under the selection.
inline constexpr const char* UnhiddenButtonOfClipToolbarWindow =
    "unhiddenButtonOfClipToolbarWindow";

} // namespace overlay::messages
