// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "scroll/logic/Frame.h"
#include "scroll/logic/ScrollState.h"

#include <QRectF>

#include <functional>
#include <optional>
#include <string_view>

namespace scroll {

// Takes the frame of the captured window cut to an area in points (global,
// origin at the top left); empty when there is no picture to be had, for
// instance because the window has gone.
using FrameSource = std::function<std::optional<Frame>(const QRectF& area)>;

struct FrameContext
{
    // The scale of the screen under the mouse, cut to an integer.
    int scale = 1;
    // The application under the mouse; two chat applications match by
    // their own rules.
    std::string_view appIDUnderMouse;
};

enum class FrameVerdict
{
    NoFrame,     // the source had no picture; nothing changed
    First,       // the session's first frame was stored
    Empty,       // the frame has no rows
    SameAsFirst, // every column still equals the first frame
    Dropped,     // no usable anchor, or the shift or the wheel said no
    Accepted,    // the picture grew
};

// What one frame came to, for the preview and for tests.
struct FrameJudgement
{
    FrameVerdict verdict = FrameVerdict::NoFrame;
    int anchorIndex = -1; // anchor row in the new frame, -1 for none
    int gap = 0;          // distance of the check row below the anchor, 0 for none
    int p = -1;           // the anchor's row in the previous frame, -1 when not found
    int shift = 0;        // p - anchorIndex

    // The preview is laid out anew after the first and each accepted frame.
    [[nodiscard]] bool needsRedraw() const
    {
        return verdict == FrameVerdict::First || verdict == FrameVerdict::Accepted;
    }
};

// Takes and judges one frame: learns the fixed side bars, header and footer
// against the first frame, finds how far the content moved against the last
// accepted frame, and either extends the picture or drops the frame. A
// dropped frame leaves the previous frame, the old picture and the wheel
// balance as they were, so the next frame is compared with the same one.
// The first frame of a session is taken while startScrollScreenshots is
// false; the caller sets it once that call returns.
FrameJudgement screenShotsAtScrollScreenshots(ScrollState& state, const FrameSource& takeFrame,
                                              const FrameContext& context);

// What a grab of area would give, cut from a picture of the whole capture
// rectangle: for frames that were taken elsewhere at the full area. Areas
// in points, the picture in pixels; null when nothing of it is left.
[[nodiscard]] Frame frameInArea(const Frame& capture, const QRectF& captureRect, const QRectF& area,
                                int scale);

} // namespace scroll
