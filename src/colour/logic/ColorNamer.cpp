// SPDX-License-Identifier: GPL-3.0-or-later
#include "colour/logic/ColorNamer.h"

#include "colour/logic/ColorTables.h"
#include "colour/logic/TextFormat.h"

#include <QDebug>

#include <algorithm>
#include <cmath>

namespace colour {

void RGB2HSL(float* H, float* S, float* L, float R, float G, float B)
{
    const float r = R / 255.0f;
    const float g = G / 255.0f;
    const float b = B / 255.0f;
    const float max = std::max({r, g, b});
    const float min = std::min({r, g, b});
    const float delta = max - min;
    const float l = (max + min) * 0.5f;

    float s = 0.0f;
    if (l > 0.0f && l < 1.0f)
        s = delta / (l < 0.5f ? 2.0f * l : 2.0f - 2.0f * l) * 255.0f;

    float h = 0.0f;
    if (delta > 0.0f) {
        if (max == r && max != g)
            h += (g - b) / delta;
        if (max == g && max != b)
            h += (b - r) / delta + 2.0f;
        if (max == b && max != r)
            h += (r - g) / delta + 4.0f;
        h = h / 6.0f * 255.0f; // no wrap of a negative hue, on purpose
    }

    if (H)
        *H = h;
    if (S)
        *S = s;
    if (L)
        *L = l * 255.0f;
}

double RGBtoHSV(double r, double g, double b)
{
    if (r == g && g == b)
        return 0.0;
    const double a = r - g;
    const double value =
        std::acos((a + r - b) / (2.0 * std::sqrt((g - b) * (r - b) + a * a))) / 6.2832;
    return g >= b ? value : 6.28318 - value;
}

ColorNamer::ColorNamer()
{
    m_rows.reserve(kNamedColorRows.size());
    for (const NamedColorRow& source : kNamedColorRows) {
        const QString key = QString::fromLatin1(source.key);
        const QString name = QString::fromUtf8(source.name);
        if (const auto it = m_indexOfKey.constFind(key); it != m_indexOfKey.cend()) {
            m_rows[static_cast<std::size_t>(*it)].name = name;
            continue;
        }
        m_indexOfKey.insert(key, static_cast<qsizetype>(m_rows.size()));
        m_rows.push_back({key, name, {}});
    }
    for (Row& row : m_rows) {
        const Color c = colorFromHexString(row.key);
        const float R = static_cast<float>(c.red * 255);
        const float G = static_cast<float>(c.green * 255);
        const float B = static_cast<float>(c.blue * 255);
        float H = 0.0f;
        float S = 0.0f;
        float L = 0.0f;
        RGB2HSL(&H, &S, &L, R, G, B);
        row.values = {R, G, B, H, S, L};
    }
}

ColorInfo ColorNamer::findNameForColor(const Color& color) const
{
    return algorithm(color);
}

ColorInfo ColorNamer::findNameForColorHexString(const QString& hexString) const
{
    return algorithm(colorFromHexString(hexString));
}

ColorInfo ColorNamer::algorithm(const Color& color) const
{
    const float r = static_cast<float>(color.red * 255);
    const float g = static_cast<float>(color.green * 255);
    const float b = static_cast<float>(color.blue * 255);

    ColorInfo info;
    const float mean = (r + g + b) / 3.0f;
    info.colorValue = formatWhole(mean);
    info.rgb = formatWhole(r) + u',' + formatWhole(g) + u',' + formatWhole(b);
    float h = 0.0f;
    float s = 0.0f;
    float l = 0.0f;
    RGB2HSL(&h, &s, &l, r, g, b);
    info.hex = hexStringFromColor(color);

    float best = -1.0f;
    const Row* bestRow = nullptr;
    for (const Row& row : m_rows) {
        // The hex text carries a "#" and the keys don't, so this never
        // matches; exact colours are found at distance 0 below. Kept so the
        // search stays the one the names were tuned with.
        if (info.hex == row.key) {
            info.colorName = row.name;
            return info;
        }
        const auto& v = row.values;
        const float rgbDistance =
            (r - v[0]) * (r - v[0]) + (g - v[1]) * (g - v[1]) + (b - v[2]) * (b - v[2]);
        const float hslDistance =
            (h - v[3]) * (h - v[3]) + (s - v[4]) * (s - v[4]) + (l - v[5]) * (l - v[5]);
        const float distance = hslDistance * 2.0f + rgbDistance;
        if (best < 0.0f || best > distance) {
            best = distance;
            bestRow = &row;
        }
    }
    if (bestRow)
        info.colorName = bestRow->name;
    return info;
}

Color ColorNamer::colorFromHexString(const QString& hexString)
{
    const std::uint32_t v = scanHexInt(hexString).value_or(0U);
    return Color::fromRgbF(((v >> 16) & 0xFF) / 255.0, ((v >> 8) & 0xFF) / 255.0,
                           (v & 0xFF) / 255.0, 1.0);
}

QString ColorNamer::hexStringFromColor(const Color& color)
{
    const auto cut = [](double component) { return static_cast<int>(component * 255.0); };
    return QString::asprintf("#%02X%02X%02X", cut(color.red), cut(color.green), cut(color.blue));
}

QString ColorNamer::nameOfColor(const Color& color) const
{
    // The components are already on a 0 to 1 scale and are divided again:
    // that is the look-up as its callers know it.
    const double h = RGBtoHSV(color.red / 255, color.green / 255, color.blue / 255);
    for (const ColorListRow& row : colorList()) {
        if (!(row.hue < h))
            return row.englishName;
    }
    return {};
}

QString ColorNamer::nameForColor(const Color& color) const
{
    qDebug().noquote() << QString::asprintf("%f,%f,%f", color.red, color.green, color.blue);
    QString result;
    double best = 0.0;
    bool found = false;
    for (const ColorListRow& row : colorList()) {
        const double dr = color.red - row.brightness / 100.0;
        const double dg = color.green - row.saturation / 100.0;
        const double db = color.blue - row.hue / 100.0;
        const double d = std::sqrt(dr * dr + dg * dg + db * db);
        if (!found || d < best) {
            best = d;
            result = row.chineseName;
            found = true;
        }
    }
    return result;
}

std::vector<ColorListRow> ColorNamer::colorList()
{
    std::vector<ColorListRow> list;
    list.reserve(kColorListRows.size());
    for (const ColorListEntry& e : kColorListRows)
        list.push_back({QString::fromUtf8(e.chineseName), QString::fromUtf8(e.englishName), e.hue,
                        e.saturation, e.brightness});
    return list;
}

std::optional<QString> ColorNamer::name(const QString& key) const
{
    const auto it = m_indexOfKey.constFind(key);
    if (it == m_indexOfKey.cend())
        return std::nullopt;
    return m_rows[static_cast<std::size_t>(*it)].name;
}

std::optional<std::array<float, 6>> ColorNamer::values(const QString& key) const
{
    const auto it = m_indexOfKey.constFind(key);
    if (it == m_indexOfKey.cend())
        return std::nullopt;
    return m_rows[static_cast<std::size_t>(*it)].values;
}

} // namespace colour
