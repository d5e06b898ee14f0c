// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/logic/ClipSelection.h"

#include "capture/logic/SelectionGeometry.h"

namespace capture {
namespace {

using G = SelectionGeometry;

// The surround is a box whose thick border is the veil: what is left inside
// the border is the hole. Its growth from the selection decides the hole's
// edge in each case, so that the outline always covers the seam.
constexpr double SurroundBorder = 9999.0;
constexpr double HoverDimGrowth = 9997.0; // measured from the window: the hole is 2 inside
constexpr double FixedDimGrowth = 9994.0; // measured from the border: the hole is 1 outside
// The outline of a fixed selection, measured from the border: 2 outside the selection.
constexpr double OutlineInset = G::BorderBand - G::OutlineBand;

} // namespace

void ClipSelection::setContentFrame(const QRectF& borderFrame)
{
    contentRect = G::grown(borderFrame, -G::BorderBand);
    contentFrame = borderFrame;
    cropBorderFrame = borderFrame;
    contentViewFrame = contentRect;
}

void ClipSelection::setRegion(const QRectF& region)
{
    contentRect = region;
    contentViewFrame = region;
    surroundSelection();
}

void ClipSelection::surroundSelection()
{
    selectedBoxFrame = G::grown(contentRect, G::OutlineBand);
    backgroundBoxFrame = G::grown(contentRect, G::DimGrowth);
}

void ClipSelection::showHoveredWindow(const QRectF& windowRect)
{
    selectedBoxFrame = windowRect;
    setContentFrame(G::grown(windowRect, G::BorderBand));
    backgroundBoxFrame = G::grown(windowRect, HoverDimGrowth);
}

void ClipSelection::fix(const QRectF& borderFrame)
{
    selectedBoxFrame = G::grown(borderFrame, -OutlineInset);
    backgroundBoxFrame = G::grown(borderFrame, FixedDimGrowth);
    setContentFrame(borderFrame);
}

SurroundBands ClipSelection::surround() const
{
    return {selectedBoxFrame, G::grown(backgroundBoxFrame, -SurroundBorder)};
}

} // namespace capture
