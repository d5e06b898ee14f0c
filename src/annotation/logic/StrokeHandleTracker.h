// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "annotation/logic/CropCursor.h"
#include "annotation/logic/StrokeState.h"

#include <QPointF>
#include <QRectF>

#include <optional>
#include <set>
#include <vector>

namespace annotation {

// A place of the stroke layer where the pointer takes hold of the active
// stroke; `number` is what a press remembers as the handle it holds.
struct HandleArea
{
    int number = 0;
    QRectF rect;
    bool operator==(const HandleArea&) const = default;
};

// The active stroke's handle areas: a square's or an ellipse's eight (by
// index, with the empty placeholder 0 first), a line's or an arrow's two
// ends (1 the tail, 2 the tip), each 10 by 10. A pencil path's end handles
// are drawn but cannot be held, and other strokes have areas elsewhere.
[[nodiscard]] std::vector<HandleArea> handleAreasOf(const Stroke& active);

// The cursor an area gives over the active stroke of `activeType`: the
// resize cursor along the handle's axis for a box, the move cursor on a
// line's end, the open hand on a patch's edge bands; none otherwise.
[[nodiscard]] std::optional<CropCursor> handleCursorOf(int activeType, int number);

// The flags of the capture the handles' cursors depend on.
struct StrokeHoverContext
{
    bool scrollScreenShot = false;
    bool clipToolbarWindowOpened = false;
    int mouseDraggedTimes = 0; // drag events since the press
};

struct StrokeHoverReaction
{
    std::optional<CropCursor> cursor;
    // The pointer left a handle: if the cursor is still a resize or move
    // cursor a moment later (nothing else claimed the pointer), it is over
    // the stroke's body, and the open hand shows.
    bool openHandLater = false;

    bool operator==(const StrokeHoverReaction&) const = default;
};

// The stroke layer's pointer tracking over the active stroke's handles:
// entering one says which handle a press would hold (`idx`) and shows its
// cursor; the crop border below leaves the cursor to it meanwhile
// (`mouseEnterSingleStrokeTrackRect`). During a drag nothing is reported.
class StrokeHandleTracker
{
public:
    // Rebuilds the areas for the active stroke as it stands. New areas
    // start with the pointer outside, so the next move reports what it is in.
    void updateTrackingAreas(const StrokeState& state);

    // A pointer move to `p`: the areas' crossings, leaving first. The
    // areas are rebuilt first when the active stroke changed since (a
    // release, an undo, another tool).
    StrokeHoverReaction pointerMoved(QPointF p, StrokeState& state,
                                     const StrokeHoverContext& context);

    StrokeHoverReaction mouseEntered(int number, StrokeState& state,
                                     const StrokeHoverContext& context);
    StrokeHoverReaction mouseExited(int number, StrokeState& state,
                                    const StrokeHoverContext& context);

    [[nodiscard]] const std::vector<HandleArea>& areas() const { return m_areas; }

private:
    std::vector<HandleArea> m_areas;
    std::set<int> m_inside;
    std::optional<Stroke> m_builtFor; // the active stroke the areas are of
};

} // namespace annotation
