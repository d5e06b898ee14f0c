// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/x11/QtKeySymbols.h"

#include <X11/keysym.h>

#include <gtest/gtest.h>

using namespace platform::x11;

TEST(QtKeySymbols, KeysAreTheKeysymsTheyTypeWithoutShift)
{
    EXPECT_EQ(keysymForQtKey(Qt::Key_A), std::uint32_t(XK_a));
    EXPECT_EQ(keysymForQtKey(Qt::Key_Z), std::uint32_t(XK_z));
    EXPECT_EQ(keysymForQtKey(Qt::Key_4), std::uint32_t(XK_4));
    EXPECT_EQ(keysymForQtKey(Qt::Key_Space), std::uint32_t(XK_space));
    EXPECT_EQ(keysymForQtKey(Qt::Key_Slash), std::uint32_t(XK_slash));
    EXPECT_EQ(keysymForQtKey(Qt::Key_Exclam), std::uint32_t(XK_exclam));
    EXPECT_EQ(keysymForQtKey(Qt::Key_Adiaeresis), std::uint32_t(XK_Adiaeresis));
    EXPECT_EQ(keysymForQtKey(Qt::Key_F1), std::uint32_t(XK_F1));
    EXPECT_EQ(keysymForQtKey(Qt::Key_F20), std::uint32_t(XK_F20));
    EXPECT_EQ(keysymForQtKey(Qt::Key_F35), std::uint32_t(XK_F35));
    EXPECT_EQ(keysymForQtKey(Qt::Key_Escape), std::uint32_t(XK_Escape));
    EXPECT_EQ(keysymForQtKey(Qt::Key_Backspace), std::uint32_t(XK_BackSpace));
    EXPECT_EQ(keysymForQtKey(Qt::Key_Delete), std::uint32_t(XK_Delete));
    EXPECT_EQ(keysymForQtKey(Qt::Key_Return), std::uint32_t(XK_Return));
    EXPECT_EQ(keysymForQtKey(Qt::Key_PageDown), std::uint32_t(XK_Page_Down));
    EXPECT_EQ(keysymForQtKey(Qt::Key_Print), std::uint32_t(XK_Print));
    // Modifiers alone and unknown keys cannot be hot keys.
    EXPECT_EQ(keysymForQtKey(Qt::Key_Alt), 0u);
    EXPECT_EQ(keysymForQtKey(Qt::Key_Shift), 0u);
    EXPECT_EQ(keysymForQtKey(Qt::Key_unknown), 0u);
    EXPECT_EQ(keysymForQtKey(0), 0u);
}

TEST(QtKeySymbols, ModifiersFollowAltIsMod1AndMetaIsSuper)
{
    EXPECT_EQ(xModifiersForQt(Qt::AltModifier), 0x08);
    EXPECT_EQ(xModifiersForQt(Qt::MetaModifier), 0x40);
    EXPECT_EQ(xModifiersForQt(Qt::ControlModifier | Qt::ShiftModifier), 0x05);
    EXPECT_EQ(xModifiersForQt(Qt::KeypadModifier), 0);
    // An event with Caps Lock, Num Lock and a pointer button still matches.
    EXPECT_EQ(hotKeyState(0x08 | 0x02 | 0x10 | 0x100), 0x08);
    EXPECT_EQ(hotKeyState(0x40 | 0x01), 0x41);
}
