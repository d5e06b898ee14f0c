// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QPoint>

#include <xcb/xcb.h>

#include <optional>

namespace e2e {

// The pointer's picture as the X server shows it now, read through XFixes
// as a screen recorder reads it: premultiplied ARGB pixels, the hot spot
// within them, and the server's serial number of the cursor.
struct CursorImage
{
    QImage image;
    QPoint hotSpot;
    std::uint32_t serial = 0;
};

// Nothing when the server has no XFixes or does not answer.
[[nodiscard]] std::optional<CursorImage> currentCursor(xcb_connection_t* connection);

} // namespace e2e
