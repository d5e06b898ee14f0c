// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/x11/X11ActiveWindow.h"

#include "platform/x11/X11SharedConnection.h"
#include "platform/x11/XcbHandles.h"

#include <chrono>
#include <cstring>
#include <thread>

namespace platform::x11 {

namespace {

// EWMH's source indication of a pager (1 is an application).
constexpr std::uint32_t kSourcePager = 2;
// How long activate() waits for the window manager: 50 looks 2 ms apart.
constexpr int kConfirmPolls = 50;
constexpr std::chrono::milliseconds kConfirmInterval{2};

} // namespace

struct X11ActiveWindow::State
{
    X11SharedConnection shared;
    xcb_connection_t* connection = shared.get();
    xcb_window_t root = shared.root();
    xcb_atom_t netActiveWindow = XCB_NONE;
};

X11ActiveWindow::X11ActiveWindow()
    : m(std::make_unique<State>())
{
    if (m->root == XCB_NONE)
        return;
    static constexpr char kName[] = "_NET_ACTIVE_WINDOW";
    XcbReply<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(
        m->connection, xcb_intern_atom(m->connection, 0, sizeof kName - 1, kName), nullptr));
    if (atom)
        m->netActiveWindow = atom->atom;
}

X11ActiveWindow::~X11ActiveWindow() = default;

bool X11ActiveWindow::isConnected() const
{
    return m->root != XCB_NONE && m->netActiveWindow != XCB_NONE;
}

std::uint32_t X11ActiveWindow::current()
{
    if (!isConnected())
        return 0;
    XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        m->connection,
        xcb_get_property(m->connection, 0, m->root, m->netActiveWindow, XCB_ATOM_WINDOW, 0, 1),
        nullptr));
    if (!reply || reply->type != XCB_ATOM_WINDOW || reply->format != 32 ||
        xcb_get_property_value_length(reply.get()) < 4)
        return 0;
    return *static_cast<const xcb_window_t*>(xcb_get_property_value(reply.get()));
}

bool X11ActiveWindow::activate(std::uint32_t window)
{
    if (!isConnected() || window == XCB_NONE)
        return false;
    // A window destroyed meanwhile answers with an error; one its program
    // has withdrawn is unmapped. Neither is asked for.
    xcb_generic_error_t* rawError = nullptr;
    XcbReply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
        m->connection, xcb_get_window_attributes(m->connection, window), &rawError));
    // Taken here, so that it never reaches the event queue (and Qt's log).
    const XcbReply<xcb_generic_error_t> error(rawError);
    if (error || !attributes || attributes->map_state == XCB_MAP_STATE_UNMAPPED)
        return false;

    xcb_client_message_event_t message;
    std::memset(&message, 0, sizeof message);
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = m->netActiveWindow;
    message.data.data32[0] = kSourcePager;
    message.data.data32[1] = XCB_CURRENT_TIME;
    message.data.data32[2] = XCB_NONE; // the requester has no active window of its own
    xcb_send_event(m->connection, 0, m->root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(m->connection);
    // The window manager raises the window as it activates it. Until it has
    // (it names the window active after the raise), a capture started right
    // away could map its overlay first and find the window over it; the
    // wait is short, and bounded for a manager that never answers.
    for (int i = 0; i < kConfirmPolls && current() != window; ++i)
        std::this_thread::sleep_for(kConfirmInterval);
    return true;
}

} // namespace platform::x11
