// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Geometry.h"
#include "core/ImageView.h"

#include <QRectF>

#include <optional>

namespace capture {

// Where the lit part of a dock picture lies, in pixels of the picture.
// Every edge starts at -1 and keeps it when nothing decides it.
struct DockEdges
{
    enum class Side
    {
        None, // nothing lit where a dock could be: a hidden dock
        Bottom,
        Left,
        Right,
    };

    Side side = Side::None;
    int left = -1;
    int right = -1;
    int top = -1;
    int bottom = -1;

    bool operator==(const DockEdges&) const = default;
};

// A dock's window covers a whole screen, so its bounds say nothing about
// the visible dock; these functions find it from the picture's lit pixels
// (gray value above 0).
class DockMeasurement
{
public:
    // Scans the picture from the top row down and each row from the left.
    // The row stride is worked out from the data length, not taken from the
    // view, as the window server may pad rows. Empty when the buffer cannot
    // hold width x height pixels; never reads outside it.
    //  - bottom dock: top is the first lit row below the middle; left and
    //    right bound the first lit run of the last lit row (right is the
    //    column after the run); bottom is the picture's height;
    //  - left dock (column 0 lit in the upper half): left 0, top that row,
    //    right the column after the first lit run of each later lit row,
    //    bottom the index of the last lit row;
    //  - right dock (last column lit in the upper half): right the width,
    //    top that row, left the first lit column of each later lit row,
    //    bottom the index of the last lit row.
    // Where rows disagree, the last lit row decides, so a rounded corner
    // counts with its narrow last row.
    [[nodiscard]] static std::optional<DockEdges> scan(const core::ImageView& picture);

    // The dock's bounds (global top-left points) from edges in pixels of the
    // screen the dock's window sits on: the screen whose bottom-left frame
    // starts at the bounds' x and bottom. Empty when there is no such screen
    // or its scale is below 1, so the caller keeps the bounds it had.
    [[nodiscard]] static std::optional<QRectF>
    boundsFromEdges(const DockEdges& edges, const QRectF& bounds, const core::ScreenLayout& layout);

    // Both steps; the bounds are returned unchanged when either step fails.
    [[nodiscard]] static QRectF measure(const core::ImageView& picture, const QRectF& bounds,
                                        const core::ScreenLayout& layout);

    // The row length in bytes implied by the data length, or 0 when the data
    // is shorter than width x height pixels.
    [[nodiscard]] static std::size_t strideFromLength(const core::ImageView& picture);
};

} // namespace capture
