// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "annotation/logic/CropCursor.h"
#include "overlay/logic/AnnotationInput.h"
#include "overlay/logic/CropBorderZones.h"

#include <QPointF>
#include <QRectF>
#include <QSizeF>

#include <functional>
#include <optional>
#include <set>
#include <vector>

namespace annotation {

// What lies under the pointer in the annotation layer above the border.
using overlay::StrokeUnderPointer;

// The flags of other parts of the capture that the border's decisions read.
struct CropBorderContext
{
    bool scrollScreenShot = false;                // a scrolling capture runs
    bool toolbarViewOpend = false;                // a recording region has its tool bar
    bool clipToolbarWindowOpened = false;         // the annotation window is open
    bool realStartRecordingScreen = false;        // the recording has started
    bool toolSelected = false;                    // a drawing tool is chosen
    bool scrollCanAdjustColorAlph = false;        // the wheel adjusts a colour's alpha
    bool mouseEnterSingleStrokeTrackRect = false; // a stroke's handle took the pointer
    int activeStrokeType = -1;                    // type of the active stroke, -1 for none
    // Asked when the pointer leaves the body towards the annotation layer; the
    // point is in the border's coordinates (y up). Unset means no strokes.
    std::function<StrokeUnderPointer(QPointF)> strokeUnderPointer;
    // Whether the annotation layer has painted pixels under the point
    // (border coordinates): there it takes the pointer, and the border's
    // areas all see it leave. Unset means never.
    std::function<bool(QPointF)> pointerOnMarkup;
};

// What the host must do after an event: set a cursor, update shared flags,
// switch the window's cursor rectangles, repaint.
struct CropBorderReaction
{
    std::optional<CropCursor> cursor;
    std::optional<bool> mouseInButtonOfRecordScreen;
    std::optional<bool> mouseIsOnActivedStroke;
    std::optional<bool> cursorRectsEnabled;
    bool redraw = false;

    // Applies `later` after this one: its settings win, repaints add up.
    void merge(const CropBorderReaction& later);
    bool operator==(const CropBorderReaction&) const = default;
};

// The crop border's pointer logic without the widget: which zone the
// pointer is in, whether a press there moves or resizes the selection, and
// which cursor says so. Areas report entering and leaving as the pointer
// crosses their edges; while a drag runs no crossing is reported, so a
// handle keeps its cursor until the release.
class CropBorderTracker
{
public:
    // Rebuilds the areas for a border of `size`. Nothing changes while the
    // wheel adjusts a colour's alpha. New areas start with the pointer
    // outside, so the next move reports what it is in.
    void updateTrackingAreas(QSizeF size, const CropBorderContext& context);

    // A pointer move to `p` (border coordinates, y up): the crossings of all
    // areas, leaving first, as one reaction.
    [[nodiscard]] CropBorderReaction pointerMoved(QPointF p, const CropBorderContext& context);
    // The pointer left the border's widget altogether.
    [[nodiscard]] CropBorderReaction pointerLeft(QPointF p, const CropBorderContext& context);

    [[nodiscard]] CropBorderReaction mouseEntered(int area, const CropBorderContext& context);
    [[nodiscard]] CropBorderReaction mouseExited(int area, QPointF p,
                                                 const CropBorderContext& context);
    [[nodiscard]] CropBorderReaction mouseDown(int clickCount);
    [[nodiscard]] CropBorderReaction mouseDragged(const CropBorderContext& context);
    [[nodiscard]] CropBorderReaction mouseUp(int clickCount, const CropBorderContext& context);

    // Where the closed hand shows while a drag runs; nothing otherwise.
    [[nodiscard]] std::optional<QRectF> closedHandRect() const;

    void setHideHandleRect(bool hide) { m_hideHandleRect = hide; }
    void setOnlyClipCurrentWindow(bool only) { m_onlyClipCurrentWindow = only; }

    [[nodiscard]] bool hideHandleRect() const { return m_hideHandleRect; }
    [[nodiscard]] bool onlyClipCurrentWindow() const { return m_onlyClipCurrentWindow; }
    [[nodiscard]] bool isCanMove() const { return m_isCanMove; }
    [[nodiscard]] bool isInResizeRect() const { return m_isInResizeRect; }
    [[nodiscard]] bool isInContentViewRect() const { return m_isInContentViewRect; }
    [[nodiscard]] int numberOfReSize() const { return m_numberOfReSize; }
    [[nodiscard]] int whichInResizeRect() const { return m_whichInResizeRect; }
    [[nodiscard]] bool beDragging() const { return m_beDragging; }
    [[nodiscard]] const std::vector<overlay::TrackingArea>& areas() const { return m_areas; }

private:
    [[nodiscard]] CropBorderReaction crossTo(std::set<int> inside, QPointF p,
                                             const CropBorderContext& context);

    QSizeF m_size;
    std::vector<overlay::TrackingArea> m_areas;
    std::set<int> m_inside; // areas the pointer was last reported in
    // The pointer was last seen on the annotation layer, which then takes
    // a press, and its drag and release, for itself.
    bool m_pointerOnMarkup = false;
    bool m_beDragging = false;
    bool m_isInResizeRect = false;
    bool m_isCanMove = false;
    bool m_isInContentViewRect = false;
    int m_numberOfReSize = 0;
    bool m_hideHandleRect = false;
    bool m_onlyClipCurrentWindow = false;
    int m_whichInResizeRect = -1;
};

} // namespace annotation
