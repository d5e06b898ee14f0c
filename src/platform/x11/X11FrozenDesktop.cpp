// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/x11/X11FrozenDesktop.h"

#include "platform/x11/ShmGrabber.h"
#include "platform/x11/XcbHandles.h"

#include <xcb/composite.h>

namespace platform::x11 {

namespace {

void releaseParent(void* info)
{
    delete static_cast<QImage*>(info);
}

} // namespace

QImage sharedView(const QImage& parent, const QRect& rect)
{
    const QRect r = rect.intersected(parent.rect());
    if (r.isEmpty())
        return {};
    const uchar* bits = parent.constBits() + r.y() * parent.bytesPerLine() + r.x() * 4;
    auto* keep = new QImage(parent);
    // The const constructor keeps the data read-only: any write detaches.
    return QImage(bits, r.width(), r.height(), parent.bytesPerLine(), parent.format(),
                  releaseParent, keep);
}

X11FrozenDesktop::X11FrozenDesktop(xcb_connection_t* connection, X11ScreenGrabber& grabber)
    : m_connection(connection)
    , m_grabber(grabber)
{
    m_releaseTimer.setSingleShot(true);
    m_releaseTimer.setInterval(60000);
    QObject::connect(&m_releaseTimer, &QTimer::timeout, [this] { m_grabber.release(); });
}

X11FrozenDesktop::~X11FrozenDesktop()
{
    // Images may still point into shared segments that detach through the
    // connection; drop ours while it is there.
    m_root = QImage();
    m_grabber.release();
}

void X11FrozenDesktop::freeze()
{
    m_releaseTimer.stop();
    m_root = m_grabber.grabDesktop();
}

void X11FrozenDesktop::thaw()
{
    m_root = QImage();
    m_frames.clear();
    m_releaseTimer.start();
}

QImage X11FrozenDesktop::cut(const QRect& pixels) const
{
    return sharedView(m_root, pixels);
}

bool X11FrozenDesktop::compositorRunning() const
{
    const QByteArray name = "_NET_WM_CM_S0";
    XcbReply<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(
        m_connection,
        xcb_intern_atom(m_connection, 1, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr));
    if (!atom || atom->atom == XCB_NONE)
        return false;
    XcbReply<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(
        m_connection, xcb_get_selection_owner(m_connection, atom->atom), nullptr));
    return owner && owner->owner != XCB_NONE;
}

QImage X11FrozenDesktop::compositedPicture(xcb_window_t frame, const QRect& frameRect,
                                           const QRect& cut)
{
    xcb_connection_t* c = m_connection;
    const xcb_pixmap_t pixmap = xcb_generate_id(c);
    xcb_void_cookie_t named = xcb_composite_name_window_pixmap_checked(c, frame, pixmap);
    if (XcbReply<xcb_generic_error_t> error{xcb_request_check(c, named)}; error)
        return {};
    XcbReply<xcb_get_geometry_reply_t> g(
        xcb_get_geometry_reply(c, xcb_get_geometry(c, pixmap), nullptr));
    QImage image;
    if (g) {
        const QRect local = frameRect.isNull() ? QRect(0, 0, g->width, g->height)
                                               : cut.translated(-frameRect.topLeft());
        image = m_grabber.shm().grab(pixmap, local.intersected(QRect(0, 0, g->width, g->height)),
                                     g->depth);
    }
    xcb_free_pixmap(c, pixmap);
    return image;
}

} // namespace platform::x11
