// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>

#include <array>
#include <optional>
#include <vector>

namespace capture {

// Handle numbers of a selection (and of a stroke): counter-clockwise from
// the bottom-left corner. 0 means no handle.
namespace handles {
inline constexpr int BottomLeft = 1;
inline constexpr int Bottom = 2;
inline constexpr int BottomRight = 3;
inline constexpr int Right = 4;
inline constexpr int TopRight = 5;
inline constexpr int Top = 6;
inline constexpr int TopLeft = 7;
inline constexpr int Left = 8;
} // namespace handles

// What one arrow key does to the border frame of the selection while the
// pointer rests on a handle.
struct KeyboardStep
{
    QRectF borderFrame; // the new frame of the crop border
    QPointF pointer;    // where the pointer goes, overlay-local

    bool operator==(const KeyboardStep&) const = default;
};

// The arithmetic of a selection in overlay-local coordinates (origin at the
// bottom-left of one screen, y up, points). Pure functions; the state that
// ties them together is in ClipSelection and ClipStateMachine.
class SelectionGeometry
{
public:
    // The crop border stands this far outside the selection, and the
    // outline box this far.
    static constexpr double BorderBand = 6.0;
    static constexpr double OutlineBand = 2.0;
    // The dim surround is a box whose thick border is the veil; growing the
    // selection by this much puts the border's inner edge just outside it.
    static constexpr double DimGrowth = 10000.0;

    // Each of x, y, width and height cut to a whole number towards zero.
    [[nodiscard]] static QRectF truncated(const QRectF& r);
    [[nodiscard]] static QPointF truncated(QPointF p);
    // Grown by d on every side (shrunk for negative d).
    [[nodiscard]] static QRectF grown(const QRectF& r, double d);
    // The rectangle spanned by two corners: the smaller coordinates as
    // origin, the absolute differences as size.
    [[nodiscard]] static QRectF spanned(QPointF a, QPointF b);
    // Half-open containment, x in [minX, maxX) and y in [minY, maxY), as
    // every "is the point in this frame" test of the overlay counts it.
    [[nodiscard]] static bool pointInRect(QPointF p, const QRectF& r);
    // Whether `inner` lies wholly in `outer`; an empty `inner` never does.
    [[nodiscard]] static bool containsRect(const QRectF& outer, const QRectF& inner);

    // A move of the selection by the pointer's travel since `startPoint`,
    // kept inside a screen of `screenSize` without changing the size.
    struct Move
    {
        QRectF contentRect;
        QPointF startPoint; // the point, whole numbers: the next move starts here
    };
    [[nodiscard]] static Move moved(const QRectF& contentRect, QPointF point, QPointF startPoint,
                                    QSizeF screenSize);

    // The selection while handle `handle` is dragged to `point`, from the
    // selection `before` at the start of the resize. The opposite side stays;
    // crossing it flips the rectangle. No minimum size and no clamp: a zero
    // width is possible and cancels the capture at the release. Any other
    // handle number gives the empty rectangle at the origin.
    [[nodiscard]] static QRectF resized(const QRectF& before, QPointF point, int handle);

    // One arrow key (a Qt key) on handle `handle` with the border frame
    // `borderFrame` and the pointer at `pointer`: the border grows or shrinks
    // by one point at that handle's side, and the pointer goes along. None
    // for a key along an edge handle (Left on the bottom edge, Up on the
    // right edge), for other keys and for handles outside 1 to 8. There is
    // no clamp to the screen, as with the mouse.
    [[nodiscard]] static std::optional<KeyboardStep>
    arrowKeyStep(const QRectF& borderFrame, int key, int handle, QPointF pointer);

    // The squares drawn on the handles of `rect`, index = handle number.
    // Index 0 is an empty rectangle at (x + 6, y + 6). With `withBars` (the
    // mosaic and highlight strokes) eight bars between the squares follow,
    // index 9 to 17; 12 and 13 are the same rectangle.
    [[nodiscard]] static std::vector<QRectF> handleSquareRects(const QRectF& rect, bool withBars);

    // The crop border's tracking zones for a border of `size`, in the
    // border's own y-up coordinates: index 0 the content, 1 to 8 the handle
    // zones, a band about ten points wide just inside the border.
    [[nodiscard]] static std::array<QRectF, 9> handleTrackRects(QSizeF size);
    // The zone under `p` (border coordinates): a handle 1 to 8, 0 for the
    // content, -1 for none. Handles win over the content.
    [[nodiscard]] static int handleZoneAt(QSizeF size, QPointF p);

    // "{{x, y}, {w, h}}", the stored form of a rectangle.
    [[nodiscard]] static QString stringFromRect(const QRectF& r);
};

} // namespace capture
