// SPDX-License-Identifier: GPL-3.0-or-later
#include "scroll/logic/ScrollComposition.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace scroll {

namespace {

// intValue of a stored height: cut toward zero, saturated instead of
// undefined for values no session can produce.
std::int64_t truncated(double value)
{
    if (!(value == value))
        return 0;
    constexpr double limit = double(std::int64_t(1) << 40);
    return std::int64_t(std::clamp(value, -limit, limit));
}

std::int64_t pixelOf(double points, int scale)
{
    const double px = points * scale;
    if (!(px == px))
        return 0;
    constexpr double limit = double(std::int64_t(1) << 40);
    return std::llround(std::clamp(px, -limit, limit));
}

} // namespace

core::ImageView ComposedPicture::view() const
{
    return {pixels.data(), width, height, std::ptrdiff_t(width) * 4, pixels.size()};
}

ScrollLayout redrawScrollView(const ScrollState& s, int scale)
{
    scale = std::max(1, scale);
    ScrollLayout layout;
    const double w = s.rectOfScreenShots.width();
    const double h0 = double(s.scrollImageTotal.height()) / scale;

    float total = float(h0);
    for (auto it = s.imageUsedHeightArr.rbegin(); it != s.imageUsedHeightArr.rend(); ++it)
        total += *it / float(scale);
    const bool hasTail = !s.tailImageView.isNull();
    const double tailH = hasTail ? double(s.tailImageView.height()) / scale : 0.0;
    total += float(tailH);
    const double H = total;
    layout.size = QSizeF(w, H);

    const PlacedView newest{s.scrollImageTotal, QRectF(0, H - h0 - tailH, w, h0)};
    const PlacedView tail{s.tailImageView, QRectF(0, H - tailH, w, tailH)};

    layout.views.push_back(newest);
    std::int64_t yi = 0;
    for (std::size_t i = 0; i < s.imageArr.size(); ++i) {
        if (hasTail && tailH > 0 && i == s.tailImageViewOrder)
            layout.views.push_back(tail);
        if (i == 0) {
            const double height = s.rectOfScreenShots.height() - double(s.tailSameRow / scale);
            layout.views.push_back({s.imageArr[i], QRectF(0, 0, w, height)});
        } else {
            layout.views.push_back({s.imageArr[i], QRectF(0, double(yi), w, h0)});
        }
        if (i < s.imageUsedHeightArr.size())
            yi += truncated(s.imageUsedHeightArr[i]) / scale;
    }
    if (hasTail && tailH > 0 && s.tailImageViewOrder >= s.imageArr.size())
        layout.views.push_back(tail);
    return layout;
}

ComposeResult toImage(const ScrollLayout& layout, int scale, std::int64_t maxPixels)
{
    scale = std::max(1, scale);
    ComposeResult result;
    const std::int64_t width = pixelOf(layout.size.width(), scale);
    const std::int64_t height = pixelOf(layout.size.height(), scale);
    if (width <= 0 || height <= 0)
        return result;
    if (width > std::numeric_limits<int>::max() / 4 || height > std::numeric_limits<int>::max() ||
        width * height > maxPixels) {
        result.status = ComposeStatus::TooLarge;
        return result;
    }
    ComposedPicture& picture = result.picture;
    picture.width = int(width);
    picture.height = int(height);
    picture.pixels.assign(std::size_t(width) * std::size_t(height) * 4, 0);
    const std::int64_t drawnWidth = width - scale;

    for (const PlacedView& placed : layout.views) {
        if (placed.image.isNull())
            continue;
        const core::ImageView& src = placed.image.view();
        const std::int64_t x0 = pixelOf(placed.frame.x(), scale);
        const std::int64_t y0 = pixelOf(placed.frame.y(), scale);
        const std::int64_t x1 = x0 + pixelOf(placed.frame.width(), scale);
        const std::int64_t y1 = y0 + pixelOf(placed.frame.height(), scale);
        const std::int64_t left = std::max<std::int64_t>({x0, 0});
        const std::int64_t right = std::min<std::int64_t>({x1, drawnWidth, x0 + src.width});
        const std::int64_t top = std::max<std::int64_t>({y0, 0});
        const std::int64_t bottom = std::min<std::int64_t>({y1, height, y0 + src.height});
        if (right <= left || bottom <= top)
            continue;
        const auto bytes = std::size_t(right - left) * 4;
        for (std::int64_t y = top; y < bottom; ++y) {
            const std::uint8_t* from = src.row(int(y - y0)) + (left - x0) * 4;
            std::uint8_t* to = picture.pixels.data() +
                               (std::size_t(y) * std::size_t(width) + std::size_t(left)) * 4;
            std::memcpy(to, from, bytes);
        }
    }
    result.status = ComposeStatus::Done;
    return result;
}

} // namespace scroll
