// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/x11/X11WindowServer.h"

#include <QFile>

#include <xcb/composite.h>

#include <array>
#include <cstring>
#include <unistd.h>

namespace platform::x11 {

namespace {

const char* const kAtomNames[] = {
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
    "_NET_WM_STATE",
    "_NET_WM_STATE_ABOVE",
    "_NET_WM_STATE_HIDDEN",
    "_NET_WM_WINDOW_OPACITY",
};
constexpr std::size_t kAtomCount = std::size(kAtomNames);

template <typename Cookie, typename Reply, typename Fn>
std::vector<XcbReply<Reply>> collect(xcb_connection_t* c, const std::vector<Cookie>& cookies, Fn fn)
{
    std::vector<XcbReply<Reply>> replies;
    replies.reserve(cookies.size());
    for (const Cookie& cookie : cookies)
        replies.emplace_back(fn(c, cookie, nullptr));
    return replies;
}

QString propertyString(const xcb_get_property_reply_t* reply)
{
    if (reply == nullptr || reply->type == XCB_NONE)
        return {};
    const int length = xcb_get_property_value_length(reply);
    const auto* data = static_cast<const char*>(xcb_get_property_value(reply));
    return QString::fromUtf8(
        data, static_cast<qsizetype>(strnlen(data, static_cast<std::size_t>(length))));
}

std::vector<xcb_atom_t> propertyAtoms(const xcb_get_property_reply_t* reply)
{
    if (reply == nullptr || reply->type != XCB_ATOM_ATOM || reply->format != 32)
        return {};
    const auto* atoms = static_cast<const xcb_atom_t*>(xcb_get_property_value(reply));
    const int n = xcb_get_property_value_length(reply) / 4;
    return {atoms, atoms + n};
}

void releaseParent(void* info)
{
    delete static_cast<QImage*>(info);
}

QString commandOfPid(std::int64_t pid)
{
    if (pid <= 0)
        return {};
    QFile comm(QStringLiteral("/proc/%1/comm").arg(pid));
    if (!comm.open(QIODevice::ReadOnly))
        return {};
    return QString::fromLocal8Bit(comm.readAll()).trimmed();
}

} // namespace

struct X11WindowServer::Atoms
{
    std::array<xcb_atom_t, kAtomCount> a{};
    enum Index
    {
        WmState,
        NetWmName,
        Utf8String,
        NetWmPid,
        Type,
        TypeDesktop,
        TypeDock,
        TypeNotification,
        TypeMenu,
        TypeDropdown,
        TypePopup,
        TypeTooltip,
        TypeCombo,
        TypeDnd,
        State,
        StateAbove,
        StateHidden,
        Opacity,
    };
    xcb_atom_t operator[](Index i) const { return a[i]; }
};

struct X11WindowServer::Client
{
    xcb_window_t frame = 0;
    xcb_window_t client = 0;
    bool overrideRedirect = false;
    QRect frameRect; // device pixels
    std::int64_t pid = 0;
    QString name;
    bool hasName = false;
    QString windowClass;
    std::vector<xcb_atom_t> types;
    std::vector<xcb_atom_t> states;
    double opacity = 1.0;
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

X11WindowServer::X11WindowServer(std::optional<NativeScreens> screens)
    : m_atoms(std::make_unique<Atoms>())
    , m_fixedScreens(std::move(screens))
{
    int screenNumber = 0;
    XcbConnectionPtr connection(xcb_connect(nullptr, &screenNumber));
    if (xcb_connection_has_error(connection.get()) != 0)
        return;
    m_connection = std::move(connection);
    xcb_screen_iterator_t it = xcb_setup_roots_iterator(xcb_get_setup(m_connection.get()));
    for (int i = 0; i < screenNumber && it.rem > 0; ++i)
        xcb_screen_next(&it);
    m_root = it.data->root;
    m_rootDepth = it.data->root_depth;
    m_rootSize = QSize(it.data->width_in_pixels, it.data->height_in_pixels);
    m_grabber = std::make_unique<ShmGrabber>(m_connection.get());
    m_releaseTimer.setSingleShot(true);
    m_releaseTimer.setInterval(60000);
    QObject::connect(&m_releaseTimer, &QTimer::timeout, [this] { m_grabber->releaseCache(); });

    std::array<xcb_intern_atom_cookie_t, kAtomCount> cookies{};
    for (std::size_t i = 0; i < kAtomCount; ++i)
        cookies[i] =
            xcb_intern_atom(m_connection.get(), 0,
                            static_cast<std::uint16_t>(std::strlen(kAtomNames[i])), kAtomNames[i]);
    for (std::size_t i = 0; i < kAtomCount; ++i) {
        XcbReply<xcb_intern_atom_reply_t> reply(
            xcb_intern_atom_reply(m_connection.get(), cookies[i], nullptr));
        m_atoms->a[i] = reply ? reply->atom : XCB_NONE;
    }
}

X11WindowServer::~X11WindowServer()
{
    // Images may still point into shared segments that detach through this
    // connection; drop ours before the connection goes.
    m_frozen = QImage();
    if (m_grabber)
        m_grabber->releaseCache();
}

void X11WindowServer::refreshScreens()
{
    m_screens = m_fixedScreens ? *m_fixedScreens : NativeScreens::fromQt();
}

core::ScreenLayout X11WindowServer::screens()
{
    refreshScreens();
    return m_screens.layout();
}

bool X11WindowServer::compositorRunning()
{
    if (!m_connection)
        return false;
    const QByteArray name = "_NET_WM_CM_S0";
    XcbReply<xcb_intern_atom_reply_t> atom(
        xcb_intern_atom_reply(m_connection.get(),
                              xcb_intern_atom(m_connection.get(), 1,
                                              static_cast<std::uint16_t>(name.size()), name.data()),
                              nullptr));
    if (!atom || atom->atom == XCB_NONE)
        return false;
    XcbReply<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(
        m_connection.get(), xcb_get_selection_owner(m_connection.get(), atom->atom), nullptr));
    return owner && owner->owner != XCB_NONE;
}

void X11WindowServer::freezeRoot()
{
    m_releaseTimer.stop();
    m_frozen = m_grabber->grab(m_root, QRect(QPoint(0, 0), m_rootSize), m_rootDepth);
}

void X11WindowServer::thaw()
{
    m_frozen = QImage();
    m_frames.clear();
    m_releaseTimer.start();
}

std::vector<X11WindowServer::Client> X11WindowServer::stackedClients()
{
    xcb_connection_t* c = m_connection.get();
    XcbReply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(c, xcb_query_tree(c, m_root), nullptr));
    if (!tree)
        return {};
    const xcb_window_t* children = xcb_query_tree_children(tree.get());
    const int count = xcb_query_tree_children_length(tree.get());
    // Top of the stack first.
    std::vector<xcb_window_t> tops(children, children + count);
    std::reverse(tops.begin(), tops.end());

    // Every request goes out before the first reply is read: one round trip
    // per stage instead of one per window.
    std::vector<xcb_get_window_attributes_cookie_t> attrCookies;
    std::vector<xcb_get_geometry_cookie_t> geoCookies;
    std::vector<xcb_get_property_cookie_t> stateCookies;
    for (xcb_window_t w : tops) {
        attrCookies.push_back(xcb_get_window_attributes(c, w));
        geoCookies.push_back(xcb_get_geometry(c, w));
        stateCookies.push_back(
            xcb_get_property(c, 0, w, (*m_atoms)[Atoms::WmState], XCB_ATOM_ANY, 0, 0));
    }
    auto attrs = collect<xcb_get_window_attributes_cookie_t, xcb_get_window_attributes_reply_t>(
        c, attrCookies, xcb_get_window_attributes_reply);
    auto geos = collect<xcb_get_geometry_cookie_t, xcb_get_geometry_reply_t>(
        c, geoCookies, xcb_get_geometry_reply);
    auto states = collect<xcb_get_property_cookie_t, xcb_get_property_reply_t>(
        c, stateCookies, xcb_get_property_reply);

    std::vector<Client> clients;
    std::vector<std::size_t> needChild; // frames whose client is a child
    std::vector<xcb_query_tree_cookie_t> childCookies;
    for (std::size_t i = 0; i < tops.size(); ++i) {
        if (!attrs[i] || !geos[i] || attrs[i]->map_state != XCB_MAP_STATE_VIEWABLE ||
            attrs[i]->_class == XCB_WINDOW_CLASS_INPUT_ONLY)
            continue;
        const xcb_get_geometry_reply_t* g = geos[i].get();
        Client client;
        client.frame = tops[i];
        client.overrideRedirect = attrs[i]->override_redirect != 0;
        client.frameRect =
            QRect(g->x, g->y, g->width + 2 * g->border_width, g->height + 2 * g->border_width);
        const bool hasState = states[i] && states[i]->type != XCB_NONE;
        if (hasState || client.overrideRedirect) {
            client.client = tops[i];
        } else {
            needChild.push_back(clients.size());
            childCookies.push_back(xcb_query_tree(c, tops[i]));
        }
        clients.push_back(client);
    }

    // A managed window sits inside its frame; the frame's child carrying
    // WM_STATE is the client.
    std::vector<std::vector<xcb_window_t>> candidates(needChild.size());
    std::vector<xcb_get_property_cookie_t> candidateCookies;
    for (std::size_t k = 0; k < needChild.size(); ++k) {
        XcbReply<xcb_query_tree_reply_t> sub(xcb_query_tree_reply(c, childCookies[k], nullptr));
        if (!sub)
            continue;
        const xcb_window_t* kids = xcb_query_tree_children(sub.get());
        candidates[k].assign(kids, kids + xcb_query_tree_children_length(sub.get()));
        for (xcb_window_t w : candidates[k])
            candidateCookies.push_back(
                xcb_get_property(c, 0, w, (*m_atoms)[Atoms::WmState], XCB_ATOM_ANY, 0, 0));
    }
    std::size_t next = 0;
    for (std::size_t k = 0; k < needChild.size(); ++k) {
        for (xcb_window_t w : candidates[k]) {
            XcbReply<xcb_get_property_reply_t> r(
                xcb_get_property_reply(c, candidateCookies[next++], nullptr));
            if (clients[needChild[k]].client == 0 && r && r->type != XCB_NONE)
                clients[needChild[k]].client = w;
        }
    }
    std::erase_if(clients, [](const Client& cl) { return cl.client == 0; });

    // Properties of every client, again in one round trip.
    struct Cookies
    {
        xcb_get_property_cookie_t netName, name, pid, wmClass, type, state, opacity;
    };
    std::vector<Cookies> props;
    for (const Client& cl : clients) {
        const xcb_window_t w = cl.client;
        props.push_back({
            xcb_get_property(c, 0, w, (*m_atoms)[Atoms::NetWmName], (*m_atoms)[Atoms::Utf8String],
                             0, 1024),
            xcb_get_property(c, 0, w, XCB_ATOM_WM_NAME, XCB_ATOM_ANY, 0, 1024),
            xcb_get_property(c, 0, w, (*m_atoms)[Atoms::NetWmPid], XCB_ATOM_CARDINAL, 0, 1),
            xcb_get_property(c, 0, w, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 0, 256),
            xcb_get_property(c, 0, w, (*m_atoms)[Atoms::Type], XCB_ATOM_ATOM, 0, 32),
            xcb_get_property(c, 0, w, (*m_atoms)[Atoms::State], XCB_ATOM_ATOM, 0, 32),
            xcb_get_property(c, 0, w, (*m_atoms)[Atoms::Opacity], XCB_ATOM_CARDINAL, 0, 1),
        });
    }
    for (std::size_t i = 0; i < clients.size(); ++i) {
        Client& cl = clients[i];
        auto reply = [&](xcb_get_property_cookie_t cookie) {
            return XcbReply<xcb_get_property_reply_t>(xcb_get_property_reply(c, cookie, nullptr));
        };
        auto netName = reply(props[i].netName);
        auto name = reply(props[i].name);
        auto pid = reply(props[i].pid);
        auto wmClass = reply(props[i].wmClass);
        auto type = reply(props[i].type);
        auto state = reply(props[i].state);
        auto opacity = reply(props[i].opacity);
        if (netName && netName->type != XCB_NONE) {
            cl.name = propertyString(netName.get());
            cl.hasName = true;
        } else if (name && name->type != XCB_NONE) {
            cl.name = propertyString(name.get());
            cl.hasName = true;
        }
        if (pid && pid->type == XCB_ATOM_CARDINAL && xcb_get_property_value_length(pid.get()) >= 4)
            cl.pid = *static_cast<const std::uint32_t*>(xcb_get_property_value(pid.get()));
        if (wmClass && wmClass->type != XCB_NONE) {
            // WM_CLASS is "instance\0class\0".
            const int length = xcb_get_property_value_length(wmClass.get());
            const auto* data = static_cast<const char*>(xcb_get_property_value(wmClass.get()));
            const std::size_t first = strnlen(data, static_cast<std::size_t>(length));
            if (static_cast<int>(first) + 1 < length)
                cl.windowClass = QString::fromLocal8Bit(
                    data + first + 1,
                    static_cast<qsizetype>(
                        strnlen(data + first + 1, static_cast<std::size_t>(length) - first - 1)));
        }
        cl.types = propertyAtoms(type.get());
        cl.states = propertyAtoms(state.get());
        if (opacity && opacity->type == XCB_ATOM_CARDINAL &&
            xcb_get_property_value_length(opacity.get()) >= 4)
            cl.opacity = *static_cast<const std::uint32_t*>(xcb_get_property_value(opacity.get())) /
                         double(0xffffffffu);
    }
    return clients;
}

int X11WindowServer::layerOf(const Client& client) const
{
    auto hasType = [&](Atoms::Index i) {
        return std::find(client.types.begin(), client.types.end(), (*m_atoms)[i]) !=
               client.types.end();
    };
    if (hasType(Atoms::TypeDesktop))
        return layers::Desktop;
    if (hasType(Atoms::TypeDock))
        return layers::Dock;
    if (hasType(Atoms::TypeNotification))
        return layers::Notification;
    if (client.overrideRedirect || hasType(Atoms::TypeMenu) || hasType(Atoms::TypeDropdown) ||
        hasType(Atoms::TypePopup) || hasType(Atoms::TypeTooltip) || hasType(Atoms::TypeCombo) ||
        hasType(Atoms::TypeDnd))
        return layers::Popup;
    const xcb_atom_t above = (*m_atoms)[Atoms::StateAbove];
    if (std::find(client.states.begin(), client.states.end(), above) != client.states.end())
        return layers::Above;
    return layers::Normal;
}

WindowRecord X11WindowServer::recordOf(const Client& client)
{
    WindowRecord r;
    r.number = client.frame;
    r.name = client.name;
    r.hasName = client.hasName;
    r.ownerPid = client.pid;
    r.ownerName = commandOfPid(client.pid);
    r.bundleIdentifier = client.windowClass;
    r.layer = layerOf(client);
    r.bounds = m_screens.toPoints(client.frameRect);
    r.alpha = client.opacity;
    return r;
}

std::vector<WindowRecord> X11WindowServer::windowList()
{
    if (!m_connection)
        return {};
    refreshScreens();
    freezeRoot();
    m_frames.clear();
    const std::int64_t self = getpid();
    std::vector<WindowRecord> list;
    for (const Client& client : stackedClients()) {
        if (client.pid == self)
            continue;
        if (std::find(client.states.begin(), client.states.end(), (*m_atoms)[Atoms::StateHidden]) !=
            client.states.end())
            continue;
        m_frames.insert(client.frame, client.frameRect);
        list.push_back(recordOf(client));
    }
    // The root stands in for the desktop picture of each monitor, at the
    // bottom of the stack.
    for (const NativeScreens::Screen& s : m_screens.screens()) {
        WindowRecord desktop;
        desktop.number = m_root;
        desktop.name = QStringLiteral("Desktop Picture - ") + s.name;
        desktop.hasName = true;
        desktop.ownerName = QStringLiteral("Xorg");
        desktop.layer = layers::Desktop;
        desktop.bounds = m_screens.toPoints(s.native);
        list.push_back(desktop);
    }
    return list;
}

QImage X11WindowServer::pictureOfWindow(std::uint32_t number, const QRectF& cutTo)
{
    if (!m_connection)
        return {};
    const auto frame = m_frames.constFind(number);
    const QRect frameRect = frame != m_frames.constEnd() ? *frame : QRect();
    const QRect cut = cutTo.isNull() ? frameRect : m_screens.toPixels(cutTo);
    if (number != m_root && compositorRunning()) {
        // The compositor keeps every window's contents off screen: the whole
        // window, even where others cover it.
        xcb_connection_t* c = m_connection.get();
        const xcb_pixmap_t pixmap = xcb_generate_id(c);
        xcb_void_cookie_t named = xcb_composite_name_window_pixmap_checked(c, number, pixmap);
        if (XcbReply<xcb_generic_error_t> error{xcb_request_check(c, named)}; !error) {
            XcbReply<xcb_get_geometry_reply_t> g(
                xcb_get_geometry_reply(c, xcb_get_geometry(c, pixmap), nullptr));
            QImage image;
            if (g) {
                const QRect local = frameRect.isNull() ? QRect(0, 0, g->width, g->height)
                                                       : cut.translated(-frameRect.topLeft());
                image = m_grabber->grab(pixmap, local.intersected(QRect(0, 0, g->width, g->height)),
                                        g->depth);
            }
            xcb_free_pixmap(c, pixmap);
            if (!image.isNull())
                return image;
        }
    }
    if (m_frozen.isNull())
        freezeRoot();
    return sharedView(m_frozen, cut);
}

QImage X11WindowServer::pictureOfRect(const QRectF& rect)
{
    if (!m_connection)
        return {};
    if (m_screens.screens().empty())
        refreshScreens();
    const QRect pixels = m_screens.toPixels(rect);
    if (!m_frozen.isNull())
        return sharedView(m_frozen, pixels);
    return m_grabber->grab(m_root, pixels.intersected(QRect(QPoint(0, 0), m_rootSize)),
                           m_rootDepth);
}

} // namespace platform::x11
