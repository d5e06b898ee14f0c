// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "capture/logic/CaptureState.h"
#include "capture/logic/ClipLook.h"
#include "capture/logic/ClipSelection.h"
#include "capture/logic/ClipViewHost.h"
#include "core/Geometry.h"

#include <QPointF>
#include <QRectF>
#include <QSizeF>

namespace capture {

// What follows the pointer over one overlay: the outline of the window under
// it, the region under change with its magnifier, and which tip the pointer's
// role over the crop border calls for. It writes the selection and the look
// its state machine owns; the machine decides when each step runs.
class ClipHover
{
public:
    ClipHover(CaptureState& state, ClipViewHost& host, const core::ScreenLayout& layout,
              ClipSelection& selection, ClipLook& look);

    // The hover found another window: outline it and make it the selection.
    void showHoveredWindow(const QRectF& windowRect);
    // A region under change: cut to whole numbers, the boxes follow (not
    // while `dragging`, which shows them itself), the magnifier is placed and
    // refreshed at most 25 times a second.
    void setFrameForContentView(const QRectF& rect, QPointF mouse, double now,
                                bool onlyClipCurrentWindow, bool dragging);
    // A pointer move that may change the tips of the handles and the wheel;
    // the first move of all only notes where the pointer is.
    void checkTips(bool firstMove, bool onlyClipCurrentWindow);

    // The size of the screen under the mouse, zero when there is none.
    [[nodiscard]] QSizeF getCurrentScreenSize() const;

private:
    // The frame of the screen under the mouse (global bottom-left), or the
    // last one seen while the pointer is between screens.
    [[nodiscard]] QRectF screenUnderMouseFrame();
    void showBoxes();

    CaptureState& m_state;
    ClipViewHost& m_host;
    const core::ScreenLayout& m_layout;
    ClipSelection& m_selection;
    ClipLook& m_look;
};

} // namespace capture
