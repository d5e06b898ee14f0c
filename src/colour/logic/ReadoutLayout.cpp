// SPDX-License-Identifier: GPL-3.0-or-later
#include "colour/logic/ReadoutLayout.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace colour::readout {

std::vector<double> gridLines()
{
    std::vector<double> lines;
    for (double i = kGridPitch; i < kSide; i += kGridPitch)
        lines.push_back(i + 0.5);
    return lines;
}

void blendGrid(QImage& square, double ratio)
{
    if (square.format() != QImage::Format_ARGB32_Premultiplied || !(ratio > 0.0))
        return;
    const int n = square.width();
    if (square.height() != n)
        return;
    // Source-over of a premultiplied constant: out = src + dst * (1 - alpha).
    const int srcColour = static_cast<int>(std::lround(kGridGray * kGridAlpha * 255.0 * 256.0));
    const int srcAlpha = static_cast<int>(std::lround(kGridAlpha * 255.0 * 256.0));
    const int keep = static_cast<int>(std::lround((1.0 - kGridAlpha) * 256.0));
    const auto blend = [&](QRgb p) {
        const auto mix = [&](int dst, int src) { return (src + dst * keep + 128) >> 8; };
        return qRgba(mix(qRed(p), srcColour), mix(qGreen(p), srcColour), mix(qBlue(p), srcColour),
                     mix(qAlpha(p), srcAlpha));
    };
    const auto band = [&](double at) {
        const int lo = std::clamp(static_cast<int>(std::lround((at - 0.5) * ratio)), 0, n);
        const int hi = std::clamp(static_cast<int>(std::lround((at + 0.5) * ratio)), 0, n);
        return std::pair{lo, hi};
    };
    for (double at : gridLines()) {
        const auto [lo, hi] = band(at);
        for (int y = 0; y < n; ++y) {
            auto* line = reinterpret_cast<QRgb*>(square.scanLine(y));
            for (int x = lo; x < hi; ++x)
                line[x] = blend(line[x]);
        }
        // y up: the band [lo, hi) counted from the bottom row.
        for (int y = n - hi; y < n - lo; ++y) {
            auto* line = reinterpret_cast<QRgb*>(square.scanLine(y));
            for (int x = 0; x < n; ++x)
                line[x] = blend(line[x]);
        }
    }
}

QRectF frameRect()
{
    return {1.0, 1.0, kSide - 2.0, kSide - 2.0};
}

std::array<QLineF, 2> crossHair(bool mouseMoving)
{
    const double half = kSide / 2.0;
    return {QLineF(0.0, half, kSide, half), QLineF(half, 0.0, half, mouseMoving ? 100.0 : kSide)};
}

int nameFontSize(const std::function<double(int size)>& widthAt)
{
    if (widthAt(kNameFontSize) <= kSide)
        return kNameFontSize;
    int size = kNameFontSize - 1;
    while (size > 1 && widthAt(size) > kSide)
        --size;
    return size;
}

TextOrigins textOrigins(double nameWidth, double mousePointWidth)
{
    const double nameX = kSide / 2.0 - nameWidth / 2.0;
    const double pointX = 30.0 - mousePointWidth / 2.0;
    return {{nameX, 103.0}, {pointX, 3.0}, {68.0, 3.0}};
}

const std::array<QPointF, 8>& haloOffsets()
{
    static const std::array<QPointF, 8> offsets{{{0.0, 1.0},
                                                 {0.0, -1.0},
                                                 {-1.0, 0.0},
                                                 {1.0, 0.0},
                                                 {-0.7, 0.7},
                                                 {0.7, 0.7},
                                                 {-0.7, -0.7},
                                                 {0.7, -0.7}}};
    return offsets;
}

} // namespace colour::readout
