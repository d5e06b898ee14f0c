// SPDX-License-Identifier: GPL-3.0-or-later
#include "XDriver.h"

#include <xcb/randr.h>
#include <xcb/res.h>
#include <xcb/xtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <poll.h>
#include <set>

namespace soak {

namespace {

template <typename T>
using Reply = std::unique_ptr<T, decltype(&std::free)>;

template <typename T>
Reply<T> reply(T* r)
{
    return Reply<T>(r, &std::free);
}

bool hasExtension(xcb_connection_t* c, xcb_extension_t* ext)
{
    const xcb_query_extension_reply_t* data = xcb_get_extension_data(c, ext);
    return data != nullptr && data->present != 0;
}

} // namespace

XDriver::XDriver()
{
    int screenNumber = 0;
    m_c = xcb_connect(nullptr, &screenNumber);
    if (xcb_connection_has_error(m_c) != 0) {
        m_error = "no X display";
        return;
    }
    xcb_screen_iterator_t it = xcb_setup_roots_iterator(xcb_get_setup(m_c));
    for (int i = 0; i < screenNumber; ++i)
        xcb_screen_next(&it);
    m_root = it.data->root;
    if (!hasExtension(m_c, &xcb_test_id) || !hasExtension(m_c, &xcb_res_id) ||
        !hasExtension(m_c, &xcb_randr_id)) {
        m_error = "the X server lacks XTEST, X-Resource or RandR";
        return;
    }
    // Client ids (the pid behind a connection) came with X-Resource 1.2.
    auto version =
        reply(xcb_res_query_version_reply(m_c, xcb_res_query_version(m_c, 1, 2), nullptr));
    if (!version || (version->server_major == 1 && version->server_minor < 2)) {
        m_error = "the X server's X-Resource is older than 1.2";
        return;
    }
    free(xcb_randr_query_version_reply(m_c, xcb_randr_query_version(m_c, 1, 5), nullptr));
    auto monitors =
        reply(xcb_randr_get_monitors_reply(m_c, xcb_randr_get_monitors(m_c, m_root, 1), nullptr));
    if (monitors) {
        for (auto mi = xcb_randr_get_monitors_monitors_iterator(monitors.get()); mi.rem;
             xcb_randr_monitor_info_next(&mi))
            m_monitors.push_back({mi.data->x, mi.data->y, mi.data->width, mi.data->height});
    }
    if (m_monitors.empty())
        m_monitors.push_back({0, 0, it.data->width_in_pixels, it.data->height_in_pixels});
    std::sort(m_monitors.begin(), m_monitors.end(),
              [](const Rect& a, const Rect& b) { return a.x < b.x; });

    // Map and unmap of top-levels wake the waits.
    const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(m_c, m_root, XCB_CW_EVENT_MASK, &mask);
    m_window = xcb_generate_id(m_c);
    xcb_create_window(m_c, XCB_COPY_FROM_PARENT, m_window, m_root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    m_clipboard = atom("CLIPBOARD");
    m_pidAtom = atom("_NET_WM_PID");
    sync();
}

XDriver::~XDriver()
{
    if (m_c != nullptr)
        xcb_disconnect(m_c);
}

void XDriver::sync()
{
    free(xcb_get_input_focus_reply(m_c, xcb_get_input_focus(m_c), nullptr));
}

void XDriver::drainEvents()
{
    while (xcb_generic_event_t* e = xcb_poll_for_event(m_c))
        std::free(e);
}

bool XDriver::waitFor(const std::function<bool()>& condition, std::chrono::milliseconds timeout)
{
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    while (true) {
        drainEvents();
        if (condition())
            return true;
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        // An X event (a map, an unmap) ends the nap early; files and grabs
        // send none, so it is short.
        pollfd pfd{xcb_get_file_descriptor(m_c), POLLIN, 0};
        poll(&pfd, 1, 10);
    }
}

xcb_atom_t XDriver::atom(const char* name)
{
    auto r = reply(xcb_intern_atom_reply(
        m_c, xcb_intern_atom(m_c, 0, static_cast<std::uint16_t>(std::strlen(name)), name),
        nullptr));
    return r ? r->atom : XCB_NONE;
}

std::string XDriver::atomName(xcb_atom_t a)
{
    auto known = m_atomNames.find(a);
    if (known != m_atomNames.end())
        return known->second;
    auto r = reply(xcb_get_atom_name_reply(m_c, xcb_get_atom_name(m_c, a), nullptr));
    std::string name =
        r ? std::string(xcb_get_atom_name_name(r.get()),
                        static_cast<std::size_t>(xcb_get_atom_name_name_length(r.get())))
          : "atom " + std::to_string(a);
    m_atomNames.emplace(a, name);
    return name;
}

xcb_keycode_t XDriver::keycodeOf(std::uint32_t keysym)
{
    const xcb_setup_t* setup = xcb_get_setup(m_c);
    const int count = setup->max_keycode - setup->min_keycode + 1;
    auto map = reply(xcb_get_keyboard_mapping_reply(
        m_c, xcb_get_keyboard_mapping(m_c, setup->min_keycode, static_cast<std::uint8_t>(count)),
        nullptr));
    if (!map)
        return 0;
    const xcb_keysym_t* syms = xcb_get_keyboard_mapping_keysyms(map.get());
    const int per = map->keysyms_per_keycode;
    for (int i = 0; i < count * per; ++i)
        if (syms[i] == keysym)
            return static_cast<xcb_keycode_t>(setup->min_keycode + i / per);
    return 0;
}

void XDriver::movePointer(int x, int y)
{
    xcb_test_fake_input(m_c, XCB_MOTION_NOTIFY, 0, XCB_CURRENT_TIME, m_root,
                        static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 0);
    sync();
}

void XDriver::pressButton(int button)
{
    xcb_test_fake_input(m_c, XCB_BUTTON_PRESS, static_cast<std::uint8_t>(button), XCB_CURRENT_TIME,
                        XCB_NONE, 0, 0, 0);
    sync();
}

void XDriver::releaseButton(int button)
{
    xcb_test_fake_input(m_c, XCB_BUTTON_RELEASE, static_cast<std::uint8_t>(button),
                        XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    sync();
}

void XDriver::tapKey(std::uint32_t keysym)
{
    const xcb_keycode_t code = keycodeOf(keysym);
    xcb_test_fake_input(m_c, XCB_KEY_PRESS, code, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    xcb_test_fake_input(m_c, XCB_KEY_RELEASE, code, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    sync();
}

std::vector<Rect> XDriver::overlaysOf(pid_t pid)
{
    std::vector<Rect> out;
    auto tree = reply(xcb_query_tree_reply(m_c, xcb_query_tree(m_c, m_root), nullptr));
    if (!tree)
        return out;
    const xcb_window_t* kids = xcb_query_tree_children(tree.get());
    const int n = xcb_query_tree_children_length(tree.get());
    for (int i = 0; i < n; ++i) {
        auto attrs = reply(
            xcb_get_window_attributes_reply(m_c, xcb_get_window_attributes(m_c, kids[i]), nullptr));
        if (!attrs || attrs->map_state != XCB_MAP_STATE_VIEWABLE || attrs->override_redirect == 0)
            continue;
        auto owner = reply(xcb_get_property_reply(
            m_c, xcb_get_property(m_c, 0, kids[i], m_pidAtom, XCB_ATOM_CARDINAL, 0, 1), nullptr));
        if (!owner || xcb_get_property_value_length(owner.get()) != 4 ||
            *static_cast<const std::uint32_t*>(xcb_get_property_value(owner.get())) !=
                static_cast<std::uint32_t>(pid))
            continue;
        auto name = reply(xcb_get_property_reply(
            m_c, xcb_get_property(m_c, 0, kids[i], XCB_ATOM_WM_NAME, XCB_ATOM_ANY, 0, 64),
            nullptr));
        if (!name || std::string(static_cast<const char*>(xcb_get_property_value(name.get())),
                                 static_cast<std::size_t>(
                                     xcb_get_property_value_length(name.get()))) != "Kelvo capture")
            continue;
        auto geo = reply(xcb_get_geometry_reply(m_c, xcb_get_geometry(m_c, kids[i]), nullptr));
        if (geo)
            out.push_back({geo->x, geo->y, geo->width, geo->height});
    }
    std::sort(out.begin(), out.end(), [](const Rect& a, const Rect& b) { return a.x < b.x; });
    return out;
}

bool XDriver::keyboardGrabbedByOther()
{
    auto r =
        reply(xcb_grab_keyboard_reply(m_c,
                                      xcb_grab_keyboard(m_c, 0, m_root, XCB_CURRENT_TIME,
                                                        XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                                      nullptr));
    if (r && r->status == XCB_GRAB_STATUS_SUCCESS) {
        xcb_ungrab_keyboard(m_c, XCB_CURRENT_TIME);
        sync();
        return false;
    }
    return r && r->status == XCB_GRAB_STATUS_ALREADY_GRABBED;
}

bool XDriver::takeClipboard()
{
    xcb_set_selection_owner(m_c, m_window, m_clipboard, XCB_CURRENT_TIME);
    auto r = reply(
        xcb_get_selection_owner_reply(m_c, xcb_get_selection_owner(m_c, m_clipboard), nullptr));
    return r && r->owner == m_window;
}

pid_t XDriver::pidOfXid(std::uint32_t xid)
{
    const xcb_res_client_id_spec_t spec{xid, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    auto ids = reply(
        xcb_res_query_client_ids_reply(m_c, xcb_res_query_client_ids(m_c, 1, &spec), nullptr));
    if (!ids)
        return 0;
    for (auto it = xcb_res_query_client_ids_ids_iterator(ids.get()); it.rem;
         xcb_res_client_id_value_next(&it)) {
        if (it.data->spec.mask == XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID &&
            xcb_res_client_id_value_value_length(it.data) == 1)
            return static_cast<pid_t>(*xcb_res_client_id_value_value(it.data));
    }
    return 0;
}

pid_t XDriver::clipboardOwnerPid()
{
    auto r = reply(
        xcb_get_selection_owner_reply(m_c, xcb_get_selection_owner(m_c, m_clipboard), nullptr));
    if (!r || r->owner == XCB_NONE)
        return 0;
    return pidOfXid(r->owner);
}

XHoldings XDriver::holdingsOf(pid_t pid)
{
    XHoldings out;
    // Every client's pid at once: a spec with client 0 answers for all, each
    // value named by the client's resource base.
    const xcb_res_client_id_spec_t all{0, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    auto ids =
        reply(xcb_res_query_client_ids_reply(m_c, xcb_res_query_client_ids(m_c, 1, &all), nullptr));
    if (!ids)
        return out;
    std::set<std::uint32_t> bases;
    for (auto it = xcb_res_query_client_ids_ids_iterator(ids.get()); it.rem;
         xcb_res_client_id_value_next(&it)) {
        if (xcb_res_client_id_value_value_length(it.data) == 1 &&
            static_cast<pid_t>(*xcb_res_client_id_value_value(it.data)) == pid)
            bases.insert(it.data->spec.client);
    }
    for (const std::uint32_t base : bases) {
        auto resources = reply(xcb_res_query_client_resources_reply(
            m_c, xcb_res_query_client_resources(m_c, base), nullptr));
        if (!resources)
            continue; // gone between the two questions
        ++out.clients;
        const xcb_res_type_t* types = xcb_res_query_client_resources_types(resources.get());
        const int n = xcb_res_query_client_resources_types_length(resources.get());
        for (int i = 0; i < n; ++i)
            out.resources[atomName(types[i].resource_type)] += types[i].count;
        auto bytes = reply(xcb_res_query_client_pixmap_bytes_reply(
            m_c, xcb_res_query_client_pixmap_bytes(m_c, base), nullptr));
        if (bytes)
            out.pixmapBytes +=
                (static_cast<std::uint64_t>(bytes->bytes_overflow) << 32) | bytes->bytes;
    }
    return out;
}

} // namespace soak
