// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "capture/logic/SurroundBands.h"

#include <QPointF>
#include <QRectF>

namespace capture {

// The one selection of an overlay in all the places that keep it, overlay-
// local. Outside a change they agree: the content view is the selection,
// the crop border and contentFrame are it grown by 6, the outline by 2 and
// the dim surround by 10000. During a move or resize some lag on purpose
// until the release settles them.
struct ClipSelection
{
    QRectF contentRect;        // the selection; whole numbers once a change set it
    QRectF contentViewFrame;   // the view that fills the selection
    QRectF contentFrame;       // the crop border's frame as last set with the selection
    QRectF cropBorderFrame;    // the crop border view
    QRectF selectedBoxFrame;   // the outline
    QRectF backgroundBoxFrame; // the dim surround, its hole being the selection
    QRectF lastContentRect;    // contentRect as the last change left it
    QRectF lastContentRectBeforeResize;
    QPointF startPoint; // the last point of a move

    // The crop border's frame; the selection is it inset by 6.
    void setContentFrame(const QRectF& borderFrame);
    // A region under change: the selection and its content view.
    void setRegion(const QRectF& region);
    // Outline and surround around the selection as it stands.
    void surroundSelection();
    // A hovered window: outlined on its own edge, the hole 2 inside it.
    void showHoveredWindow(const QRectF& windowRect);
    // A selection fixed at the release from its border frame.
    void fix(const QRectF& borderFrame);
    // The outline box and the bright hole of the dim surround.
    [[nodiscard]] SurroundBands surround() const;
};

} // namespace capture
