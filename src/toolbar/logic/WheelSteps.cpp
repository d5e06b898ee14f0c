// SPDX-License-Identifier: GPL-3.0-or-later
#include "toolbar/logic/WheelSteps.h"

#include <algorithm>
#include <cstdio>

namespace toolbar::wheel {

namespace {

int direction(double delta)
{
    return delta > 0 ? 1 : (delta < 0 ? -1 : 0);
}

// printf's rounding (half to even on the binary value), which the labels
// have always had; Qt's own formatting rounds some halves the other way.
QString printfFixed(double value, int decimals)
{
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return QString::fromLatin1(text);
}

} // namespace

const std::array<int, 11>& textSizes()
{
    static constexpr std::array<int, 11> sizes{10, 11, 12, 13, 14, 18, 24, 36, 48, 64, 72};
    return sizes;
}

int textSizeRow(int size)
{
    const auto& sizes = textSizes();
    const auto* it = std::find(sizes.begin(), sizes.end(), size);
    return it == sizes.end() ? 0 : static_cast<int>(it - sizes.begin());
}

std::optional<int> steppedSize(QStringView tool, int size, double delta)
{
    const int step = direction(delta);
    if (step == 0)
        return std::nullopt;
    const int stepped = size + step;
    if (stepped < 1 || stepped > 100)
        return std::nullopt;
    // Only lines and pencil strokes are drawn wider than 40.
    if (tool != u"line" && tool != u"pencilPen" && stepped >= 41)
        return std::nullopt;
    // A mosaic's blocks stop at the largest dot.
    if (tool == u"mosaic" && stepped >= 11)
        return std::nullopt;
    return stepped;
}

std::optional<int> steppedTextSize(int size, double delta)
{
    const int step = direction(delta);
    const int row = textSizeRow(size);
    const int last = static_cast<int>(textSizes().size()) - 1;
    if (step == 0 || (step > 0 && row == last) || (step < 0 && row == 0))
        return std::nullopt;
    return textSizes()[static_cast<std::size_t>(row + step)];
}

int steppedSerialNumber(int number, double delta)
{
    return std::max(1, number + direction(delta));
}

std::optional<double> steppedAlpha(double alpha, double delta)
{
    const double from = static_cast<float>(alpha);
    const double stepped = from + 0.05 * direction(delta);
    if (stepped < 0 || stepped > 1)
        return std::nullopt;
    return stepped;
}

QString alphaText(double alpha)
{
    return printfFixed(alpha, 2);
}

QString alphaPercent(double alpha)
{
    return printfFixed(alpha * 100, 0);
}

} // namespace toolbar::wheel
