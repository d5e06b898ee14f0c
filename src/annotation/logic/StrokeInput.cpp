// SPDX-License-Identifier: GPL-3.0-or-later
#include "annotation/logic/StrokeInput.h"

#include "annotation/logic/StrokeEdit.h"

#include <algorithm>
#include <cmath>

namespace annotation {

namespace {

namespace st = stroketype;

bool isTextFamily(int type)
{
    return type == st::Text || type == st::Note;
}

bool isPatch(int type)
{
    return type == st::Mosaic || type == st::Highlight;
}

// The layers that show a stroke of `type` outside the stroke layer.
void refreshLayersOf(int type, StrokeReaction& reaction)
{
    if (type == st::Highlight) {
        reaction.refreshHighlight = true;
        reaction.refreshMosaic = true;
    }
    if (type == st::Mosaic)
        reaction.refreshMosaic = true;
}

} // namespace

PressKind pressKindOf(overlay::PointerRole role)
{
    switch (role) {
    case overlay::PointerRole::OverStroke:
        return PressKind::GrabStroke;
    case overlay::PointerRole::Resize:
    case overlay::PointerRole::ResizeAlternate:
        return PressKind::Handle;
    case overlay::PointerRole::ToolCrosshair:
        return PressKind::Draw;
    case overlay::PointerRole::Arrow:
    case overlay::PointerRole::TextIBeam:
        break;
    }
    return PressKind::None;
}

StrokeInput::StrokeInput(StrokeState& state)
    : m_state(state)
{}

void StrokeInput::setupNewStroke(int type, QPointF origin, const NewStrokeSettings& settings)
{
    Stroke s;
    // Lines and the pencil start half transparent, every other tool (the
    // arrow too) opaque, unless the tool remembers its own.
    if (settings.colorAlpha)
        s.colorAlpha = settings.colorAlpha;
    else
        s.colorAlpha = type == st::Line || type == st::PencilPen ? 0.5 : 1.0;
    m_currentFunction = type;
    s.list = m_state.getListNumberFromArrayOfStrokes(type) + 1;
    s.type = type;
    s.color = settings.color;
    s.size = settings.size;
    if (type == st::Arrow)
        s.normalTypeOfArrow =
            settings.normalTypeOfArrow ? QStringLiteral("1") : QStringLiteral("0");
    if (type == st::PencilPen) {
        m_arrayOfPoints.clear();
        m_arrayOfPoints.push_back(origin);
        s.allPoints = m_arrayOfPoints;
    } else {
        s.X1 = origin.x();
        s.Y1 = origin.y();
    }
    if (type == st::Square) {
        s.enableRoundOfSquare = settings.enableRoundOfSquare;
        s.filledOfSquare = settings.filledOfSquare;
    }
    if (type == st::Ellipse)
        s.filledOfEllipse = settings.filledOfEllipse;
    if (type == st::Mosaic)
        s.selectedMosaic = settings.selectedGaussianBlured ? 0 : 1;
    if (type == st::Highlight)
        s.squareOfHighlight = settings.ellipseOfHighlight ? 0 : 1;
    m_state.dicOfCurrentStroke = s;
}

StrokeReaction StrokeInput::mouseDown(QPointF p, overlay::PointerRole role, int selectFunction,
                                      const NewStrokeSettings& settings,
                                      const std::function<bool(QPointF)>& grabStrokeUnderMouse)
{
    StrokeReaction reaction;
    m_mouseDraggedTimes = 0;
    m_currentFunction.reset();
    m_state.strokeState = StrokeGesture::Idle;
    m_arrayOfPoints.clear();

    switch (pressKindOf(role)) {
    case PressKind::GrabStroke: {
        m_state.oldType = m_state.dicOfCurrentStroke ? m_state.dicOfCurrentStroke->type : 0;
        // The hover and this test have different tolerances: a miss after
        // all leaves everything as it was.
        if (!grabStrokeUnderMouse || !grabStrokeUnderMouse(p) || !m_state.dicOfCurrentStroke)
            return reaction;
        Stroke& s = *m_state.dicOfCurrentStroke;
        const int T = s.type;
        if (m_state.textViewOpened && m_state.oldType != T && isTextFamily(m_state.oldType)) {
            m_state.textViewOpened = false;
            reaction.disableTextView = true;
        }
        refreshLayersOf(T, reaction);
        refreshLayersOf(m_state.oldType, reaction);
        reaction.adjustTool = T;
        s.moveX = p.x();
        s.moveY = p.y();
        s.moveToX.reset();
        s.moveToY.reset();
        m_state.strokeState = StrokeGesture::Move;
        if (isTextFamily(T))
            reaction.refreshMosaic = true;
        else
            reaction.redraw = true;
        return reaction;
    }
    case PressKind::Handle:
        // Handles belong to the active stroke; without one there is nothing to hold.
        if (!m_state.dicOfCurrentStroke)
            break;
        m_state.dicOfCurrentStroke->moveX = p.x();
        m_state.dicOfCurrentStroke->moveY = p.y();
        m_state.dicOfCurrentStroke->moveToX.reset();
        m_state.dicOfCurrentStroke->moveToY.reset();
        m_state.whichTrackingAreaOfMouseDown = m_state.idx;
        m_state.strokeState = StrokeGesture::Resize;
        break;
    case PressKind::Draw:
        m_state.strokeState = StrokeGesture::Draw;
        // The previously active stroke stays in the history as it stands.
        m_state.dicOfCurrentStroke.reset();
        reaction.enableUndoButton = true;
        reaction.disableScrollButton = true;
        if (selectFunction >= st::Square && selectFunction <= st::Highlight &&
            !isTextFamily(selectFunction)) {
            setupNewStroke(selectFunction, p, settings);
        } else if (isTextFamily(selectFunction)) {
            // A text box exists from its press on; its view opens with it.
            m_state.reSetUndo();
            setupNewStroke(selectFunction, p, settings);
            reaction.redraw = true;
            return reaction;
        } else {
            return reaction;
        }
        break;
    case PressKind::None:
        break;
    }

    const int T = m_state.dicOfCurrentStroke ? m_state.dicOfCurrentStroke->type : 0;
    refreshLayersOf(T, reaction);
    refreshLayersOf(m_state.oldType, reaction);
    m_state.oldType = T;
    reaction.redraw = true;
    return reaction;
}

StrokeReaction StrokeInput::mouseDragged(QPointF p)
{
    StrokeReaction reaction;
    ++m_mouseDraggedTimes;
    if (!m_state.dicOfCurrentStroke)
        return reaction;
    if (m_state.strokeState == StrokeGesture::Move ||
        m_state.strokeState == StrokeGesture::Resize) {
        Stroke& s = *m_state.dicOfCurrentStroke;
        if (m_state.strokeState == StrokeGesture::Move)
            edit::dragMove(s, p, m_bounds);
        else
            edit::dragResize(s, p, m_state.whichTrackingAreaOfMouseDown, m_bounds);
        // A patch's own layers follow its "Rect"; the stroke layer repaints
        // the rest with the offset.
        reaction.redraw = !isPatch(s.type);
        return reaction;
    }
    if (m_state.strokeState != StrokeGesture::Draw || !m_currentFunction)
        return reaction;
    Stroke& s = *m_state.dicOfCurrentStroke;
    const int tool = *m_currentFunction;
    if (isTextFamily(tool))
        return reaction;
    if (tool == st::PencilPen) {
        const QPointF last = m_arrayOfPoints.empty() ? p : m_arrayOfPoints.back();
        if (m_arrayOfPoints.empty() ||
            std::hypot(p.x() - last.x(), p.y() - last.y()) > kPencilStep) {
            m_arrayOfPoints.push_back(p);
            s.allPoints = m_arrayOfPoints;
        }
        reaction.redraw = true;
        return reaction;
    }
    s.X2 = p.x();
    s.Y2 = p.y();
    if (isPatch(tool)) {
        // No drag offset yet: only the normalising (and a mosaic's clamp) acts.
        s.Rect =
            edit::getNewRectOfResizeAllStroke(s, m_state.whichTrackingAreaOfMouseDown, m_bounds);
        return reaction;
    }
    reaction.redraw = true;
    return reaction;
}

StrokeReaction StrokeInput::mouseUp(QPointF p)
{
    StrokeReaction reaction;
    const int n = m_mouseDraggedTimes;
    if (m_state.strokeState == StrokeGesture::Draw && m_currentFunction) {
        const int F = *m_currentFunction;
        if (F == st::PencilPen) {
            if (n < kDragsForAStroke) {
                m_state.dicOfCurrentStroke.reset();
            } else if (m_state.dicOfCurrentStroke) {
                m_state.reSetUndo();
                // The last point is exact, however near the one before.
                m_arrayOfPoints.push_back(p);
                m_state.dicOfCurrentStroke->allPoints = m_arrayOfPoints;
                m_arrayOfPoints.clear();
                m_state.commit();
            }
        } else if (n < kDragsForAStroke) {
            // A click without a drag leaves no stroke; a text box stays.
            if (!isTextFamily(F))
                m_state.dicOfCurrentStroke.reset();
            if (isPatch(F)) {
                reaction.refreshHighlight = true;
                reaction.refreshMosaic = true;
            }
        } else {
            m_state.reSetUndo();
            // A text box is not drawn by dragging; its count stays for its view.
            if (isTextFamily(F))
                return reaction;
            if (m_state.dicOfCurrentStroke) {
                Stroke& s = *m_state.dicOfCurrentStroke;
                const double x1 = static_cast<float>(s.X1.value_or(0));
                const double y1 = static_cast<float>(s.Y1.value_or(0));
                if (F == st::Line || F == st::Arrow) {
                    // A line keeps its direction: the release is the tip.
                    s.X2 = static_cast<float>(p.x());
                    s.Y2 = static_cast<float>(p.y());
                } else {
                    s.X1 = static_cast<float>(std::min(x1, p.x()));
                    s.Y1 = static_cast<float>(std::min(y1, p.y()));
                    s.X2 = static_cast<float>(std::max(x1, p.x()));
                    s.Y2 = static_cast<float>(std::max(y1, p.y()));
                }
                m_state.commit();
            }
        }
    }
    // A move or a resize of fewer drags leaves the stroke as it stands, its
    // drag included: it shows at the offset until the next press.
    const bool edited =
        m_state.strokeState == StrokeGesture::Move || m_state.strokeState == StrokeGesture::Resize;
    if (edited && n >= kDragsForAStroke && m_state.dicOfCurrentStroke) {
        m_state.reSetUndo();
        Stroke& s = *m_state.dicOfCurrentStroke;
        if (m_state.strokeState == StrokeGesture::Move)
            edit::foldMove(s, p, m_bounds);
        else
            edit::foldResize(s, m_state.whichTrackingAreaOfMouseDown, m_bounds);
        m_state.commit();
    }
    return tail(reaction);
}

StrokeReaction StrokeInput::tail(StrokeReaction reaction)
{
    m_mouseDraggedTimes = 0;
    if (!m_currentFunction || !isPatch(*m_currentFunction)) {
        reaction.redraw = true;
        reaction.updateTrackingAreas = true;
    }
    return reaction;
}

} // namespace annotation
