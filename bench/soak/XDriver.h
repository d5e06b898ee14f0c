// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <xcb/xcb.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <sys/types.h>
#include <vector>

namespace soak {

struct Rect
{
    int x = 0, y = 0, w = 0, h = 0;
    bool operator==(const Rect&) const = default;
};

// What one X client (or all clients of one process) holds in the server:
// resource counts by type name ("PIXMAP", "WINDOW", "GC", ...), the bytes of
// its pixmaps, and how many connections they came from.
struct XHoldings
{
    std::map<std::string, std::uint32_t> resources;
    std::uint64_t pixmapBytes = 0;
    int clients = 0;
};

// The soak's own X client: real input through XTest, Kelvo's overlays and
// clipboard ownership as another program sees them, and the X-Resource
// view of what Kelvo's connections hold.
class XDriver
{
public:
    XDriver();
    ~XDriver();
    XDriver(const XDriver&) = delete;
    XDriver& operator=(const XDriver&) = delete;

    // Empty when connected and every extension needed is there.
    [[nodiscard]] const std::string& error() const { return m_error; }
    // RandR monitors, left to right.
    [[nodiscard]] const std::vector<Rect>& monitors() const { return m_monitors; }

    // Waits until the server has handled everything sent so far.
    void sync();
    // Polls `condition`, sleeping on the X connection between tries, so a
    // map or unmap wakes it at once.
    bool waitFor(const std::function<bool()>& condition, std::chrono::milliseconds timeout);

    void movePointer(int x, int y);
    void pressButton(int button);
    void releaseButton(int button);
    // A key by keysym (XK_Return, XK_space, XK_Escape).
    void tapKey(std::uint32_t keysym);

    // The mapped override-redirect "Kelvo capture" windows of `pid`.
    [[nodiscard]] std::vector<Rect> overlaysOf(pid_t pid);
    // Whether another client holds the keyboard: our own grab is refused.
    [[nodiscard]] bool keyboardGrabbedByOther();

    // Makes this client the CLIPBOARD owner, so the next owner seen is new.
    bool takeClipboard();
    // The pid of the CLIPBOARD owner's client; 0 when there is none.
    [[nodiscard]] pid_t clipboardOwnerPid();

    // Everything the X clients of `pid` hold, summed over its connections.
    [[nodiscard]] XHoldings holdingsOf(pid_t pid);

private:
    [[nodiscard]] xcb_atom_t atom(const char* name);
    [[nodiscard]] std::string atomName(xcb_atom_t atom);
    [[nodiscard]] xcb_keycode_t keycodeOf(std::uint32_t keysym);
    [[nodiscard]] pid_t pidOfXid(std::uint32_t xid);
    void drainEvents();

    xcb_connection_t* m_c = nullptr;
    xcb_window_t m_root = 0;
    xcb_window_t m_window = 0; // ours, to own the clipboard
    xcb_atom_t m_clipboard = 0, m_pidAtom = 0;
    std::vector<Rect> m_monitors;
    std::map<xcb_atom_t, std::string> m_atomNames;
    std::string m_error;
};

} // namespace soak
