// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/WindowServer.h"
#include "platform/x11/X11ScreenGrabber.h"

#include <QHash>
#include <QImage>
#include <QRect>

#include <xcb/xcb.h>

#include <memory>

namespace platform::x11 {

// The desktop as it was when a capture began: one MIT-SHM grab of the root,
// cut into views without copying, and the frames of the windows listed with
// it. The grab's memory is kept between captures: a fresh segment's pages
// cost several times the grab itself, and a tray process waits mostly.
//
// Under a compositor a window's picture is held rather than read: the first
// hold of a freeze copies every listed window's off-screen contents on the
// server, all in one round trip, and a held picture reads its copy only when
// asked. The copies go with the thaw.
class X11FrozenDesktop
{
public:
    X11FrozenDesktop(xcb_connection_t* connection, X11ScreenGrabber& grabber);
    ~X11FrozenDesktop();
    X11FrozenDesktop(const X11FrozenDesktop&) = delete;
    X11FrozenDesktop& operator=(const X11FrozenDesktop&) = delete;

    // Grabs the whole root now.
    void freeze();
    // Lets go of the grab; its memory stays for the next one.
    void thaw();

    [[nodiscard]] bool isFrozen() const { return !m_root.isNull(); }
    [[nodiscard]] const QImage& root() const { return m_root; }
    // A view of `pixels` (root device pixels) of the frozen root.
    [[nodiscard]] QImage cut(const QRect& pixels) const;

    // The frames of the windows listed with the grab, to place their pictures.
    void forgetFrames() { m_frames.clear(); }
    void addFrame(xcb_window_t frame, const QRect& pixels) { m_frames.insert(frame, pixels); }
    // The frame's rectangle as listed with this freeze; null when unknown.
    [[nodiscard]] QRect frameOf(xcb_window_t frame) const { return m_frames.value(frame); }

    // Whether a compositor owns the screen, so that every window's contents
    // are kept off screen and can be read whole.
    [[nodiscard]] bool compositorRunning() const;
    // The part `cut` (root device pixels) of window `frame` from the
    // compositor's copy of it, covered parts included; `frameRect` places the
    // window (null: the whole window). Null image where that cannot be had.
    [[nodiscard]] QImage compositedPicture(xcb_window_t frame, const QRect& frameRect,
                                           const QRect& cut);

    // What compositedPicture(frame, frameRect, cut) would give now, falling
    // back to cut(cut) as pictures of windows do, but read only when asked
    // and only until the thaw. `composited` says whether to try the
    // compositor's copy at all.
    [[nodiscard]] std::shared_ptr<HeldPicture> hold(xcb_window_t frame, const QRect& frameRect,
                                                    const QRect& cut, bool composited);

    // Window pixels read from the server so far (composited pictures, held
    // or not), for the tests that prove a hold reads nothing.
    [[nodiscard]] int windowReads() const { return m_windowReads; }

    struct Freeze;

private:
    class Held;
    // The server-side copies of this freeze's windows, made at its first hold.
    void copyWindows();
    void dropCopies();

    xcb_connection_t* m_connection;
    X11ScreenGrabber& m_grabber;
    QImage m_root;
    std::shared_ptr<Freeze> m_freeze; // from freeze() to thaw()
    int m_windowReads = 0;
    QHash<xcb_window_t, QRect> m_frames; // frame id -> device rectangle
};

// A view of part of an image that shares its pixels (no copy); the view keeps
// the parent alive.
[[nodiscard]] QImage sharedView(const QImage& parent, const QRect& rect);

} // namespace platform::x11
