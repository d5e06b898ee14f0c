// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QRectF>

namespace capture {

// The two marks around a selection: the outline box, whose 2-point border
// lies just inside its frame, and the hole of the dim surround, which shows
// the frozen screen undimmed. Where the hole sits against the selection
// depends on how the selection came about; each case keeps its own edge so
// the outline always covers the seam between dim and bright.
struct SurroundBands
{
    QRectF outlineBox; // overlay-local frame of the outline; the band is drawn inside it
    QRectF hole;       // overlay-local, undimmed

    static constexpr double kOutlineWidth = 2.0;

    // A hovered window: the outline is the window's own edge, and the hole
    // stops 2 points inside it, under the outline.
    [[nodiscard]] static SurroundBands forHoveredWindow(const QRectF& windowRect);
    // A region while it is dragged, moved or resized: the outline sits just
    // outside the region and the hole reaches 1 point beyond it.
    [[nodiscard]] static SurroundBands forRegion(const QRectF& region);
    // A selection fixed at the release, from the crop border's frame (the
    // selection grown by 6): the hole is 1 point larger than the selection.
    [[nodiscard]] static SurroundBands forFixedSelection(const QRectF& borderFrame);
    // Picked windows, from the border's frame: the hole is 2 points larger.
    [[nodiscard]] static SurroundBands forPickedWindows(const QRectF& borderFrame);

    bool operator==(const SurroundBands&) const = default;
};

} // namespace capture
