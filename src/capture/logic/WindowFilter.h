// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "capture/logic/CaptureState.h"
#include "core/Geometry.h"
#include "platform/WindowRecord.h"
#include "platform/WindowServer.h"

#include <optional>
#include <vector>

namespace capture {

// The window pass at the start of a capture: decides which listed windows a
// hover can hit, corrects the bounds of those whose window is larger than
// what the user sees, and holds a frozen picture of each, read only when a
// pick or a paint needs its pixels.
class WindowFilter
{
public:
    // `layout` is the capture's screens, primary first.
    WindowFilter(platform::WindowServer& server, core::ScreenLayout layout);

    // Runs every window of `windows` (front to back) through the rules and
    // appends the survivors to state.arrayRect and their pictures to
    // state.imageAllWindowArray; records menuBarWindowID and dockImage. The
    // caller empties both arrays first when a new capture starts.
    void run(const std::vector<platform::WindowRecord>& windows, CaptureState& state) const;

private:
    // How a surviving window is pictured.
    enum class PictureKind
    {
        Whole,       // the window alone, uncut
        CutToBounds, // the window alone, cut to its corrected bounds
        ScreenArea,  // what the screen shows in its bounds
    };

    struct Survivor
    {
        platform::WindowRecord window; // with corrected bounds
        PictureKind pictureKind = PictureKind::Whole;
        bool isPin = false;
    };

    [[nodiscard]] std::optional<Survivor> correct(const platform::WindowRecord& window,
                                                  CaptureState& state) const;
    void correctBanner(QRectF& bounds) const;
    void measureDock(const platform::WindowRecord& window, QRectF& bounds,
                     CaptureState& state) const;
    [[nodiscard]] std::optional<WindowPicture> pictureOf(const Survivor& survivor) const;

    platform::WindowServer& m_server;
    core::ScreenLayout m_layout;
};

} // namespace capture
