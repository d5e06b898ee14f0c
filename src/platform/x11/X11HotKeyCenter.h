// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/HotKeyCenter.h"

#include <QAbstractNativeEventFilter>

#include <memory>

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
    struct State;
    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

    std::unique_ptr<State> m;
};

} // namespace platform::x11
