// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/null/FakeWindowServer.h"

namespace platform::null {

namespace {

class FakeHeldPicture final : public HeldPicture
{
public:
    FakeHeldPicture(QImage image, int& reads, const std::shared_ptr<int>& freeze)
        : m_image(std::move(image))
        , m_reads(reads)
        , m_freeze(freeze)
    {}
    [[nodiscard]] bool isNull() const override { return m_image.isNull(); }
    [[nodiscard]] QImage read() override
    {
        // The freeze lives as long as the server, so the count is there.
        if (m_freeze.expired())
            return {};
        ++m_reads;
        return m_image;
    }

private:
    QImage m_image;
    int& m_reads;
    std::weak_ptr<int> m_freeze;
};

} // namespace

std::vector<WindowRecord> FakeWindowServer::windowList()
{
    ++windowListCalls;
    m_freeze = std::make_shared<int>(windowListCalls);
    return windows;
}

QImage FakeWindowServer::pictureOfWindow(std::uint32_t number, const QRectF& cutTo)
{
    ++pictureReads;
    return pictureNow(number, cutTo);
}

std::shared_ptr<HeldPicture> FakeWindowServer::holdPictureOfWindow(std::uint32_t number,
                                                                   const QRectF& cutTo)
{
    return std::make_shared<FakeHeldPicture>(pictureNow(number, cutTo), pictureReads, m_freeze);
}

QImage FakeWindowServer::pictureNow(std::uint32_t number, const QRectF& cutTo) const
{
    const auto it = windowPictures.find(number);
    if (it == windowPictures.end())
        return {};
    if (cutTo.isNull())
        return it->second;
    return it->second.copy(QRect(0, 0, qRound(cutTo.width()), qRound(cutTo.height())));
}

QImage FakeWindowServer::pictureOfRect(const QRectF& rect)
{
    if (desktop.isNull())
        return {};
    return desktop.copy(rect.toAlignedRect());
}

} // namespace platform::null
