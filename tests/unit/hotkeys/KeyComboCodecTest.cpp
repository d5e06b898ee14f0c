// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/hotkeys/KeyComboCodec.h"
#include "settings/Defaults.h"
#include "settings/MemoryStore.h"

#include <gtest/gtest.h>

using namespace app::hotkeys;
using platform::KeyCombo;

namespace {
QVariantMap stored(const QVariant& keyCode, const QVariant& modifierFlags)
{
    return {{QStringLiteral("keyCode"), keyCode}, {QStringLiteral("modifierFlags"), modifierFlags}};
}
} // namespace

TEST(KeyComboCodec, CombinationsSurviveTheStoreAsJson)
{
    settings::MemoryStore store;
    settings::Defaults defaults(store);
    const KeyCombo combos[] = {
        {Qt::Key_A, Qt::AltModifier},
        {Qt::Key_F12, Qt::NoModifier},
        {Qt::Key_4, Qt::ControlModifier | Qt::ShiftModifier | Qt::MetaModifier},
        {Qt::Key_Space, Qt::AltModifier | Qt::ControlModifier},
    };
    QVariantMap table;
    for (int i = 0; i < 4; ++i)
        table.insert(QString::number(i), toStoredForm(combos[i]));
    defaults.setObject(QStringLiteral("shortcut"), table);

    const QVariantMap back = defaults.dictionaryForKey(QStringLiteral("shortcut"));
    for (int i = 0; i < 4; ++i) {
        const auto combo = fromStoredForm(back.value(QString::number(i)));
        ASSERT_TRUE(combo.has_value()) << i;
        EXPECT_EQ(*combo, combos[i]) << i;
    }
}

TEST(KeyComboCodec, OddStoredFormsAreReadLikeNumbersAndBadOnesGiveNothing)
{
    // Text and floating point numbers, as a hand-edited file may have them.
    EXPECT_EQ(fromStoredForm(stored(QStringLiteral("65"), QStringLiteral("134217728"))),
              (KeyCombo{Qt::Key_A, Qt::AltModifier}));
    EXPECT_EQ(fromStoredForm(stored(65.0, 134217728.0)), (KeyCombo{Qt::Key_A, Qt::AltModifier}));
    // A missing modifier mask is none; keypad and other bits are dropped.
    EXPECT_EQ(fromStoredForm(QVariantMap{{QStringLiteral("keyCode"), int(Qt::Key_F3)}}),
              (KeyCombo{Qt::Key_F3, Qt::NoModifier}));
    EXPECT_EQ(
        fromStoredForm(stored(int(Qt::Key_B), int(Qt::KeypadModifier | Qt::ShiftModifier | 0x1))),
        (KeyCombo{Qt::Key_B, Qt::ShiftModifier}));
    // No key, no combination.
    EXPECT_FALSE(fromStoredForm(stored(0, int(Qt::AltModifier))).has_value());
    EXPECT_FALSE(fromStoredForm(stored(QStringLiteral("x"), 0)).has_value());
    EXPECT_FALSE(fromStoredForm(QVariantMap{}).has_value());
    EXPECT_FALSE(fromStoredForm(QStringLiteral("Alt+A")).has_value());
    EXPECT_FALSE(fromStoredForm(QVariant()).has_value());
    // And what is written holds the modifiers only.
    EXPECT_EQ(toStoredForm({Qt::Key_A, Qt::AltModifier | Qt::KeypadModifier})
                  .value(QStringLiteral("modifierFlags"))
                  .toInt(),
              int(Qt::AltModifier));
}

TEST(KeyComboCodec, GlyphsComeInControlOptionShiftCommandOrderBeforeTheKey)
{
    EXPECT_EQ(glyphString({Qt::Key_A, Qt::AltModifier}), QStringLiteral("⌥A"));
    EXPECT_EQ(glyphString({Qt::Key_F5, Qt::ShiftModifier | Qt::ControlModifier}),
              QStringLiteral("⇧⌘F5"));
    EXPECT_EQ(glyphString({Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier | Qt::AltModifier |
                                          Qt::MetaModifier}),
              QStringLiteral("⌃⌥⇧⌘Z"));
    EXPECT_EQ(glyphString({Qt::Key_Space, Qt::AltModifier}), QStringLiteral("⌥Space"));
    EXPECT_EQ(glyphString({Qt::Key_Return, Qt::MetaModifier}), QStringLiteral("⌃↩"));
    EXPECT_EQ(glyphString({Qt::Key_F20, Qt::NoModifier}), QStringLiteral("F20"));
    EXPECT_EQ(glyphString({Qt::Key_Comma, Qt::AltModifier}), QStringLiteral("⌥,"));
    EXPECT_EQ(glyphString({Qt::Key_5, Qt::AltModifier}), QStringLiteral("⌥5"));
    EXPECT_EQ(keySequenceOf({Qt::Key_A, Qt::AltModifier}), QKeySequence(QStringLiteral("Alt+A")));
    EXPECT_EQ(keySequenceOf({Qt::Key_X, Qt::ControlModifier | Qt::ShiftModifier}),
              QKeySequence(QStringLiteral("Ctrl+Shift+X")));
}

TEST(KeyComboCodec, OnlyF1ToF20MayGoWithoutTheUsualModifiers)
{
    const auto all = kHotKeyModifiers;
    EXPECT_TRUE(shouldUnconditionallyAllowModifierFlags({}, Qt::Key_F1, {}, all));
    EXPECT_TRUE(shouldUnconditionallyAllowModifierFlags({}, Qt::Key_F20, {}, all));
    EXPECT_FALSE(shouldUnconditionallyAllowModifierFlags({}, Qt::Key_F21, {}, all));
    EXPECT_FALSE(shouldUnconditionallyAllowModifierFlags({}, Qt::Key_A, {}, all));
    EXPECT_FALSE(shouldUnconditionallyAllowModifierFlags({}, Qt::Key_Escape, {}, all));
    // The required modifiers must be there, and nothing that is not allowed.
    EXPECT_FALSE(shouldUnconditionallyAllowModifierFlags({}, Qt::Key_F3, Qt::ShiftModifier, all));
    EXPECT_TRUE(shouldUnconditionallyAllowModifierFlags(Qt::ShiftModifier, Qt::Key_F3,
                                                        Qt::ShiftModifier, all));
    EXPECT_FALSE(shouldUnconditionallyAllowModifierFlags(Qt::MetaModifier, Qt::Key_F3, {},
                                                         Qt::ShiftModifier | Qt::AltModifier));
}
