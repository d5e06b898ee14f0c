// SPDX-License-Identifier: GPL-3.0-or-later
#include "colour/logic/ColorNamer.h"
#include "colour/logic/Qorvani.h"
#include "colour/logic/TextFormat.h"

#include <gtest/gtest.h>

#include <QSet>

using colour::Color;
using colour::ColorNamer;

namespace {

const ColorNamer& namer()
{
    static const ColorNamer instance;
    return instance;
}

QString keyOf(int r, int g, int b)
{
    return QString::asprintf("%02X%02X%02X", r, g, b);
}

} // namespace

TEST(ColorNamerTable, HoldsEveryRowOnceWithTheTwiceListedKeyReplaced)
{
    const auto& rows = namer().rows();
    EXPECT_EQ(rows.size(), 241U);
    QSet<QString> keys;
    for (const auto& row : rows) {
        EXPECT_EQ(row.key.size(), 6);
        EXPECT_EQ(row.key, row.key.toUpper());
        keys.insert(row.key);
    }
    EXPECT_EQ(keys.size(), 241);
    EXPECT_EQ(namer().name(QStringLiteral("FFFF00")), QStringLiteral("Yellow"));
    EXPECT_EQ(namer().name(QStringLiteral("#FFFF00")), std::nullopt);
}

TEST(ColorNamerTable, KeepsTheTablesSpellingAndOrder)
{
    EXPECT_EQ(namer().name(QStringLiteral("003153")), QStringLiteral("Prussian blue"));
    EXPECT_EQ(namer().name(QStringLiteral("2A52BE")), QStringLiteral("Cerulean blue"));
    EXPECT_EQ(namer().name(QStringLiteral("E6CFE6")), QStringLiteral("Pail Lilac"));
    EXPECT_EQ(namer().name(QStringLiteral("CCB38C")), QStringLiteral("Pale Ocre"));
    EXPECT_EQ(namer().name(QStringLiteral("127436")), QStringLiteral("Viridian"));
    const auto& rows = namer().rows();
    EXPECT_EQ(rows.front().name, QStringLiteral("Black"));
    EXPECT_EQ(rows.back().name, QStringLiteral("White"));
    // Royal Blue stays where the table has it, out of key order.
    const auto at = [&rows](const char* key) {
        for (std::size_t i = 0; i < rows.size(); ++i)
            if (rows[i].key == QLatin1String(key))
                return static_cast<int>(i);
        return -1;
    };
    EXPECT_EQ(at("041690"), at("3CB371") + 1);
    // The replaced key keeps its first place, before FFEFD5.
    EXPECT_LT(at("FFFF00"), at("FFEFD5"));
}

TEST(ColorNamerTable, ValuesAreRgbAndHslOnA255Scale)
{
    const auto red = namer().values(QStringLiteral("FF0000"));
    ASSERT_TRUE(red);
    EXPECT_EQ(*red, (std::array<float, 6>{255.0f, 0.0f, 0.0f, 0.0f, 255.0f, 127.5f}));
    const auto lime = namer().values(QStringLiteral("00FF00"));
    ASSERT_TRUE(lime);
    EXPECT_FLOAT_EQ((*lime)[3], 85.0f); // a third of the way round
    const auto gray = namer().values(QStringLiteral("808080"));
    ASSERT_TRUE(gray);
    EXPECT_EQ((*gray)[3], 0.0f);
    EXPECT_EQ((*gray)[4], 0.0f);
    EXPECT_FALSE(namer().values(QStringLiteral("123456")));
}

TEST(ColorNamerLookup, EveryTableColourFindsItsOwnName)
{
    for (const auto& row : namer().rows()) {
        EXPECT_EQ(namer().findNameForColorHexString(row.key).colorName, row.name)
            << qPrintable(row.key);
        const Color c = ColorNamer::colorFromHexString(row.key);
        const auto info = namer().findNameForColor(c);
        EXPECT_EQ(info.colorName, row.name);
        EXPECT_EQ(info.hex, u'#' + row.key);
    }
}

TEST(ColorNamerLookup, BlackIsBlackWithAllFourTexts)
{
    const auto info = namer().findNameForColor(Color::fromBytes(0, 0, 0));
    EXPECT_EQ(info, (colour::ColorInfo{QStringLiteral("0,0,0"), QStringLiteral("#000000"),
                                       QStringLiteral("Black"), QStringLiteral("0")}));
    // A "#" makes the scanner fail from the first character: black again.
    EXPECT_EQ(namer().findNameForColorHexString(QStringLiteral("#FFFFFF")).colorName,
              QStringLiteral("Black"));
}

TEST(ColorNamerLookup, HexIsCutWhileRgbAndMeanAreRounded)
{
    const auto info = namer().findNameForColor(Color::fromRgbF(0.999, 0.5, 0.0));
    EXPECT_EQ(info.hex, QStringLiteral("#FE7F00"));   // 254.745 and 127.5 cut
    EXPECT_EQ(info.rgb, QStringLiteral("255,128,0")); // 127.5 rounds to even: 128
    // (254.745 + 127.5 + 0) / 3 = 127.415
    EXPECT_EQ(info.colorValue, QStringLiteral("127"));
    EXPECT_EQ(namer().findNameForColor(Color::fromBytes(1, 2, 2)).colorValue, QStringLiteral("2"));
}

TEST(ColorNamerLookup, PinkishRedsKeepANegativeHue)
{
    float h = 0.0f;
    colour::RGB2HSL(&h, nullptr, nullptr, 255.0f, 0.0f, 64.0f);
    EXPECT_NEAR(h, -64.0f / 255.0f / 6.0f * 255.0f, 1e-4);
    // Wrapped into range this colour would sit with the violets; unwrapped it
    // stays with the reds whose hue is negative too.
    EXPECT_EQ(namer().findNameForColor(Color::fromBytes(255, 0, 64)).colorName,
              QStringLiteral("Carmine"));
    EXPECT_EQ(namer().findNameForColor(Color::fromBytes(255, 0, 8)).colorName,
              QStringLiteral("Red"));
    EXPECT_EQ(namer().findNameForColor(Color::fromBytes(255, 0, 128)).colorName,
              QStringLiteral("Rose"));
}

TEST(ColorNamerLookup, TiesGoToTheRowEnumeratedFirst)
{
    // 0000AC lies exactly between Dark Blue (8B) and Medium Blue (CD), and
    // 0000E6 between Medium Blue and Blue (FF), in every term of the distance.
    EXPECT_EQ(namer().findNameForColor(Color::fromBytes(0, 0, 0xAC)).colorName,
              QStringLiteral("Dark Blue"));
    EXPECT_EQ(namer().findNameForColor(Color::fromBytes(0, 0, 0xE6)).colorName,
              QStringLiteral("Medium Blue"));
    // One step either side of the tie decides it.
    EXPECT_EQ(namer().findNameForColor(Color::fromBytes(0, 0, 0xAD)).colorName,
              QStringLiteral("Medium Blue"));
    EXPECT_EQ(namer().findNameForColor(Color::fromBytes(0, 0, 0xE7)).colorName,
              QStringLiteral("Blue"));
}

TEST(ColorNamerLookup, NearbyColoursGetTheirNeighboursName)
{
    EXPECT_EQ(namer().findNameForColorHexString(keyOf(254, 1, 0)).colorName, QStringLiteral("Red"));
    EXPECT_EQ(namer().findNameForColorHexString(keyOf(1, 1, 1)).colorName, QStringLiteral("Black"));
}

TEST(ColorRGB2HSL, GraysHaveNoHueNorSaturationAndOutputsMayBeAbsent)
{
    float h = -1.0f;
    float s = -1.0f;
    float l = -1.0f;
    colour::RGB2HSL(&h, &s, &l, 255.0f, 255.0f, 255.0f);
    EXPECT_EQ(h, 0.0f);
    EXPECT_EQ(s, 0.0f); // l is 1: no saturation
    EXPECT_EQ(l, 255.0f);
    colour::RGB2HSL(nullptr, &s, nullptr, 0.0f, 0.0f, 255.0f);
    EXPECT_EQ(s, 255.0f);
    colour::RGB2HSL(&h, nullptr, nullptr, 0.0f, 0.0f, 255.0f);
    EXPECT_FLOAT_EQ(h, 170.0f);
}

TEST(ColorNamerOlderLookups, ColorListIsTheHueOrderedTable)
{
    const auto list = ColorNamer::colorList();
    ASSERT_EQ(list.size(), 242U);
    EXPECT_EQ(list.front(),
              (colour::ColorListRow{QStringLiteral("黑色"), QStringLiteral("Black"), 0, 0, 0}));
    EXPECT_EQ(list.back().englishName, QStringLiteral("Alizarin Crimson"));
    for (std::size_t i = 1; i < list.size(); ++i)
        EXPECT_LE(list[i - 1].hue, list[i].hue) << i;
    const auto veridian = std::find_if(list.begin(), list.end(), [](const auto& row) {
        return row.englishName == QLatin1String("Veridian");
    });
    ASSERT_NE(veridian, list.end());
    EXPECT_EQ(veridian->chineseName, QStringLiteral("铬绿"));
}

TEST(ColorNamerOlderLookups, NameOfColorGoesByHueAloneOnTwiceDividedComponents)
{
    EXPECT_EQ(namer().nameOfColor(Color::fromBytes(128, 128, 128)), QStringLiteral("Black"));
    // acos(1) is 0 for a pure red: the first row of hue 0.
    EXPECT_EQ(namer().nameOfColor(Color::fromRgbF(1, 0, 0)), QStringLiteral("Black"));
    // Green: a third of a turn, so the first row with a hue of at least 1.
    EXPECT_EQ(namer().nameOfColor(Color::fromRgbF(0, 1, 0)), QStringLiteral("Persimmon"));
    // Blue: 6.28318 minus a third, so the first row of hue 6 or more.
    EXPECT_NEAR(colour::RGBtoHSV(0, 0, 1), 6.28318 - std::acos(-0.5) / 6.2832, 1e-12);
    EXPECT_EQ(namer().nameOfColor(Color::fromRgbF(0, 0, 1)), QStringLiteral("Misty Rose"));
}

TEST(ColorNamerOlderLookups, NameForColorPairsRedWithBrightnessAndKeepsTheFirstOfEqualRows)
{
    EXPECT_EQ(namer().nameForColor(Color::fromRgbF(0, 0, 0)), QStringLiteral("黑色"));
    // Brightness 100, saturation 0, hue 0: White.
    EXPECT_EQ(namer().nameForColor(Color::fromRgbF(1, 0, 0)), QStringLiteral("白色"));
    // Light Cyan and Baby Blue share (180, 12, 100); the earlier row wins.
    EXPECT_EQ(namer().nameForColor(Color{1.0, 0.12, 1.8, 1.0}), QStringLiteral("亮青"));
}

TEST(ColorHexText, ScannerStopsLikeTheCocoaOne)
{
    using colour::scanHexInt;
    EXPECT_EQ(scanHexInt(u"FF8000"), 0xFF8000U);
    EXPECT_EQ(scanHexInt(u"ff8000"), 0xFF8000U);
    EXPECT_EQ(scanHexInt(u"  0x1a"), 0x1AU);
    EXPECT_EQ(scanHexInt(u"12G4"), 0x12U);
    EXPECT_EQ(scanHexInt(u"123456789"), 0xFFFFFFFFU);
    EXPECT_EQ(scanHexInt(u"#FF0000"), std::nullopt);
    EXPECT_EQ(scanHexInt(u""), std::nullopt);
    EXPECT_EQ(ColorNamer::colorFromHexString(QStringLiteral("123456789")),
              Color::fromBytes(255, 255, 255));
}

TEST(ColorHexText, WholeNumbersRoundLikeC)
{
    using colour::formatWhole;
    EXPECT_EQ(formatWhole(0.5), QStringLiteral("0"));
    EXPECT_EQ(formatWhole(1.5), QStringLiteral("2"));
    EXPECT_EQ(formatWhole(2.5), QStringLiteral("2"));
    EXPECT_EQ(formatWhole(254.745), QStringLiteral("255"));
    EXPECT_EQ(formatWhole(-0.4), QStringLiteral("-0"));
    EXPECT_EQ(ColorNamer::hexStringFromColor(Color::fromRgbF(1.0, 0.999, 0.0039)),
              QStringLiteral("#FFFE00"));
}

TEST(ColorQorvani, HexStringsSkipTheirFirstCharacter)
{
    using namespace colour::qorvani;
    EXPECT_EQ(qorvaniColorWithHexString(QStringLiteral("#2B9AFF")),
              Color::fromBytes(0x2B, 0x9A, 0xFF));
    EXPECT_EQ(qorvaniColorWithHexString(QStringLiteral("x0000FF")), Color::fromBytes(0, 0, 255));
    EXPECT_EQ(qorvaniColorWithHexString(QStringLiteral("#")), Color::fromBytes(0, 0, 0));
    EXPECT_EQ(qorvaniColorWithHexString(QString()), std::nullopt);
}

TEST(ColorQorvani, NamedColoursAndTheSinglePrecisionSplit)
{
    using namespace colour::qorvani;
    const Color green = qorvaniGreenColor();
    EXPECT_EQ(green.green, static_cast<double>(0xC8 / 255.0f));
    EXPECT_NE(green.green, 0xC8 / 255.0); // divided in single precision
    EXPECT_EQ(qorvaniColorWithHex(0x646466, 0.5).alpha, 0.5);
    EXPECT_EQ(qorvaniBrandingColor(), qorvaniBlueColor());
    EXPECT_EQ(qorvaniBlueColor(), Color::fromRgbF(0.17, 0.67, 1.0));
    EXPECT_EQ(brandingColor().alpha, 0.81);
    EXPECT_EQ(qorvaniBadgeColor(), Color::fromBytes(255, 0, 0));
    const QImage tile = qorvaniPageTextureColor().textureImage();
    ASSERT_FALSE(tile.isNull());
    EXPECT_GT(qGray(tile.pixel(0, 0)), 230); // a light page
}
