// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/x11/X11ClientTree.h"

#include "platform/x11/XcbHandles.h"

#include <algorithm>
#include <cstring>

namespace platform::x11 {

namespace {

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

} // namespace

std::vector<X11Client> stackedClients(xcb_connection_t* c, xcb_window_t root, const X11Atoms& atoms)
{
    XcbReply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(c, xcb_query_tree(c, root), nullptr));
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
            xcb_get_property(c, 0, w, atoms[X11Atoms::WmState], XCB_ATOM_ANY, 0, 0));
    }
    auto attrs = collect<xcb_get_window_attributes_cookie_t, xcb_get_window_attributes_reply_t>(
        c, attrCookies, xcb_get_window_attributes_reply);
    auto geos = collect<xcb_get_geometry_cookie_t, xcb_get_geometry_reply_t>(
        c, geoCookies, xcb_get_geometry_reply);
    auto states = collect<xcb_get_property_cookie_t, xcb_get_property_reply_t>(
        c, stateCookies, xcb_get_property_reply);

    std::vector<X11Client> clients;
    std::vector<std::size_t> needChild; // frames whose client is a child
    std::vector<xcb_query_tree_cookie_t> childCookies;
    for (std::size_t i = 0; i < tops.size(); ++i) {
        if (!attrs[i] || !geos[i] || attrs[i]->map_state != XCB_MAP_STATE_VIEWABLE ||
            attrs[i]->_class == XCB_WINDOW_CLASS_INPUT_ONLY)
            continue;
        const xcb_get_geometry_reply_t* g = geos[i].get();
        X11Client client;
        client.frame = tops[i];
        client.facts.overrideRedirect = attrs[i]->override_redirect != 0;
        client.frameRect =
            QRect(g->x, g->y, g->width + 2 * g->border_width, g->height + 2 * g->border_width);
        const bool hasState = states[i] && states[i]->type != XCB_NONE;
        if (hasState || client.facts.overrideRedirect) {
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
                xcb_get_property(c, 0, w, atoms[X11Atoms::WmState], XCB_ATOM_ANY, 0, 0));
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
    std::erase_if(clients, [](const X11Client& cl) { return cl.client == 0; });

    // Properties of every client, again in one round trip.
    struct Cookies
    {
        xcb_get_property_cookie_t netName, name, pid, wmClass, type, state, opacity;
    };
    std::vector<Cookies> props;
    for (const X11Client& cl : clients) {
        const xcb_window_t w = cl.client;
        props.push_back({
            xcb_get_property(c, 0, w, atoms[X11Atoms::NetWmName], atoms[X11Atoms::Utf8String], 0,
                             1024),
            xcb_get_property(c, 0, w, XCB_ATOM_WM_NAME, XCB_ATOM_ANY, 0, 1024),
            xcb_get_property(c, 0, w, atoms[X11Atoms::NetWmPid], XCB_ATOM_CARDINAL, 0, 1),
            xcb_get_property(c, 0, w, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 0, 256),
            xcb_get_property(c, 0, w, atoms[X11Atoms::Type], XCB_ATOM_ATOM, 0, 32),
            xcb_get_property(c, 0, w, atoms[X11Atoms::State], XCB_ATOM_ATOM, 0, 32),
            xcb_get_property(c, 0, w, atoms[X11Atoms::Opacity], XCB_ATOM_CARDINAL, 0, 1),
        });
    }
    for (std::size_t i = 0; i < clients.size(); ++i) {
        X11Client& cl = clients[i];
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
        cl.facts.types = atoms.typesOf(propertyAtoms(type.get()));
        cl.facts.states = atoms.statesOf(propertyAtoms(state.get()));
        if (opacity && opacity->type == XCB_ATOM_CARDINAL &&
            xcb_get_property_value_length(opacity.get()) >= 4)
            cl.opacity = *static_cast<const std::uint32_t*>(xcb_get_property_value(opacity.get())) /
                         double(0xffffffffu);
    }
    return clients;
}

} // namespace platform::x11
