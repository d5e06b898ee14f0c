// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

class QImage;

namespace core {

// A non-owning view of 32-bit pixels in the byte order blue, green, red,
// alpha (QImage::Format_ARGB32 / RGB32 on little-endian). Pixel algorithms
// take this instead of QImage so they can be fed any buffer, including
// truncated or hostile ones in tests: isValid() is the contract they check.
struct ImageView
{
    const std::uint8_t* data = nullptr;
    int width = 0;
    int height = 0;
    std::ptrdiff_t strideBytes = 0;
    // Bytes actually readable from data; 0 means "height * strideBytes".
    std::size_t sizeBytes = 0;

    [[nodiscard]] std::size_t byteCount() const;
    // Non-empty, stride holds a row, and every row lies inside sizeBytes.
    [[nodiscard]] bool isValid() const;
    [[nodiscard]] const std::uint8_t* row(int y) const { return data + y * strideBytes; }
    [[nodiscard]] std::span<const std::uint8_t> rowBytes(int y) const
    {
        return {row(y), static_cast<std::size_t>(width) * 4};
    }

    // The view of a QImage in one of the 32-bit BGRA formats; an invalid
    // (empty) view for any other format or a null image.
    [[nodiscard]] static ImageView of(const QImage& image);
};

// The gray value used for "lit" and "same" decisions: the integer part of
// 0.3 R + 0.59 G + 0.11 B.
[[nodiscard]] inline int grayOf(const std::uint8_t* bgra)
{
    return static_cast<int>(0.3 * bgra[2] + 0.59 * bgra[1] + 0.11 * bgra[0]);
}

} // namespace core
