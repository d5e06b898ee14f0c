// SPDX-License-Identifier: GPL-3.0-or-later
#include "colour/logic/Qorvani.h"

#include "colour/logic/TextFormat.h"

#include <QImage>

namespace colour::qorvani {

namespace {

Color device(double r, double g, double b, double a = 1.0)
{
    return Color::fromRgbF(r, g, b, a);
}

// The light gray the system draws table grids with.
constexpr double kGridGray = 0.8;

} // namespace

Color qorvaniGridColor()
{
    return device(kGridGray, kGridGray, kGridGray);
}

Color qorvaniWhiteColor()
{
    return device(1.0, 1.0, 1.0);
}

Color qorvaniMeetBaseColor()
{
    return device(0.99, 0.52, 0.14);
}

Color qorvaniBackgroundColorStyle1()
{
    return device(0.97, 0.97, 0.97);
}

Color qorvaniBackgroundColorStyle2()
{
    return qorvaniWhiteColor();
}

Color qorvaniBackgroundColorStyle3()
{
    return device(0.94, 0.94, 0.96);
}

Color qorvaniDarkGrayColor()
{
    return device(0.2, 0.2, 0.2);
}

Color qorvaniBlueColor()
{
    return device(0.17, 0.67, 1.0);
}

Color qorvaniOrangeColor()
{
    return device(1.0, 0.52, 0.0);
}

Color qorvaniGreenColor()
{
    return qorvaniColorWithHex(0x00C853, 1.0);
}

Color qorvaniRedColor()
{
    return device(1.0, 0.0, 0.0);
}

Color qorvaniBadgeColor()
{
    return qorvaniRedColor();
}

Color qorvaniDarkBlueColor()
{
    return device(0.02, 0.22, 0.42);
}

Color qorvaniGray60Color()
{
    return qorvaniColorWithHex(0x646466, 1.0);
}

Color qorvaniBrandingColor()
{
    return qorvaniBlueColor();
}

Color brandingColor()
{
    return device(37 / 255.0, 145 / 255.0, 214 / 255.0, 0.81);
}

QBrush qorvaniPageTextureColor()
{
    // A 16 by 16 tile of near-white with a faint, fixed grain.
    QImage tile(16, 16, QImage::Format_RGB32);
    std::uint32_t seed = 0x2545F491U;
    for (int y = 0; y < tile.height(); ++y) {
        for (int x = 0; x < tile.width(); ++x) {
            seed = seed * 1664525U + 1013904223U;
            const int v = 242 + static_cast<int>((seed >> 24) % 8U);
            tile.setPixel(x, y, qRgb(v, v, v - 3));
        }
    }
    return QBrush(tile);
}

std::optional<Color> qorvaniColorWithHexString(const QString& hexString)
{
    if (hexString.isEmpty())
        return std::nullopt;
    const std::uint32_t v = scanHexInt(QStringView(hexString).mid(1)).value_or(0U);
    return device(((v >> 16) & 0xFF) / 255.0, ((v >> 8) & 0xFF) / 255.0, (v & 0xFF) / 255.0);
}

Color qorvaniColorWithHex(std::uint32_t hex, double alpha)
{
    const auto part = [hex](int shift) {
        return static_cast<double>(static_cast<float>((hex >> shift) & 0xFF) / 255.0f);
    };
    return device(part(16), part(8), part(0), alpha);
}

} // namespace colour::qorvani
