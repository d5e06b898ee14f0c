// SPDX-License-Identifier: GPL-3.0-or-later
#include "overlay/logic/CropBorderZones.h"

namespace overlay {

std::array<QRectF, 9> CropBorderZones::handleTrackRects(QSizeF size)
{
    const double w = size.width();
    const double h = size.height();
    const double W = w - 24;
    const double H = h - 24;
    return {{
        {13, 13, W, h - 26},
        {1, 1, 10, 10},
        {12, 1, W, 10},
        {w - 11, 1, 10, 10},
        {w - 10, 12, 10, H},
        {w - 11, h - 11, 10, 10},
        {12, h - 11, W, 10},
        {1, h - 11, 10, 10},
        {2, 12, 10, H},
    }};
}

QRectF CropBorderZones::contentTrackRect(QSizeF size)
{
    return {1.0, 1.0, size.width() - 2.0, size.height() - 2.0};
}

QRectF CropBorderZones::recordButtonRect(QSizeF size)
{
    return {size.width() / 2.0 - 160.0, 25.0, 320.0, 40.0};
}

QRectF CropBorderZones::outlineBox(QSizeF size)
{
    const double inset = kSelectionInset - kOutlineWidth;
    return {inset, inset, size.width() - 2.0 * inset, size.height() - 2.0 * inset};
}

std::array<QRectF, 8> CropBorderZones::handleSquares(QSizeF size)
{
    // Centred on the middle of the outline band.
    const double near = kSelectionInset - kOutlineWidth / 2.0;
    const double farX = size.width() - near;
    const double farY = size.height() - near;
    const double midX = size.width() / 2.0;
    const double midY = size.height() / 2.0;
    const std::array<QPointF, 8> centres{{
        {near, near},
        {midX, near},
        {farX, near},
        {farX, midY},
        {farX, farY},
        {midX, farY},
        {near, farY},
        {near, midY},
    }};
    std::array<QRectF, 8> squares;
    for (std::size_t i = 0; i < centres.size(); ++i) {
        squares[i] = QRectF(centres[i].x() - kHandleSide / 2.0, centres[i].y() - kHandleSide / 2.0,
                            kHandleSide, kHandleSide);
    }
    return squares;
}

std::vector<TrackingArea> CropBorderZones::trackingAreas(QSizeF size, bool hideHandleRect,
                                                         bool withRecordButton)
{
    std::vector<TrackingArea> areas;
    if (!hideHandleRect) {
        const std::array<QRectF, 9> zones = handleTrackRects(size);
        for (std::size_t i = 0; i < zones.size(); ++i)
            areas.push_back({static_cast<int>(i), zones[i]});
    }
    if (withRecordButton)
        areas.push_back({kRecordButtonArea, recordButtonRect(size)});
    return areas;
}

} // namespace overlay
