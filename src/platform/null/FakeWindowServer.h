// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/WindowServer.h"

#include <map>

namespace platform::null {

// A window server whose windows and pictures are set by hand, for unit
// tests of the logic that runs over a window list.
class FakeWindowServer final : public WindowServer
{
public:
    core::ScreenLayout layout;
    std::vector<WindowRecord> windows;
    std::map<std::uint32_t, QImage> windowPictures;
    QImage desktop; // the whole desktop in global top-left pixels at scale 1
    bool visible = true;
    int windowListCalls = 0;

    core::ScreenLayout screens() override { return layout; }
    std::vector<WindowRecord> windowList() override;
    QImage pictureOfWindow(std::uint32_t number, const QRectF& cutTo) override;
    QImage pictureOfRect(const QRectF& rect) override;
    bool canSeeOtherClients() override { return visible; }
};

} // namespace platform::null
