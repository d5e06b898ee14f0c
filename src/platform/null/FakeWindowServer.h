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
    // Pictures read, at once or from a held picture.
    int pictureReads = 0;

    core::ScreenLayout screens() override { return layout; }
    std::vector<WindowRecord> windowList() override;
    QImage pictureOfWindow(std::uint32_t number, const QRectF& cutTo) override;
    // Held as the picture is now; a read counts, and answers null once
    // thawed or after the next windowList().
    std::shared_ptr<HeldPicture> holdPictureOfWindow(std::uint32_t number,
                                                     const QRectF& cutTo) override;
    QImage pictureOfRect(const QRectF& rect) override;
    bool canSeeOtherClients() override { return visible; }
    void thaw() override { m_freeze.reset(); }

private:
    [[nodiscard]] QImage pictureNow(std::uint32_t number, const QRectF& cutTo) const;

    std::shared_ptr<int> m_freeze = std::make_shared<int>(0);
};

} // namespace platform::null
