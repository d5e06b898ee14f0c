// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QLineF>
#include <QPointF>
#include <QRectF>

#include <array>
#include <functional>
#include <vector>

// The geometry of the colour readout: a 120 by 120 point square with its own
// coordinates, origin at the bottom-left corner, y up. A view flips these
// once, at its boundary.
namespace colour::readout {

inline constexpr double kSide = 120.0;
inline constexpr double kGridPitch = 5.0;
inline constexpr double kFrameLineWidth = 2.0;
inline constexpr double kCrossHairLineWidth = 1.0;
inline constexpr int kNameFontSize = 13;
inline constexpr int kSmallFontSize = 10;

// Where the grid lines sit, both ways: 5.5, 10.5, ... 115.5, so that each
// one-point line fills the point row or column just above its multiple of 5.
[[nodiscard]] std::vector<double> gridLines();

// The grid's colour: gray 0.5 at alpha 0.25.
inline constexpr double kGridGray = 0.5;
inline constexpr double kGridAlpha = 0.25;

// Blends the grid into the enlarged sample (the square at `ratio` device
// pixels per point, Format_ARGB32_Premultiplied), as source-over strokes of
// one point would, crossings blended twice. Done on the pixels because the
// painter's translucent fills cost far more than the rest of a redraw.
void blendGrid(QImage& square, double ratio);

// The outline, stroked with kFrameLineWidth so it fills the outer 2 points.
[[nodiscard]] QRectF frameRect();

// Horizontal arm first. While the texts are drawn (the pointer has moved)
// the vertical arm stops at 100, short of the colour's name.
[[nodiscard]] std::array<QLineF, 2> crossHair(bool mouseMoving);

// The name's font size: 13 points when the name fits the square's width,
// else the first size from 12 down that fits (never below 1).
// widthAt(size) measures the name at that size.
[[nodiscard]] int nameFontSize(const std::function<double(int size)>& widthAt);

// Bottom-left corners of the three texts.
struct TextOrigins
{
    QPointF name;
    QPointF mousePoint;
    QPointF hex;
};

[[nodiscard]] TextOrigins textOrigins(double nameWidth, double mousePointWidth);

// The halo: each text is first drawn in the halo colour at these offsets
// from its origin, in this order, then once in the text colour.
[[nodiscard]] const std::array<QPointF, 8>& haloOffsets();

} // namespace colour::readout
