// SPDX-License-Identifier: GPL-3.0-or-later
#include "scroll/logic/ColumnList.h"

#include "core/ImageView.h"
#include "scroll/logic/Frame.h"

#include <algorithm>

namespace scroll {

ColumnList ColumnList::of(const Frame& frame)
{
    ColumnList list;
    if (frame.isNull())
        return list;
    const int w = frame.width();
    const int h = frame.height();
    list.m_count = w;
    list.m_length = h;
    list.m_gray.resize(std::size_t(w) * std::size_t(h));
    // Transposed in bands of rows so that each written column run and each
    // read row stay in cache.
    constexpr int kBand = 32;
    const core::ImageView& v = frame.view();
    std::uint8_t* out = list.m_gray.data();
    for (int y0 = 0; y0 < h; y0 += kBand) {
        const int y1 = std::min(h, y0 + kBand);
        for (int x = 0; x < w; ++x) {
            std::uint8_t* dst = out + std::size_t(x) * std::size_t(h);
            for (int y = y0; y < y1; ++y)
                dst[y] = static_cast<std::uint8_t>(core::grayOf(v.row(y) + std::size_t(x) * 4));
        }
    }
    return list;
}

std::span<const std::uint8_t> ColumnList::column(int x) const
{
    if (x < 0 || x >= m_count)
        return {};
    return {m_gray.data() + std::size_t(x) * std::size_t(m_length), std::size_t(m_length)};
}

} // namespace scroll
