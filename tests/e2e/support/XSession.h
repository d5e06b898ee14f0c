// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QColor>
#include <QImage>
#include <QRect>
#include <QString>
#include <QStringList>

#include <xcb/xcb.h>

#include <chrono>
#include <cstdint>
#include <vector>

namespace e2e {

// The test's own X client: it reads the screen as a person would see it
// (a root grab), drives real input through XTest, and finds windows.
class XSession
{
public:
    XSession();
    ~XSession();
    XSession(const XSession&) = delete;
    XSession& operator=(const XSession&) = delete;

    [[nodiscard]] bool isConnected() const { return m_connection != nullptr; }
    // The window manager's frame around a client window, in root pixels.
    [[nodiscard]] QRect frameOf(xcb_window_t client);
    [[nodiscard]] QPoint pointerPosition();
    // A plain desktop colour, so dimming shows in screenshots.
    void setRootColor(QColor color);
    [[nodiscard]] xcb_connection_t* connection() const { return m_connection; }
    [[nodiscard]] xcb_window_t root() const { return m_root; }
    // Waits until the server has handled everything sent so far.
    void sync();

    // What is on screen, in root pixels (RGB32).
    [[nodiscard]] QImage grabRoot(const QRect& rect = QRect());
    [[nodiscard]] QColor pixel(int x, int y);

    void movePointer(int x, int y);
    void pressButton(int button);
    void releaseButton(int button);
    void click(int button);
    // A key by its keysym name, e.g. "Escape", "a".
    void tapKey(const char* keysymName, bool withShift = false);
    // A key tapped with Alt held, as a hot key is typed.
    void tapKeyWithAlt(const char* keysymName);
    // Holds a key down, or lets it go (Shift_L while clicking, say).
    void pressKey(const char* keysymName);
    void releaseKey(const char* keysymName);
    // What the CLIPBOARD selection's owner gives as "image/png"; empty when
    // nobody answers within five seconds.
    [[nodiscard]] QByteArray clipboardPng();
    // Caps Lock pressed once: the lock toggles on or off.
    void toggleCapsLock();
    // Takes a key as a global hot key of this client, as another program
    // would: a passive grab on the root with an X modifier mask (Alt is
    // Mod1, 0x08). False when another client has it already.
    [[nodiscard]] bool grabKey(const char* keysymName, std::uint16_t modifiers);
    void ungrabKey(const char* keysymName, std::uint16_t modifiers);

    struct Window
    {
        xcb_window_t id = 0;
        QRect geometry; // root pixels
        bool overrideRedirect = false;
        std::uint32_t pid = 0;
        QString name;
    };
    // Whether some client holds the keyboard grab (a capture does): a grab
    // of our own is refused then. Ours, when it succeeds, is let go at once.
    [[nodiscard]] bool keyboardGrabbedByOther();

    // Viewable top-level windows, top of the stack first.
    [[nodiscard]] std::vector<Window> topLevels();
    // Kelvo's capture overlays that are on screen now.
    [[nodiscard]] std::vector<Window> overlaysOf(std::int64_t pid);

private:
    [[nodiscard]] xcb_keycode_t keycodeOf(std::uint32_t keysym);
    [[nodiscard]] static std::uint32_t keysymOf(const char* keysymName);
    void fakeKey(std::uint8_t type, xcb_keycode_t code);
    [[nodiscard]] xcb_atom_t atom(const char* name);

    xcb_connection_t* m_connection = nullptr;
    xcb_window_t m_root = 0;
    int m_depth = 24;
};

// A plain client window in one solid colour, managed by the window manager
// like any application's. Its colour can change while a capture runs, which
// is how the tests prove that a capture shows a frozen picture.
class SolidWindow
{
public:
    SolidWindow(XSession& x, const QRect& rect, QColor color, const QString& title);
    ~SolidWindow();
    void setColor(QColor color);
    [[nodiscard]] xcb_window_t id() const { return m_window; }

private:
    XSession& m_x;
    xcb_window_t m_window = 0;
};

// xdotool's answer, bounded: a window manager that will not answer must
// not hang the test. Empty when it failed or took too long.
[[nodiscard]] QString xdotool(const QStringList& args);
// The visible windows of process `pid` titled "Kelvo": the Preferences
// window and Kelvo's dialogs.
[[nodiscard]] QStringList kelvoWindowsOf(qint64 pid);
// Gives `window` the focus through the window manager and waits until it
// has it.
[[nodiscard]] bool activateWindow(const QString& window,
                                  std::chrono::milliseconds timeout = std::chrono::seconds(10));

} // namespace e2e
