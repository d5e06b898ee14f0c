// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QRectF>
#include <QSizeF>
#include <QString>
#include <QStringList>

namespace toolbar {

// The buttons of the tool bar, left to right, as the tool table orders the
// tools that show one: the nine drawing tools, then the four that finish a
// capture.
[[nodiscard]] const QStringList& buttonNames();
inline constexpr qreal kButtonSize = 30;   // each square button, in points
inline constexpr qreal kButtonSpacing = 2; // between buttons and at the bar's ends
inline constexpr qreal kButtonBoxGap = 8;  // between the selection and the bar

[[nodiscard]] QSizeF buttonBoxSize();
// Where the bar goes for a selection, both in the overlay's top-left
// points: under the selection, its right edge on the selection's; above it
// when the screen has no room below; inside its bottom edge when there is
// room neither below nor above. Always kept on the screen.
[[nodiscard]] QRectF placeButtonBox(const QRectF& selection, const QSizeF& screen);
// The centre of a button of the bar at `box`.
[[nodiscard]] QPointF buttonCentre(const QRectF& box, const QString& name);

} // namespace toolbar
