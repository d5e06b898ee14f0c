// SPDX-License-Identifier: GPL-3.0-or-later
#include "annotation/logic/CropBorderTracker.h"

#include "core/Geometry.h"

namespace annotation {

namespace {

// Leaving the body by less than this counts as still inside the selection.
constexpr double kContentMargin = 5.0;

} // namespace

void CropBorderReaction::merge(const CropBorderReaction& later)
{
    if (later.cursor)
        cursor = later.cursor;
    if (later.mouseInButtonOfRecordScreen)
        mouseInButtonOfRecordScreen = later.mouseInButtonOfRecordScreen;
    if (later.mouseIsOnActivedStroke)
        mouseIsOnActivedStroke = later.mouseIsOnActivedStroke;
    if (later.cursorRectsEnabled)
        cursorRectsEnabled = later.cursorRectsEnabled;
    redraw = redraw || later.redraw;
}

void CropBorderTracker::updateTrackingAreas(QSizeF size, const CropBorderContext& context)
{
    if (context.scrollCanAdjustColorAlph)
        return;
    m_size = size;
    const bool recordButtonWaits = context.toolbarViewOpend && !context.realStartRecordingScreen;
    m_areas = overlay::CropBorderZones::trackingAreas(size, m_hideHandleRect, recordButtonWaits);
    m_inside.clear();
}

CropBorderReaction CropBorderTracker::pointerMoved(QPointF p, const CropBorderContext& context)
{
    std::set<int> inside;
    const bool onMarkup = context.pointerOnMarkup && context.pointerOnMarkup(p);
    for (const overlay::TrackingArea& area : m_areas) {
        if (!onMarkup && core::mouseInRect(p, area.rect))
            inside.insert(area.number);
    }
    // Onto the layer with no area left to leave: the areas were rebuilt, or
    // the layer came to lie under the pointer. It left the body all the same.
    const bool steppedOnMarkup =
        onMarkup && !m_pointerOnMarkup && m_inside.empty() && !m_beDragging;
    if (!m_beDragging)
        m_pointerOnMarkup = onMarkup;
    CropBorderReaction reaction = crossTo(std::move(inside), p, context);
    if (steppedOnMarkup)
        reaction.merge(mouseExited(overlay::CropBorderZones::kContentArea, p, context));
    return reaction;
}

CropBorderReaction CropBorderTracker::pointerLeft(QPointF p, const CropBorderContext& context)
{
    if (!m_beDragging)
        m_pointerOnMarkup = false;
    return crossTo({}, p, context);
}

CropBorderReaction CropBorderTracker::crossTo(std::set<int> inside, QPointF p,
                                              const CropBorderContext& context)
{
    CropBorderReaction reaction;
    // Areas stay quiet during a drag; the release settles the cursor.
    if (m_beDragging)
        return reaction;
    for (int area : m_inside) {
        if (inside.count(area) == 0)
            reaction.merge(mouseExited(area, p, context));
    }
    for (int area : inside) {
        if (m_inside.count(area) == 0)
            reaction.merge(mouseEntered(area, context));
    }
    m_inside = std::move(inside);
    return reaction;
}

CropBorderReaction CropBorderTracker::mouseEntered(int area, const CropBorderContext& context)
{
    CropBorderReaction reaction;
    m_whichInResizeRect = -1;
    if (context.scrollScreenShot || m_beDragging)
        return reaction;
    m_isCanMove = false;
    const bool recordButtonWaits = context.toolbarViewOpend && !context.realStartRecordingScreen;
    if (!m_hideHandleRect && (context.toolbarViewOpend || context.clipToolbarWindowOpened)) {
        if (area == overlay::CropBorderZones::kRecordButtonArea && recordButtonWaits) {
            reaction.mouseInButtonOfRecordScreen = true;
        } else if (area == overlay::CropBorderZones::kContentArea) {
            m_isInContentViewRect = true;
            if (!m_isInResizeRect) {
                if (context.toolSelected) {
                    reaction.cursor = CropCursor::ToolCrosshair;
                } else if (m_onlyClipCurrentWindow) {
                    reaction.cursor = CropCursor::Arrow;
                } else {
                    m_isCanMove = true;
                    reaction.cursor = CropCursor::OpenHand;
                }
            }
        } else if (!m_onlyClipCurrentWindow) {
            if (const std::optional<CropCursor> resize = resizeCursorOf(area)) {
                m_numberOfReSize = area;
                m_isInResizeRect = true;
                m_whichInResizeRect = area;
                reaction.cursor = resize;
            } else if (area == overlay::CropBorderZones::kRecordButtonArea) {
                reaction.cursor = CropCursor::Arrow;
            } else if (area >= 9) {
                m_isCanMove = true;
                reaction.cursor = CropCursor::OpenHand;
            }
        }
    }
    // Without zones the whole border belongs to the drawing tool.
    if (m_hideHandleRect && context.clipToolbarWindowOpened) {
        m_isInContentViewRect = true;
        reaction.cursor = CropCursor::ToolCrosshair;
    }
    return reaction;
}

CropBorderReaction CropBorderTracker::mouseExited(int area, QPointF p,
                                                  const CropBorderContext& context)
{
    CropBorderReaction reaction;
    m_whichInResizeRect = -1;
    if (m_beDragging || !(context.clipToolbarWindowOpened || context.toolbarViewOpend) ||
        context.scrollScreenShot)
        return reaction;
    m_isCanMove = false;
    reaction.mouseIsOnActivedStroke = false;
    if (area == overlay::CropBorderZones::kRecordButtonArea && context.toolbarViewOpend &&
        !context.realStartRecordingScreen)
        reaction.mouseInButtonOfRecordScreen = false;

    const QRectF inner(kContentMargin, kContentMargin, m_size.width() - 2.0 * kContentMargin,
                       m_size.height() - 2.0 * kContentMargin);
    m_isInContentViewRect = core::mouseInRect(p, inner);
    if (m_hideHandleRect && !m_isInContentViewRect) {
        reaction.cursor = CropCursor::Arrow;
        return reaction;
    }

    if (area > overlay::CropBorderZones::kContentArea) {
        // A handle zone (or the record button) was left.
        m_isInResizeRect = false;
        if (!m_isInContentViewRect) {
            reaction.cursor = CropCursor::Arrow;
        } else if (context.toolSelected) {
            reaction.cursor = area == overlay::CropBorderZones::kRecordButtonArea
                                  ? CropCursor::OpenHand
                                  : CropCursor::ToolCrosshair;
        } else if (!m_onlyClipCurrentWindow) {
            reaction.cursor = CropCursor::OpenHand;
        }
        return reaction;
    }

    // The body was left: outward, or onto something of the annotation layer.
    if (m_isInResizeRect)
        return reaction;
    if (!m_isInContentViewRect)
        reaction.cursor = CropCursor::Arrow;
    if (context.mouseEnterSingleStrokeTrackRect)
        return reaction;
    const StrokeUnderPointer under =
        context.strokeUnderPointer ? context.strokeUnderPointer(p) : StrokeUnderPointer::None;
    switch (under) {
    case StrokeUnderPointer::Stroke:
    case StrokeUnderPointer::ActiveStroke:
        reaction.cursor = CropCursor::OpenHand;
        reaction.mouseIsOnActivedStroke = under == StrokeUnderPointer::ActiveStroke;
        break;
    case StrokeUnderPointer::NoteLine:
        break;
    case StrokeUnderPointer::None:
        reaction.cursor = CropCursor::Arrow;
        break;
    }
    return reaction;
}

CropBorderReaction CropBorderTracker::mouseDown(int clickCount)
{
    CropBorderReaction reaction;
    m_beDragging = false;
    reaction.cursorRectsEnabled = false;
    reaction.redraw = clickCount == 1;
    return reaction;
}

CropBorderReaction CropBorderTracker::mouseDragged(const CropBorderContext& context)
{
    CropBorderReaction reaction;
    m_beDragging = true;
    // The highlight veil follows its stroke while it is drawn.
    reaction.redraw = context.activeStrokeType == 8;
    return reaction;
}

CropBorderReaction CropBorderTracker::mouseUp(int clickCount, const CropBorderContext& context)
{
    CropBorderReaction reaction;
    m_beDragging = false;
    // The gesture belonged to the annotation layer, which keeps the cursor.
    if (m_pointerOnMarkup)
        return reaction;
    if (m_isInResizeRect) {
        // The handle the drag began on, wherever the pointer is now.
        reaction.cursorRectsEnabled = true;
        reaction.cursor = resizeCursorOf(m_whichInResizeRect);
    } else if (m_isInContentViewRect) {
        if (context.toolSelected)
            reaction.cursor = CropCursor::ToolCrosshair;
        else
            reaction.cursor = m_onlyClipCurrentWindow ? CropCursor::Arrow : CropCursor::OpenHand;
    } else {
        reaction.cursor = CropCursor::Arrow;
    }
    reaction.redraw = clickCount == 1;
    return reaction;
}

std::optional<QRectF> CropBorderTracker::closedHandRect() const
{
    if (!m_beDragging)
        return std::nullopt;
    return overlay::CropBorderZones::contentTrackRect(m_size);
}

} // namespace annotation
