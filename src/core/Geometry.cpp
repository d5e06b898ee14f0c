// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/Geometry.h"

#include <utility>

namespace core {

ScreenLayout::ScreenLayout(std::vector<ScreenInfo> screens)
    : m_screens(std::move(screens))
{}

double ScreenLayout::deepestHeight() const
{
    return m_screens.empty() ? 0.0 : m_screens.front().frame.height();
}

QRectF ScreenLayout::frameBottomLeft(int index) const
{
    const QRectF& f = m_screens.at(index).frame;
    return {f.x(), deepestHeight() - f.y() - f.height(), f.width(), f.height()};
}

QPointF ScreenLayout::topLeftToBottomLeft(QPointF p) const
{
    return {p.x(), deepestHeight() - p.y()};
}

QPointF ScreenLayout::bottomLeftToTopLeft(QPointF p) const
{
    return {p.x(), deepestHeight() - p.y()};
}

QRectF ScreenLayout::topLeftToBottomLeft(const QRectF& r) const
{
    return {r.x(), deepestHeight() - r.y() - r.height(), r.width(), r.height()};
}

QPointF ScreenLayout::topLeftToOverlayLocal(int index, QPointF p) const
{
    const QRectF& f = m_screens.at(index).frame;
    return {p.x() - f.x(), f.height() - (p.y() - f.y())};
}

QPointF ScreenLayout::overlayLocalToTopLeft(int index, QPointF p) const
{
    const QRectF& f = m_screens.at(index).frame;
    return {p.x() + f.x(), f.y() + f.height() - p.y()};
}

QRectF ScreenLayout::topLeftToOverlayLocal(int index, const QRectF& r) const
{
    const QRectF& f = m_screens.at(index).frame;
    return {r.x() - f.x(), f.height() - (r.y() - f.y()) - r.height(), r.width(), r.height()};
}

QRectF ScreenLayout::overlayLocalToTopLeft(int index, const QRectF& r) const
{
    const QRectF& f = m_screens.at(index).frame;
    return {r.x() + f.x(), f.y() + f.height() - r.y() - r.height(), r.width(), r.height()};
}

QRectF ScreenLayout::cgWindowRectToScreenRect(const QRectF& rect) const
{
    double height = deepestHeight();
    for (int i = 0; i < count(); ++i) {
        const QRectF bl = frameBottomLeft(i);
        if (static_cast<long long>(bl.x()) == 0 && static_cast<long long>(bl.y()) == 0)
            height = bl.height();
    }
    return {rect.x(), height - rect.height() - rect.y(), rect.width(), rect.height()};
}

bool mouseInRect(QPointF p, const QRectF& r)
{
    return p.x() >= r.left() && p.x() < r.left() + r.width() && p.y() > r.top() &&
           p.y() <= r.top() + r.height();
}

int ScreenLayout::currentScreenForMouseLocation(QPointF mouseBottomLeft) const
{
    for (int i = 0; i < count(); ++i) {
        if (mouseInRect(mouseBottomLeft, frameBottomLeft(i)))
            return i;
    }
    return count() - 1;
}

int ScreenLayout::screenAtTopLeft(QPointF pointerTopLeft) const
{
    return currentScreenForMouseLocation(topLeftToBottomLeft(pointerTopLeft));
}

} // namespace core
