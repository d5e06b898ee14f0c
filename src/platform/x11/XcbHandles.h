// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

namespace platform::x11 {

// xcb hands out replies that the caller must free(); holding them in a
// unique_ptr makes every early return safe.
struct FreeDeleter
{
    void operator()(void* p) const { std::free(p); }
};
template <typename T>
using XcbReply = std::unique_ptr<T, FreeDeleter>;

struct ConnectionDeleter
{
    void operator()(xcb_connection_t* c) const { xcb_disconnect(c); }
};
using XcbConnectionPtr = std::unique_ptr<xcb_connection_t, ConnectionDeleter>;

} // namespace platform::x11
