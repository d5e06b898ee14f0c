// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Geometry.h"
#include "platform/WindowRecord.h"

#include <QImage>

#include <memory>
#include <utility>
#include <vector>

namespace platform {

// A window's picture taken but not yet read: the pixels stay with the window
// server (or a copy it keeps) until something needs them, so that taking a
// picture of every window costs next to nothing.
class HeldPicture
{
public:
    virtual ~HeldPicture() = default;

    // Whether reading will give no picture; known when it was taken.
    [[nodiscard]] virtual bool isNull() const = 0;
    // The pixels pictureOfWindow() would have answered when this was taken.
    // Null once the freeze that took it has thawed: nothing is read then.
    [[nodiscard]] virtual QImage read() = 0;
};

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

    // pictureOfWindow(), held: the same pixels, read only when asked for.
    // Within one freeze. This one reads at once; servers where a read is
    // costly keep the pixels on their side.
    [[nodiscard]] virtual std::shared_ptr<HeldPicture> holdPictureOfWindow(std::uint32_t number,
                                                                           const QRectF& cutTo);

    // What is on screen in a rectangle (global top-left points), as frozen by
    // the last windowList() or, with none, live.
    [[nodiscard]] virtual QImage pictureOfRect(const QRectF& rect) = 0;

    // Whether pictures of other clients' windows can be had at all.
    [[nodiscard]] virtual bool canSeeOtherClients() = 0;

    // Lets go of the frozen desktop once a capture has ended.
    virtual void thaw() {}
};

// A picture that was read when it was taken.
class ReadPicture final : public HeldPicture
{
public:
    explicit ReadPicture(QImage image)
        : m_image(std::move(image))
    {}
    [[nodiscard]] bool isNull() const override { return m_image.isNull(); }
    [[nodiscard]] QImage read() override { return m_image; }

private:
    QImage m_image;
};

inline std::shared_ptr<HeldPicture> WindowServer::holdPictureOfWindow(std::uint32_t number,
                                                                      const QRectF& cutTo)
{
    return std::make_shared<ReadPicture>(pictureOfWindow(number, cutTo));
}

} // namespace platform
