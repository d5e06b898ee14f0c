// SPDX-License-Identifier: GPL-3.0-or-later
#include "toolbar/ui/ColorAlphaBox.h"

#include <QPainter>
#include <QPainterPath>

namespace toolbar {

namespace {

constexpr int kWidth = 52;
constexpr int kHeight = 22;
constexpr qreal kAbovePointer = 16;

} // namespace

ColorAlphaBox::ColorAlphaBox(QWidget* overlay)
    : QWidget(overlay)
{
    setObjectName(QStringLiteral("boxOfColorAlpha"));
    setFixedSize(kWidth, kHeight);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
}

void ColorAlphaBox::openAt(QPointF pointer, const QString& percent)
{
    m_percent = percent;
    move(QPointF(pointer.x() - kWidth / 2.0, pointer.y() - kAbovePointer - kHeight).toPoint());
    raise();
    show();
    update();
}

void ColorAlphaBox::setPercent(const QString& percent)
{
    m_percent = percent;
    update();
}

void ColorAlphaBox::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath outline;
    outline.addRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
    painter.fillPath(outline, QColor(40, 40, 40, 230));
    painter.setPen(Qt::white);
    QFont font = painter.font();
    font.setPixelSize(13);
    painter.setFont(font);
    painter.drawText(rect(), Qt::AlignCenter, m_percent + u'%');
}

} // namespace toolbar
