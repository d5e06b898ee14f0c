// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QRectF>
#include <QSizeF>

#include <array>
#include <vector>

namespace overlay {

// A rectangle of the crop border that reports the pointer entering and
// leaving it, by number: 0 the selection's body, 1 to 8 the handle zones
// counter-clockwise from the bottom-left corner, 100 the start button of a
// recording's tool bar.
struct TrackingArea
{
    int number = 0;
    QRectF rect; // the border's own coordinates, y up

    bool operator==(const TrackingArea&) const = default;
};

// The geometry of the crop border, whose frame is the selection grown by 6
// points on each side. All rectangles are in the border's own coordinates
// with y up; the selection itself is (6, 6, width - 12, height - 12).
class CropBorderZones
{
public:
    static constexpr int kContentArea = 0;
    static constexpr int kRecordButtonArea = 100;
    static constexpr double kSelectionInset = 6.0;
    static constexpr double kOutlineWidth = 2.0;
    static constexpr double kHandleSide = 8.0;

    // Index 0 is the body, 1 to 8 the handle zones: a band about ten points
    // wide just inside the border.
    [[nodiscard]] static std::array<QRectF, 9> handleTrackRects(QSizeF size);
    // The body while a drag runs, where the closed hand shows.
    [[nodiscard]] static QRectF contentTrackRect(QSizeF size);
    // The start button of the recording tool bar, near the bottom centre.
    [[nodiscard]] static QRectF recordButtonRect(QSizeF size);

    // The outline: a band 2 points wide just outside the selection.
    [[nodiscard]] static QRectF outlineBox(QSizeF size);
    // The drawn handles, index 0 for handle 1: squares centred on the
    // outline's middle line at the corners and edge middles.
    [[nodiscard]] static std::array<QRectF, 8> handleSquares(QSizeF size);

    // The tracking areas for a border of `size`: the zones unless handles
    // are hidden, and the record button when its tool bar waits.
    [[nodiscard]] static std::vector<TrackingArea> trackingAreas(QSizeF size, bool hideHandleRect,
                                                                 bool withRecordButton);
};

} // namespace overlay
