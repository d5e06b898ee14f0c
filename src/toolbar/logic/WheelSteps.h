// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <array>
#include <optional>

// The steps a wheel tick takes over the picture, and their bounds: a tool's
// size, a text's point size, a note's number and a stroke's opacity. A step
// that a bound refuses changes nothing.
namespace toolbar::wheel {

// The point sizes the text tools offer, in the order of their menu.
[[nodiscard]] const std::array<int, 11>& textSizes();
// The menu's row of `size`; a size the menu lacks counts as its first row.
[[nodiscard]] int textSizeRow(int size);

// `size` one step up (delta above 0) or down (below 0), or none when the
// step is refused: below 1, above 100, above 40 for all but the line and
// the pencil, above 10 for the mosaic. A delta of 0 is no step.
[[nodiscard]] std::optional<int> steppedSize(QStringView tool, int size, double delta);
// A text's size one row of the menu up or down; none past either end.
[[nodiscard]] std::optional<int> steppedTextSize(int size, double delta);
// A note's number one up or down, never below 1.
[[nodiscard]] int steppedSerialNumber(int number, double delta);
// An opacity 0.05 up or down, or none when that leaves 0 to 1. The stored
// value is read at float precision and the step taken in double, so 0.95
// and 0.05 still make 1.
[[nodiscard]] std::optional<double> steppedAlpha(double alpha, double delta);

// How a changed opacity is kept on its stroke: two decimals.
[[nodiscard]] QString alphaText(double alpha);
// The opacity box's figure: whole per cent.
[[nodiscard]] QString alphaPercent(double alpha);

} // namespace toolbar::wheel
