// SPDX-License-Identifier: GPL-3.0-or-later
#include "annotation/ui/GKCropBorderView.h"

#include "colour/logic/Qorvani.h"
#include "core/Geometry.h"
#include "core/PixelGrid.h"

#include <QMouseEvent>
#include <QPainter>

#include <cmath>

namespace annotation {

namespace {

// A band of `width` just inside `box`, as four filled strips.
void fillBand(QPainter& painter, const QRectF& box, double width, const QColor& color)
{
    if (box.width() <= 0.0 || box.height() <= 0.0)
        return;
    const double w = std::min(width, std::min(box.width(), box.height()) / 2.0);
    painter.fillRect(QRectF(box.left(), box.top(), box.width(), w), color);
    painter.fillRect(QRectF(box.left(), box.bottom() - w, box.width(), w), color);
    painter.fillRect(QRectF(box.left(), box.top() + w, w, box.height() - 2.0 * w), color);
    painter.fillRect(QRectF(box.right() - w, box.top() + w, w, box.height() - 2.0 * w), color);
}

} // namespace

GKCropBorderView::GKCropBorderView(QWidget* parent)
    : QWidget(parent)
    , m_borderColor(QColor::fromRgbF(0.0f, 0.5098039215686274f, 0.8352941176470589f, 0.85f))
{
    setObjectName(QStringLiteral("GKCropBorderView"));
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_NoSystemBackground);
    setMouseTracking(true);
    updateTrackingAreas();
}

QColor GKCropBorderView::outlineColor()
{
    return colour::qorvani::qorvaniBrandingColor().toQColor();
}

Qt::CursorShape GKCropBorderView::cursorShapeOf(CropCursor cursor)
{
    switch (cursor) {
    case CropCursor::OpenHand:
        return Qt::OpenHandCursor;
    case CropCursor::ClosedHand:
        return Qt::ClosedHandCursor;
    case CropCursor::ToolCrosshair:
        return Qt::CrossCursor;
    case CropCursor::ResizeDiagonalDown:
        return Qt::SizeFDiagCursor;
    case CropCursor::ResizeDiagonalUp:
        return Qt::SizeBDiagCursor;
    case CropCursor::ResizeVertical:
        return Qt::SizeVerCursor;
    case CropCursor::ResizeHorizontal:
        return Qt::SizeHorCursor;
    case CropCursor::Move:
        return Qt::SizeAllCursor;
    case CropCursor::Arrow:
        break;
    }
    return Qt::ArrowCursor;
}

void GKCropBorderView::setFrameInOverlay(const QRectF& frame)
{
    m_frame = frame;
    const double parentHeight = parentWidget() != nullptr ? parentWidget()->height() : 0.0;
    const QRectF topLeft = core::flipped(frame, parentHeight);
    setGeometry(QRect(qRound(topLeft.x()), qRound(topLeft.y()), qRound(topLeft.width()),
                      qRound(topLeft.height())));
    // A hidden widget gets its resize event only when shown; the zones
    // must follow the frame at once.
    updateTrackingAreas();
    update();
}

void GKCropBorderView::setContextProvider(std::function<CropBorderContext()> provider)
{
    m_contextProvider = std::move(provider);
    updateTrackingAreas();
}

void GKCropBorderView::setVeilPainter(std::function<void(QPainter&, QSizeF)> painter)
{
    m_veilPainter = std::move(painter);
    update();
}

void GKCropBorderView::setOnlyClipCurrentWindow(bool only)
{
    m_tracker.setOnlyClipCurrentWindow(only);
    update();
}

bool GKCropBorderView::onlyClipCurrentWindow() const
{
    return m_tracker.onlyClipCurrentWindow();
}

void GKCropBorderView::setHideHandleRect(bool hide)
{
    m_tracker.setHideHandleRect(hide);
    updateTrackingAreas();
    update();
}

bool GKCropBorderView::hideHandleRect() const
{
    return m_tracker.hideHandleRect();
}

void GKCropBorderView::setToolCursor(const QCursor& cursor)
{
    m_toolCursor = cursor;
    if (m_role == overlay::PointerRole::ToolCrosshair)
        setCursor(m_toolCursor);
}

void GKCropBorderView::setBorderColor(const QColor& color)
{
    m_borderColor = color;
    update();
}

bool GKCropBorderView::isCanMove() const
{
    return m_tracker.isCanMove();
}

bool GKCropBorderView::isInResizeRect() const
{
    return m_tracker.isInResizeRect();
}

bool GKCropBorderView::isInContentViewRect() const
{
    return m_tracker.isInContentViewRect();
}

int GKCropBorderView::whichInResizeRect() const
{
    return m_tracker.whichInResizeRect();
}

int GKCropBorderView::numberOfReSize() const
{
    return m_tracker.numberOfReSize();
}

CropBorderContext GKCropBorderView::context() const
{
    CropBorderContext ctx = m_contextProvider ? m_contextProvider() : CropBorderContext{};
    // The stroke test works in overlay coordinates; the tracker asks in the
    // border's own.
    if (ctx.strokeUnderPointer) {
        ctx.strokeUnderPointer = [inner = std::move(ctx.strokeUnderPointer),
                                  origin = m_frame.topLeft()](QPointF p) {
            return inner(p + origin);
        };
    }
    if (ctx.pointerOnMarkup) {
        ctx.pointerOnMarkup = [inner = std::move(ctx.pointerOnMarkup),
                               origin = m_frame.topLeft()](QPointF p) { return inner(p + origin); };
    }
    return ctx;
}

void GKCropBorderView::updateTrackingAreas()
{
    m_tracker.updateTrackingAreas(QSizeF(width(), height()), context());
}

QPointF GKCropBorderView::toBorder(QPointF widgetPoint) const
{
    return core::flipped(widgetPoint, height());
}

void GKCropBorderView::mouseMovedInOverlay(QPointF overlayLocal)
{
    apply(m_tracker.pointerMoved(overlayLocal - m_frame.topLeft(), context()));
}

void GKCropBorderView::mouseDown(int clickCount)
{
    apply(m_tracker.mouseDown(clickCount));
}

void GKCropBorderView::mouseDragged()
{
    apply(m_tracker.mouseDragged(context()));
}

void GKCropBorderView::mouseUp(int clickCount)
{
    apply(m_tracker.mouseUp(clickCount, context()));
}

void GKCropBorderView::mouseMoveEvent(QMouseEvent* event)
{
    apply(m_tracker.pointerMoved(toBorder(event->position()), context()));
    event->ignore();
}

void GKCropBorderView::leaveEvent(QEvent* event)
{
    const QPointF outside = toBorder(mapFromGlobal(QCursor::pos()).toPointF());
    apply(m_tracker.pointerLeft(outside, context()));
    QWidget::leaveEvent(event);
}

void GKCropBorderView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    updateTrackingAreas();
}

void GKCropBorderView::apply(const CropBorderReaction& reaction)
{
    if (reaction.cursor) {
        const Qt::CursorShape shape = cursorShapeOf(*reaction.cursor);
        m_role = pointerRoleOf(*reaction.cursor);
        const QCursor shown =
            *reaction.cursor == CropCursor::ToolCrosshair ? m_toolCursor : QCursor(shape);
        setCursor(shown);
        Q_EMIT cursorChanged(m_role, shape, shown);
    }
    if (reaction.mouseInButtonOfRecordScreen)
        Q_EMIT mouseInButtonOfRecordScreenChanged(*reaction.mouseInButtonOfRecordScreen);
    if (reaction.mouseIsOnActivedStroke)
        Q_EMIT mouseIsOnActivedStrokeChanged(*reaction.mouseIsOnActivedStroke);
    if (reaction.cursorRectsEnabled)
        Q_EMIT cursorRectsEnabledChanged(*reaction.cursorRectsEnabled);
    if (reaction.redraw)
        update();
}

void GKCropBorderView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (context().scrollScreenShot) {
        paintScrollFrame(painter);
        return;
    }
    if (m_veilPainter) {
        painter.save();
        m_veilPainter(painter, QSizeF(width(), height()));
        painter.restore();
    }
    paintOutlineAndHandles(painter);
}

void GKCropBorderView::paintScrollFrame(QPainter& painter) const
{
    const QRectF frame(5.0, 5.0, width() - 10.0, height() - 10.0);
    painter.setRenderHint(QPainter::Antialiasing, false);
    fillBand(painter, core::snappedToPixels(frame, core::devicePixelRatioOf(painter)), 1.0,
             m_borderColor);
}

void GKCropBorderView::paintOutlineAndHandles(QPainter& painter) const
{
    const double ratio = core::devicePixelRatioOf(painter);
    const QSizeF size(width(), height());
    const QColor outline = outlineColor();
    painter.setRenderHint(QPainter::Antialiasing, false);
    const QRectF box = core::flipped(overlay::CropBorderZones::outlineBox(size), size.height());
    fillBand(painter, core::snappedToPixels(box, ratio), overlay::CropBorderZones::kOutlineWidth,
             outline);

    if (m_tracker.hideHandleRect() || m_tracker.onlyClipCurrentWindow())
        return;
    // A white ring keeps the handles visible on any picture.
    const double ring = 1.0;
    for (const QRectF& square : overlay::CropBorderZones::handleSquares(size)) {
        const QRectF r = core::snappedToPixels(core::flipped(square, size.height()), ratio);
        painter.fillRect(r, Qt::white);
        painter.fillRect(r.adjusted(ring, ring, -ring, -ring), outline);
    }
}

} // namespace annotation
