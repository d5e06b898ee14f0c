// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Picture.h"

#include <QRectF>
#include <QString>

#include <cstdint>

namespace capture {

// The frozen picture of one window, taken when a capture starts, so that
// hover and multi-window picks never go back to the window server.
struct WindowPicture
{
    std::uint32_t number = 0;     // "kCGWindowNumber"
    core::Picture KCGWindowImage; // the capital K is the key's own spelling
    QRectF kCGWindowBounds;       // corrected bounds, global top-left points
    QString kCGWindowName;        // empty when the window has no name
};

// One window of a multi-window pick: the window, where it was on its
// overlay, and its frozen picture.
struct PickedWindow
{
    std::uint32_t windowId = 0;
    QRectF rect;     // overlay-local frame of the pick
    int screen = -1; // index into the capture's screen layout
    core::Picture KCGWindowImage;
    QString kCGWindowName;
};

} // namespace capture
