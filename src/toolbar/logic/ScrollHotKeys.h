// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <functional>
#include <memory>

namespace platform {
class HotKeyCenter;
}
namespace settings {
class Defaults;
}

namespace toolbar {

// During a scrolling capture the overlay lets every event through to the
// window being scrolled, so it hears no keys: the save and copy short cuts
// then become global hot keys, without modifiers, for as long as the
// capture lasts.
//
// A hot key centre has one handler, so this needs a centre of its own
// rather than the one of the six capture hot keys.
class ScrollHotKeys
{
public:
    // What a press asks for, by the hot key's number: 0 cancels (kept
    // ready, never registered), 1 saves, 2 copies.
    enum class Action
    {
        Cancel = 0,
        Save = 1,
        CopyToPaste = 2,
    };
    using Handler = std::function<void(Action)>;

    ScrollHotKeys(platform::HotKeyCenter& center, const settings::Defaults& defaults,
                  Handler handler);
    ~ScrollHotKeys();
    ScrollHotKeys(const ScrollHotKeys&) = delete;
    ScrollHotKeys& operator=(const ScrollHotKeys&) = delete;

    // While `scrollScreenShot`: registers the stored "saveShortcut" and
    // "copyToPasteShortcut" as hot keys 1 and 2. Always installs the
    // handler. A key no one can press, or one another program holds, is
    // told on stderr and left out. Calling it again registers afresh.
    void costomHotKey(bool scrollScreenShot);
    // Lets go of both keys and the handler; a second call does nothing.
    void unregisterAllHotKey();
    // A press of the hot key registered as `identifier`. Unknown
    // identifiers and numbers above 2 do nothing.
    void hotKeyHandler(const QString& identifier) const;

    // The centre's identifier of hot key `number`.
    [[nodiscard]] static QString identifierOf(int number);
    [[nodiscard]] bool saveHotKeyRegistered() const { return m_saveHotKeyRef; }
    [[nodiscard]] bool copyToPasteHotKeyRegistered() const { return m_copyToPasteHotKeyRef; }
    [[nodiscard]] bool handlerInstalled() const { return m_handlerToken != nullptr; }

private:
    bool registerShortcut(const QString& shortcut, int number);
    void releaseKeys();

    platform::HotKeyCenter& m_center;
    const settings::Defaults& m_defaults;
    Handler m_handler;
    bool m_saveHotKeyRef = false;
    bool m_copyToPasteHotKeyRef = false;
    // Alive while the handler is installed; the installed handler holds a
    // weak reference to it.
    std::shared_ptr<int> m_handlerToken;
};

} // namespace toolbar
