// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/NotificationStacking.h"

#include <functional>
#include <vector>

namespace platform::null {

// Notification windows that come and go as the test says, and a log of the
// restacks asked for.
class FakeNotificationStacking final : public NotificationStacking
{
public:
    enum class Restack
    {
        NotificationsAbove,
        OverlayOnTop,
    };
    struct Request
    {
        Restack what;
        WId overlay;
        bool operator==(const Request&) const = default;
    };

    // Whether a notification window is shown; asked at every look.
    std::function<bool()> shown = [] { return false; };
    int looks = 0;
    std::vector<Request> requests;

    [[nodiscard]] bool notificationShown() override
    {
        ++looks;
        return shown();
    }
    bool showNotificationsAbove(WId overlay) override
    {
        requests.push_back({Restack::NotificationsAbove, overlay});
        return shown();
    }
    void raiseAboveAll(WId overlay) override
    {
        requests.push_back({Restack::OverlayOnTop, overlay});
    }
};

} // namespace platform::null
