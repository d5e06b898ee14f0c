// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/x11/X11ScreenGrabber.h"

#include <QHash>
#include <QImage>
#include <QRect>
#include <QTimer>

#include <xcb/xcb.h>

namespace platform::x11 {

// The desktop as it was when a capture began: one MIT-SHM grab of the root,
// cut into views without copying, and the frames of the windows listed with
// it. Captures tend to come in runs, so the grab's memory is kept between
// them and given back after a quiet minute.
class X11FrozenDesktop
{
public:
    X11FrozenDesktop(xcb_connection_t* connection, X11ScreenGrabber& grabber);
    ~X11FrozenDesktop();
    X11FrozenDesktop(const X11FrozenDesktop&) = delete;
    X11FrozenDesktop& operator=(const X11FrozenDesktop&) = delete;

    // Grabs the whole root now.
    void freeze();
    // Lets go of the grab; its memory follows after the quiet minute.
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

private:
    xcb_connection_t* m_connection;
    X11ScreenGrabber& m_grabber;
    QImage m_root;
    QHash<xcb_window_t, QRect> m_frames; // frame id -> device rectangle
    QTimer m_releaseTimer;
};

// A view of part of an image that shares its pixels (no copy); the view keeps
// the parent alive.
[[nodiscard]] QImage sharedView(const QImage& parent, const QRect& rect);

} // namespace platform::x11
