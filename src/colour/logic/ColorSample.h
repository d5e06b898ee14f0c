// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "colour/logic/Color.h"
#include "core/ImageView.h"

#include <QImage>
#include <QPointF>
#include <QRectF>

#include <optional>

namespace colour {

// Which way round the readout's texts are drawn, chosen by the brightness of
// the sample so that they stay readable on any picture.
enum class ReadoutTextStyle
{
    BlackOnWhiteHalo, // bright sample
    WhiteOnBlackHalo, // dark sample, a mean of exactly 0.5 included
};

struct SampleAnalysis
{
    Color picked;      // the pixel under the hot spot, alpha 1
    double mean = 0.0; // mean of R, G and B over the sample, 0 to 1
    ReadoutTextStyle textStyle = ReadoutTextStyle::WhiteOnBlackHalo;
};

// The square the readout enlarges: 12 by 12 points around the pointer, one
// point lower than centred (the picked pixel is the one just below the hot
// spot). pointerTopLeft is in screen-local points, y down.
[[nodiscard]] QRectF sampleRect(QPointF pointerTopLeft);

// Cuts the sample out of the frozen picture of a screen (device pixels, with
// devicePixelRatio pixels per point). Always round(12 * ratio) pixels
// square, in Format_ARGB32; where the square leaves the picture its pixels are
// transparent black. The frozen picture is what lay under the overlay, so the
// readout never samples its own drawing. A null image for a null picture or
// a ratio that isn't positive.
[[nodiscard]] QImage cutSample(const QImage& frozenScreen, double devicePixelRatio,
                               QRectF rectPoints);

// The sample enlarged to `side` pixels square with every pixel kept a sharp
// square (nearest neighbour), in Format_ARGB32_Premultiplied. Done by hand because the painter's
// scaled drawing hands a square this small to its thread pool, which costs more than the whole
// redraw.
[[nodiscard]] QImage enlargeSample(const QImage& sample, int side);

[[nodiscard]] ReadoutTextStyle textStyleForMean(double mean);

// Sums R + G + B over every pixel and picks the pixel at column h/2, row w/2.
// Nothing for an invalid view or one too small to hold that pixel.
[[nodiscard]] std::optional<SampleAnalysis> analyseSample(const core::ImageView& sample);

} // namespace colour
