// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QPointF>
#include <QRectF>
#include <QString>

#include <optional>
#include <vector>

namespace annotation {

// The tools' numbers, which are also the "type" of the strokes they make.
namespace stroketype {
inline constexpr int Square = 0;
inline constexpr int Ellipse = 1;
inline constexpr int Line = 2;
inline constexpr int Arrow = 3;
inline constexpr int PencilPen = 4;
inline constexpr int Mosaic = 5;
inline constexpr int Text = 6;
inline constexpr int Note = 7;
inline constexpr int Highlight = 8;

// The types the stroke layer paints by itself: shapes, lines, arrows and
// pencil paths. Mosaic, highlight, text and notes need layers and views of
// their own.
[[nodiscard]] constexpr bool isShapeType(int type)
{
    return type >= Square && type <= PencilPen;
}
} // namespace stroketype

// One snapshot of a mark on a capture. The fields carry the names of the
// stroke dictionary that the rest of the mark-up reads and writes; a key
// the dictionary may lack is an optional here. All coordinates are
// overlay-local points with y up.
struct Stroke
{
    int type = 0;
    int list = 0; // 1-based serial within the type
    QColor color;
    // Missing means opaque; the wheel may set it later.
    std::optional<double> colorAlpha;
    double size = 0; // line width for shapes, lines and the pencil
    // The press point (all but the pencil) and the other corner or the tip
    // (missing until the first drag).
    std::optional<double> X1, Y1, X2, Y2;
    // The press and the pointer of a move or resize.
    std::optional<double> moveX, moveY, moveToX, moveToY;
    std::vector<QPointF> allPoints; // the pencil's path
    std::optional<QRectF> Rect;     // a live mosaic or highlight patch
    QString normalTypeOfArrow;      // "1" the stroked head, "0" the tapered dart
    bool enableRoundOfSquare = false;
    bool filledOfSquare = false;
    bool filledOfEllipse = false;
    std::optional<int> selectedMosaic;    // 1 block mosaic, 0 blur
    std::optional<int> squareOfHighlight; // 1 rectangle, 0 ellipse

    // Every snapshot of one stroke shares it; types are single digits, so
    // type and serial side by side are unique.
    [[nodiscard]] QString identity() const { return QString::number(type) + QString::number(list); }

    bool operator==(const Stroke&) const = default;
};

// The identity that no stroke has: what the seen-list is seeded with when
// no stroke is active.
[[nodiscard]] inline QString noStrokeIdentity()
{
    return QStringLiteral("(null)(null)");
}

} // namespace annotation
