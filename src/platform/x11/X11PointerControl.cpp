// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/x11/X11PointerControl.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

namespace platform::x11 {

namespace {
QPointF primaryOrigin()
{
    const QScreen* primary = QGuiApplication::primaryScreen();
    return primary != nullptr ? QPointF(primary->geometry().topLeft()) : QPointF();
}
} // namespace

QPointF X11PointerControl::position()
{
    return QPointF(QCursor::pos()) - primaryOrigin();
}

void X11PointerControl::warpTo(QPointF globalTopLeft)
{
    QCursor::setPos((globalTopLeft + primaryOrigin()).toPoint());
}

} // namespace platform::x11
