// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>

#include <array>

namespace capture {

// The signs that turn a pointer's travel into a change of the border's
// origin and size, chosen by the handle held (the anchor).
struct ResizeMultiplyer
{
    int widhtMultiplyer = 0;
    int heightMultiplyer = 0;
    int xMultiplyer = 0;
    int yMultiplyer = 0;

    bool operator==(const ResizeMultiplyer&) const = default;
};

// The arithmetic of the simpler crop overlay: a border frame inside a view,
// moved by its body and resized by the nearest of its eight handle points,
// never smaller than 64 points and never outside the view. The capture
// overlay does not use it; it is kept for a plain crop dialog.
// Coordinates are the view's, y up; handle points are the border's own.
class ResizeableCropOverlay
{
public:
    static constexpr double MinimumSide = 64.0;
    static constexpr double ResizeMargin = 12.0; // the pointer stays this far inside the view

    // corpRectMode
    enum class CropRectMode
    {
        None = 0,
        Resize = 1,
        Move = 2,
    };
    // Where a press lands.
    enum class PressZone
    {
        Content, // over the content, not on a handle
        Border,  // on the border band
        Elsewhere,
    };

    ResizeableCropOverlay(QSizeF viewSize, const QRectF& borderFrame);

    void mouseDown(QPointF point, PressZone zone);
    // Resizes or moves by corpRectMode; nothing in mode None.
    void mouseDragged(QPointF point);

    [[nodiscard]] const QRectF& borderFrame() const { return m_borderFrame; }
    [[nodiscard]] CropRectMode corpRectMode() const { return m_corpRectMode; }
    [[nodiscard]] QPointF theAnchor() const { return m_theAnchor; }
    [[nodiscard]] const ResizeMultiplyer& resizeMultiplyer() const { return m_resizeMultiplyer; }
    [[nodiscard]] QPointF startPoint() const { return m_startPoint; }

    // The corners and edge middles of a border of `size`, clockwise from
    // (0, 0): up the left side first.
    [[nodiscard]] static std::array<QPointF, 8> handlePositions(QSizeF size);
    [[nodiscard]] static ResizeMultiplyer multiplyerFor(QPointF anchor, QSizeF size);
    // Below the minimum side, a dimension keeps its old origin and length.
    [[nodiscard]] static QRectF preventTooSmall(const QRectF& frame, const QRectF& previous);
    // The same, then pulled inside a view of `viewSize`: a negative origin
    // becomes 0 and shortens the side by as much, and a side that passes the
    // view's far edge is cut there.
    [[nodiscard]] static QRectF preventTooSmallOrTooBig(const QRectF& frame, const QRectF& previous,
                                                        QSizeF viewSize);
    // The tool bar centred under the border's middle, 10 points above its bottom.
    [[nodiscard]] static QPointF toolBarOrigin(const QRectF& borderFrame, QSizeF toolBarSize);
    // The size label's text, "W X H".
    [[nodiscard]] static QString indicatorText(QSizeF size);
    // Shown only when the border is wider than the text plus 10.
    [[nodiscard]] static bool indicatorShown(double borderWidth, double textWidth);

private:
    void resizeWithTouchPoint(QPointF point);
    void moveWithTouchPoint(QPointF point);

    QSizeF m_viewSize;
    QRectF m_borderFrame;
    CropRectMode m_corpRectMode = CropRectMode::None;
    QPointF m_theAnchor;
    QPointF m_startPoint;
    ResizeMultiplyer m_resizeMultiplyer;
};

} // namespace capture
