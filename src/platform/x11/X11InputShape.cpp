// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/x11/X11InputShape.h"

#include "platform/x11/X11SharedConnection.h"
#include "platform/x11/XcbHandles.h"

#include <xcb/shape.h>

#include <algorithm>
#include <limits>
#include <vector>

namespace platform::x11 {

namespace {

std::int16_t clamp16(int v)
{
    return static_cast<std::int16_t>(std::clamp<int>(v, std::numeric_limits<std::int16_t>::min(),
                                                     std::numeric_limits<std::int16_t>::max()));
}

std::uint16_t clampU16(int v)
{
    return static_cast<std::uint16_t>(
        std::clamp<int>(v, 0, std::numeric_limits<std::uint16_t>::max()));
}

} // namespace

struct X11InputShape::State
{
    X11SharedConnection shared;
    xcb_connection_t* connection = shared.get();
    bool hasInputShapes = false;

    [[nodiscard]] bool succeeded(xcb_void_cookie_t cookie) const
    {
        XcbReply<xcb_generic_error_t> error(xcb_request_check(connection, cookie));
        return !error;
    }
};

X11InputShape::X11InputShape()
    : m(std::make_unique<State>())
{
    if (m->connection == nullptr)
        return;
    const xcb_query_extension_reply_t* ext = xcb_get_extension_data(m->connection, &xcb_shape_id);
    if (ext == nullptr || ext->present == 0)
        return;
    XcbReply<xcb_shape_query_version_reply_t> version(xcb_shape_query_version_reply(
        m->connection, xcb_shape_query_version(m->connection), nullptr));
    // The input kind came with version 1.1.
    m->hasInputShapes = version && (version->major_version > 1 ||
                                    (version->major_version == 1 && version->minor_version >= 1));
}

X11InputShape::~X11InputShape() = default;

bool X11InputShape::isAvailable() const
{
    return m->hasInputShapes;
}

bool X11InputShape::setInputRegion(WId window, const QRegion& region)
{
    if (!m->hasInputShapes)
        return false;
    std::vector<xcb_rectangle_t> rects;
    for (const QRect& r : region)
        rects.push_back(
            {clamp16(r.x()), clamp16(r.y()), clampU16(r.width()), clampU16(r.height())});
    return m->succeeded(
        xcb_shape_rectangles_checked(m->connection, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT,
                                     XCB_CLIP_ORDERING_UNSORTED, static_cast<xcb_window_t>(window),
                                     0, 0, static_cast<std::uint32_t>(rects.size()), rects.data()));
}

bool X11InputShape::clearInputRegion(WId window)
{
    if (!m->hasInputShapes)
        return false;
    // No mask at all is the default shape: the whole window.
    return m->succeeded(xcb_shape_mask_checked(m->connection, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT,
                                               static_cast<xcb_window_t>(window), 0, 0,
                                               XCB_PIXMAP_NONE));
}

} // namespace platform::x11
