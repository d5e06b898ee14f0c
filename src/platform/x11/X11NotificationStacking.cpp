// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/x11/X11NotificationStacking.h"

#include "platform/WindowRecord.h"
#include "platform/x11/X11Atoms.h"
#include "platform/x11/X11ClientTree.h"
#include "platform/x11/X11SharedConnection.h"
#include "platform/x11/XcbHandles.h"

#include <vector>

namespace platform::x11 {

struct X11NotificationStacking::State
{
    X11SharedConnection shared;
    xcb_connection_t* connection = shared.get();
    xcb_window_t root = shared.root();
    X11Atoms atoms;

    // The frames of the notification windows on screen, top of the stack first.
    [[nodiscard]] std::vector<xcb_window_t> notificationFrames() const
    {
        std::vector<xcb_window_t> frames;
        for (const X11Client& client : stackedClients(connection, root, atoms)) {
            if (layerOf(client.facts) == layers::Notification)
                frames.push_back(client.frame);
        }
        return frames;
    }

    // A restack whose error (a window gone meanwhile, a sibling that is no
    // longer one) is taken here rather than left for Qt to log.
    void restack(xcb_window_t window, std::uint32_t mask, const std::uint32_t* values) const
    {
        const XcbReply<xcb_generic_error_t> error(xcb_request_check(
            connection, xcb_configure_window_checked(connection, window,
                                                     static_cast<std::uint16_t>(mask), values)));
    }
};

X11NotificationStacking::X11NotificationStacking()
    : m(std::make_unique<State>())
{
    if (m->root != XCB_NONE)
        m->atoms = X11Atoms::intern(m->connection);
}

X11NotificationStacking::~X11NotificationStacking() = default;

bool X11NotificationStacking::isConnected() const
{
    return m->root != XCB_NONE;
}

bool X11NotificationStacking::notificationShown()
{
    return isConnected() && !m->notificationFrames().empty();
}

bool X11NotificationStacking::showNotificationsAbove(WId overlay)
{
    if (!isConnected() || overlay == 0)
        return false;
    const std::vector<xcb_window_t> frames = m->notificationFrames();
    // Each goes directly above the overlay, the topmost first, so that the
    // next one lands under it and their order holds.
    for (const xcb_window_t frame : frames) {
        const std::uint32_t values[] = {static_cast<std::uint32_t>(overlay), XCB_STACK_MODE_ABOVE};
        m->restack(frame, XCB_CONFIG_WINDOW_SIBLING | XCB_CONFIG_WINDOW_STACK_MODE, values);
    }
    return !frames.empty();
}

void X11NotificationStacking::raiseAboveAll(WId overlay)
{
    if (!isConnected() || overlay == 0)
        return;
    const std::uint32_t values[] = {XCB_STACK_MODE_ABOVE};
    m->restack(static_cast<xcb_window_t>(overlay), XCB_CONFIG_WINDOW_STACK_MODE, values);
}

} // namespace platform::x11
