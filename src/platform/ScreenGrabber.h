// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QRect>
#include <QSize>

namespace platform {

// Pictures of what is on screen now, for callers that grab the same
// rectangle again and again (a scrolling capture, a recorder) rather than
// once. Everything is in device pixels of the whole desktop (the X root),
// not in Qt's points: the caller converts once, outside its frame loop.
//
// A grab may share memory with the grabber: the next grab of the same size
// reuses that memory only once every image of the last one is gone, so a
// loop that drops each frame before taking the next allocates nothing.
class ScreenGrabber
{
public:
    virtual ~ScreenGrabber() = default;

    // The whole desktop's size; empty when there is no display.
    [[nodiscard]] virtual QSize desktopSize() const = 0;

    // The pixels of `rect`, clipped to the desktop, as Format_RGB32
    // (ARGB32 where the desktop is 32 bits deep). Null when the rectangle
    // lies outside it or the grab fails.
    [[nodiscard]] virtual QImage grab(const QRect& rect) = 0;

    // The whole desktop.
    [[nodiscard]] QImage grabDesktop() { return grab(QRect(QPoint(0, 0), desktopSize())); }

    // Gives back the memory kept for the next grab; call when a run of
    // grabs is over.
    virtual void release() = 0;
};

} // namespace platform
