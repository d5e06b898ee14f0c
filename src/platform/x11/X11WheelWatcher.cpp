// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/x11/X11WheelWatcher.h"

#include "platform/x11/XcbHandles.h"

#include <QSocketNotifier>

#include <xcb/xinput.h>

namespace platform::x11 {

namespace {

// The core protocol's wheel buttons, as Qt reads them.
QPoint angleDeltaOfButton(std::uint32_t button)
{
    switch (button) {
    case 4:
        return {0, 120};
    case 5:
        return {0, -120};
    case 6:
        return {120, 0};
    case 7:
        return {-120, 0};
    default:
        return {};
    }
}

void selectRawButtons(xcb_connection_t* c, xcb_window_t root, bool on)
{
    struct
    {
        xcb_input_event_mask_t head;
        std::uint32_t mask;
    } mask{};
    mask.head.deviceid = XCB_INPUT_DEVICE_ALL_MASTER;
    mask.head.mask_len = 1;
    mask.mask = on ? XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS : 0;
    // Checked, so that the server has taken the change before we go on:
    // no turn made after a stop is reported by the next start.
    XcbReply<xcb_generic_error_t> error(
        xcb_request_check(c, xcb_input_xi_select_events_checked(c, root, 1, &mask.head)));
}

} // namespace

struct X11WheelWatcher::State
{
    XcbConnectionPtr connection;
    xcb_window_t root = 0;
    std::uint8_t xinputOpcode = 0;
    std::unique_ptr<QSocketNotifier> notifier;
    Handler handler;

    // A connection is opened on first use and kept; one whose server has
    // no XInput 2 is dropped again.
    bool connect()
    {
        if (connection)
            return true;
        int screenNumber = 0;
        XcbConnectionPtr c(xcb_connect(nullptr, &screenNumber));
        if (xcb_connection_has_error(c.get()) != 0)
            return false;
        const xcb_query_extension_reply_t* ext = xcb_get_extension_data(c.get(), &xcb_input_id);
        if (ext == nullptr || ext->present == 0)
            return false;
        // Raw events reach the root even under another client's grab from
        // version 2.1 on.
        XcbReply<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
            c.get(), xcb_input_xi_query_version(c.get(), 2, 2), nullptr));
        if (!version || version->major_version < 2 ||
            (version->major_version == 2 && version->minor_version < 1))
            return false;
        xcb_screen_iterator_t it = xcb_setup_roots_iterator(xcb_get_setup(c.get()));
        for (int i = 0; i < screenNumber && it.rem > 0; ++i)
            xcb_screen_next(&it);
        root = it.data->root;
        xinputOpcode = ext->major_opcode;
        connection = std::move(c);
        return true;
    }

    void readEvents()
    {
        while (XcbReply<xcb_generic_event_t> event{xcb_poll_for_event(connection.get())}) {
            if ((event->response_type & 0x7f) != XCB_GE_GENERIC)
                continue;
            const auto* ge = reinterpret_cast<const xcb_ge_generic_event_t*>(event.get());
            if (ge->extension != xinputOpcode || ge->event_type != XCB_INPUT_RAW_BUTTON_PRESS)
                continue;
            const auto* raw =
                reinterpret_cast<const xcb_input_raw_button_press_event_t*>(event.get());
            // Presses a smoothly scrolling device makes up from its motion
            // (flagged as emulated) count as well: one for each notch's
            // worth, which is how such a device turns a wheel.
            const QPoint delta = angleDeltaOfButton(raw->detail);
            if (delta.isNull() || !handler)
                continue;
            // The handler may stop the watch, which lets go of it.
            const Handler keep = handler;
            keep(delta);
            if (!notifier)
                return;
        }
    }
};

X11WheelWatcher::X11WheelWatcher()
    : m(std::make_unique<State>())
{}

// Closing the connection ends the selection with it.
X11WheelWatcher::~X11WheelWatcher() = default;

bool X11WheelWatcher::start(Handler handler)
{
    if (!m->connect())
        return false;
    m->handler = std::move(handler);
    if (m->notifier)
        return true;
    selectRawButtons(m->connection.get(), m->root, true);
    m->notifier = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(m->connection.get()),
                                                    QSocketNotifier::Read);
    QObject::connect(m->notifier.get(), &QSocketNotifier::activated,
                     [state = m.get()] { state->readEvents(); });
    // Events that came in with the replies above are queued already and
    // would not wake the notifier.
    m->readEvents();
    return true;
}

void X11WheelWatcher::stop()
{
    if (!m->notifier)
        return;
    // Stopping may happen inside the notifier's own signal.
    m->notifier->setEnabled(false);
    m->notifier.release()->deleteLater();
    selectRawButtons(m->connection.get(), m->root, false);
    m->handler = nullptr;
}

bool X11WheelWatcher::isWatching() const
{
    return m->notifier != nullptr;
}

} // namespace platform::x11
