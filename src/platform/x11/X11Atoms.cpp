// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/x11/X11Atoms.h"

#include "platform/x11/XcbHandles.h"

#include <cstring>
#include <utility>

namespace platform::x11 {

namespace {

// In the order of X11Atoms::Name.
constexpr const char* kAtomNames[X11Atoms::Count] = {
    "WM_STATE",
    "_NET_WM_NAME",
    "UTF8_STRING",
    "_NET_WM_PID",
    "_NET_WM_WINDOW_TYPE",
    "_NET_WM_WINDOW_TYPE_DESKTOP",
    "_NET_WM_WINDOW_TYPE_DOCK",
    "_NET_WM_WINDOW_TYPE_NOTIFICATION",
    "_NET_WM_WINDOW_TYPE_MENU",
    "_NET_WM_WINDOW_TYPE_DROPDOWN_MENU",
    "_NET_WM_WINDOW_TYPE_POPUP_MENU",
    "_NET_WM_WINDOW_TYPE_TOOLTIP",
    "_NET_WM_WINDOW_TYPE_COMBO",
    "_NET_WM_WINDOW_TYPE_DND",
    "_NET_WM_WINDOW_TYPE_NORMAL",
    "_NET_WM_WINDOW_TYPE_DIALOG",
    "_NET_WM_WINDOW_TYPE_UTILITY",
    "_NET_WM_STATE",
    "_NET_WM_STATE_ABOVE",
    "_NET_WM_STATE_HIDDEN",
    "_NET_WM_WINDOW_OPACITY",
};

constexpr std::pair<X11Atoms::Name, WindowType> kTypes[] = {
    {X11Atoms::TypeDesktop, WindowType::Desktop},
    {X11Atoms::TypeDock, WindowType::Dock},
    {X11Atoms::TypeNotification, WindowType::Notification},
    {X11Atoms::TypeMenu, WindowType::Menu},
    {X11Atoms::TypeDropdown, WindowType::DropdownMenu},
    {X11Atoms::TypePopup, WindowType::PopupMenu},
    {X11Atoms::TypeTooltip, WindowType::Tooltip},
    {X11Atoms::TypeCombo, WindowType::Combo},
    {X11Atoms::TypeDnd, WindowType::Dnd},
    {X11Atoms::TypeNormal, WindowType::Normal},
    {X11Atoms::TypeDialog, WindowType::Dialog},
    {X11Atoms::TypeUtility, WindowType::Utility},
};

constexpr std::pair<X11Atoms::Name, WindowState> kStates[] = {
    {X11Atoms::StateAbove, WindowState::Above},
    {X11Atoms::StateHidden, WindowState::Hidden},
};

template <typename Enum, std::size_t N>
std::vector<Enum> translate(const X11Atoms& atoms, const std::vector<xcb_atom_t>& list,
                            const std::pair<X11Atoms::Name, Enum> (&table)[N], Enum other)
{
    std::vector<Enum> out;
    out.reserve(list.size());
    for (const xcb_atom_t atom : list) {
        Enum value = other;
        for (const auto& [name, meaning] : table) {
            if (atom != XCB_NONE && atoms[name] == atom) {
                value = meaning;
                break;
            }
        }
        out.push_back(value);
    }
    return out;
}

} // namespace

X11Atoms X11Atoms::intern(xcb_connection_t* connection)
{
    X11Atoms atoms;
    std::array<xcb_intern_atom_cookie_t, Count> cookies{};
    for (std::size_t i = 0; i < Count; ++i)
        cookies[i] = xcb_intern_atom(
            connection, 0, static_cast<std::uint16_t>(std::strlen(kAtomNames[i])), kAtomNames[i]);
    for (std::size_t i = 0; i < Count; ++i) {
        XcbReply<xcb_intern_atom_reply_t> reply(
            xcb_intern_atom_reply(connection, cookies[i], nullptr));
        atoms.m_atoms[i] = reply ? reply->atom : XCB_NONE;
    }
    return atoms;
}

std::vector<WindowType> X11Atoms::typesOf(const std::vector<xcb_atom_t>& atoms) const
{
    return translate(*this, atoms, kTypes, WindowType::Other);
}

std::vector<WindowState> X11Atoms::statesOf(const std::vector<xcb_atom_t>& atoms) const
{
    return translate(*this, atoms, kStates, WindowState::Other);
}

} // namespace platform::x11
