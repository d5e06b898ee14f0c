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
    StrokePainter::yUp(painter, height());
    // The widget's own corner, which may differ from the frame by rounding.
    const QPointF origin =
        parentWidget() != nullptr
            ? core::flipped(QRectF(geometry()), parentWidget()->height()).topLeft()
            : m_frame.topLeft();
    StrokePainter(painter, origin)
        .paintLayer(m_state, m_currentFunction ? m_currentFunction() : std::nullopt);
}

} // namespace annotation
