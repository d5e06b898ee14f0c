// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "annotation/logic/StrokeState.h"

#include <QImage>
#include <QPointF>
#include <QSizeF>

#include <vector>

namespace annotation {

// The history's strokes, all but the active one, as one picture that is
// painted again only when they change: a commit, an undo or a redo, a
// delete, or another stroke becoming active. A drag then repaints only the
// active stroke over it, however long the history.
class SettledStrokeLayer
{
public:
    // The picture for a layer of `size` points at `scale` pixels per point
    // (its device pixel ratio), whose bottom-left corner lies at `origin`
    // (overlay-local, y up); transparent where there is no stroke.
    [[nodiscard]] const QImage& picture(const StrokeState& state, QSizeF size, double scale,
                                        QPointF origin);

    // Lets the picture go, until it is asked for again.
    void clear();

private:
    QImage m_picture;
    std::vector<Stroke> m_strokes; // what the picture shows, newest first
    QPointF m_origin;
};

} // namespace annotation
