// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/x11/NativeScreens.h"

#include <QGuiApplication>
#include <QScreen>

#include <utility>

namespace platform::x11 {

NativeScreens::NativeScreens(std::vector<Screen> screens)
    : m_screens(std::move(screens))
{
    if (!m_screens.empty())
        m_origin = m_screens.front().logical.topLeft();
}

NativeScreens NativeScreens::fromQt()
{
    std::vector<Screen> screens;
    QList<QScreen*> list = QGuiApplication::screens();
    QScreen* primary = QGuiApplication::primaryScreen();
    if (primary != nullptr) {
        list.removeAll(primary);
        list.prepend(primary);
    }
    for (QScreen* s : list) {
        const double scale = s->devicePixelRatio();
        const QRect g = s->geometry();
        const QRect native(g.topLeft(),
                           QSize(qRound(g.width() * scale), qRound(g.height() * scale)));
        screens.push_back({s->name(), native, QRectF(g), scale});
    }
    return NativeScreens(std::move(screens));
}

core::ScreenLayout NativeScreens::layout() const
{
    std::vector<core::ScreenInfo> infos;
    for (const Screen& s : m_screens)
        infos.push_back({s.name, s.logical.translated(-m_origin), s.scale});
    return core::ScreenLayout(std::move(infos));
}

const NativeScreens::Screen* NativeScreens::screenAtNative(QPoint p) const
{
    for (const Screen& s : m_screens) {
        if (s.native.contains(p))
            return &s;
    }
    return m_screens.empty() ? nullptr : &m_screens.front();
}

const NativeScreens::Screen* NativeScreens::screenAtPoints(QPointF p) const
{
    const QPointF q = p + m_origin;
    for (const Screen& s : m_screens) {
        if (s.logical.contains(q))
            return &s;
    }
    return m_screens.empty() ? nullptr : &m_screens.front();
}

QRectF NativeScreens::toPoints(const QRect& native) const
{
    const Screen* s = screenAtNative(native.center());
    if (s == nullptr)
        return QRectF(native);
    const QPointF tl = s->logical.topLeft() +
                       QPointF(native.topLeft() - s->native.topLeft()) / s->scale - m_origin;
    return {tl, QSizeF(native.size()) / s->scale};
}

QRect NativeScreens::toPixels(const QRectF& points) const
{
    const Screen* s = screenAtPoints(points.center());
    if (s == nullptr)
        return points.toAlignedRect();
    const QPointF tl = QPointF(s->native.topLeft()) +
                       (points.topLeft() + m_origin - s->logical.topLeft()) * s->scale;
    return QRectF(tl, points.size() * s->scale).toAlignedRect();
}

} // namespace platform::x11
