// SPDX-License-Identifier: GPL-3.0-or-later
#include "colour/logic/ColorCopyKeys.h"

#include <gtest/gtest.h>

using namespace colour;

namespace {

const std::optional<QString> kRgb = QStringLiteral("12,34,56");
const std::optional<QString> kHex = QStringLiteral("#0C2238");
const std::optional<QString> kFormat = QStringLiteral("rgb(_R, _G, _B)");
const std::optional<QString> kNone;

ColorKeyOutcome copy(const QString& text)
{
    return {ColorKeyAction::CopyText, text};
}

const ColorKeyOutcome kDialog{ColorKeyAction::OpenFormatDialog, std::nullopt};
const ColorKeyOutcome kNothing{};

} // namespace

TEST(ColorCopyKeys, RAndHCopyWithAnyModifiers)
{
    EXPECT_EQ(colorKeyOutcome(Qt::Key_R, Qt::NoModifier, kRgb, kHex, kNone), copy(*kRgb));
    EXPECT_EQ(
        colorKeyOutcome(Qt::Key_R, Qt::ControlModifier | Qt::ShiftModifier, kRgb, kHex, kNone),
        copy(*kRgb));
    EXPECT_EQ(colorKeyOutcome(Qt::Key_H, Qt::AltModifier, kRgb, kHex, kFormat), copy(*kHex));
    // Before any colour was read the clipboard is cleared and left empty.
    EXPECT_EQ(colorKeyOutcome(Qt::Key_R, Qt::NoModifier, kNone, kNone, kNone),
              (ColorKeyOutcome{ColorKeyAction::CopyText, std::nullopt}));
    EXPECT_EQ(colorKeyOutcome(Qt::Key_F, Qt::NoModifier, kRgb, kHex, kFormat), kNothing);
    EXPECT_EQ(colorKeyOutcome(Qt::Key_Escape, Qt::NoModifier, kRgb, kHex, kFormat), kNothing);
}

TEST(ColorCopyKeys, ZCopiesTheStoredFormatOnlyWithoutModifiers)
{
    EXPECT_EQ(colorKeyOutcome(Qt::Key_Z, Qt::NoModifier, kRgb, kHex, kFormat),
              copy(QStringLiteral("rgb(12, 34, 56)")));
    // A keypad flag is not one of the four modifiers that count.
    EXPECT_EQ(colorKeyOutcome(Qt::Key_Z, Qt::KeypadModifier, kRgb, kHex, kFormat),
              copy(QStringLiteral("rgb(12, 34, 56)")));
    EXPECT_EQ(colorKeyOutcome(Qt::Key_Z, Qt::ControlModifier, kRgb, kHex, kFormat), kNothing);
    EXPECT_EQ(colorKeyOutcome(Qt::Key_Z, Qt::AltModifier, kRgb, kHex, kFormat), kNothing);
    EXPECT_EQ(colorKeyOutcome(Qt::Key_Z, Qt::ShiftModifier | Qt::AltModifier, kRgb, kHex, kFormat),
              kNothing);
    // Inert until a colour has been read.
    EXPECT_EQ(colorKeyOutcome(Qt::Key_Z, Qt::NoModifier, kNone, kNone, kFormat), kNothing);
}

TEST(ColorCopyKeys, ShiftZOrNoStoredFormatOpensTheDialog)
{
    EXPECT_EQ(colorKeyOutcome(Qt::Key_Z, Qt::ShiftModifier, kRgb, kHex, kFormat), kDialog);
    EXPECT_EQ(colorKeyOutcome(Qt::Key_Z, Qt::NoModifier, kRgb, kHex, kNone), kDialog);
    EXPECT_EQ(colorKeyOutcome(Qt::Key_Z, Qt::NoModifier, kNone, kNone, kNone), kDialog);
    EXPECT_EQ(colorKeyOutcome(Qt::Key_Z, Qt::ShiftModifier, kNone, kNone, kFormat), kDialog);
}

TEST(ColorCopyKeys, CustomFormatReplacesEveryPlaceHolderInOrder)
{
    EXPECT_EQ(customColorString(QStringLiteral("_R-_R/_G/_B"), QStringLiteral("1,22,255")),
              QStringLiteral("1-1/22/255"));
    EXPECT_EQ(
        customColorString(formatDialogTemplate(), QStringLiteral("255,128,0")),
        QStringLiteral("[NSColor colorWithRed:255/255.0 green:128/255.0 blue:0/255.0 alpha:1.0];"));
    EXPECT_EQ(customColorString(QStringLiteral("no place holders"), QStringLiteral("1,2,3")),
              QStringLiteral("no place holders"));
    // "_r" is not a place holder; a missing field counts as empty.
    EXPECT_EQ(customColorString(QStringLiteral("_r_R_B"), QStringLiteral("7,8")),
              QStringLiteral("_r7"));
}

TEST(ColorCopyKeys, DialogTextsAndWhatItStores)
{
    const QString message = formatDialogMessage();
    EXPECT_EQ(message.indexOf(u'C'), 63);
    EXPECT_EQ(message.left(63), QString(63, u' '));
    EXPECT_TRUE(message.endsWith(
        QStringLiteral("Custom RGB Color Format\n\n\n *_R,_G,_B is the corresponding value of "
                       "RGB,Kelvo will automatically replace it\n\n")));
    EXPECT_EQ(
        formatDialogTemplate(),
        QStringLiteral("[NSColor colorWithRed:_R/255.0 green:_G/255.0 blue:_B/255.0 alpha:1.0];"));

    EXPECT_EQ(formatToStore(1000, QStringLiteral("_B_G_R")), QStringLiteral("_B_G_R"));
    EXPECT_EQ(formatToStore(1001, QStringLiteral("_R_G_B")), std::nullopt);
    EXPECT_EQ(formatToStore(1000, QStringLiteral("_R,_G")), std::nullopt);
    EXPECT_EQ(formatToStore(1000, QStringLiteral("_r,_g,_b")), std::nullopt);
}
