// SPDX-License-Identifier: GPL-3.0-or-later
#include "annotation/logic/MosaicFilters.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <thread>

namespace annotation::mosaic {

namespace {

// The radii of three box passes whose variances add up to sigma squared
// as closely as whole radii allow: a box of radius r has r(r + 1) / 3.
std::array<int, 3> boxRadiiFor(double sigma)
{
    const auto variance = [](int r) { return r * (r + 1) / 3.0; };
    const int lower =
        static_cast<int>(std::floor((std::sqrt(4.0 * sigma * sigma + 1.0) - 1.0) / 2.0));
    const int upper = lower + 1;
    const double lowerPasses =
        (3.0 * variance(upper) - sigma * sigma) / (variance(upper) - variance(lower));
    const int m = std::clamp(static_cast<int>(std::lround(lowerPasses)), 0, 3);
    std::array<int, 3> radii{};
    for (int i = 0; i < 3; ++i)
        radii[static_cast<std::size_t>(i)] = i < m ? lower : upper;
    return radii;
}

// 1 / (2r + 1) in 16-bit fixed point, rounded, so that a flat colour stays
// flat through the six passes; the sums stay far below 2^16, so the
// products fit 32 bits and the loops vectorise.
constexpr int kShift = 16;
constexpr std::uint32_t kHalf = 1U << (kShift - 1);

std::uint32_t boxMultiplier(int r)
{
    const auto n = static_cast<std::uint32_t>(2 * r + 1);
    return ((1U << kShift) + n / 2) / n;
}

// One running-sum box pass along each row, edges repeated.
void boxRows(const QImage& src, QImage& dst, int r)
{
    const int w = src.width();
    const std::uint32_t mul = boxMultiplier(r);
    for (int y = 0; y < src.height(); ++y) {
        const auto* in = reinterpret_cast<const std::uint8_t*>(src.constScanLine(y));
        auto* out = reinterpret_cast<std::uint8_t*>(dst.scanLine(y));
        std::uint32_t acc[4] = {};
        const auto px = [&](int x) { return in + 4 * std::clamp(x, 0, w - 1); };
        for (int x = -r; x <= r; ++x)
            for (int c = 0; c < 4; ++c)
                acc[c] += px(x)[c];
        const auto step = [&](int x, const std::uint8_t* add, const std::uint8_t* drop) {
            for (int c = 0; c < 4; ++c) {
                out[4 * x + c] = static_cast<std::uint8_t>((acc[c] * mul + kHalf) >> kShift);
                acc[c] += add[c];
                acc[c] -= drop[c];
            }
        };
        // Only the ends need the repeated edge pixels.
        const int lead = std::min(w, r);
        const int tail = std::max(lead, w - r - 1);
        int x = 0;
        for (; x < lead; ++x)
            step(x, px(x + r + 1), px(x - r));
        for (; x < tail; ++x)
            step(x, in + 4 * (x + r + 1), in + 4 * (x - r));
        for (; x < w; ++x)
            step(x, px(x + r + 1), px(x - r));
    }
}

// The same down the columns, a whole row of sums at a time so the image is
// read in its own order.
void boxColumns(const QImage& src, QImage& dst, int r)
{
    const int w = src.width();
    const int h = src.height();
    const std::uint32_t mul = boxMultiplier(r);
    const auto n = static_cast<std::size_t>(4 * w);
    std::vector<std::uint32_t> sums(n, 0);
    std::uint32_t* __restrict acc = sums.data();
    const auto row = [&](int y) {
        return reinterpret_cast<const std::uint8_t*>(src.constScanLine(std::clamp(y, 0, h - 1)));
    };
    for (int y = -r; y <= r; ++y) {
        const std::uint8_t* in = row(y);
        for (std::size_t i = 0; i < n; ++i)
            acc[i] += in[i];
    }
    for (int y = 0; y < h; ++y) {
        auto* __restrict out = reinterpret_cast<std::uint8_t*>(dst.scanLine(y));
        const std::uint8_t* __restrict add = row(y + r + 1);
        const std::uint8_t* __restrict drop = row(y - r);
        for (std::size_t i = 0; i < n; ++i) {
            out[i] = static_cast<std::uint8_t>((acc[i] * mul + kHalf) >> kShift);
            acc[i] += add[i];
            acc[i] -= drop[i];
        }
    }
}

// The image at 1/k of its size, each pixel the mean of its k by k block
// (the blocks at the right and bottom edges may be smaller).
QImage shrink(const QImage& src, int k)
{
    const int w = src.width();
    const int h = src.height();
    QImage out((w + k - 1) / k, (h + k - 1) / k, src.format());
    std::vector<std::uint32_t> sums(static_cast<std::size_t>(4 * out.width()));
    for (int oy = 0; oy < out.height(); ++oy) {
        std::fill(sums.begin(), sums.end(), 0U);
        const int y0 = oy * k;
        const int rows = std::min(k, h - y0);
        for (int y = y0; y < y0 + rows; ++y) {
            const auto* in = reinterpret_cast<const std::uint8_t*>(src.constScanLine(y));
            std::uint32_t* sum = sums.data();
            for (int x0 = 0; x0 < w; x0 += k, sum += 4) {
                const int x1 = std::min(w, x0 + k);
                for (int x = x0; x < x1; ++x)
                    for (int c = 0; c < 4; ++c)
                        sum[c] += in[4 * x + c];
            }
        }
        auto* line = reinterpret_cast<std::uint8_t*>(out.scanLine(oy));
        for (int ox = 0; ox < out.width(); ++ox) {
            const auto n = static_cast<std::uint32_t>(rows * std::min(k, w - ox * k));
            for (int c = 0; c < 4; ++c)
                line[4 * ox + c] = static_cast<std::uint8_t>(
                    (sums[static_cast<std::size_t>(4 * ox + c)] + n / 2) / n);
        }
    }
    return out;
}

QImage asWorkFormat(const QImage& image)
{
    return image.format() == QImage::Format_ARGB32_Premultiplied
               ? image
               : image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

} // namespace

QImage workImageOf(const QImage& screen, double devicePixelRatio)
{
    const double factor = 0.5 / std::max(devicePixelRatio, 1e-6);
    const QSize size(std::max(1, static_cast<int>(std::lround(screen.width() * factor))),
                     std::max(1, static_cast<int>(std::lround(screen.height() * factor))));
    QImage work =
        asWorkFormat(screen).scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    work.setDevicePixelRatio(1.0);
    return work;
}

QImage blockMosaic(const QImage& work, int level)
{
    QImage out = asWorkFormat(work).copy();
    if (level <= 1 || out.isNull())
        return out;
    const int w = out.width();
    const int h = out.height();
    const auto rowBytes = static_cast<std::size_t>(w - 1) * 4;
    for (int y = 0; y < h - 1; ++y) {
        auto* line = reinterpret_cast<std::uint32_t*>(out.scanLine(y));
        if (y % level != 0) {
            // The row above is already done: copy it.
            std::memcpy(line, out.constScanLine(y - 1), rowBytes);
            continue;
        }
        std::uint32_t cur = 0;
        for (int x = 0; x < w - 1; ++x) {
            if (x % level == 0)
                cur = line[x];
            else
                line[x] = cur;
        }
    }
    return out;
}

QImage gaussianBlured(const QImage& work, double radius)
{
    const QImage source = asWorkFormat(work);
    const std::array<int, 3> radii = boxRadiiFor(radius);
    if (radius <= 0 || source.isNull() || radii.back() <= 0)
        return source.copy();
    // The first pass reads the source itself; then the passes go back and
    // forth between two buffers.
    QImage a(source.size(), source.format());
    QImage b(source.size(), source.format());
    const QImage* from = &source;
    for (const int r : radii) {
        if (r <= 0)
            continue;
        boxRows(*from, b, r);
        boxColumns(b, a, r);
        from = &a;
    }
    return a;
}

// The power of two that a blur of `radius` is kept smaller by: as large
// as leaves at least 1.5 pixels of radius at the smaller size.
int blurShrink(double radius)
{
    int k = 1;
    while (radius / (2 * k) >= 1.5)
        k *= 2;
    return k;
}

FilteredCopies::FilteredCopies(const QImage& work)
    : m_workSize(work.size())
{
    if (work.isNull())
        return;
    // The halvings the larger blurs start from, each from the one before.
    std::vector<QImage> halvings{asWorkFormat(work)};
    for (int k = 2; k <= blurShrink(blurRadius(kLevels - 1)); k *= 2)
        halvings.push_back(shrink(halvings.back(), 2));
    const auto halvingFor = [&](int k) -> const QImage& {
        std::size_t i = 0;
        while ((1 << i) < k)
            ++i;
        return halvings[i];
    };

    std::vector<QImage> images(static_cast<std::size_t>(2 * kLevels));
    std::atomic<int> next{0};
    auto worker = [&] {
        // The blurs cost the most: hand them out first.
        for (int n = next++; n < 2 * kLevels; n = next++) {
            const int index = (n + kLevels) % (2 * kLevels);
            QImage& image = images[static_cast<std::size_t>(index)];
            if (index < kLevels) {
                image = blockMosaic(work, index + 1);
            } else {
                const double radius = blurRadius(index - kLevels);
                const int k = blurShrink(radius);
                image = gaussianBlured(halvingFor(k), radius / k);
            }
        }
    };
    const unsigned threads = std::clamp(std::thread::hardware_concurrency(), 1U, 8U);
    std::vector<std::thread> pool;
    for (unsigned i = 1; i < threads; ++i)
        pool.emplace_back(worker);
    worker();
    for (std::thread& t : pool)
        t.join();
    if (std::any_of(images.begin(), images.end(), [](const QImage& i) { return i.isNull(); }))
        return;
    m_images = std::move(images);
}

const QImage* FilteredCopies::forStroke(int size, bool selectedMosaic) const
{
    if (!ready() || size < 1 || size > kLevels)
        return nullptr;
    return &m_images[static_cast<std::size_t>(selectedMosaic ? size - 1 : size + kLevels - 1)];
}

QImage FilteredCopies::patch(int size, bool selectedMosaic, const QRectF& source) const
{
    const QImage* copy = forStroke(size, selectedMosaic);
    if (copy == nullptr)
        return {};
    // A shrunken blur is cut at its own scale; the patch is stretched to its
    // place when painted, like every patch.
    const double sx = static_cast<double>(copy->width()) / m_workSize.width();
    const double sy = static_cast<double>(copy->height()) / m_workSize.height();
    return cutPatch(
        *copy, QRectF(source.x() * sx, source.y() * sy, source.width() * sx, source.height() * sy));
}

QRectF patchSourceRect(const QRectF& rect, int size, double screenHeight, bool selectedMosaic)
{
    const QRectF r = rect.normalized();
    const double shift = selectedMosaic ? 2.0 * size : 0.0;
    // The patch's bottom edge, flipped to the top-left origin, is the
    // source's lower edge; the source runs up from there.
    const double bottom = (screenHeight + shift - r.y()) / 2.0;
    return QRectF((r.x() + shift) / 2.0, bottom - r.height() / 2.0, r.width() / 2.0,
                  r.height() / 2.0);
}

QImage cutPatch(const QImage& copy, const QRectF& source)
{
    const QRect whole(QPoint(static_cast<int>(std::floor(source.left())),
                             static_cast<int>(std::floor(source.top()))),
                      QPoint(static_cast<int>(std::ceil(source.right())) - 1,
                             static_cast<int>(std::ceil(source.bottom())) - 1));
    const QRect inside = whole.intersected(copy.rect());
    if (inside.isEmpty())
        return {};
    return copy.copy(inside);
}

} // namespace annotation::mosaic
