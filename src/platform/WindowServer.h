// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Geometry.h"
#include "platform/WindowRecord.h"

#include <QImage>

#include <vector>

namespace platform {

// Everything the capture needs of the window system: one front-to-back list
// of windows, and pictures of a window, a rectangle or a screen. Pictures
// are QImage::Format_ARGB32 (or RGB32) at device pixels.
class WindowServer
{
public:
    virtual ~WindowServer() = default;

    // The monitors in Qt's order, primary first, in global top-left points.
    [[nodiscard]] virtual core::ScreenLayout screens() = 0;

    // Freezes the desktop: takes one picture of every monitor and one window
    // list, front to back, without Kelvo's own windows. Later picture calls
    // answer from that frozen state where the live one cannot be had.
    [[nodiscard]] virtual std::vector<WindowRecord> windowList() = 0;

    // The picture of one window alone, cut to `cutTo` (global top-left
    // points) unless that is null. Null image when the window is gone.
    [[nodiscard]] virtual QImage pictureOfWindow(std::uint32_t number, const QRectF& cutTo) = 0;

    // What is on screen in a rectangle (global top-left points), as frozen by
    // the last windowList() or, with none, live.
    [[nodiscard]] virtual QImage pictureOfRect(const QRectF& rect) = 0;

    // Whether pictures of other clients' windows can be had at all.
    [[nodiscard]] virtual bool canSeeOtherClients() = 0;

    // Lets go of the frozen desktop once a capture has ended.
    virtual void thaw() {}
};

} // namespace platform
