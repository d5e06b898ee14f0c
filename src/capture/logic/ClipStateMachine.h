// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "capture/logic/CaptureState.h"
#include "capture/logic/ClipEvents.h"
#include "capture/logic/ClipHover.h"
#include "capture/logic/ClipLook.h"
#include "capture/logic/ClipSelection.h"
#include "capture/logic/ClipViewHost.h"
#include "capture/logic/SurroundBands.h"
#include "core/Geometry.h"

#include <QRectF>
#include <QSizeF>

namespace capture {

// clipState
enum class ClipState
{
    Waiting = 0,  // no press yet: hover selects windows; also while picking
    Pressed = 1,  // the button went down in Waiting and no drag came yet
    Dragging = 2, // a drag that is no tool stroke is under way
    Selected = 3, // the selection stands: the annotation window is open
};

// dragMode, chosen at each press.
enum class DragMode
{
    None = 0,
    Resize = 1, // at the crop border's handle numberOfReSize
    Move = 2,
};

// The overlay of one screen as a state machine: presses, drags and releases
// become one selection (a hovered window, a dragged region, a whole screen),
// which is then handed to the annotation window and can be moved and resized
// while it is open. Every side effect goes through the host; everything the
// view paints can be read back from selection() and look().
class ClipStateMachine
{
public:
    // `layout` holds every screen, `screen` is the index of this overlay's.
    ClipStateMachine(CaptureState& state, ClipViewHost& host, core::ScreenLayout layout,
                     int screen);
    // The hover steps keep references to the members below.
    ClipStateMachine(const ClipStateMachine&) = delete;
    ClipStateMachine& operator=(const ClipStateMachine&) = delete;

    // Called by the controller when the overlay is shown: back to Waiting with
    // `frame` (overlay-local) as the selection, nothing drawn yet.
    void showClipViewWithFrame(const QRectF& frame, bool withToolbar, bool isRecordScreen);

    // From the event monitors.
    void mousedown(const ClipMouseEvent& event);
    void mousedragged(const ClipMouseEvent& event);
    void mouseup(const ClipMouseEvent& event);

    // Key F: the whole screen is the selection.
    void fullScreenCapture();

    // Shift held at a press over a window: clicks now pick windows, and
    // nothing of the screen stays dimmed.
    void startPicking();
    // A modifier went down or up. Shift let go while picking ends it: the
    // picks become the selection, or, with none, the capture is cancelled.
    void flagsChanged(bool shiftDown);
    // The picks were fixed as the selection.
    [[nodiscard]] bool multiWindowScreenshots() const { return m_multiWindowScreenshots; }
    // The controller's answer to "startAnnotation" on the screen under the
    // mouse; acts only for a mark-up started from a pin's menu.
    void startAnnotation();

    // The selection setters the hover, the keyboard and the drags share.
    // A region under change: cut to whole numbers, the boxes follow, the
    // magnifier is placed and refreshed at most 25 times a second.
    void setFrameForContentView(const QRectF& rect, QPointF mouse, double now);
    // The crop border's frame; the selection is it inset by 6.
    void setContentFrame(const QRectF& borderFrame);
    // The view's own frame changed: the content view and the border follow
    // the selection.
    void setFrame();
    // A pointer move that may change the tips of the handles and the wheel;
    // the first move of all only notes where the pointer is.
    void checkTips(bool firstMove);
    // The crop border (and the copy the annotation layers read) to `frame`.
    void resetFramesToThisOne(const QRectF& frame);
    // The hover found another window: outline it and make it the selection.
    void showHoveredWindow(const QRectF& windowRect);

    [[nodiscard]] ClipState clipState() const { return m_clipState; }
    [[nodiscard]] DragMode dragMode() const { return m_dragMode; }
    [[nodiscard]] bool onlyClipCurrentWindow() const { return m_onlyClipCurrentWindow; }
    [[nodiscard]] bool isCanDrawSelectFunction() const { return m_isCanDrawSelectFunction; }
    [[nodiscard]] QPointF rectBeginPoint() const { return m_rectBeginPoint; }
    [[nodiscard]] QPointF rectEndPoint() const { return m_rectEndPoint; }
    [[nodiscard]] double lastDate() const { return m_lastDate; }
    [[nodiscard]] double overlayAlpha() const { return m_overlayAlpha; }
    void setOverlayAlpha(double alpha);

    [[nodiscard]] const ClipSelection& selection() const { return m_selection; }
    [[nodiscard]] const ClipLook& look() const { return m_look; }
    // The outline box and the bright hole of the dim surround as they stand.
    [[nodiscard]] SurroundBands surround() const { return m_selection.surround(); }
    // The view changes the few look fields it owns (the recording tool bar).
    [[nodiscard]] ClipLook& look() { return m_look; }
    [[nodiscard]] CaptureState& state() { return m_state; }
    [[nodiscard]] ClipViewHost& host() { return m_host; }
    [[nodiscard]] int screen() const { return m_screen; }
    [[nodiscard]] const core::ScreenLayout& layout() const { return m_layout; }
    // The size of the screen under the mouse, zero when there is none.
    [[nodiscard]] QSizeF getCurrentScreenSize() const { return m_hover.getCurrentScreenSize(); }
    // The overlay's own size.
    [[nodiscard]] QSizeF windowSize() const;

    // "{{x, y}, {w, h}}" of the border frame `frame` in global top-left, as
    // the repeat-last-area action reads it back, inset by the border band.
    [[nodiscard]] QString preRectOfScreenShots(const QRectF& frame) const;

private:
    // The tips box, a save panel or the recorder's start button has the user.
    [[nodiscard]] bool eventsHeldElsewhere() const;
    // The recording tool bar waits for its start.
    [[nodiscard]] bool recordingBarWaits() const;
    void chooseDragMode(QPointF point, bool scrolling, const CropBorderStatus& border);
    void dragRegion(const ClipMouseEvent& event);
    void dragSelection(const ClipMouseEvent& event);
    void afterMoveOrResize();
    void hideToolbarForChange();
    void finishFirstSelection(const ClipMouseEvent& event, int shadow);
    void writePreRect(const QRectF& frame);

    CaptureState& m_state;
    ClipViewHost& m_host;
    core::ScreenLayout m_layout;
    int m_screen;

    ClipState m_clipState = ClipState::Waiting;
    DragMode m_dragMode = DragMode::None;
    bool m_onlyClipCurrentWindow = true;
    bool m_isCanDrawSelectFunction = false;
    bool m_multiWindowScreenshots = false;
    double m_lastDate = 0.0;
    QPointF m_rectBeginPoint;
    QPointF m_rectEndPoint;
    double m_overlayAlpha = 0.5;

    ClipSelection m_selection;
    ClipLook m_look;
    ClipHover m_hover; // after what it refers to
};

} // namespace capture
