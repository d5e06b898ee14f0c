// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "capture/logic/CaptureState.h"

#include <QRectF>

#include <cstdint>
#include <vector>

namespace capture {

// What a click while picking did.
enum class PickClick
{
    Added,
    Removed,
    OtherScreen, // the picks are on another screen; they stay there
    NotPickable, // the window has no frozen picture (too small, or none)
};

// A click on `windowId` while Shift is held: picks it, or drops it when it
// is picked already. `frame` is the window's overlay-local rectangle as the
// hover outlined it, `screen` the overlay's screen. Rebuilds the picks in
// window order (front to back) afterwards.
PickClick togglePick(CaptureState& state, std::uint32_t windowId, const QRectF& frame, int screen);

// Whether `windowId` is among the picks.
[[nodiscard]] bool isPicked(const CaptureState& state, std::uint32_t windowId);

// The frame of the crop border around all picks, each with room for a
// shadow of `shadow` points and the border's band of 6: overlay-local,
// whole numbers.
[[nodiscard]] QRectF pickedFrame(const std::vector<PickedWindow>& picks, int shadow);

// A hovered window becomes a pick of one, so the finish draws it as it
// draws several: its rectangle is the crop border's frame without the band
// and the shadow's room. Nothing happens when there are picks already, when
// a pin is being marked up, for a region, for a selection that is the whole
// screen, or when the window has no frozen picture. True when added.
bool addPickOfOne(CaptureState& state, bool onlyClipCurrentWindow, const QRectF& contentRect,
                  const QRectF& screenFrame, int shadow, int screen);

} // namespace capture
