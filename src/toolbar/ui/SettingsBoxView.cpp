// SPDX-License-Identifier: GPL-3.0-or-later
#include "toolbar/ui/SettingsBoxView.h"

#include "toolbar/logic/ButtonBox.h"
#include "toolbar/logic/SettingsBox.h"

#include <QPainter>
#include <QPainterPath>

namespace toolbar {

namespace {

// The dots' centres and diameters, small to large, and the swatches' grid.
constexpr std::array<QPointF, 3> kDotCentres{QPointF(12, 16), QPointF(30, 16), QPointF(51, 16)};
constexpr std::array<qreal, 3> kDotDiameters{6, 10, 14};
constexpr qreal kSwatch = 14;
constexpr qreal kSwatchLeft = 74;
constexpr qreal kSwatchPitch = 19;
const QColor kEdge(0, 0, 0, 90);

} // namespace

SettingsBoxView::SettingsBoxView(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("colorBox"));
    setFixedSize(QSizeF(kColorBoxWidth, kColorBoxHeight).toSize());
    setCursor(Qt::ArrowCursor);
}

void SettingsBoxView::showTool(const QString& toolName, int size, const QColor& color,
                               const QColor& userColor)
{
    m_tool = toolName;
    m_size = size;
    m_color = color.isValid() ? color : QColor(Qt::red);
    m_userColor = userColor;
    update();
}

void SettingsBoxView::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(kEdge, 0.2));
    p.setBrush(Qt::white);
    p.drawRect(QRectF(rect()).adjusted(0.1, 0.1, -0.1, -0.1));

    p.setPen(Qt::NoPen);
    const int marked = markedDot(m_tool, m_size);
    for (std::size_t i = 0; i < 3; ++i) {
        // The text tools keep only the largest dot, as a sample of their colour.
        if (!showsSizeDots(m_tool) && i < 2)
            continue;
        QColor fill = unmarkedDotColor();
        if (!showsSizeDots(m_tool))
            fill = m_color;
        else if (static_cast<int>(i) == marked)
            fill = markedDotColor(m_tool, m_color);
        p.setBrush(fill);
        const qreal r = kDotDiameters[i] / 2;
        p.drawEllipse(kDotCentres[i], r, r);
    }
    const QString size = displaySize(m_tool, m_size);
    if (!size.isEmpty()) {
        QFont font = p.font();
        font.setPixelSize(10);
        p.setFont(font);
        p.setPen(QColor(60, 60, 60));
        p.drawText(QRectF(2, 28, 66, 14), Qt::AlignCenter, size + displaySizeUnit(m_tool));
    }

    // Two rows of three: the five fixed colours, then the user's own, with
    // a plus over it while there is none.
    p.setPen(QPen(kEdge, 0.5));
    for (std::size_t i = 0; i < 6; ++i) {
        const QRectF swatch(kSwatchLeft + static_cast<qreal>(i % 3) * kSwatchPitch, i < 3 ? 5 : 25,
                            kSwatch, kSwatch);
        const bool user = i == 5;
        p.setBrush(user ? (m_userColor.isValid() ? m_userColor : QColor(Qt::white))
                        : swatchColors()[i]);
        p.drawRoundedRect(swatch, 2, 2);
        if (user && !m_userColor.isValid()) {
            p.setPen(QPen(QColor(90, 90, 90), 1.2));
            p.drawLine(QPointF(swatch.center().x(), swatch.top() + 3),
                       QPointF(swatch.center().x(), swatch.bottom() - 3));
            p.drawLine(QPointF(swatch.left() + 3, swatch.center().y()),
                       QPointF(swatch.right() - 3, swatch.center().y()));
        }
    }
}

SanjiaoView::SanjiaoView(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("sanjiao"));
    setFixedSize(kWidth, kHeight);
    setAttribute(Qt::WA_TranslucentBackground);
}

void SanjiaoView::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    QPainterPath path;
    path.moveTo(0, kHeight);
    path.lineTo(kWidth / 2.0, 0);
    path.lineTo(kWidth, kHeight);
    path.closeSubpath();
    p.setPen(QPen(kEdge, 0.2));
    p.setBrush(Qt::white);
    p.drawPath(path);
}

} // namespace toolbar
