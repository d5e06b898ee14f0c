// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>

namespace colour {

// A colour as the colour code reasons about it: red, green, blue and alpha on
// a 0 to 1 scale in double precision. QColor keeps 16 bits per component,
// which is enough for painting but not for the cut-versus-rounded decisions
// of the hex and RGB texts, so the logic carries its own value.
struct Color
{
    double red = 0.0;
    double green = 0.0;
    double blue = 0.0;
    double alpha = 1.0;

    // Components are clamped to [0, 1], as device colours are.
    [[nodiscard]] static Color fromRgbF(double red, double green, double blue, double alpha = 1.0);
    // Bytes over 255.0, alpha 1: the colour of one sampled pixel.
    [[nodiscard]] static Color fromBytes(int red, int green, int blue);
    [[nodiscard]] static Color fromQColor(const QColor& color);
    [[nodiscard]] QColor toQColor() const;

    bool operator==(const Color&) const = default;
};

} // namespace colour
