// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/CursorImage.h"

#include <xcb/xfixes.h>

#include <cstdlib>
#include <cstring>
#include <memory>

namespace e2e {

namespace {

struct FreeReply
{
    void operator()(void* reply) const { std::free(reply); }
};
template <typename T>
using Reply = std::unique_ptr<T, FreeReply>;

} // namespace

std::optional<CursorImage> currentCursor(xcb_connection_t* connection)
{
    // A client must tell XFixes its version before its first request.
    const Reply<xcb_xfixes_query_version_reply_t> version(xcb_xfixes_query_version_reply(
        connection, xcb_xfixes_query_version(connection, 4, 0), nullptr));
    if (!version)
        return std::nullopt;
    const Reply<xcb_xfixes_get_cursor_image_reply_t> reply(xcb_xfixes_get_cursor_image_reply(
        connection, xcb_xfixes_get_cursor_image(connection), nullptr));
    if (!reply || reply->width == 0 || reply->height == 0)
        return std::nullopt;
    const int length = xcb_xfixes_get_cursor_image_cursor_image_length(reply.get());
    if (length < reply->width * reply->height)
        return std::nullopt;
    CursorImage cursor;
    cursor.image = QImage(reply->width, reply->height, QImage::Format_ARGB32_Premultiplied);
    const std::uint32_t* pixels = xcb_xfixes_get_cursor_image_cursor_image(reply.get());
    for (int y = 0; y < reply->height; ++y)
        std::memcpy(cursor.image.scanLine(y), pixels + y * reply->width,
                    static_cast<std::size_t>(reply->width) * sizeof(std::uint32_t));
    cursor.hotSpot = QPoint(reply->xhot, reply->yhot);
    cursor.serial = reply->cursor_serial;
    return cursor;
}

} // namespace e2e
