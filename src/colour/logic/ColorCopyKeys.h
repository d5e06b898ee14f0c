// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <Qt>

#include <optional>

// The keys that copy the readout's colour while a region is being chosen
// (before the annotation tool bar opens): R copies "R,G,B", H "#RRGGBB", Z
// the user's own format, Shift+Z asks for that format.
namespace colour {

enum class ColorKeyAction
{
    None,             // not a colour key, or one that does nothing now
    CopyText,         // clear the clipboard, put `text` on it if present, end the capture
    OpenFormatDialog, // end the capture first, then ask for the format
};

struct ColorKeyOutcome
{
    ColorKeyAction action = ColorKeyAction::None;
    std::optional<QString> text; // CopyText only; absent leaves the clipboard empty

    bool operator==(const ColorKeyOutcome&) const = default;
};

// key: a Qt::Key; modifiers: only Shift, Control, Alt and Meta count.
// customizeColorString: the stored format, absent until the user sets one.
// R and H act with any modifiers. Z copies the custom format with no
// modifier when a format is stored and a colour has been read; Z opens the
// dialog with Shift alone, or whenever no format is stored.
[[nodiscard]] ColorKeyOutcome colorKeyOutcome(int key, Qt::KeyboardModifiers modifiers,
                                              const std::optional<QString>& rgbOfColor,
                                              const std::optional<QString>& hexOfColor,
                                              const std::optional<QString>& customizeColorString);

// Replaces every "_R" by the first field of rgbOfColor, then every "_G" by
// the second, then every "_B" by the third, each over the result of the step
// before. A missing field counts as empty.
[[nodiscard]] QString customColorString(const QString& customizeColorString,
                                        const QString& rgbOfColor);

// The format dialog's texts: the message (its leading blanks centre the
// title in the dialog) and what the field always starts with.
[[nodiscard]] QString formatDialogMessage();
[[nodiscard]] QString formatDialogTemplate();
inline constexpr int kFormatDialogAccepted = 1000; // the first button, "OK"

// What the dialog stores: the text, when the first button closed it and the
// text holds all of "_R", "_G" and "_B"; otherwise nothing, silently.
[[nodiscard]] std::optional<QString> formatToStore(int dialogResult, const QString& text);

} // namespace colour
