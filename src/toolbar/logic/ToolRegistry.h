// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/Keys.h"

#include <QLatin1StringView>
#include <QString>
#include <QVariantMap>

#include <array>
#include <optional>

// The one table of the annotation tools and the tool bar's buttons. Every
// list that needs a tool's identity (the bar's buttons, their icons and
// tips, the remembered settings, the short cuts and their defaults, what a
// press or a key does with the tool) reads it here. It is constexpr and
// header-only so that the preference schema can take the short-cut
// defaults from it without linking the tool bar.
namespace toolbar {

// A tool's number: for the nine drawing tools also the "type" of the
// strokes it makes. The order is the order of the short-cut lookup (when
// two short cuts hold the same key, the earlier tool wins).
enum class ToolId
{
    Square = 0,
    Ellipse = 1,
    Line = 2,
    Arrow = 3,
    PencilPen = 4,
    Mosaic = 5,
    Text = 6,
    Note = 7,
    Highlight = 8,
    Map = 9,
    ScrollScreenshot = 10,
    Cancel = 11,
    Save = 12,
    CopyToPaste = 13,
    Undo = 14,
};

// What a tool can do; the overlay, the keys and the bar ask these rather
// than the tool's name or number.
namespace can {
inline constexpr unsigned Draw = 1U << 0;             // a press in the selection makes a stroke
inline constexpr unsigned RememberSettings = 1U << 1; // size and colour kept in DataOfUsers
inline constexpr unsigned ShowButton = 1U << 2;       // has a button on the tool bar
inline constexpr unsigned FinishCapture = 1U << 3;    // its button ends the capture
// Its short cut does nothing while a scrolling capture runs.
inline constexpr unsigned IgnoredWhileScrolling = 1U << 4;
// Chosen by key, it ends a pending move of the selection.
inline constexpr unsigned EndPendingMove = 1U << 5;
// Refused for a window selection: it needs a region.
inline constexpr unsigned NeedRegion = 1U << 6;
// Its strokes hold text (a text box, a note): a press elsewhere in the
// selection ends the editing, and a new stroke opens its text view.
inline constexpr unsigned TypeText = 1U << 7;
// Its strokes are costly to paint: a drag repaints on every third event.
inline constexpr unsigned PaintSparingly = 1U << 8;
// Its strokes renew the tracking areas and the overlay at the release.
inline constexpr unsigned RepaintOnRelease = 1U << 9;
} // namespace can

struct ToolEntry
{
    ToolId id;
    QLatin1StringView name;        // the established tool name ("pencilPen", ...)
    QLatin1StringView shortcutKey; // the preference of its short cut; empty for none
    char16_t defaultShortcut;      // the one character a first start gives it; 0 for none
    int defaultSize;               // the size a first start remembers; 0 for no settings
    QLatin1StringView iconName;
    const char* tip; // English; the bar shows it localized
    unsigned capabilities;

    [[nodiscard]] constexpr int number() const { return static_cast<int>(id); }
    [[nodiscard]] constexpr bool can(unsigned capability) const
    {
        return (capabilities & capability) == capability;
    }
    [[nodiscard]] QString defaultShortcutText() const
    {
        return defaultShortcut == 0 ? QString() : QString(QChar(defaultShortcut));
    }
};

// How the short-cut table writes the two keys that type no visible
// character: the characters their buttons show.
inline constexpr char16_t kSpaceKeyText = u'\u3129';  // "ㄩ"
inline constexpr char16_t kReturnKeyText = u'\u21A9'; // "↩"

namespace detail {
namespace k = settings::keys;
inline constexpr unsigned kDrawing = can::Draw | can::RememberSettings | can::ShowButton |
                                     can::IgnoredWhileScrolling | can::EndPendingMove;
inline constexpr unsigned kFinishing = can::ShowButton | can::FinishCapture;
} // namespace detail

// In ToolId order.
inline constexpr std::array<ToolEntry, 15> kTools{{
    {ToolId::Square, QLatin1StringView("square"), detail::k::squareShortcut, u'1', 3,
     QLatin1StringView("square"), "Rectangle", detail::kDrawing},
    {ToolId::Ellipse, QLatin1StringView("ellipse"), detail::k::ellipseShortcut, u'2', 3,
     QLatin1StringView("ellipse"), "Ellipse", detail::kDrawing},
    {ToolId::Line, QLatin1StringView("line"), detail::k::lineShortcut, u'3', 16,
     QLatin1StringView("line"), "Line", detail::kDrawing},
    {ToolId::Arrow, QLatin1StringView("arrow"), detail::k::arrowShortcut, u'4', 10,
     QLatin1StringView("arrow"), "Arrow", detail::kDrawing},
    {ToolId::PencilPen, QLatin1StringView("pencilPen"), detail::k::pencilShortcut, u'5', 16,
     QLatin1StringView("pencilPen"), "Pencil", detail::kDrawing},
    {ToolId::Mosaic, QLatin1StringView("mosaic"), detail::k::mosaicShortcut, u'6', 3,
     QLatin1StringView("mosaic"), "Mosaic",
     detail::kDrawing | can::PaintSparingly | can::RepaintOnRelease},
    {ToolId::Text, QLatin1StringView("text"), detail::k::textShortcut, u'7', 18,
     QLatin1StringView("text"), "Text", detail::kDrawing | can::TypeText},
    {ToolId::Note, QLatin1StringView("note"), detail::k::noteShortcut, u'8', 18,
     QLatin1StringView("note"), "Note", detail::kDrawing | can::TypeText},
    {ToolId::Highlight, QLatin1StringView("highlight"), detail::k::highlightShortcut, u'9', 20,
     QLatin1StringView("highlight"), "Highlight", detail::kDrawing | can::RepaintOnRelease},
    {ToolId::Map, QLatin1StringView("map"), detail::k::mapShortcut, u'T', 0,
     QLatin1StringView("map"), "Pin to Screen", detail::kFinishing | can::IgnoredWhileScrolling},
    // Its button shows, but the scrolling capture it starts comes later.
    {ToolId::ScrollScreenshot, QLatin1StringView("scrollScreenshot"),
     detail::k::scrollScreenshotShortcut, u'S', 0, QLatin1StringView("scrollScreenshot"),
     "Scrolling Screenshot", can::ShowButton | can::IgnoredWhileScrolling | can::NeedRegion},
    {ToolId::Cancel, QLatin1StringView("cancel"), QLatin1StringView(), 0, 0,
     QLatin1StringView("cancel"), "Cancel", detail::kFinishing},
    {ToolId::Save, QLatin1StringView("save"), detail::k::saveShortcut, kSpaceKeyText, 0,
     QLatin1StringView("save"), "Save", detail::kFinishing},
    {ToolId::CopyToPaste, QLatin1StringView("copyToPaste"), detail::k::copyToPasteShortcut,
     kReturnKeyText, 0, QLatin1StringView("copyToPaste"), "Copy to Paste", detail::kFinishing},
    // Takes back the last stroke; Ctrl+Z does the same from the keyboard.
    {ToolId::Undo, QLatin1StringView("undo"), QLatin1StringView(), 0, 0, QLatin1StringView("undo"),
     "Undo", can::ShowButton},
}};

[[nodiscard]] constexpr const ToolEntry& tool(ToolId id)
{
    return kTools[static_cast<std::size_t>(id)];
}

// The entry of an established tool name; nullptr for any other.
[[nodiscard]] const ToolEntry* toolNamed(QStringView name);

// The text a short cut is stored as for a typed key: space is "ㄩ", Return
// "↩", anything else what the key types, in upper case.
[[nodiscard]] QString shortcutText(int qtKey, const QString& typed);

// The tool whose short cut (in the live table `shortcutOfButton`, key name
// to text) holds `text`; the earliest in table order wins. nullptr for none.
[[nodiscard]] const ToolEntry* toolForShortcut(const QString& text,
                                               const QVariantMap& shortcutOfButton);

// What a short cut typed on the overlay chooses: its tool, unless a
// scrolling capture runs and the tool ignores it then, or the selection is
// a window and the tool needs a region. None also when no short cut holds
// the key: a refused key does not fall through to a later tool.
[[nodiscard]] const ToolEntry* chooseByShortcut(int qtKey, const QString& typed,
                                                const QVariantMap& shortcutOfButton, bool scrolling,
                                                bool windowSelection);

} // namespace toolbar
