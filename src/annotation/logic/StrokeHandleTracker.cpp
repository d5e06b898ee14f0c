// SPDX-License-Identifier: GPL-3.0-or-later
#include "annotation/logic/StrokeHandleTracker.h"

#include "annotation/logic/StrokeGeometry.h"
#include "annotation/logic/StrokeHitTest.h"

namespace annotation {

namespace {

namespace st = stroketype;

} // namespace

std::vector<HandleArea> handleAreasOf(const Stroke& s)
{
    std::vector<HandleArea> areas;
    const QPointF p1(s.X1.value_or(0), s.Y1.value_or(0));
    const QPointF p2(s.X2.value_or(0), s.Y2.value_or(0));
    if (s.type == st::Square || s.type == st::Ellipse) {
        const std::vector<QRectF> rects =
            geometry::calculateAllNeededHandleSquareRects(geometry::orderedRect(p1, p2), s.type);
        for (std::size_t i = 0; i < rects.size(); ++i)
            areas.push_back({static_cast<int>(i), rects[i]});
    } else if (s.type == st::Line || s.type == st::Arrow) {
        areas.push_back({1, geometry::endHandle(p1)});
        areas.push_back({2, geometry::endHandle(p2)});
    }
    return areas;
}

std::optional<CropCursor> handleCursorOf(int activeType, int number)
{
    if (activeType == st::Square || activeType == st::Ellipse || activeType == st::Mosaic) {
        if (number >= 9)
            return CropCursor::OpenHand;
        return resizeCursorOf(number);
    }
    if ((activeType == st::Line || activeType == st::Arrow) && (number == 1 || number == 2))
        return CropCursor::Move;
    return std::nullopt;
}

void StrokeHandleTracker::updateTrackingAreas(const StrokeState& state)
{
    m_areas = state.dicOfCurrentStroke ? handleAreasOf(*state.dicOfCurrentStroke)
                                       : std::vector<HandleArea>{};
    m_inside.clear();
    m_builtFor = state.dicOfCurrentStroke;
}

StrokeHoverReaction StrokeHandleTracker::pointerMoved(QPointF p, StrokeState& state,
                                                      const StrokeHoverContext& context)
{
    StrokeHoverReaction reaction;
    if (context.mouseDraggedTimes != 0)
        return reaction;
    if (state.dicOfCurrentStroke != m_builtFor)
        updateTrackingAreas(state);
    std::set<int> inside;
    for (const HandleArea& area : m_areas) {
        if (hittest::pointInRect(p, area.rect))
            inside.insert(area.number);
    }
    for (int number : m_inside) {
        if (inside.count(number) == 0) {
            const StrokeHoverReaction exited = mouseExited(number, state, context);
            if (exited.cursor)
                reaction.cursor = exited.cursor;
            reaction.openHandLater = reaction.openHandLater || exited.openHandLater;
        }
    }
    for (int number : inside) {
        if (m_inside.count(number) == 0) {
            const StrokeHoverReaction entered = mouseEntered(number, state, context);
            if (entered.cursor) {
                reaction.cursor = entered.cursor;
                // A handle took over from the one left.
                reaction.openHandLater = false;
            }
        }
    }
    m_inside = std::move(inside);
    return reaction;
}

StrokeHoverReaction StrokeHandleTracker::mouseEntered(int number, StrokeState& state,
                                                      const StrokeHoverContext& context)
{
    StrokeHoverReaction reaction;
    if (context.mouseDraggedTimes != 0)
        return reaction;
    state.mouseEnterSingleStrokeTrackRect = true;
    if (context.scrollScreenShot || !context.clipToolbarWindowOpened) {
        reaction.cursor = CropCursor::Arrow;
        return reaction;
    }
    state.idx = number;
    if (state.dicOfCurrentStroke)
        reaction.cursor = handleCursorOf(state.dicOfCurrentStroke->type, number);
    return reaction;
}

StrokeHoverReaction StrokeHandleTracker::mouseExited(int number, StrokeState& state,
                                                     const StrokeHoverContext& context)
{
    StrokeHoverReaction reaction;
    if (context.mouseDraggedTimes != 0)
        return reaction;
    state.mouseEnterSingleStrokeTrackRect = false;
    if (context.scrollScreenShot || !context.clipToolbarWindowOpened) {
        reaction.cursor = CropCursor::Arrow;
        return reaction;
    }
    state.idx = number;
    const int type = state.dicOfCurrentStroke ? state.dicOfCurrentStroke->type : -1;
    reaction.openHandLater = (type >= 0 && type <= st::Arrow) || type == st::Mosaic;
    reaction.openHandLater = reaction.openHandLater && number > 0;
    return reaction;
}

} // namespace annotation
