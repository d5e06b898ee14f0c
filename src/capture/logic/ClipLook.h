// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "capture/logic/SizeLabelPlacement.h"

#include <QPointF>
#include <QRectF>
#include <QString>

#include <optional>

namespace capture {

// What an overlay shows besides the rectangles of ClipSelection. The view
// brings its widgets in line with this after every call into the state
// machine.
struct ClipLook
{
    // Until a selection is first shown the outline and the dim surround are
    // transparent; the full-screen selection removes them for good.
    bool selectedBoxTransparent = true;
    bool backgroundBoxTransparent = true;
    bool selectedBoxAdded = true;
    bool backgroundBoxAdded = true;

    // The tip box in the lower-left corner: the opening tip until the first
    // press, later the tips of the handles and the wheel. Taking the whole
    // screen removes it for good.
    bool tipViewShown = true;
    bool tipViewAdded = true;
    QString tipText;

    // The magnifier square and the cursor picture beside it.
    bool magnifierAdded = true; // false once a whole screen was taken
    bool magnifierShown = false;
    bool cursorImageShown = false;
    bool cursorImagesCleared = false;
    QPointF magnifierOrigin;
    QRectF cursorImageFrame;

    std::optional<SizeLabel> sizeLabel; // none while the selection is below a point

    // The crop border with its handles, a subview once a selection stands.
    bool cropBorderAdded = false;
    bool cropBorderOnlyClipCurrentWindow = false; // no handles, no moves
    bool cropBorderHideHandleRect = false;

    // The view's own layer stops veiling the frozen screen.
    bool layerBackgroundClear = false;
    // The region tool bar of a recording overlay.
    bool toolbarViewShown = false;
};

} // namespace capture
