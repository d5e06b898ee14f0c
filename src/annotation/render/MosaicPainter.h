// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "annotation/logic/MosaicFilters.h"
#include "annotation/logic/StrokeState.h"

#include <QString>

class QPainter;

namespace annotation {

// What the mosaic layer paints from: the screen's filtered copies and the
// screen's height in points (strokes are stored y up, the painter is not).
struct MosaicScene
{
    const mosaic::FilteredCopies* copies = nullptr;
    double screenHeight = 0;
    // The identity of the patch under the pointer, which shows its frame.
    QString listOfmouseInMosaic;
    // The finished picture shows no frames.
    bool startScreenShot = false;
};

// Paints the mosaic and blur patches over the frozen screen: the settled
// ones newest first, so that an older patch lies over a newer one where
// they overlap, then the active one with its dashed frame and handles.
// Each patch is cut from the copy its size and option choose and
// stretched back to its place; a block mosaic keeps hard block edges. The
// painter is in the overlay's own top-left points.
void paintMosaicLayer(QPainter& painter, const StrokeState& state, const MosaicScene& scene);

} // namespace annotation
