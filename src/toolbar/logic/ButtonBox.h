// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "toolbar/logic/ToolRegistry.h"

#include <QLatin1StringView>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <QStringList>

#include <array>
#include <optional>

// Where the tool bar and its boxes stand. Unless a name says otherwise the
// coordinates are the annotation window's: points, origin at the bottom
// left of the screen, y up, as the selection's own.
namespace toolbar {

// One place on the bar, left to right.
struct Slot
{
    QLatin1StringView name;       // the button's name: a tool's, or "undo"
    std::optional<ToolId> tool;   // what the button chooses; none for undo
    QLatin1StringView tipBox;     // the tip that opens over it
    QLatin1StringView menuButton; // its short-cut menu in the tip; empty for none
};

inline constexpr int kSlotCount = 15;
inline constexpr int kUndoSlot = 9;
inline constexpr int kScrollSlot = 12;
inline constexpr qreal kSlotPitch = 35;
inline constexpr qreal kButtonSize = 30; // each square button inside its slot
inline constexpr qreal kButtonBoxWidth = kSlotCount * kSlotPitch;
inline constexpr qreal kButtonBoxHeight = 40;
inline constexpr qreal kColorBoxWidth = 155;
inline constexpr qreal kColorBoxHeight = 45;
// The crop border's band around the selection.
inline constexpr qreal kSelectionBand = 6;

[[nodiscard]] const std::array<Slot, kSlotCount>& slots();
// The slot of a button name; -1 for none.
[[nodiscard]] int slotNamed(QStringView name);
// The slot of a drawing tool's name; -1 for any other.
[[nodiscard]] int toolSlot(QStringView tool);
// The buttons' names in slot order.
[[nodiscard]] const QStringList& buttonNames();
// The short-cut preference of a slot; empty for none.
[[nodiscard]] QLatin1StringView shortcutKeyOf(int slot);

[[nodiscard]] inline QSizeF buttonBoxSize()
{
    return {kButtonBoxWidth, kButtonBoxHeight};
}

// Where the bar goes for `selection` (the crop border's frame: the
// selection grown by its band) on a screen `screenWidth` points wide.
struct BarPlacement
{
    QPointF buttonBoxOrigin;
    // The bar went inside the selection, near the screen's bottom; the
    // Control key may then move it away.
    bool buttonBoxNeedHidden = false;
};
[[nodiscard]] BarPlacement placeBar(const QRectF& selection, qreal screenWidth);

// The same in the overlay's top-left points, for views and tests: the
// bar's frame for a `selection` (without its band) on a `screen`.
[[nodiscard]] QRectF placeButtonBox(const QRectF& selection, const QSizeF& screen);
// The centre of a button on the bar framed `box` (top-left points).
[[nodiscard]] QPointF buttonCentre(const QRectF& box, const QString& name);

// A button's frame inside the bar (y up from the bar's bottom).
[[nodiscard]] QRectF buttonFrame(int slot);
// The first button whose frame holds `inBox` (relative to the bar); -1 for
// none, as between two buttons.
[[nodiscard]] int buttonUnder(QPointF inBox);
// The slot whose span holds `x` strictly inside, in single precision as the
// tip's opening measures it; -1 on a boundary or off the bar.
[[nodiscard]] int slotUnder(qreal x, qreal boxX);

// The settings box under a chosen tool and the pointer `sanjiao` that joins
// it to its button; nothing for a name that is no drawing tool.
struct ColorBoxPlacement
{
    QPointF sanjiao;
    QRectF colorBox;
    QPointF shadow2;
};
[[nodiscard]] std::optional<ColorBoxPlacement> placeColorBox(QStringView tool,
                                                             QPointF buttonBoxOrigin);

// Where the tip of `slot` opens over the bar at `buttonBoxOrigin`: centred
// on the slot, kept on a screen `screenWidth` wide, its bottom on the bar's
// top. During a scrolling capture the bar shows its last four slots and the
// tip stands one slot to the right of its button.
[[nodiscard]] QPointF tipOrigin(int slot, QPointF buttonBoxOrigin, qreal tipWidth,
                                qreal screenWidth, bool scrolling);

// The short-cut menu of a tip: every key a short cut may hold, each
// enabled unless another button's short cut holds it.
struct MenuItem
{
    QString title;
    bool enabled = true;
    bool current = false; // the slot's own short cut
};
[[nodiscard]] std::vector<MenuItem> shortcutMenu(int slot, const QVariantMap& shortcutOfButton);

// The half-open test of a point in a box: left and bottom edges in, right
// and top out.
[[nodiscard]] bool pointInRect(QPointF p, const QRectF& r);

} // namespace toolbar
