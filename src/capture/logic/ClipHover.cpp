// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/logic/ClipHover.h"

#include "capture/logic/DragMagnifier.h"
#include "capture/logic/HoverMagnifier.h"
#include "capture/logic/OverlayTips.h"
#include "capture/logic/SelectionGeometry.h"
#include "capture/logic/SizeLabelPlacement.h"

#include <cmath>
#include <optional>

namespace capture {
namespace {

// The magnifier's throttle: a jump of more than this many points, or this
// much time since the last refresh.
constexpr double MagnifierJump = 30.0;
constexpr double MagnifierInterval = 0.04;

} // namespace

ClipHover::ClipHover(CaptureState& state, ClipViewHost& host, const core::ScreenLayout& layout,
                     ClipSelection& selection, ClipLook& look)
    : m_state(state)
    , m_host(host)
    , m_layout(layout)
    , m_selection(selection)
    , m_look(look)
{}

QSizeF ClipHover::getCurrentScreenSize() const
{
    const int index = m_host.screenUnderMouse();
    if (index < 0 || index >= m_layout.count())
        return {};
    return m_layout.screen(index).frame.size();
}

QRectF ClipHover::screenUnderMouseFrame()
{
    const int index = m_host.screenUnderMouse();
    const QRectF frame =
        index >= 0 && index < m_layout.count() ? m_layout.frameBottomLeft(index) : QRectF();
    if (frame.height() == 0)
        return m_state.oldRect;
    m_state.oldRect = frame;
    return frame;
}

void ClipHover::showHoveredWindow(const QRectF& windowRect)
{
    m_selection.showHoveredWindow(windowRect);
    m_host.needsDisplay();
}

void ClipHover::setFrameForContentView(const QRectF& rect, QPointF mouse, double now,
                                       bool onlyClipCurrentWindow, bool dragging)
{
    const QRectF r = SelectionGeometry::truncated(rect);
    m_selection.setRegion(r);

    if (std::abs(r.width() - m_state.lastRect.width()) > MagnifierJump ||
        std::abs(r.height() - m_state.lastRect.height()) > MagnifierJump ||
        now - m_state.lastTimeOfMoving > MagnifierInterval) {
        m_host.magnifierNeedsDisplay();
        m_state.lastTimeOfMoving = now;
    }
    m_state.lastRect = r;

    const QRectF screen = screenUnderMouseFrame();
    m_look.magnifierOrigin = DragMagnifier::positionOfDragging(
        mouse, screen.size(), r, m_host.cropBorder().numberOfReSize, onlyClipCurrentWindow);
    m_look.cursorImageFrame = HoverMagnifier::cross(mouse);

    if (m_selection.lastContentRect != m_selection.contentViewFrame && !dragging)
        showBoxes();
    m_selection.lastContentRect = m_selection.contentRect;
    m_look.sizeLabel = placeSizeLabel(m_selection.contentRect, getCurrentScreenSize());
}

void ClipHover::showBoxes()
{
    if (m_state.stateOfMultiWindowScreenshots == PickMode::None)
        m_look.backgroundBoxTransparent = false;
    m_look.selectedBoxTransparent = false;
    m_selection.surroundSelection();
}

void ClipHover::checkTips(bool firstMove, bool onlyClipCurrentWindow)
{
    const CropBorderStatus border = m_host.cropBorder();
    CursorTipInput in;
    in.isInResizeRect = border.isInResizeRect;
    in.whichInResizeRect = border.whichInResizeRect;
    in.onlyClipCurrentWindow = onlyClipCurrentWindow;
    in.role = m_state.pointerRole;
    // The tool and the stroke under the pointer are the mark-up's; with no
    // drawing tool chosen the wheel tips of the roles stay as they are.
    const std::optional<CursorTip> tip = checkCursorTip(m_state.lastHotSpot, firstMove, in);
    if (!tip)
        return;
    const bool show = tip->change.kind == TipChange::Kind::Show;
    if (show == m_look.tipViewShown && tip->change.text == m_look.tipText)
        return;
    m_look.tipViewShown = show;
    m_look.tipText = tip->change.text;
    m_host.needsDisplay();
}

} // namespace capture
