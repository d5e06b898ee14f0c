// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QWidget;

namespace capture {

// One screen's share of whatever runs on an overlay session (a region
// capture's controller, say). Its user owns it while the session runs and
// hands it to the session as the session ends.
class OverlayPart
{
public:
    virtual ~OverlayPart() = default;

    [[nodiscard]] virtual int screen() const = 0;
    // The overlay window it shows now; null once it has ended.
    [[nodiscard]] virtual QWidget* overlayWindow() const = 0;
    // The session is over for this part: it gives its window up and calls
    // out no more. A handler may still be running in it, so it must stay
    // usable until it is destroyed.
    virtual void retire() = 0;

protected:
    OverlayPart() = default;
    OverlayPart(const OverlayPart&) = default;
    OverlayPart& operator=(const OverlayPart&) = default;
};

} // namespace capture
