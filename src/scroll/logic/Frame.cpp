// SPDX-License-Identifier: GPL-3.0-or-later
#include "scroll/logic/Frame.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace scroll {

std::ptrdiff_t strideFromDataLength(int width, int height, std::size_t dataLength)
{
    if (width <= 0 || height <= 0 || width > Frame::kMaxSide || height > Frame::kMaxSide)
        return 0;
    const std::size_t packed = std::size_t(width) * std::size_t(height) * 4;
    if (dataLength < packed)
        return 0;
    const std::size_t pad = (dataLength - packed) / std::size_t(height);
    // Whole pixels only: odd padding bytes are dropped from the row length.
    const std::size_t padPixels = std::min<std::size_t>(pad / 4, Frame::kMaxSide);
    return static_cast<std::ptrdiff_t>((std::size_t(width) + padPixels) * 4);
}

Frame::Frame(core::ImageView view, std::shared_ptr<const void> owner)
    : m_view(view)
    , m_owner(std::move(owner))
{}

std::optional<Frame> Frame::wrap(core::ImageView view, std::shared_ptr<const void> owner)
{
    if (view.width <= 0 || view.height <= 0 || view.width > kMaxSide || view.height > kMaxSide)
        return std::nullopt;
    if (view.strideBytes == 0)
        view.strideBytes = strideFromDataLength(view.width, view.height, view.sizeBytes);
    // A stride beyond a few rows' worth only comes from a broken buffer, and
    // it would let the row arithmetic overflow.
    if (view.strideBytes <= 0 || view.strideBytes > std::ptrdiff_t(kMaxSide) * 4 * 4)
        return std::nullopt;
    if (!view.isValid())
        return std::nullopt;
    if (view.sizeBytes == 0)
        view.sizeBytes = view.byteCount();
    return Frame(view, std::move(owner));
}

std::optional<Frame> Frame::copyOf(core::ImageView view)
{
    auto shared = wrap(view, nullptr);
    if (!shared)
        return std::nullopt;
    const core::ImageView& v = shared->view();
    const std::size_t rowBytes = std::size_t(v.width) * 4;
    auto bytes = std::make_shared<std::vector<std::uint8_t>>(rowBytes * std::size_t(v.height));
    for (int y = 0; y < v.height; ++y)
        std::memcpy(bytes->data() + rowBytes * std::size_t(y), v.row(y), rowBytes);
    const core::ImageView packed{bytes->data(), v.width, v.height,
                                 static_cast<std::ptrdiff_t>(rowBytes), bytes->size()};
    return Frame(packed, std::move(bytes));
}

std::span<const std::uint8_t> Frame::row(int y) const
{
    if (isNull() || y < 0 || y >= m_view.height)
        return {};
    return m_view.rowBytes(y);
}

Frame Frame::cut(int x, int y, int width, int height) const
{
    if (isNull())
        return {};
    // Intersect in 64 bits: the rectangle may come from carried-over counts
    // that no longer fit this frame.
    const std::int64_t left = std::max<std::int64_t>(x, 0);
    const std::int64_t top = std::max<std::int64_t>(y, 0);
    const std::int64_t right = std::min<std::int64_t>(std::int64_t(x) + width, m_view.width);
    const std::int64_t bottom = std::min<std::int64_t>(std::int64_t(y) + height, m_view.height);
    if (right <= left || bottom <= top)
        return {};
    const std::uint8_t* start = m_view.row(int(top)) + left * 4;
    const auto consumed = static_cast<std::size_t>(start - m_view.data);
    const core::ImageView sub{start, int(right - left), int(bottom - top), m_view.strideBytes,
                              m_view.byteCount() - consumed};
    return Frame(sub, m_owner);
}

} // namespace scroll
