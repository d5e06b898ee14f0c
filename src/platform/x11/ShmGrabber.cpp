// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/x11/ShmGrabber.h"

#include "platform/x11/XcbHandles.h"

#include <xcb/shm.h>

#include <cstring>
#include <sys/ipc.h>
#include <sys/shm.h>

namespace platform::x11 {

// Owns one shared segment: detached from the server and from us when the
// last image pointing into it and the grabber's cache have let go.
struct ShmGrabber::Segment
{
    xcb_connection_t* connection = nullptr;
    xcb_shm_seg_t seg = 0;
    int id = -1;
    void* address = nullptr;
    std::size_t size = 0;

    ~Segment()
    {
        if (seg != 0) {
            xcb_shm_detach(connection, seg);
            xcb_flush(connection);
        }
        if (address != nullptr && address != reinterpret_cast<void*>(-1))
            shmdt(address);
    }
};

namespace {

void releaseSegment(void* info)
{
    delete static_cast<std::shared_ptr<ShmGrabber::Segment>*>(info);
}

} // namespace

ShmGrabber::ShmGrabber(xcb_connection_t* connection)
    : m_connection(connection)
{
    XcbReply<xcb_shm_query_version_reply_t> reply(
        xcb_shm_query_version_reply(m_connection, xcb_shm_query_version(m_connection), nullptr));
    m_hasShm = reply != nullptr;
}

QImage ShmGrabber::grab(xcb_drawable_t drawable, const QRect& rect, int depth)
{
    if (rect.isEmpty())
        return {};
    const QImage::Format format = depth == 32 ? QImage::Format_ARGB32 : QImage::Format_RGB32;
    if (m_hasShm) {
        QImage image = grabShm(drawable, rect, format);
        if (!image.isNull())
            return image;
    }
    return grabPlain(drawable, rect, format);
}

void ShmGrabber::releaseCache()
{
    m_cached.reset();
}

std::shared_ptr<ShmGrabber::Segment> ShmGrabber::segmentFor(std::size_t size)
{
    // Reuse only a segment no image points into any more; the desktop's
    // serves every smaller grab too.
    if (m_cached && m_cached.use_count() == 1 && m_cached->size >= size)
        return m_cached;
    auto segment = std::make_shared<Segment>();
    segment->connection = m_connection;
    segment->size = size;
    segment->id = shmget(IPC_PRIVATE, size, IPC_CREAT | 0600);
    if (segment->id < 0)
        return {};
    segment->address = shmat(segment->id, nullptr, 0);
    // Marked for removal at once: the kernel frees it after the last detach,
    // even if we crash.
    shmctl(segment->id, IPC_RMID, nullptr);
    if (segment->address == reinterpret_cast<void*>(-1))
        return {};
    segment->seg = xcb_generate_id(m_connection);
    xcb_shm_attach(m_connection, segment->seg, static_cast<std::uint32_t>(segment->id), 0);
    // A small grab made while the large segment is busy does not push it out.
    if (!m_cached || m_cached->size <= size)
        m_cached = segment;
    return segment;
}

QImage ShmGrabber::grabShm(xcb_drawable_t drawable, const QRect& rect, QImage::Format format)
{
    const std::size_t stride = static_cast<std::size_t>(rect.width()) * 4;
    const std::size_t size = stride * static_cast<std::size_t>(rect.height());
    std::shared_ptr<Segment> segment = segmentFor(size);
    if (!segment)
        return {};

    xcb_generic_error_t* error = nullptr;
    XcbReply<xcb_shm_get_image_reply_t> reply(xcb_shm_get_image_reply(
        m_connection,
        xcb_shm_get_image(m_connection, drawable, static_cast<std::int16_t>(rect.x()),
                          static_cast<std::int16_t>(rect.y()),
                          static_cast<std::uint16_t>(rect.width()),
                          static_cast<std::uint16_t>(rect.height()), ~0u, XCB_IMAGE_FORMAT_Z_PIXMAP,
                          segment->seg, 0),
        &error));
    if (error != nullptr || reply == nullptr) {
        std::free(error);
        return {};
    }
    auto* bits = static_cast<uchar*>(segment->address);
    return QImage(bits, rect.width(), rect.height(), static_cast<qsizetype>(stride), format,
                  releaseSegment, new std::shared_ptr<Segment>(std::move(segment)));
}

QImage ShmGrabber::grabPlain(xcb_drawable_t drawable, const QRect& rect, QImage::Format format)
{
    xcb_generic_error_t* error = nullptr;
    XcbReply<xcb_get_image_reply_t> reply(xcb_get_image_reply(
        m_connection,
        xcb_get_image(m_connection, XCB_IMAGE_FORMAT_Z_PIXMAP, drawable,
                      static_cast<std::int16_t>(rect.x()), static_cast<std::int16_t>(rect.y()),
                      static_cast<std::uint16_t>(rect.width()),
                      static_cast<std::uint16_t>(rect.height()), ~0u),
        &error));
    if (error != nullptr || reply == nullptr) {
        std::free(error);
        return {};
    }
    const int length = xcb_get_image_data_length(reply.get());
    const std::size_t stride = static_cast<std::size_t>(rect.width()) * 4;
    if (length < static_cast<int>(stride) * rect.height())
        return {};
    QImage image(rect.width(), rect.height(), format);
    const uchar* src = xcb_get_image_data(reply.get());
    for (int y = 0; y < rect.height(); ++y)
        std::memcpy(image.scanLine(y), src + stride * static_cast<std::size_t>(y), stride);
    return image;
}

} // namespace platform::x11
