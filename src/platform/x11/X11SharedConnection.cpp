// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/x11/X11SharedConnection.h"

#include <QCoreApplication>
#include <QGuiApplication>

#include <cstdlib>

namespace platform::x11 {

xcb_connection_t* X11SharedConnection::qtConnection()
{
    auto* app = qobject_cast<QGuiApplication*>(QCoreApplication::instance());
    if (app == nullptr)
        return nullptr;
    auto* x11 = app->nativeInterface<QNativeInterface::QX11Application>();
    return x11 != nullptr ? x11->connection() : nullptr;
}

X11SharedConnection::X11SharedConnection()
    : m_connection(qtConnection())
{
    if (m_connection == nullptr) {
        XcbConnectionPtr own(xcb_connect(nullptr, nullptr));
        if (xcb_connection_has_error(own.get()) != 0)
            return;
        m_owned = std::move(own);
        m_connection = m_owned.get();
    }
    // The screen of $DISPLAY; xcb hands the host name back to be freed.
    int screenNumber = 0;
    char* host = nullptr;
    int display = 0;
    if (xcb_parse_display(nullptr, &host, &display, &screenNumber) == 0)
        screenNumber = 0;
    std::free(host);
    xcb_screen_iterator_t it = xcb_setup_roots_iterator(xcb_get_setup(m_connection));
    for (int i = 0; it.rem > 0; ++i, xcb_screen_next(&it)) {
        if (i == screenNumber) {
            m_root = it.data->root;
            break;
        }
    }
}

} // namespace platform::x11
