// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <Qt>

#include <functional>

namespace platform {

// A global key combination: a Qt key (Qt::Key_A) and Qt modifiers
// (Qt::AltModifier). Qt's macOS naming carries over: Command is Ctrl,
// Control is Meta, Option is Alt.
struct KeyCombo
{
    int keyCode = 0;
    Qt::KeyboardModifiers modifierFlags;

    [[nodiscard]] bool isValid() const { return keyCode != 0; }
    friend bool operator==(const KeyCombo& a, const KeyCombo& b)
    {
        return a.keyCode == b.keyCode && a.modifierFlags == b.modifierFlags;
    }
};

enum class HotKeyStatus
{
    Registered,
    HeldByAnotherProgram, // the window system gave the combination to someone else
    UnknownKey,           // no key on this keyboard types it
    NoWindowSystem,       // no connection to take keys from
};

// Keys that reach Kelvo whichever window has the focus. Identifiers are
// the caller's strings; registering an identifier again replaces its
// combination.
class HotKeyCenter
{
public:
    using Handler = std::function<void(const QString& identifier)>;

    virtual ~HotKeyCenter() = default;

    // Called on the main thread for every press of a registered combination.
    virtual void setHandler(Handler handler) = 0;
    [[nodiscard]] virtual HotKeyStatus registerHotKey(const QString& identifier,
                                                      const KeyCombo& combo) = 0;
    // False when nothing was registered under the identifier.
    virtual bool unregisterHotKey(const QString& identifier) = 0;
    [[nodiscard]] virtual bool isRegistered(const QString& identifier) const = 0;
};

} // namespace platform
