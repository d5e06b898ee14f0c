// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/x11/QtKeySymbols.h"

#include <utility>

namespace platform::x11 {

namespace {

// Keys outside the Latin-1 range, by their X keysyms.
constexpr std::pair<int, std::uint32_t> kSpecialKeys[] = {
    {Qt::Key_Escape, 0xff1b},         {Qt::Key_Tab, 0xff09},
    {Qt::Key_Backtab, 0xfe20},        {Qt::Key_Backspace, 0xff08},
    {Qt::Key_Return, 0xff0d},         {Qt::Key_Enter, 0xff8d},
    {Qt::Key_Insert, 0xff63},         {Qt::Key_Delete, 0xffff},
    {Qt::Key_Pause, 0xff13},          {Qt::Key_Print, 0xff61},
    {Qt::Key_SysReq, 0xff15},         {Qt::Key_Clear, 0xff0b},
    {Qt::Key_Home, 0xff50},           {Qt::Key_End, 0xff57},
    {Qt::Key_Left, 0xff51},           {Qt::Key_Up, 0xff52},
    {Qt::Key_Right, 0xff53},          {Qt::Key_Down, 0xff54},
    {Qt::Key_PageUp, 0xff55},         {Qt::Key_PageDown, 0xff56},
    {Qt::Key_Menu, 0xff67},           {Qt::Key_Help, 0xff6a},
    {Qt::Key_ScrollLock, 0xff14},     {Qt::Key_VolumeDown, 0x1008ff11},
    {Qt::Key_VolumeMute, 0x1008ff12}, {Qt::Key_VolumeUp, 0x1008ff13},
    {Qt::Key_MediaPlay, 0x1008ff14},  {Qt::Key_MediaStop, 0x1008ff15},
};

constexpr std::uint32_t kFirstFunctionKeysym = 0xffbe; // XK_F1

} // namespace

std::uint32_t keysymForQtKey(int qtKey)
{
    if (qtKey >= Qt::Key_A && qtKey <= Qt::Key_Z)
        return static_cast<std::uint32_t>(qtKey - Qt::Key_A + 'a');
    // Latin-1 keysyms are the characters' own codes, as Qt's keys are.
    if ((qtKey >= Qt::Key_Space && qtKey <= Qt::Key_AsciiTilde) ||
        (qtKey >= Qt::Key_nobreakspace && qtKey <= Qt::Key_ydiaeresis))
        return static_cast<std::uint32_t>(qtKey);
    if (qtKey >= Qt::Key_F1 && qtKey <= Qt::Key_F35)
        return kFirstFunctionKeysym + static_cast<std::uint32_t>(qtKey - Qt::Key_F1);
    for (const auto& [key, keysym] : kSpecialKeys) {
        if (key == qtKey)
            return keysym;
    }
    return 0;
}

std::uint16_t xModifiersForQt(Qt::KeyboardModifiers modifiers)
{
    std::uint16_t mask = 0;
    if (modifiers & Qt::ShiftModifier)
        mask |= 0x01; // Shift
    if (modifiers & Qt::ControlModifier)
        mask |= 0x04; // Control
    if (modifiers & Qt::AltModifier)
        mask |= 0x08; // Mod1
    if (modifiers & Qt::MetaModifier)
        mask |= 0x40; // Mod4
    return mask;
}

} // namespace platform::x11
