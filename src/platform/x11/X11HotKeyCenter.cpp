// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/x11/X11HotKeyCenter.h"

#include "platform/x11/QtKeySymbols.h"
#include "platform/x11/X11SharedConnection.h"
#include "platform/x11/XcbHandles.h"

#include <QCoreApplication>
#include <QTimer>

#include <xcb/xcb.h>
#include <xcb/xcb_keysyms.h>

#include <map>
#include <vector>

namespace platform::x11 {

namespace {

// The lock toggles a grab is repeated with.
constexpr std::uint16_t kLockVariants[] = {0, kCapsLockMask, kNumLockMask,
                                           kCapsLockMask | kNumLockMask};

struct KeySymbolsDeleter
{
    void operator()(xcb_key_symbols_t* symbols) const { xcb_key_symbols_free(symbols); }
};

} // namespace

struct X11HotKeyCenter::State
{
    struct Grab
    {
        xcb_window_t root = 0;
        xcb_keycode_t keycode = 0;
        std::uint16_t modifiers = 0; // without the lock toggles
    };

    void ungrab(const std::vector<Grab>& list);
    [[nodiscard]] const QString* identifierOf(xcb_window_t root, xcb_keycode_t keycode,
                                              std::uint16_t modifiers) const;

    xcb_connection_t* connection = nullptr;
    std::vector<xcb_window_t> roots;
    std::unique_ptr<xcb_key_symbols_t, KeySymbolsDeleter> symbols;
    std::map<QString, std::vector<Grab>> grabs;
    Handler handler;
    xcb_keycode_t keyDown = 0; // the hot key held now, whose repeats are dropped
    // Queued presses are dropped with it when the centre goes away first.
    QObject context;
};

X11HotKeyCenter::X11HotKeyCenter()
    : m(std::make_unique<State>())
{
    // Its key events come through Qt's event filter, so only Qt's connection will do.
    m->connection = X11SharedConnection::qtConnection();
    if (m->connection == nullptr)
        return;
    for (auto it = xcb_setup_roots_iterator(xcb_get_setup(m->connection)); it.rem > 0;
         xcb_screen_next(&it))
        m->roots.push_back(it.data->root);
    m->symbols.reset(xcb_key_symbols_alloc(m->connection));
    QCoreApplication::instance()->installNativeEventFilter(this);
}

X11HotKeyCenter::~X11HotKeyCenter()
{
    if (m->connection == nullptr)
        return;
    if (QCoreApplication::instance() != nullptr)
        QCoreApplication::instance()->removeNativeEventFilter(this);
    for (const auto& [identifier, grabs] : m->grabs)
        m->ungrab(grabs);
    xcb_flush(m->connection);
}

void X11HotKeyCenter::setHandler(Handler handler)
{
    m->handler = std::move(handler);
}

HotKeyStatus X11HotKeyCenter::registerHotKey(const QString& identifier, const KeyCombo& combo)
{
    unregisterHotKey(identifier);
    if (m->connection == nullptr || !m->symbols)
        return HotKeyStatus::NoWindowSystem;
    const std::uint32_t keysym = keysymForQtKey(combo.keyCode);
    if (keysym == 0)
        return HotKeyStatus::UnknownKey;
    XcbReply<xcb_keycode_t> keycodes(xcb_key_symbols_get_keycode(m->symbols.get(), keysym));
    if (!keycodes || keycodes.get()[0] == XCB_NO_SYMBOL)
        return HotKeyStatus::UnknownKey;

    const std::uint16_t modifiers = xModifiersForQt(combo.modifierFlags);
    std::vector<State::Grab> grabs;
    std::vector<xcb_void_cookie_t> cookies;
    for (const xcb_keycode_t* code = keycodes.get(); *code != XCB_NO_SYMBOL; ++code) {
        for (const xcb_window_t root : m->roots) {
            grabs.push_back({root, *code, modifiers});
            // Not owner_events: a press goes to the root even while one of
            // our own windows has the focus, so Qt never sees it as a key.
            for (const std::uint16_t locks : kLockVariants)
                cookies.push_back(xcb_grab_key_checked(
                    m->connection, 0, root, static_cast<std::uint16_t>(modifiers | locks), *code,
                    XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
        }
    }
    bool held = false;
    for (const xcb_void_cookie_t cookie : cookies) {
        XcbReply<xcb_generic_error_t> error(xcb_request_check(m->connection, cookie));
        if (error)
            held = true; // BadAccess: another client has it
    }
    if (held) {
        // Half a hot key would fire only with some lock states: let go of all.
        m->ungrab(grabs);
        xcb_flush(m->connection);
        return HotKeyStatus::HeldByAnotherProgram;
    }
    m->grabs[identifier] = std::move(grabs);
    return HotKeyStatus::Registered;
}

bool X11HotKeyCenter::unregisterHotKey(const QString& identifier)
{
    const auto it = m->grabs.find(identifier);
    if (it == m->grabs.end())
        return false;
    m->ungrab(it->second);
    xcb_flush(m->connection);
    m->grabs.erase(it);
    return true;
}

bool X11HotKeyCenter::isRegistered(const QString& identifier) const
{
    return m->grabs.count(identifier) != 0;
}

void X11HotKeyCenter::State::ungrab(const std::vector<Grab>& list)
{
    for (const Grab& grab : list) {
        for (const std::uint16_t locks : kLockVariants)
            xcb_ungrab_key(connection, grab.keycode, grab.root,
                           static_cast<std::uint16_t>(grab.modifiers | locks));
    }
}

const QString* X11HotKeyCenter::State::identifierOf(xcb_window_t root, xcb_keycode_t keycode,
                                                    std::uint16_t modifiers) const
{
    for (const auto& [identifier, list] : grabs) {
        for (const Grab& grab : list) {
            if (grab.root == root && grab.keycode == keycode && grab.modifiers == modifiers)
                return &identifier;
        }
    }
    return nullptr;
}

bool X11HotKeyCenter::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*)
{
    if (eventType != "xcb_generic_event_t" || message == nullptr)
        return false;
    auto* event = static_cast<xcb_generic_event_t*>(message);
    const std::uint8_t type = event->response_type & 0x7f;
    if (type == XCB_MAPPING_NOTIFY) {
        // Qt needs the event too; the key table only has to follow it.
        xcb_refresh_keyboard_mapping(m->symbols.get(),
                                     reinterpret_cast<xcb_mapping_notify_event_t*>(event));
        return false;
    }
    if (type != XCB_KEY_PRESS && type != XCB_KEY_RELEASE)
        return false;
    auto* key = reinterpret_cast<xcb_key_press_event_t*>(event);
    const bool release = type == XCB_KEY_RELEASE;
    const bool repeat = !release && key->detail == m->keyDown;
    if (release && key->detail == m->keyDown)
        m->keyDown = 0;
    const QString* identifier = m->identifierOf(key->event, key->detail, hotKeyState(key->state));
    if (identifier == nullptr)
        return false;
    // A held key repeats its presses; one press is one action.
    if (!release && !repeat) {
        m->keyDown = key->detail;
        if (m->handler) {
            // Out of the event filter first: an action may open a modal dialog.
            QTimer::singleShot(0, &m->context,
                               [handler = m->handler, id = *identifier] { handler(id); });
        }
    }
    return true; // repeats and the release are ours as well
}

} // namespace platform::x11
