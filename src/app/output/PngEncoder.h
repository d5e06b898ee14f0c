// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/ImageView.h"

#include <cstdint>
#include <vector>

namespace app::output {

// The row filter every row of the picture gets. Screens are flat colour and
// text; "Up" turns repeated rows into runs of zeros, which deflate at its
// fastest level eats quickly. Adaptive (the smallest sum of absolute bytes
// per row) is kept for measuring against.
enum class PngFilter
{
    None,
    Sub,
    Up,
    Average,
    Paeth,
    Adaptive,
};

// How deflate looks for repeats. Run-length finds only repeats of the byte
// just before, which after the "Up" filter is most of a screen, at a fraction
// of the cost of a full match search.
enum class PngStrategy
{
    Default,
    Rle,
};

enum class PngAlpha
{
    Opaque,   // written as RGB; the fourth byte is ignored
    Straight, // written as RGBA, non-premultiplied
};

enum class PngError
{
    None,
    InvalidImage, // the view fails its own check
    TooLarge,     // beyond the limits below
    Compression,  // zlib refused
};

struct PngOptions
{
    int compressionLevel = 1;
    PngFilter filter = PngFilter::Up;
    PngStrategy strategy = PngStrategy::Default;
    PngAlpha alpha = PngAlpha::Opaque;
    // Strips compressed at the same time; 0 is one per core.
    int threads = 0;
    // Written as pHYs when above 0, so a viewer can show the picture at its
    // size in points.
    std::uint32_t pixelsPerMetre = 0;
};

struct PngResult
{
    std::vector<std::uint8_t> bytes;
    PngError error = PngError::None;
    [[nodiscard]] bool ok() const { return error == PngError::None; }
};

// Pictures larger than this on either side are refused, which keeps every
// size computation far from overflow.
inline constexpr int kMaxPngSide = 1 << 16;

// Encodes 32-bit BGRA pixels as a standard 8-bit PNG. The picture is cut
// into horizontal strips that are filtered and deflated on separate cores;
// each strip's stream ends on a byte boundary without a final block, starts
// with the previous strip's last 32 KiB as its dictionary, and the strips'
// Adler-32 sums are combined, so the result is one ordinary zlib stream that
// every decoder reads.
[[nodiscard]] PngResult encodePng(const core::ImageView& image, const PngOptions& options = {});

} // namespace app::output
