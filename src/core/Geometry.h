// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointF>
#include <QRectF>
#include <QString>

#include <vector>

namespace core {

// One monitor as the logic sees it. Qt gives monitor geometry in logical
// points with a top-left origin; that is our "global top-left" system once
// shifted so the primary monitor sits at (0, 0).
struct ScreenInfo
{
    QString name;
    QRectF frame;       // global top-left, points
    double scale = 1.0; // backingScaleFactor: pixels per point

    bool operator==(const ScreenInfo&) const = default;
};

// The only place that converts between the three coordinate systems the
// capture logic uses:
//  - global top-left: origin at the primary monitor's top-left, y down
//    (window bounds, pointer positions from the X server);
//  - global bottom-left: origin at the primary monitor's bottom-left, y up
//    (screen frames and mouse locations in the capture logic);
//  - overlay-local: origin at one screen's bottom-left corner, y up, points
//    (selections and strokes).
// The primary monitor is the "deepest" screen whose height flips the two
// global systems. Screens are kept in Qt's order, primary first.
class ScreenLayout
{
public:
    ScreenLayout() = default;
    explicit ScreenLayout(std::vector<ScreenInfo> screens);

    [[nodiscard]] const std::vector<ScreenInfo>& screens() const { return m_screens; }
    [[nodiscard]] int count() const { return static_cast<int>(m_screens.size()); }
    [[nodiscard]] bool isEmpty() const { return m_screens.empty(); }
    [[nodiscard]] const ScreenInfo& screen(int index) const { return m_screens.at(index); }
    // The screen whose height flips between the global systems (the primary).
    [[nodiscard]] const ScreenInfo& deepestScreen() const { return m_screens.front(); }
    [[nodiscard]] double deepestHeight() const;

    // A screen's frame in global bottom-left coordinates.
    [[nodiscard]] QRectF frameBottomLeft(int index) const;

    [[nodiscard]] QPointF topLeftToBottomLeft(QPointF p) const;
    [[nodiscard]] QPointF bottomLeftToTopLeft(QPointF p) const;
    [[nodiscard]] QRectF topLeftToBottomLeft(const QRectF& r) const;

    // Overlay-local (y up, relative to one screen) from and to global top-left.
    [[nodiscard]] QPointF topLeftToOverlayLocal(int index, QPointF p) const;
    [[nodiscard]] QPointF overlayLocalToTopLeft(int index, QPointF p) const;
    [[nodiscard]] QRectF topLeftToOverlayLocal(int index, const QRectF& r) const;
    [[nodiscard]] QRectF overlayLocalToTopLeft(int index, const QRectF& r) const;

    // Window bounds (global top-left) to a rectangle with a bottom-left
    // origin: the height used is that of the screen sitting at (0, 0) in
    // bottom-left coordinates (the last such screen wins), else the primary's.
    [[nodiscard]] QRectF cgWindowRectToScreenRect(const QRectF& rect) const;

    // The first screen whose bottom-left frame holds the mouse location (in
    // global bottom-left, edges as the mouse test counts them: left and top
    // inclusive, right and bottom exclusive); otherwise the last screen
    // tested. -1 only when there are no screens.
    [[nodiscard]] int currentScreenForMouseLocation(QPointF mouseBottomLeft) const;
    // The same test for a pointer position in global top-left coordinates.
    [[nodiscard]] int screenAtTopLeft(QPointF pointerTopLeft) const;

    bool operator==(const ScreenLayout&) const = default;

private:
    std::vector<ScreenInfo> m_screens;
};

// Between a view's y-up drawing coordinates and Qt's y-down widget
// coordinates, for a view `height` points high. Its own inverse.
[[nodiscard]] inline QPointF flipped(QPointF p, double height)
{
    return {p.x(), height - p.y()};
}
[[nodiscard]] inline QRectF flipped(const QRectF& r, double height)
{
    return {r.x(), height - r.y() - r.height(), r.width(), r.height()};
}

// The mouse-in-rect test of an unflipped view: x in [minX, maxX), y in (minY, maxY].
[[nodiscard]] bool mouseInRect(QPointF p, const QRectF& r);

} // namespace core
