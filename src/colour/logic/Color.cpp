// SPDX-License-Identifier: GPL-3.0-or-later
#include "colour/logic/Color.h"

#include <algorithm>

namespace colour {

Color Color::fromRgbF(double red, double green, double blue, double alpha)
{
    const auto unit = [](double v) { return std::clamp(v, 0.0, 1.0); };
    return {unit(red), unit(green), unit(blue), unit(alpha)};
}

Color Color::fromBytes(int red, int green, int blue)
{
    return fromRgbF(red / 255.0, green / 255.0, blue / 255.0, 1.0);
}

Color Color::fromQColor(const QColor& color)
{
    const QColor rgb = color.toRgb();
    return fromRgbF(rgb.redF(), rgb.greenF(), rgb.blueF(), rgb.alphaF());
}

QColor Color::toQColor() const
{
    return QColor::fromRgbF(static_cast<float>(red), static_cast<float>(green),
                            static_cast<float>(blue), static_cast<float>(alpha));
}

} // namespace colour
