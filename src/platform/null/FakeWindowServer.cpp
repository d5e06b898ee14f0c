// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/null/FakeWindowServer.h"

namespace platform::null {

std::vector<WindowRecord> FakeWindowServer::windowList()
{
    ++windowListCalls;
    return windows;
}

QImage FakeWindowServer::pictureOfWindow(std::uint32_t number, const QRectF& cutTo)
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
