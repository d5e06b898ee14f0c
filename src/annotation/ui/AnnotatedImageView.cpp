// SPDX-License-Identifier: GPL-3.0-or-later
#include "annotation/ui/AnnotatedImageView.h"

#include "annotation/render/StrokePainter.h"
#include "core/Geometry.h"

#include <QPainter>

namespace annotation {

AnnotatedImageView::AnnotatedImageView(const StrokeState& state, QWidget* parent)
    : QWidget(parent)
    , m_state(state)
{
    setObjectName(QStringLiteral("AnnotatedImageView"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
}

void AnnotatedImageView::setFrameInOverlay(const QRectF& frame)
{
    m_frame = frame;
    if (parentWidget() != nullptr)
        setGeometry(core::flipped(frame, parentWidget()->height()).toRect());
    update();
}

void AnnotatedImageView::setCurrentFunction(std::function<std::optional<int>()> currentFunction)
{
    m_currentFunction = std::move(currentFunction);
}

void AnnotatedImageView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    // The pixels per point of what is painted on: the screen's, or those
    // of a picture the view is rendered into.
    const double scale = painter.deviceTransform().m11();
    // The widget's own corner, which may differ from the frame by rounding.
    const QPointF origin =
        parentWidget() != nullptr
            ? core::flipped(QRectF(geometry()), parentWidget()->height()).topLeft()
            : m_frame.topLeft();
    const QImage& settled = m_settled.picture(m_state, size(), scale, origin);
    if (!settled.isNull())
        painter.drawImage(QPointF(0, 0), settled);
    StrokePainter::yUp(painter, height());
    StrokePainter(painter, origin)
        .paintActive(m_state, m_currentFunction ? m_currentFunction() : std::nullopt);
}

void AnnotatedImageView::hideEvent(QHideEvent*)
{
    // A screen-sized picture is not kept between captures.
    m_settled.clear();
}

} // namespace annotation
