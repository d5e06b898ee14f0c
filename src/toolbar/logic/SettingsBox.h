// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QRectF>
#include <QSizeF>
#include <QString>

#include <array>
#include <vector>

// What the settings box under a chosen tool shows: three size dots, the
// size in words, and the colour swatches.
namespace toolbar {

// The sizes the three dots stand for.
[[nodiscard]] std::array<int, 3> sizeDots(QStringView tool);
// The text tools show their colour in the third dot and their size in a
// menu instead.
[[nodiscard]] bool showsSizeDots(QStringView tool);
// The dot of `size`, 0 to 2; -1 when no dot stands for it.
[[nodiscard]] int markedDot(QStringView tool, int size);
// The colour a marked dot is filled with: the tool's own, or a blue for the
// two tools whose colour is not their point.
[[nodiscard]] QColor markedDotColor(QStringView tool, const QColor& toolColor);
[[nodiscard]] QColor unmarkedDotColor();
// The size as the box writes it, and its unit: the highlight's in percent
// (40 is 100%), the others' in points.
[[nodiscard]] QString displaySize(QStringView tool, int size);
[[nodiscard]] QString displaySizeUnit(QStringView tool);
// The five fixed swatches; the sixth is the user's own colour.
[[nodiscard]] const std::array<QColor, 5>& swatchColors();

// Where the controls lie in the box, in its own points from its top-left
// corner: a dot's (0 to 2) click area, a swatch's (1 to 6) frame, and the
// text tools' size menu, which takes the place of the first two dots.
[[nodiscard]] QRectF dotArea(int dot);
[[nodiscard]] QRectF swatchFrame(int swatch);
[[nodiscard]] QRectF sizeMenuFrame();
// The dot (0 to 2) or swatch (1 to 6) under a point of the box; -1 for none.
[[nodiscard]] int dotUnder(QStringView tool, QPointF p);
[[nodiscard]] int swatchUnder(QPointF p);

// The shape options a tool offers at the box's right end, as the
// preferences that hold them: the rectangle's round corners and fill, the
// ellipse's fill, the arrow's kind (on: the stroked head, off: the dart).
[[nodiscard]] std::vector<QLatin1StringView> shapeOptions(QStringView tool);
// The frame of option `i` in the box, and the option under a point; -1 for
// none.
[[nodiscard]] QRectF optionFrame(int i);
[[nodiscard]] int optionUnder(QStringView tool, QPointF p);

// The box under `tool` in the overlay's top-left points, for a
// `selection` (without its band) on a `screen`, as the bar places it.
[[nodiscard]] QRectF placeColorBoxInOverlay(QStringView tool, const QRectF& selection,
                                            const QSizeF& screen);

} // namespace toolbar
