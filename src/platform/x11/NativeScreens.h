// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Geometry.h"

#include <QRect>
#include <QRectF>

#include <vector>

namespace platform::x11 {

// The X server speaks device pixels; the logic speaks Qt's points, with the
// primary monitor at the origin. Qt keeps each screen's top-left corner at
// its device position and scales only the size, so a pixel position maps
// to points through the screen that holds it.
class NativeScreens
{
public:
    struct Screen
    {
        QString name;
        QRect native;   // device pixels, root coordinates
        QRectF logical; // Qt points, as QScreen::geometry()
        double scale = 1.0;
    };

    NativeScreens() = default;
    explicit NativeScreens(std::vector<Screen> screens);
    // Built from QGuiApplication::screens(), primary first.
    [[nodiscard]] static NativeScreens fromQt();

    [[nodiscard]] core::ScreenLayout layout() const;
    [[nodiscard]] QRectF toPoints(const QRect& native) const; // global top-left points
    [[nodiscard]] QRect toPixels(const QRectF& points) const; // root device pixels
    [[nodiscard]] const std::vector<Screen>& screens() const { return m_screens; }

private:
    [[nodiscard]] const Screen* screenAtNative(QPoint p) const;
    [[nodiscard]] const Screen* screenAtPoints(QPointF p) const;

    std::vector<Screen> m_screens;
    QPointF m_origin; // the primary's logical top-left
};

} // namespace platform::x11
