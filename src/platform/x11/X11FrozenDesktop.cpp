// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/x11/X11FrozenDesktop.h"

#include "platform/x11/ShmGrabber.h"
#include "platform/x11/XcbHandles.h"

#include <xcb/composite.h>

#include <utility>
#include <vector>

namespace platform::x11 {

namespace {

void releaseParent(void* info)
{
    delete static_cast<QImage*>(info);
}

} // namespace

// One freeze's server-side window copies. Held pictures see it through weak
// pointers, so a read after the thaw (or after the desktop went) finds it
// gone and reads nothing.
struct X11FrozenDesktop::Freeze
{
    struct Copy
    {
        xcb_pixmap_t pixmap = 0;
        QSize size;
        int depth = 24;
    };

    X11FrozenDesktop* desktop = nullptr;
    bool copied = false;
    QHash<xcb_window_t, Copy> copies; // frame id -> its copy
};

class X11FrozenDesktop::Held final : public HeldPicture
{
public:
    Held(const std::shared_ptr<Freeze>& freeze, const Freeze::Copy& copy, const QRect& local,
         const QRect& cut, bool null)
        : m_freeze(freeze)
        , m_copy(copy)
        , m_local(local)
        , m_cut(cut)
        , m_null(null)
    {}

    [[nodiscard]] bool isNull() const override { return m_null; }

    [[nodiscard]] QImage read() override
    {
        const std::shared_ptr<Freeze> freeze = m_freeze.lock();
        if (!freeze)
            return {};
        X11FrozenDesktop& desktop = *freeze->desktop;
        if (m_copy.pixmap != 0) {
            ++desktop.m_windowReads;
            QImage image = desktop.m_grabber.shm().grab(m_copy.pixmap, m_local, m_copy.depth);
            if (!image.isNull())
                return image;
        }
        return desktop.cut(m_cut);
    }

private:
    std::weak_ptr<Freeze> m_freeze;
    Freeze::Copy m_copy; // no pixmap: pictured from the frozen root
    QRect m_local;       // the part of the copy, window pixels
    QRect m_cut;         // the same part of the root, root pixels
    bool m_null;
};

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
{}

X11FrozenDesktop::~X11FrozenDesktop()
{
    // Images may still point into shared segments that detach through the
    // connection; drop ours while it is there.
    dropCopies();
    m_root = QImage();
    m_grabber.release();
}

void X11FrozenDesktop::freeze()
{
    dropCopies();
    m_root = m_grabber.grabDesktop();
    m_freeze = std::make_shared<Freeze>();
    m_freeze->desktop = this;
}

void X11FrozenDesktop::thaw()
{
    dropCopies();
    m_root = QImage();
    m_frames.clear();
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
        ++m_windowReads;
        image = m_grabber.shm().grab(pixmap, local.intersected(QRect(0, 0, g->width, g->height)),
                                     g->depth);
    }
    xcb_free_pixmap(c, pixmap);
    return image;
}

std::shared_ptr<HeldPicture> X11FrozenDesktop::hold(xcb_window_t frame, const QRect& frameRect,
                                                    const QRect& cut, bool composited)
{
    if (!m_freeze)
        freeze();
    Freeze::Copy copy;
    QRect local;
    if (composited) {
        if (!m_freeze->copied)
            copyWindows();
        const auto it = m_freeze->copies.constFind(frame);
        if (it != m_freeze->copies.cend()) {
            // As compositedPicture() places the cut in the window.
            const QRect whole(QPoint(0, 0), it->size);
            local = (frameRect.isNull() ? whole : cut.translated(-frameRect.topLeft()))
                        .intersected(whole);
            if (!local.isEmpty())
                copy = *it;
        }
    }
    const bool null = copy.pixmap == 0 && cut.intersected(m_root.rect()).isEmpty();
    return std::make_shared<Held>(m_freeze, copy, local, cut, null);
}

void X11FrozenDesktop::copyWindows()
{
    // Every request goes out before the first reply is awaited: one round
    // trip for all windows. A window the compositor does not hold (or that
    // is gone) gets no copy and is pictured from the root, as ever.
    m_freeze->copied = true;
    xcb_connection_t* c = m_connection;
    struct Pending
    {
        xcb_window_t frame;
        xcb_pixmap_t named;
        xcb_void_cookie_t naming;
        xcb_get_geometry_cookie_t geometry;
    };
    std::vector<Pending> pending;
    pending.reserve(static_cast<std::size_t>(m_frames.size()));
    for (auto it = m_frames.cbegin(); it != m_frames.cend(); ++it) {
        const xcb_pixmap_t named = xcb_generate_id(c);
        const xcb_void_cookie_t naming =
            xcb_composite_name_window_pixmap_checked(c, it.key(), named);
        pending.push_back({it.key(), named, naming, xcb_get_geometry(c, named)});
    }
    for (const Pending& p : pending) {
        XcbReply<xcb_get_geometry_reply_t> g(xcb_get_geometry_reply(c, p.geometry, nullptr));
        if (XcbReply<xcb_generic_error_t> error{xcb_request_check(c, p.naming)}; error)
            continue;
        if (g && g->width > 0 && g->height > 0) {
            // The compositor's pixmap follows the window; the copy keeps it
            // as it is now.
            Freeze::Copy copy{xcb_generate_id(c), QSize(g->width, g->height), g->depth};
            xcb_create_pixmap(c, g->depth, copy.pixmap, p.named, g->width, g->height);
            const xcb_gcontext_t gc = xcb_generate_id(c);
            xcb_create_gc(c, gc, copy.pixmap, 0, nullptr);
            xcb_copy_area(c, p.named, copy.pixmap, gc, 0, 0, 0, 0, g->width, g->height);
            xcb_free_gc(c, gc);
            m_freeze->copies.insert(p.frame, copy);
        }
        xcb_free_pixmap(c, p.named);
    }
    xcb_flush(c);
}

void X11FrozenDesktop::dropCopies()
{
    if (!m_freeze)
        return;
    for (const Freeze::Copy& copy : std::as_const(m_freeze->copies))
        xcb_free_pixmap(m_connection, copy.pixmap);
    if (!m_freeze->copies.isEmpty())
        xcb_flush(m_connection);
    m_freeze.reset();
}

} // namespace platform::x11
