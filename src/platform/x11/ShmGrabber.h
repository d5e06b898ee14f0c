// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QRect>

#include <xcb/xcb.h>

#include <memory>

namespace platform::x11 {

// Grabs a rectangle of a drawable through MIT-SHM: the server writes the
// pixels straight into memory we share, so a full desktop costs well under a
// millisecond. The returned QImage owns its shared segment (released when
// the last copy of the image goes away), so a frozen desktop can be handed
// around and cut into views without copying. Falls back to a plain GetImage
// where MIT-SHM is missing (remote displays).
class ShmGrabber
{
public:
    explicit ShmGrabber(xcb_connection_t* connection);

    // Pixels of `rect` (drawable coordinates, device pixels) as Format_RGB32
    // for a 24-bit drawable or ARGB32 for a 32-bit one. Null on failure.
    [[nodiscard]] QImage grab(xcb_drawable_t drawable, const QRect& rect, int depth = 24);

    [[nodiscard]] bool hasShm() const { return m_hasShm; }

    // A fresh segment costs far more than the grab itself (the kernel has to
    // hand out and clear every page), so the largest one is kept for the
    // next grab that fits in it while no image uses it. This lets it go.
    void releaseCache();

    struct Segment;

private:
    [[nodiscard]] std::shared_ptr<Segment> segmentFor(std::size_t size);

    [[nodiscard]] QImage grabShm(xcb_drawable_t drawable, const QRect& rect, QImage::Format format);
    [[nodiscard]] QImage grabPlain(xcb_drawable_t drawable, const QRect& rect,
                                   QImage::Format format);

    xcb_connection_t* m_connection;
    bool m_hasShm = false;
    std::shared_ptr<Segment> m_cached;
};

} // namespace platform::x11
