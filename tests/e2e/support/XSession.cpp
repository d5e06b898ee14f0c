// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/XSession.h"

#include "support/TestDesktop.h"

#include <QProcess>

#include <X11/keysym.h>
#include <xcb/xtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace e2e {

namespace {
template <typename T>
using Reply = std::unique_ptr<T, decltype(&std::free)>;

template <typename T>
Reply<T> reply(T* r)
{
    return Reply<T>(r, &std::free);
}

std::uint32_t pixelOf(QColor c)
{
    return (static_cast<std::uint32_t>(c.red()) << 16) |
           (static_cast<std::uint32_t>(c.green()) << 8) | static_cast<std::uint32_t>(c.blue());
}
} // namespace

XSession::XSession()
{
    int screenNumber = 0;
    xcb_connection_t* c = xcb_connect(nullptr, &screenNumber);
    if (xcb_connection_has_error(c) != 0) {
        xcb_disconnect(c);
        return;
    }
    m_connection = c;
    xcb_screen_iterator_t it = xcb_setup_roots_iterator(xcb_get_setup(c));
    for (int i = 0; i < screenNumber; ++i)
        xcb_screen_next(&it);
    m_root = it.data->root;
    m_depth = it.data->root_depth;
}

XSession::~XSession()
{
    if (m_connection != nullptr)
        xcb_disconnect(m_connection);
}

void XSession::sync()
{
    auto r =
        reply(xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
}

xcb_atom_t XSession::atom(const char* name)
{
    auto r = reply(xcb_intern_atom_reply(
        m_connection,
        xcb_intern_atom(m_connection, 0, static_cast<std::uint16_t>(std::strlen(name)), name),
        nullptr));
    return r ? r->atom : XCB_NONE;
}

QImage XSession::grabRoot(const QRect& rect)
{
    QRect r = rect;
    if (r.isNull()) {
        auto g = reply(
            xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, m_root), nullptr));
        r = QRect(0, 0, g->width, g->height);
    }
    auto image = reply(xcb_get_image_reply(
        m_connection,
        xcb_get_image(m_connection, XCB_IMAGE_FORMAT_Z_PIXMAP, m_root,
                      static_cast<std::int16_t>(r.x()), static_cast<std::int16_t>(r.y()),
                      static_cast<std::uint16_t>(r.width()), static_cast<std::uint16_t>(r.height()),
                      ~0u),
        nullptr));
    if (!image)
        return {};
    QImage out(r.width(), r.height(), QImage::Format_RGB32);
    const auto* data = xcb_get_image_data(image.get());
    for (int y = 0; y < r.height(); ++y)
        std::memcpy(out.scanLine(y), data + static_cast<std::size_t>(y) * r.width() * 4,
                    static_cast<std::size_t>(r.width()) * 4);
    return out;
}

QColor XSession::pixel(int x, int y)
{
    return grabRoot(QRect(x, y, 1, 1)).pixelColor(0, 0);
}

void XSession::movePointer(int x, int y)
{
    xcb_test_fake_input(m_connection, XCB_MOTION_NOTIFY, 0, XCB_CURRENT_TIME, m_root,
                        static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 0);
    sync();
}

void XSession::pressButton(int button)
{
    xcb_test_fake_input(m_connection, XCB_BUTTON_PRESS, static_cast<std::uint8_t>(button),
                        XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    sync();
}

void XSession::releaseButton(int button)
{
    xcb_test_fake_input(m_connection, XCB_BUTTON_RELEASE, static_cast<std::uint8_t>(button),
                        XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    sync();
}

void XSession::click(int button)
{
    pressButton(button);
    releaseButton(button);
}

xcb_keycode_t XSession::keycodeOf(std::uint32_t keysym)
{
    const xcb_setup_t* setup = xcb_get_setup(m_connection);
    const int count = setup->max_keycode - setup->min_keycode + 1;
    auto map = reply(
        xcb_get_keyboard_mapping_reply(m_connection,
                                       xcb_get_keyboard_mapping(m_connection, setup->min_keycode,
                                                                static_cast<std::uint8_t>(count)),
                                       nullptr));
    if (!map)
        return 0;
    const xcb_keysym_t* syms = xcb_get_keyboard_mapping_keysyms(map.get());
    const int per = map->keysyms_per_keycode;
    for (int i = 0; i < count; ++i) {
        for (int j = 0; j < per; ++j) {
            if (syms[i * per + j] == keysym)
                return static_cast<xcb_keycode_t>(setup->min_keycode + i);
        }
    }
    return 0;
}

void XSession::tapKey(const char* keysymName, bool withShift)
{
    const xcb_keycode_t code = keycodeOf(keysymOf(keysymName));
    const xcb_keycode_t shift = keycodeOf(XK_Shift_L);
    if (withShift)
        xcb_test_fake_input(m_connection, XCB_KEY_PRESS, shift, XCB_CURRENT_TIME, XCB_NONE, 0, 0,
                            0);
    xcb_test_fake_input(m_connection, XCB_KEY_PRESS, code, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    xcb_test_fake_input(m_connection, XCB_KEY_RELEASE, code, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    if (withShift)
        xcb_test_fake_input(m_connection, XCB_KEY_RELEASE, shift, XCB_CURRENT_TIME, XCB_NONE, 0, 0,
                            0);
    sync();
}

QRect XSession::frameOf(xcb_window_t client)
{
    // Walk up to the child of the root: that is the frame.
    xcb_window_t w = client;
    while (true) {
        auto tree =
            reply(xcb_query_tree_reply(m_connection, xcb_query_tree(m_connection, w), nullptr));
        if (!tree || tree->parent == m_root || tree->parent == XCB_NONE)
            break;
        w = tree->parent;
    }
    auto g =
        reply(xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, w), nullptr));
    if (!g)
        return {};
    return QRect(g->x, g->y, g->width + 2 * g->border_width, g->height + 2 * g->border_width);
}

QPoint XSession::pointerPosition()
{
    auto p = reply(
        xcb_query_pointer_reply(m_connection, xcb_query_pointer(m_connection, m_root), nullptr));
    return p ? QPoint(p->root_x, p->root_y) : QPoint(-1, -1);
}

void XSession::setRootColor(QColor color)
{
    const std::uint32_t value = pixelOf(color);
    xcb_change_window_attributes(m_connection, m_root, XCB_CW_BACK_PIXEL, &value);
    xcb_clear_area(m_connection, 0, m_root, 0, 0, 0, 0);
    sync();
}

bool XSession::keyboardGrabbedByOther()
{
    auto r =
        reply(xcb_grab_keyboard_reply(m_connection,
                                      xcb_grab_keyboard(m_connection, 0, m_root, XCB_CURRENT_TIME,
                                                        XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                                      nullptr));
    if (r && r->status == XCB_GRAB_STATUS_SUCCESS) {
        xcb_ungrab_keyboard(m_connection, XCB_CURRENT_TIME);
        sync();
        return false;
    }
    return r && r->status == XCB_GRAB_STATUS_ALREADY_GRABBED;
}

std::vector<XSession::Window> XSession::topLevels()
{
    std::vector<Window> out;
    auto tree =
        reply(xcb_query_tree_reply(m_connection, xcb_query_tree(m_connection, m_root), nullptr));
    if (!tree)
        return out;
    const xcb_window_t* kids = xcb_query_tree_children(tree.get());
    const int n = xcb_query_tree_children_length(tree.get());
    const xcb_atom_t pidAtom = atom("_NET_WM_PID");
    for (int i = n - 1; i >= 0; --i) {
        auto attrs = reply(xcb_get_window_attributes_reply(
            m_connection, xcb_get_window_attributes(m_connection, kids[i]), nullptr));
        if (!attrs || attrs->map_state != XCB_MAP_STATE_VIEWABLE)
            continue;
        auto geo = reply(
            xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, kids[i]), nullptr));
        if (!geo)
            continue;
        Window w;
        w.id = kids[i];
        w.geometry = QRect(geo->x, geo->y, geo->width, geo->height);
        w.overrideRedirect = attrs->override_redirect != 0;
        auto pid = reply(xcb_get_property_reply(
            m_connection,
            xcb_get_property(m_connection, 0, kids[i], pidAtom, XCB_ATOM_CARDINAL, 0, 1), nullptr));
        if (pid && xcb_get_property_value_length(pid.get()) == 4)
            w.pid = *static_cast<const std::uint32_t*>(xcb_get_property_value(pid.get()));
        auto name = reply(xcb_get_property_reply(
            m_connection,
            xcb_get_property(m_connection, 0, kids[i], XCB_ATOM_WM_NAME, XCB_ATOM_ANY, 0, 256),
            nullptr));
        if (name)
            w.name = QString::fromUtf8(static_cast<const char*>(xcb_get_property_value(name.get())),
                                       xcb_get_property_value_length(name.get()));
        out.push_back(w);
    }
    return out;
}

std::vector<XSession::Window> XSession::overlaysOf(std::int64_t pid)
{
    std::vector<Window> all = topLevels();
    std::erase_if(all, [pid](const Window& w) {
        return !w.overrideRedirect || static_cast<std::int64_t>(w.pid) != pid ||
               w.name != QLatin1String("Kelvo capture");
    });
    std::sort(all.begin(), all.end(),
              [](const Window& a, const Window& b) { return a.geometry.x() < b.geometry.x(); });
    return all;
}

SolidWindow::SolidWindow(XSession& x, const QRect& rect, QColor color, const QString& title)
    : m_x(x)
{
    xcb_connection_t* c = x.connection();
    m_window = xcb_generate_id(c);
    const std::uint32_t values[] = {pixelOf(color), XCB_EVENT_MASK_EXPOSURE};
    xcb_create_window(c, XCB_COPY_FROM_PARENT, m_window, x.root(),
                      static_cast<std::int16_t>(rect.x()), static_cast<std::int16_t>(rect.y()),
                      static_cast<std::uint16_t>(rect.width()),
                      static_cast<std::uint16_t>(rect.height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, values);
    const QByteArray name = title.toUtf8();
    xcb_change_property(c, XCB_PROP_MODE_REPLACE, m_window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8,
                        static_cast<std::uint32_t>(name.size()), name.constData());
    // Ask the window manager to keep the requested position.
    std::uint32_t hints[18] = {};
    hints[0] = 1 | 2 | 4 | 8; // USPosition | USSize | PPosition | PSize
    hints[1] = static_cast<std::uint32_t>(rect.x());
    hints[2] = static_cast<std::uint32_t>(rect.y());
    hints[3] = static_cast<std::uint32_t>(rect.width());
    hints[4] = static_cast<std::uint32_t>(rect.height());
    xcb_change_property(c, XCB_PROP_MODE_REPLACE, m_window, XCB_ATOM_WM_NORMAL_HINTS,
                        XCB_ATOM_WM_SIZE_HINTS, 32, 18, hints);
    xcb_map_window(c, m_window);
    x.sync();
}

SolidWindow::~SolidWindow()
{
    xcb_destroy_window(m_x.connection(), m_window);
    m_x.sync();
}

void SolidWindow::setColor(QColor color)
{
    const std::uint32_t value = pixelOf(color);
    xcb_change_window_attributes(m_x.connection(), m_window, XCB_CW_BACK_PIXEL, &value);
    xcb_clear_area(m_x.connection(), 0, m_window, 0, 0, 0, 0);
    m_x.sync();
}

std::uint32_t XSession::keysymOf(const char* keysymName)
{
    if (std::strcmp(keysymName, "Escape") == 0)
        return XK_Escape;
    if (std::strcmp(keysymName, "Return") == 0)
        return XK_Return;
    if (std::strcmp(keysymName, "Left") == 0)
        return XK_Left;
    if (std::strcmp(keysymName, "Right") == 0)
        return XK_Right;
    if (std::strcmp(keysymName, "Up") == 0)
        return XK_Up;
    if (std::strcmp(keysymName, "Down") == 0)
        return XK_Down;
    if (std::strcmp(keysymName, "space") == 0)
        return XK_space;
    if (std::strcmp(keysymName, "Shift_L") == 0)
        return XK_Shift_L;
    if (std::strcmp(keysymName, "Alt_L") == 0)
        return XK_Alt_L;
    if (std::strcmp(keysymName, "KP_Enter") == 0)
        return XK_KP_Enter;
    if (std::strcmp(keysymName, "Control_L") == 0)
        return XK_Control_L;
    if (std::strcmp(keysymName, "Delete") == 0)
        return XK_Delete;
    if (std::strcmp(keysymName, "BackSpace") == 0)
        return XK_BackSpace;
    if (std::strlen(keysymName) == 1)
        return static_cast<unsigned char>(keysymName[0]);
    return 0;
}

void XSession::fakeKey(std::uint8_t type, xcb_keycode_t code)
{
    xcb_test_fake_input(m_connection, type, code, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
}

void XSession::tapKeyWithAlt(const char* keysymName)
{
    const xcb_keycode_t code = keycodeOf(keysymOf(keysymName));
    const xcb_keycode_t alt = keycodeOf(XK_Alt_L);
    fakeKey(XCB_KEY_PRESS, alt);
    fakeKey(XCB_KEY_PRESS, code);
    fakeKey(XCB_KEY_RELEASE, code);
    fakeKey(XCB_KEY_RELEASE, alt);
    sync();
}

void XSession::pressKey(const char* keysymName)
{
    fakeKey(XCB_KEY_PRESS, keycodeOf(keysymOf(keysymName)));
    sync();
}

void XSession::releaseKey(const char* keysymName)
{
    fakeKey(XCB_KEY_RELEASE, keycodeOf(keysymOf(keysymName)));
    sync();
}

QByteArray XSession::clipboardPng()
{
    xcb_connection_t* c = m_connection;
    auto atom = [c](const char* name) {
        std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> r(
            xcb_intern_atom_reply(
                c, xcb_intern_atom(c, 0, static_cast<uint16_t>(strlen(name)), name), nullptr),
            &std::free);
        return r ? r->atom : xcb_atom_t{XCB_ATOM_NONE};
    };
    const xcb_atom_t clipboard = atom("CLIPBOARD");
    const xcb_atom_t png = atom("image/png");
    const xcb_atom_t target = atom("KELVO_E2E_CLIP");
    const xcb_window_t w = xcb_generate_id(c);
    xcb_create_window(c, XCB_COPY_FROM_PARENT, w, m_root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_convert_selection(c, w, clipboard, png, target, XCB_CURRENT_TIME);
    xcb_flush(c);
    bool notified = false;
    waitFor(
        [&] {
            while (xcb_generic_event_t* ev = xcb_poll_for_event(c)) {
                notified = notified || (ev->response_type & 0x7f) == XCB_SELECTION_NOTIFY;
                std::free(ev);
            }
            return notified;
        },
        std::chrono::seconds(5));
    QByteArray data;
    if (notified) {
        std::unique_ptr<xcb_get_property_reply_t, decltype(&std::free)> r(
            xcb_get_property_reply(
                c, xcb_get_property(c, 1, w, target, XCB_GET_PROPERTY_TYPE_ANY, 0, 1u << 26),
                nullptr),
            &std::free);
        if (r)
            data = QByteArray(static_cast<const char*>(xcb_get_property_value(r.get())),
                              xcb_get_property_value_length(r.get()));
    }
    xcb_destroy_window(c, w);
    xcb_flush(c);
    return data;
}

void XSession::toggleCapsLock()
{
    const xcb_keycode_t caps = keycodeOf(XK_Caps_Lock);
    fakeKey(XCB_KEY_PRESS, caps);
    fakeKey(XCB_KEY_RELEASE, caps);
    sync();
}

bool XSession::grabKey(const char* keysymName, std::uint16_t modifiers)
{
    const xcb_keycode_t code = keycodeOf(keysymOf(keysymName));
    const xcb_void_cookie_t cookie = xcb_grab_key_checked(m_connection, 0, m_root, modifiers, code,
                                                          XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    auto error = reply(xcb_request_check(m_connection, cookie));
    return !error;
}

void XSession::ungrabKey(const char* keysymName, std::uint16_t modifiers)
{
    xcb_ungrab_key(m_connection, keycodeOf(keysymOf(keysymName)), m_root, modifiers);
    sync();
}

QString xdotool(const QStringList& args)
{
    QProcess p;
    p.start(QStringLiteral("xdotool"), args);
    if (!p.waitForFinished(5000)) {
        p.kill();
        p.waitForFinished(1000);
        return {};
    }
    return QString::fromLatin1(p.readAllStandardOutput()).trimmed();
}

QStringList kelvoWindowsOf(qint64 pid)
{
    return xdotool({QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                    QStringLiteral("--pid"), QString::number(pid), QStringLiteral("--name"),
                    QStringLiteral("^Kelvo$")})
        .split(u'\n', Qt::SkipEmptyParts);
}

bool activateWindow(const QString& window, std::chrono::milliseconds timeout)
{
    (void)xdotool({QStringLiteral("windowactivate"), window});
    return waitFor(
        [&] {
            return xdotool({QStringLiteral("getactivewindow")}).toULongLong() ==
                   window.toULongLong();
        },
        timeout);
}

} // namespace e2e
