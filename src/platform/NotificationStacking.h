// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGui/qwindowdefs.h>

namespace platform {

// The desktop's notification popups (windows of the notification layer)
// against an overlay of ours that covers the screen: a notice that arrives
// while the overlay is up must show over it, and the overlay goes back on
// top once the popups are gone.
class NotificationStacking
{
public:
    virtual ~NotificationStacking() = default;

    // Whether a notification window is on screen now. A fresh look at the
    // window list, without pictures.
    [[nodiscard]] virtual bool notificationShown() = 0;
    // Stacks every notification window on screen directly above `overlay`
    // (a top-level window of ours), keeping their own order. False when
    // none is shown.
    virtual bool showNotificationsAbove(WId overlay) = 0;
    // `overlay` goes back above every other window.
    virtual void raiseAboveAll(WId overlay) = 0;
};

} // namespace platform
