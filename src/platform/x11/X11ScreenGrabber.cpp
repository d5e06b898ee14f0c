// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/x11/X11ScreenGrabber.h"

#include "platform/x11/ShmGrabber.h"
#include "platform/x11/XcbHandles.h"

namespace platform::x11 {

struct X11ScreenGrabber::State
{
    XcbConnectionPtr owned;
    xcb_connection_t* connection = nullptr;
    xcb_window_t root = 0;
    int depth = 24;
    QSize size;
    std::unique_ptr<ShmGrabber> grabber;

    void attach(xcb_connection_t* c, int screenNumber)
    {
        connection = c;
        xcb_screen_iterator_t it = xcb_setup_roots_iterator(xcb_get_setup(c));
        for (int i = 0; i < screenNumber && it.rem > 0; ++i)
            xcb_screen_next(&it);
        root = it.data->root;
        depth = it.data->root_depth;
        size = QSize(it.data->width_in_pixels, it.data->height_in_pixels);
        grabber = std::make_unique<ShmGrabber>(c);
    }
};

X11ScreenGrabber::X11ScreenGrabber()
    : m(std::make_unique<State>())
{
    int screenNumber = 0;
    XcbConnectionPtr connection(xcb_connect(nullptr, &screenNumber));
    if (xcb_connection_has_error(connection.get()) != 0)
        return;
    m->owned = std::move(connection);
    m->attach(m->owned.get(), screenNumber);
}

X11ScreenGrabber::X11ScreenGrabber(xcb_connection_t* connection, int screenNumber)
    : m(std::make_unique<State>())
{
    if (connection != nullptr && xcb_connection_has_error(connection) == 0)
        m->attach(connection, screenNumber);
}

X11ScreenGrabber::~X11ScreenGrabber()
{
    // Segments detach through the connection: the grabber goes first.
    m->grabber.reset();
}

bool X11ScreenGrabber::isConnected() const
{
    return m->grabber != nullptr;
}

QSize X11ScreenGrabber::desktopSize() const
{
    return m->size;
}

QImage X11ScreenGrabber::grab(const QRect& rect)
{
    if (!m->grabber)
        return {};
    return m->grabber->grab(m->root, rect.intersected(QRect(QPoint(0, 0), m->size)), m->depth);
}

void X11ScreenGrabber::release()
{
    if (m->grabber)
        m->grabber->releaseCache();
}

std::uint32_t X11ScreenGrabber::root() const
{
    return m->root;
}

ShmGrabber& X11ScreenGrabber::shm()
{
    return *m->grabber;
}

} // namespace platform::x11
