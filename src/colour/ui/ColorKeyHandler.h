// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "colour/logic/ColorCopyKeys.h"
#include "colour/logic/ColorReadoutState.h"

#include <functional>
#include <optional>

class QClipboard;
class QWidget;

namespace colour {

// What the capture lends the copy keys.
struct ColorKeyHost
{
    // Ends the capture (all overlays). Called after the copy, and before
    // the format dialog is asked for.
    std::function<void()> cancelCapture;
    // Stores the new `customizeColorString` and syncs the preferences.
    std::function<void(const QString&)> storeCustomizeColorString;
    // Runs the format dialog; defaults to CustomColorFormatDialog::ask().
    // Tests put a scripted answer here.
    std::function<std::optional<QString>()> askFormat;
    // Runs a task from the event loop once the key's handling has returned
    // and the capture's ending has been delivered. The dialog's own event
    // loop must never run inside the overlay's key handling: the ending
    // tears down what that handling is still using. Defaults to a
    // zero-time timer on the application.
    std::function<void(std::function<void()>)> runAfterCapture;
};

// Call from the overlay's key handling for a key press while the annotation
// tool bar is not open. key and modifiers as Qt gives them;
// customizeColorString is the stored preference (absent when never set).
// Returns true when the key was a colour key that acted (the capture is then
// over, and a format dialog, if any, is still to come); false leaves the key
// to the overlay's other handlers.
bool handleColorKey(int key, Qt::KeyboardModifiers modifiers, const ColorReadoutState& state,
                    const std::optional<QString>& customizeColorString, QClipboard& clipboard,
                    const ColorKeyHost& host);

} // namespace colour
