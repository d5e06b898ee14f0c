// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Geometry.h"
#include "platform/WindowRecord.h"

#include <QColor>
#include <QImage>
#include <QRect>

namespace capture::testing {

// A 1920x1080 primary with a 1280x1024 screen to its right.
inline core::ScreenLayout twoScreens(double primaryScale = 1.0, double secondScale = 1.0)
{
    return core::ScreenLayout({{"DP-1", QRectF(0, 0, 1920, 1080), primaryScale},
                               {"DP-2", QRectF(1920, 0, 1280, 1024), secondScale}});
}

inline platform::WindowRecord window(std::uint32_t number, const QString& name, int layer,
                                     const QRectF& bounds, const QString& owner = QString())
{
    platform::WindowRecord w;
    w.number = number;
    w.name = name;
    w.hasName = !name.isEmpty();
    w.ownerName = owner;
    w.ownerPid = 1000 + number;
    w.layer = layer;
    w.bounds = bounds;
    return w;
}

// A black picture with the given rectangles lit in white.
inline QImage darkPicture(int width, int height, std::initializer_list<QRect> lit = {})
{
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(QColor(0, 0, 0, 0));
    for (const QRect& r : lit) {
        for (int y = r.top(); y <= r.bottom(); ++y)
            for (int x = r.left(); x <= r.right(); ++x)
                image.setPixel(x, y, 0xffffffffu);
    }
    return image;
}

} // namespace capture::testing
