// SPDX-License-Identifier: GPL-3.0-or-later
#include "colour/logic/ReadoutLayout.h"

namespace colour::readout {

std::vector<double> gridLines()
{
    std::vector<double> lines;
    for (double i = kGridPitch; i < kSide; i += kGridPitch)
        lines.push_back(i + 0.5);
    return lines;
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
