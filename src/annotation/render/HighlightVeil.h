// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "annotation/logic/StrokeState.h"

#include <QRectF>

#include <vector>

class QPainter;

namespace annotation {

// What the highlight's veil covers: the crop border's frame and what was
// selected in it.
struct VeilScene
{
    // The crop border's frame (the selection grown by 6), overlay-local
    // points, y up; the painter's plane has its origin at its bottom left.
    QRectF R;
    // The highlight tool's size: the veil is black at 2.5% per step.
    int level = 0;
    // The selected windows (overlay-local, y up); none for a region.
    std::vector<QRectF> windows;
    bool onlyClipCurrentWindow = false;
    // A region's veil has corners of radius 5.
    bool fillet = true;
};

// The dark veil over the selection with a clear hole for each highlight
// stroke, a rectangle or an ellipse, and the active one's handles. Nothing
// is painted while no visible stroke is a highlight. The painter must be
// in the crop border's y-up plane. True when a veil was painted.
bool paintHighlightVeil(QPainter& painter, const StrokeState& state, const VeilScene& scene);

} // namespace annotation
