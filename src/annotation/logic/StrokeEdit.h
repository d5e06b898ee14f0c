// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "annotation/logic/StrokeState.h"

#include <QColor>
#include <QPointF>
#include <QRectF>

// The arithmetic of moving and resizing the active stroke, and of giving it
// new settings. A drag only records the pointer ("moveToX", "moveToY")
// beside the press ("moveX", "moveY"); the painting adds the offset, and
// the stored geometry changes at the commit, which appends a snapshot, so
// an undo uncovers the place before. `R` is the selection grown by its
// 6-point band (currentRectOfAnnotatedImageView): a mosaic stays 5 points
// inside it. Points are overlay-local, y up.
namespace annotation::edit {

// A mosaic keeps this far inside R.
inline constexpr double kMosaicMargin = 5.0;

// The drag's offset, computed in floats; none before the first drag.
[[nodiscard]] QPointF dragOffset(const Stroke& s);

// The active stroke's normalised box under the drag of handle `which`: a
// drag past the opposite side flips the box. Handles 1 to 8 go round
// counter-clockwise from the bottom left; a line's 1 is its tail and 2 its
// tip. A mosaic is clamped into R less 5 points, drag or not.
[[nodiscard]] QRectF getNewRectOfResizeAllStroke(const Stroke& s, int which, const QRectF& R);

// A drag of a move reaches `p`. A mosaic's or a highlight's "Rect" follows
// at once (a mosaic clamped into R); other strokes are painted with the
// offset.
void dragMove(Stroke& s, QPointF p, const QRectF& R);
// A drag of a resize by handle `which` reaches `p`.
void dragResize(Stroke& s, QPointF p, int which, const QRectF& R);

// The geometry of a finished move to `p` (the release), folded into the
// stroke: every type's corners, and a pencil's points. The caller commits.
void foldMove(Stroke& s, QPointF p, const QRectF& R);
// The geometry of a finished resize, from the last drag: a line's held end
// moves; a box is stored normalised again.
void foldResize(Stroke& s, int which, const QRectF& R);

// The active stroke as painted during its gesture: moved by the offset,
// or with the held handle dragged. A settled stroke shows as it is.
[[nodiscard]] Stroke shownWhileEditing(const Stroke& s, StrokeGesture gesture, int which);

// The tool bar's colour or size reaches the active stroke: when either
// differs, the stroke takes both and a copy is appended. The undone tail
// stays: an edit made after an undo lands behind it, and as the undo count
// stays too, it uncovers the first undone snapshot and hides itself until
// a redo. False when nothing changed or no stroke is active.
bool refreshBoxSizeAndDrawRect(StrokeState& state, const QColor& color, int size);

// A shape option of the tool bar changed (the preference `key` is now
// `on`): an active stroke of the type the option belongs to takes it and a
// copy is appended, also when it already had it. False when no stroke is
// active or the option is another type's.
bool followOption(StrokeState& state, QStringView key, bool on);

} // namespace annotation::edit
