// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/ImageView.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>

namespace scroll {

// One captured frame: immutable BGRA pixels that the first-frame rows, the
// previous-frame rows, the newest picture and the stored pictures of a
// session all share by reference. A frame is its own row list: row(y) is a
// view into the pixels, so no row is ever copied.
class Frame
{
public:
    // Bounds on what a frame may claim, so that a hostile buffer cannot make
    // the size arithmetic overflow.
    static constexpr int kMaxSide = 1 << 16;

    Frame() = default;

    // Shares the caller's pixels; owner keeps them alive for as long as any
    // list holds the frame. A view with strideBytes 0 gets its row length
    // from the data's length, as a grabber that hands over a bare byte
    // block requires. Empty when the view does not hold every row.
    [[nodiscard]] static std::optional<Frame> wrap(core::ImageView view,
                                                   std::shared_ptr<const void> owner);
    // The same, but the frame keeps its own copy (tightly packed).
    [[nodiscard]] static std::optional<Frame> copyOf(core::ImageView view);

    [[nodiscard]] bool isNull() const { return m_view.data == nullptr; }
    [[nodiscard]] int width() const { return m_view.width; }
    [[nodiscard]] int height() const { return m_view.height; }
    [[nodiscard]] int rowCount() const { return m_view.height; }
    [[nodiscard]] const core::ImageView& view() const { return m_view; }

    // The w*4 bytes of row y, padding left out; empty for a row outside.
    [[nodiscard]] std::span<const std::uint8_t> row(int y) const;

    // cutImageToRect:Rect: a crop by pixel rectangle, top-left origin,
    // sharing the pixels. Clipped to the frame like a crop of the platform's;
    // a null frame when nothing is left.
    [[nodiscard]] Frame cut(int x, int y, int width, int height) const;

private:
    Frame(core::ImageView view, std::shared_ptr<const void> owner);

    core::ImageView m_view;
    std::shared_ptr<const void> m_owner;
};

// The row length of a frame whose bytes come without a stated stride: the
// padding is worked out from the data's length and cut to whole pixels.
// 0 when the data cannot hold the rows.
[[nodiscard]] std::ptrdiff_t strideFromDataLength(int width, int height, std::size_t dataLength);

} // namespace scroll
