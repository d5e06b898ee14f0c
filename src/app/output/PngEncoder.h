// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/ImageView.h"

#include <cstdint>
#include <vector>

namespace app::output {

// The row filter every row of the picture gets. Screens are flat colour and
// text; "Up" turns repeated rows into runs of zeros, which deflate at its
// fastest level eats quickly. Adaptive picks for each row the filter whose
// bytes, read as signed, have the smallest sum of absolute values: what
// photographs and gradients need to stay small.
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

// Which deflate writes the stream. Libdeflate, at the same level, needs
// about 0.6 times zlib's time per core on a screen and writes files 6 to 15
// per cent smaller, but only compresses a whole buffer: the rows are
// filtered on separate cores and deflated as one stream. Zlib compresses
// strips on separate cores and joins them; it is kept for measuring against.
enum class PngDeflater
{
    Zlib,
    Libdeflate,
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
    Compression,  // the deflater refused
};

struct PngOptions
{
    // 1 to 9 for zlib, 1 to 12 for libdeflate.
    int compressionLevel = 1;
    PngFilter filter = PngFilter::Up;
    PngStrategy strategy = PngStrategy::Default;
    PngDeflater deflater = PngDeflater::Libdeflate;
    PngAlpha alpha = PngAlpha::Opaque;
    // Strips filtered (and with zlib compressed) at the same time; 0 is one
    // per core. With libdeflate the file does not depend on it.
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
// into horizontal strips that are filtered on separate cores. With zlib
// each strip is deflated there too; its stream ends on a byte boundary
// without a final block, starts with the previous strip's last 32 KiB as
// its dictionary, and the strips' Adler-32 sums are combined, so the result
// is one ordinary zlib stream that every decoder reads. With libdeflate the
// filtered strips are joined and deflated at once.
[[nodiscard]] PngResult encodePng(const core::ImageView& image, const PngOptions& options = {});

} // namespace app::output
