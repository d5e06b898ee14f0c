// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "annotation/logic/StrokeState.h"
#include "annotation/render/SettledStrokeLayer.h"

#include <QRectF>
#include <QWidget>

#include <functional>
#include <optional>

namespace annotation {

// The stroke layer over the selection, the topmost of the three mark-up
// layers: shapes, lines, arrows, pencil paths and the active stroke's
// handles. It takes no pointer events itself: the overlay hands them to
// the mark-up, which changes the strokes and repaints this view. It paints
// at the screen's pixel ratio, so marks stay sharp on a scaled screen. The
// settled strokes are kept as a picture between paints, so that a drag
// repaints only the active stroke over them.
class AnnotatedImageView final : public QWidget
{
    Q_OBJECT
public:
    explicit AnnotatedImageView(const StrokeState& state, QWidget* parent = nullptr);

    // The frame in the parent's overlay-local points, y up: the selection.
    void setFrameInOverlay(const QRectF& frame);
    [[nodiscard]] QRectF frameInOverlay() const { return m_frame; }
    // The tool of the stroke being drawn, asked at each paint.
    void setCurrentFunction(std::function<std::optional<int>()> currentFunction);

protected:
    void paintEvent(QPaintEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    const StrokeState& m_state;
    QRectF m_frame;
    std::function<std::optional<int>()> m_currentFunction;
    SettledStrokeLayer m_settled;
};

} // namespace annotation
