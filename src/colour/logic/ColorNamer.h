// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "colour/logic/Color.h"

#include <QHash>
#include <QString>

#include <array>
#include <optional>
#include <vector>

namespace colour {

// What a look-up gives: four texts.
struct ColorInfo
{
    QString rgb;        // "%.f,%.f,%.f" of the components on a 0 to 255 scale (rounded)
    QString hex;        // "#%02X%02X%02X" (components cut, not rounded)
    QString colorName;  // English name of the nearest named colour
    QString colorValue; // "%.f" of the single-precision mean of the three components

    bool operator==(const ColorInfo&) const = default;
};

// One row of the older table that colorList() gives.
struct ColorListRow
{
    QString chineseName;
    QString englishName;
    int hue = 0;        // degrees, 0 to 359
    int saturation = 0; // per cent
    int brightness = 0; // per cent

    bool operator==(const ColorListRow&) const = default;
};

// H, S, L on a 0 to 255 scale from R, G, B on the same scale, all in single
// precision. Any of the outputs may be null. A red with more blue than green
// gets a negative hue: it is deliberately not wrapped, and the nearest-name
// search depends on that.
void RGB2HSL(float* H, float* S, float* L, float R, float G, float B);

// The hue of the older look-up, as a fraction of a turn; its two constants
// (6.2832 and 6.28318) differ on purpose.
[[nodiscard]] double RGBtoHSV(double r, double g, double b);

// Names a colour: the nearest of the named colours by a weighted distance in
// RGB and HSL. Built once (the tables are constant), then read-only, so one
// instance can serve every screen of every capture.
class ColorNamer
{
public:
    // One entry of the names and values dictionaries, in enumeration order.
    struct Row
    {
        QString key; // "RRGGBB", upper case, no "#"
        QString name;
        std::array<float, 6> values{}; // R, G, B, H, S, L, all 0 to 255
    };

    ColorNamer();

    [[nodiscard]] ColorInfo findNameForColor(const Color& color) const;
    [[nodiscard]] ColorInfo findNameForColorHexString(const QString& hexString) const;
    // The search itself: a linear pass, ties going to the row enumerated first.
    [[nodiscard]] ColorInfo algorithm(const Color& color) const;

    // Parses with the scanner from the first character, so a leading "#"
    // gives black.
    [[nodiscard]] static Color colorFromHexString(const QString& hexString);
    [[nodiscard]] static QString hexStringFromColor(const Color& color);

    // The older look-ups, unused by the readout and kept for their callers
    // to come: a name by hue alone, and a Chinese name by a distance that
    // pairs red with brightness and blue with hue.
    [[nodiscard]] QString nameOfColor(const Color& color) const;
    [[nodiscard]] QString nameForColor(const Color& color) const;
    // The older table, built afresh on each call.
    [[nodiscard]] static std::vector<ColorListRow> colorList();

    // The names dictionary (key to name) and the values dictionary (key to
    // R, G, B, H, S, L); nothing for a key that isn't there.
    [[nodiscard]] std::optional<QString> name(const QString& key) const;
    [[nodiscard]] std::optional<std::array<float, 6>> values(const QString& key) const;
    // Both dictionaries in their enumeration order: the table's order, with
    // the twice-listed key at its first place under its last name.
    [[nodiscard]] const std::vector<Row>& rows() const { return m_rows; }

private:
    std::vector<Row> m_rows;
    QHash<QString, qsizetype> m_indexOfKey;
};

} // namespace colour
