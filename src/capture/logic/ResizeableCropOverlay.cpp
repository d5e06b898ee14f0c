// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/logic/ResizeableCropOverlay.h"

#include <algorithm>
#include <cmath>

namespace capture {

ResizeableCropOverlay::ResizeableCropOverlay(QSizeF viewSize, const QRectF& borderFrame)
    : m_viewSize(viewSize)
    , m_borderFrame(borderFrame)
{}

std::array<QPointF, 8> ResizeableCropOverlay::handlePositions(QSizeF size)
{
    const double w = size.width();
    const double h = size.height();
    return {{{0, 0}, {0, h / 2}, {0, h}, {w / 2, h}, {w, h}, {w, h / 2}, {w, 0}, {w / 2, 0}}};
}

ResizeMultiplyer ResizeableCropOverlay::multiplyerFor(QPointF anchor, QSizeF size)
{
    ResizeMultiplyer m;
    if (anchor.y() == 0)
        m.heightMultiplyer = -1;
    else if (anchor.y() == size.height())
        m.heightMultiplyer = 1;
    if (anchor.x() == 0)
        m.widhtMultiplyer = 1;
    else if (anchor.x() == size.width())
        m.widhtMultiplyer = -1;
    m.xMultiplyer = anchor.x() == 0 ? 1 : 0;
    m.yMultiplyer = anchor.y() == 0 ? 1 : 0;
    return m;
}

void ResizeableCropOverlay::mouseDown(QPointF point, PressZone zone)
{
    switch (zone) {
    case PressZone::Content:
        m_corpRectMode = CropRectMode::Move;
        break;
    case PressZone::Border: {
        // The nearest handle point becomes the anchor; a point farther than
        // any border could be keeps the search honest.
        const QPointF local = point - m_borderFrame.topLeft();
        double best = 3000;
        for (const QPointF& candidate : handlePositions(m_borderFrame.size())) {
            const double d = std::hypot(candidate.x() - local.x(), candidate.y() - local.y());
            if (d < best) {
                best = d;
                m_theAnchor = candidate;
            }
        }
        m_corpRectMode = CropRectMode::Resize;
        m_resizeMultiplyer = multiplyerFor(m_theAnchor, m_borderFrame.size());
        break;
    }
    case PressZone::Elsewhere:
        m_corpRectMode = CropRectMode::None;
        break;
    }
    m_startPoint = point;
}

void ResizeableCropOverlay::mouseDragged(QPointF point)
{
    if (m_corpRectMode == CropRectMode::Resize)
        resizeWithTouchPoint(point);
    else if (m_corpRectMode == CropRectMode::Move)
        moveWithTouchPoint(point);
}

void ResizeableCropOverlay::resizeWithTouchPoint(QPointF point)
{
    const QPointF p{std::clamp(point.x(), ResizeMargin, m_viewSize.width() - ResizeMargin),
                    std::clamp(point.y(), ResizeMargin, m_viewSize.height() - ResizeMargin)};
    const double dy = p.y() - m_startPoint.y();
    const double dx = m_startPoint.x() - p.x();
    const double dh = m_resizeMultiplyer.heightMultiplyer * dy;
    const double dw = m_resizeMultiplyer.widhtMultiplyer * dx;
    const QRectF f = m_borderFrame;
    const QRectF next{f.x() - m_resizeMultiplyer.xMultiplyer * dw,
                      f.y() - m_resizeMultiplyer.yMultiplyer * dh, f.width() + dw, f.height() + dh};
    m_borderFrame = preventTooSmall(next, f);
    m_startPoint = p;
}

void ResizeableCropOverlay::moveWithTouchPoint(QPointF point)
{
    const QRectF next = m_borderFrame.translated(point - m_startPoint);
    m_borderFrame = preventTooSmallOrTooBig(next, m_borderFrame, m_viewSize);
    // Each step moves by the travel since the last one, not since the press.
    m_startPoint = point;
}

QRectF ResizeableCropOverlay::preventTooSmall(const QRectF& frame, const QRectF& previous)
{
    QRectF r = frame;
    if (r.width() < MinimumSide) {
        r.setX(previous.x());
        r.setWidth(previous.width());
    }
    if (r.height() < MinimumSide) {
        r.setY(previous.y());
        r.setHeight(previous.height());
    }
    return r;
}

QRectF ResizeableCropOverlay::preventTooSmallOrTooBig(const QRectF& frame, const QRectF& previous,
                                                      QSizeF viewSize)
{
    const QRectF r = preventTooSmall(frame, previous);
    double x = r.x();
    double y = r.y();
    double w = r.width();
    double h = r.height();
    if (x < 0) {
        w += x;
        x = 0;
    }
    if (y < 0) {
        h += y;
        y = 0;
    }
    if (x + w > viewSize.width())
        w = viewSize.width() - x;
    if (y + h > viewSize.height())
        h = viewSize.height() - y;
    return {x, y, w, h};
}

QPointF ResizeableCropOverlay::toolBarOrigin(const QRectF& borderFrame, QSizeF toolBarSize)
{
    return {borderFrame.x() + borderFrame.width() / 2 - toolBarSize.width() / 2,
            borderFrame.y() + 10};
}

QString ResizeableCropOverlay::indicatorText(QSizeF size)
{
    return QString::asprintf("%.f X %.f", size.width(), size.height());
}

bool ResizeableCropOverlay::indicatorShown(double borderWidth, double textWidth)
{
    return borderWidth >= textWidth + 10;
}

} // namespace capture
