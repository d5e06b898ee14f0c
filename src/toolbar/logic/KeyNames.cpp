// SPDX-License-Identifier: GPL-3.0-or-later
#include "toolbar/logic/KeyNames.h"

#include <array>

namespace toolbar {

namespace {

struct KeyName
{
    QStringView name;
    int key;
};

constexpr int keypad(Qt::Key key)
{
    return static_cast<int>(key) | static_cast<int>(Qt::KeypadModifier);
}

// In the order of testing. Rows whose name came earlier are never reached;
// they stand here as the keypad's keys.
constexpr std::array<KeyName, 95> kKeyNames{{
    {u"a", Qt::Key_A},
    {u"s", Qt::Key_S},
    {u"d", Qt::Key_D},
    {u"f", Qt::Key_F},
    {u"h", Qt::Key_H},
    {u"g", Qt::Key_G},
    {u"z", Qt::Key_Z},
    {u"x", Qt::Key_X},
    {u"c", Qt::Key_C},
    {u"v", Qt::Key_V},
    {u"b", Qt::Key_B},
    {u"q", Qt::Key_Q},
    {u"w", Qt::Key_W},
    {u"e", Qt::Key_E},
    {u"r", Qt::Key_R},
    {u"y", Qt::Key_Y},
    {u"t", Qt::Key_T},
    {u"1", Qt::Key_1},
    {u"2", Qt::Key_2},
    {u"3", Qt::Key_3},
    {u"4", Qt::Key_4},
    {u"6", Qt::Key_6},
    {u"5", Qt::Key_5},
    {u"=", Qt::Key_Equal},
    {u"9", Qt::Key_9},
    {u"7", Qt::Key_7},
    {u"-", Qt::Key_Minus},
    {u"8", Qt::Key_8},
    {u"0", Qt::Key_0},
    {u"]", Qt::Key_BracketRight},
    {u"o", Qt::Key_O},
    {u"u", Qt::Key_U},
    {u"[", Qt::Key_BracketLeft},
    {u"i", Qt::Key_I},
    {u"p", Qt::Key_P},
    {u"\u21A9", Qt::Key_Return},
    {u"l", Qt::Key_L},
    {u"j", Qt::Key_J},
    {u"'", Qt::Key_Apostrophe},
    {u"k", Qt::Key_K},
    {u";", Qt::Key_Semicolon},
    {u"\\", Qt::Key_Backslash},
    {u",", Qt::Key_Comma},
    {u"/", Qt::Key_Slash},
    {u"n", Qt::Key_N},
    {u"m", Qt::Key_M},
    {u".", Qt::Key_Period},
    {u"TAB", Qt::Key_Tab},
    {u"\u3129", Qt::Key_Space},
    {u"`", Qt::Key_QuoteLeft},
    {u"DELETE", Qt::Key_Backspace},
    {u"ENTER", Qt::Key_Enter},
    {u"ESCAPE", Qt::Key_Escape},
    {u".", keypad(Qt::Key_Period)},
    {u"*", keypad(Qt::Key_Asterisk)},
    {u"+", keypad(Qt::Key_Plus)},
    {u"CLEAR", keypad(Qt::Key_Clear)},
    {u"/", keypad(Qt::Key_Slash)},
    {u"ENTER", keypad(Qt::Key_Enter)},
    {u"=", keypad(Qt::Key_Equal)},
    {u"0", keypad(Qt::Key_0)},
    {u"1", keypad(Qt::Key_1)},
    {u"2", keypad(Qt::Key_2)},
    {u"3", keypad(Qt::Key_3)},
    {u"4", keypad(Qt::Key_4)},
    {u"5", keypad(Qt::Key_5)},
    {u"6", keypad(Qt::Key_6)},
    {u"7", keypad(Qt::Key_7)},
    {u"8", keypad(Qt::Key_8)},
    {u"9", keypad(Qt::Key_9)},
    {u"F5", Qt::Key_F5},
    {u"F6", Qt::Key_F6},
    {u"F7", Qt::Key_F7},
    {u"F3", Qt::Key_F3},
    {u"F8", Qt::Key_F8},
    {u"F9", Qt::Key_F9},
    {u"F11", Qt::Key_F11},
    {u"F13", Qt::Key_F13},
    {u"F14", Qt::Key_F14},
    {u"F10", Qt::Key_F10},
    {u"F12", Qt::Key_F12},
    {u"F15", Qt::Key_F15},
    {u"HELP", Qt::Key_Help},
    {u"HOME", Qt::Key_Home},
    {u"PGUP", Qt::Key_PageUp},
    {u"DELETE", Qt::Key_Delete},
    {u"F4", Qt::Key_F4},
    {u"END", Qt::Key_End},
    {u"F2", Qt::Key_F2},
    {u"PGDN", Qt::Key_PageDown},
    {u"F1", Qt::Key_F1},
    {u"LEFT", Qt::Key_Left},
    {u"RIGHT", Qt::Key_Right},
    {u"DOWN", Qt::Key_Down},
    {u"UP", Qt::Key_Up},
}};

} // namespace

int keyCodeFormKeyString(QStringView name)
{
    for (const KeyName& row : kKeyNames) {
        if (row.name == name)
            return row.key;
    }
    return 0;
}

} // namespace toolbar
