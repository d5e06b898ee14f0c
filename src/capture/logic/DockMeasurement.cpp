// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/logic/DockMeasurement.h"

#include <cmath>
#include <cstdlib>

namespace capture {

namespace {

struct Run
{
    int begin = -1; // first lit column, -1 when the row is dark
    int end = -1;   // column after the first lit run
};

Run firstLitRun(const std::uint8_t* row, int width)
{
    Run run;
    for (int x = 0; x < width; ++x) {
        const bool lit = core::grayOf(row + 4 * static_cast<std::ptrdiff_t>(x)) != 0;
        if (run.begin < 0) {
            if (lit)
                run.begin = x;
        } else if (!lit) {
            run.end = x;
            return run;
        }
    }
    if (run.begin >= 0)
        run.end = width;
    return run;
}

bool isLit(const std::uint8_t* row, int x)
{
    return core::grayOf(row + 4 * static_cast<std::ptrdiff_t>(x)) != 0;
}

// Pixels to points as the dock has always been converted: whole-number
// division by the whole-number scale, then rounded by adding a half and
// cutting (so -1 becomes 0).
int toPoints(int pixels, int scale)
{
    return static_cast<int>(static_cast<double>(pixels / scale) + 0.5);
}

} // namespace

std::size_t DockMeasurement::strideFromLength(const core::ImageView& picture)
{
    if (picture.data == nullptr || picture.width <= 0 || picture.height <= 0)
        return 0;
    const auto width = static_cast<std::size_t>(picture.width);
    const auto height = static_cast<std::size_t>(picture.height);
    const std::size_t length = picture.byteCount();
    const std::size_t packed = 4 * width * height;
    if (length < packed)
        return 0;
    const std::size_t surplus = (length - packed) / height;
    return 4 * (surplus / 4 + width);
}

std::optional<DockEdges> DockMeasurement::scan(const core::ImageView& picture)
{
    const std::size_t stride = strideFromLength(picture);
    if (stride == 0)
        return std::nullopt;

    const int width = picture.width;
    const int height = picture.height;
    const int middle = height / 2;
    DockEdges edges;
    for (int y = 0; y < height; ++y) {
        const std::uint8_t* row = picture.data + static_cast<std::size_t>(y) * stride;
        if (edges.side == DockEdges::Side::None) {
            if (y <= middle) {
                if (isLit(row, 0)) {
                    edges.side = DockEdges::Side::Left;
                    edges.left = 0;
                    edges.top = y;
                } else if (isLit(row, width - 1)) {
                    edges.side = DockEdges::Side::Right;
                    edges.right = width;
                    edges.top = y;
                }
            } else if (firstLitRun(row, width).begin >= 0) {
                edges.side = DockEdges::Side::Bottom;
                edges.top = y;
            }
        }
        if (edges.side == DockEdges::Side::None)
            continue;
        const Run run = firstLitRun(row, width);
        if (run.begin < 0)
            continue;
        switch (edges.side) {
        case DockEdges::Side::Bottom:
            edges.left = run.begin;
            edges.right = run.end;
            break;
        case DockEdges::Side::Left:
            edges.right = run.end;
            edges.bottom = y;
            break;
        case DockEdges::Side::Right:
            edges.left = run.begin;
            edges.bottom = y;
            break;
        case DockEdges::Side::None:
            break;
        }
    }
    if (edges.side == DockEdges::Side::Bottom || edges.side == DockEdges::Side::None)
        edges.bottom = height;
    return edges;
}

std::optional<QRectF> DockMeasurement::boundsFromEdges(const DockEdges& edges, const QRectF& bounds,
                                                       const core::ScreenLayout& layout)
{
    const double deepHeight = layout.deepestHeight();
    for (int i = 0; i < layout.count(); ++i) {
        const QRectF frame = layout.frameBottomLeft(i);
        if (frame.x() != bounds.x() || frame.y() != deepHeight - bounds.height() - bounds.y())
            continue;
        const int scale = static_cast<int>(layout.screen(i).scale);
        if (scale < 1)
            return std::nullopt;
        const int left = toPoints(edges.left, scale);
        const int right = toPoints(edges.right, scale);
        const int top = toPoints(edges.top, scale);
        const int bottom = toPoints(edges.bottom, scale);
        return QRectF(left + frame.x(), top - frame.y() - frame.height() + deepHeight,
                      std::abs(left - right), std::abs(top - bottom));
    }
    return std::nullopt;
}

QRectF DockMeasurement::measure(const core::ImageView& picture, const QRectF& bounds,
                                const core::ScreenLayout& layout)
{
    const std::optional<DockEdges> edges = scan(picture);
    if (!edges)
        return bounds;
    return boundsFromEdges(*edges, bounds, layout).value_or(bounds);
}

} // namespace capture
