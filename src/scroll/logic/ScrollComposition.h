// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/ImageView.h"
#include "scroll/logic/Frame.h"
#include "scroll/logic/ScrollState.h"

#include <QRectF>
#include <QSizeF>

#include <cstdint>
#include <vector>

namespace scroll {

// One picture of the stack and its rectangle in points, y growing down from
// the top of the stitched picture.
struct PlacedView
{
    Frame image;
    QRectF frame;
};

// The stitched picture as a stack of pictures, bottom of the stack first:
// the newest frame, then the stored frames in order (each over the ones
// before; where they overlap they show the same content), with the footer
// at the place in the stack where it joined.
struct ScrollLayout
{
    QSizeF size; // points
    std::vector<PlacedView> views;
};

// The full-size layout of the finished picture (no preview reduction). The
// stored frames are placed on whole points while the total height keeps
// fractions, so odd shifts on a double-density screen lose half a point per
// picture; that is part of the picture's look and is kept.
[[nodiscard]] ScrollLayout redrawScrollView(const ScrollState& state, int scale);

// A picture owned by the caller: BGRA, tightly packed rows.
struct ComposedPicture
{
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> pixels;

    [[nodiscard]] core::ImageView view() const;
};

enum class ComposeStatus
{
    Done,
    Empty,    // the layout has no area
    TooLarge, // over the caller's pixel limit
};

struct ComposeResult
{
    ComposeStatus status = ComposeStatus::Empty;
    ComposedPicture picture;
};

// 256 M pixels, 1 GiB of BGRA.
inline constexpr std::int64_t kDefaultMaxComposedPixels = std::int64_t(1) << 28;

// Renders the layout into one buffer at pixel resolution. Each picture is
// placed unscaled at the top left of its rectangle and clipped to it; what
// no picture covers stays transparent. The last point column is left out
// on purpose, as the finished picture always has been: it stays transparent.
[[nodiscard]] ComposeResult toImage(const ScrollLayout& layout, int scale,
                                    std::int64_t maxPixels = kDefaultMaxComposedPixels);

} // namespace scroll
