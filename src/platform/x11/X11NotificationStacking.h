// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/NotificationStacking.h"

#include <memory>

namespace platform::x11 {

// Notification popups are the viewable top-levels whose window type puts
// them in the notification layer, found by the same tree walk as the
// window list. They are restacked directly above the overlay, which stays
// above everything else; the overlay is raised again by a plain restack.
// Goes through Qt's own connection when there is one, so that these
// restacks keep their order with Qt's raises of the same overlay.
class X11NotificationStacking final : public NotificationStacking
{
public:
    X11NotificationStacking();
    ~X11NotificationStacking() override;
    X11NotificationStacking(const X11NotificationStacking&) = delete;
    X11NotificationStacking& operator=(const X11NotificationStacking&) = delete;

    [[nodiscard]] bool isConnected() const;
    [[nodiscard]] bool notificationShown() override;
    bool showNotificationsAbove(WId overlay) override;
    void raiseAboveAll(WId overlay) override;

private:
    struct State;
    std::unique_ptr<State> m;
};

} // namespace platform::x11
