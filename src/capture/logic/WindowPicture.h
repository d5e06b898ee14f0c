// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Picture.h"
#include "platform/WindowServer.h"

#include <QRectF>
#include <QString>

#include <cstdint>
#include <memory>

namespace capture {

// A window's frozen picture, taken when a capture starts but read from the
// window server only the first time its pixels are asked for: hovering
// needs the bounds alone, so most captures never read a window at all.
// Copies share the one read. One that was read when it was taken (or built
// from a picture) is simply that picture.
class WindowImage
{
public:
    WindowImage() = default;
    // Implicit, as a picture already read is a window image like any.
    WindowImage(core::Picture picture);
    // `held` is read at the first pixels(); `pointSize` sizes what it gives.
    WindowImage(std::shared_ptr<platform::HeldPicture> held, QSizeF pointSize);

    // The picture, read now if it was not yet. Null when the window could
    // not be pictured, or when it was first asked for after its capture.
    [[nodiscard]] const core::Picture& picture() const;
    [[nodiscard]] const QImage& pixels() const { return picture().pixels; }
    [[nodiscard]] QSizeF pointSize() const;
    // Whether there is no picture; answered without reading.
    [[nodiscard]] bool isNull() const;
    // Whether the pixels have been read (or were given).
    [[nodiscard]] bool isRead() const;

private:
    struct Shared
    {
        std::shared_ptr<platform::HeldPicture> held; // dropped once read
        core::Picture picture;
    };
    std::shared_ptr<Shared> m;
};

// The frozen picture of one window, taken when a capture starts, so that
// hover and multi-window picks never go back to the window server for more
// than the pixels that were held for them then.
struct WindowPicture
{
    std::uint32_t number = 0;   // "kCGWindowNumber"
    WindowImage KCGWindowImage; // the capital K is the key's own spelling
    QRectF kCGWindowBounds;     // corrected bounds, global top-left points
    QString kCGWindowName;      // empty when the window has no name
};

// One window of a multi-window pick: the window, where it was on its
// overlay, and its frozen picture (read when it was picked).
struct PickedWindow
{
    std::uint32_t windowId = 0;
    QRectF rect;     // overlay-local frame of the pick
    int screen = -1; // index into the capture's screen layout
    core::Picture KCGWindowImage;
    QString kCGWindowName;
};

} // namespace capture
