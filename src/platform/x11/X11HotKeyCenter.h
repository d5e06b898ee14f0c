// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/HotKeyCenter.h"

#include <QAbstractNativeEventFilter>
#include <QObject>

#include <xcb/xcb.h>
#include <xcb/xcb_keysyms.h>

#include <map>
#include <memory>
#include <vector>

namespace platform::x11 {

// Global hot keys as passive key grabs on every root window, through Qt's
// own X connection. A combination is grabbed four times, with and without
// Caps Lock and Num Lock, so that the toggles do not hide it. The presses
// come back as KeyPress events on the root, which a native event filter
// takes out of Qt's stream before Qt sees them.
//
// The X server gives a combination to one client only; a grab another
// program holds fails with BadAccess, which registerHotKey() reports.
class X11HotKeyCenter final : public HotKeyCenter, private QAbstractNativeEventFilter
{
public:
    // Needs a QGuiApplication on the xcb platform; without it every
    // registration answers NoWindowSystem.
    X11HotKeyCenter();
    ~X11HotKeyCenter() override;
    X11HotKeyCenter(const X11HotKeyCenter&) = delete;
    X11HotKeyCenter& operator=(const X11HotKeyCenter&) = delete;

    void setHandler(Handler handler) override;
    [[nodiscard]] HotKeyStatus registerHotKey(const QString& identifier,
                                              const KeyCombo& combo) override;
    bool unregisterHotKey(const QString& identifier) override;
    [[nodiscard]] bool isRegistered(const QString& identifier) const override;

private:
    struct Grab
    {
        xcb_window_t root = 0;
        xcb_keycode_t keycode = 0;
        std::uint16_t modifiers = 0; // without the lock toggles
    };
    struct KeySymbolsDeleter
    {
        void operator()(xcb_key_symbols_t* symbols) const;
    };

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;
    void ungrab(const std::vector<Grab>& grabs);
    [[nodiscard]] const QString* identifierOf(xcb_window_t root, xcb_keycode_t keycode,
                                              std::uint16_t modifiers) const;

    xcb_connection_t* m_connection = nullptr;
    std::vector<xcb_window_t> m_roots;
    std::unique_ptr<xcb_key_symbols_t, KeySymbolsDeleter> m_symbols;
    std::map<QString, std::vector<Grab>> m_grabs;
    Handler m_handler;
    xcb_keycode_t m_keyDown = 0; // the hot key held now, whose repeats are dropped
    // Queued presses are dropped with it when the centre goes away first.
    QObject m_context;
};

} // namespace platform::x11
