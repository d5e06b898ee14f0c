// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "annotation/logic/CropBorderTracker.h"
#include "overlay/logic/PointerRole.h"

#include <QColor>
#include <QCursor>
#include <QRectF>
#include <QWidget>

#include <functional>

namespace annotation {

// The border that lies over the selection inside a capture overlay. Its
// frame is the selection grown by 6 points, so the zones where a press
// resizes the selection sit on both sides of its edge. It draws the outline
// and the eight handles, marks out the move and resize zones, and chooses
// the cursor that tells the capture what a press will do.
//
// The overlay's event filter takes the window's pointer events, so the
// overlay hands them on: mouseMovedInOverlay() on every move while a
// selection stands, mouseDown() / mouseDragged() / mouseUp() for presses
// on the selection. Qt's own move and leave events drive the same logic
// when the widget gets them directly.
class GKCropBorderView : public QWidget
{
    Q_OBJECT
public:
    // Its cursor goes with it; the overlay sets the arrow role when it
    // removes the border.
    explicit GKCropBorderView(QWidget* parent = nullptr);

    // The border's frame in the parent's overlay-local coordinates (y up,
    // points); the parent's height turns it into a widget geometry.
    void setFrameInOverlay(const QRectF& frame);
    [[nodiscard]] QRectF frameInOverlay() const { return m_frame; }

    // The capture's flags, read at every event and paint.
    void setContextProvider(std::function<CropBorderContext()> provider);
    // Paints the highlight veil under the outline; empty for none.
    void setVeilPainter(std::function<void(QPainter&, QSizeF)> painter);

    // A window selection can be neither moved nor resized and shows no handles.
    void setOnlyClipCurrentWindow(bool only);
    [[nodiscard]] bool onlyClipCurrentWindow() const;
    // No resize zones and no handles (while recording, and in some states of
    // the selection).
    void setHideHandleRect(bool hide);
    [[nodiscard]] bool hideHandleRect() const;
    // The colour of the scrolling capture's frame.
    void setBorderColor(const QColor& color);
    [[nodiscard]] QColor borderColor() const { return m_borderColor; }
    // What the drawing tool's cross hair looks like: the tool's own cursor.
    void setToolCursor(const QCursor& cursor);

    [[nodiscard]] bool isCanMove() const;
    [[nodiscard]] bool isInResizeRect() const;
    [[nodiscard]] bool isInContentViewRect() const;
    [[nodiscard]] int whichInResizeRect() const;
    [[nodiscard]] int numberOfReSize() const;
    [[nodiscard]] overlay::PointerRole pointerRole() const { return m_role; }
    [[nodiscard]] const CropBorderTracker& tracker() const { return m_tracker; }

    void updateTrackingAreas();

    // Pointer input from the overlay, in overlay-local points (y up).
    void mouseMovedInOverlay(QPointF overlayLocal);
    void mouseDown(int clickCount);
    void mouseDragged();
    void mouseUp(int clickCount);

    // The outline colour, shared with the overlay's own outline.
    [[nodiscard]] static QColor outlineColor();
    [[nodiscard]] static Qt::CursorShape cursorShapeOf(CropCursor cursor);

Q_SIGNALS:
    // The cursor changed; the overlay stores the role and shows `cursor`,
    // which is the standard `shape` except for the tool's own cross hair.
    void cursorChanged(overlay::PointerRole role, Qt::CursorShape shape, const QCursor& cursor);
    void mouseInButtonOfRecordScreenChanged(bool inside);
    void mouseIsOnActivedStrokeChanged(bool onActive);
    // The window's cursor rectangles go off at a press and on at a release.
    void cursorRectsEnabledChanged(bool enabled);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    [[nodiscard]] CropBorderContext context() const;
    [[nodiscard]] QPointF toBorder(QPointF widgetPoint) const;
    void apply(const CropBorderReaction& reaction);
    void paintScrollFrame(QPainter& painter) const;
    void paintOutlineAndHandles(QPainter& painter) const;

    CropBorderTracker m_tracker;
    std::function<CropBorderContext()> m_contextProvider;
    std::function<void(QPainter&, QSizeF)> m_veilPainter;
    QRectF m_frame;
    QColor m_borderColor;
    QCursor m_toolCursor{Qt::CrossCursor};
    overlay::PointerRole m_role = overlay::PointerRole::Arrow;
};

} // namespace annotation
