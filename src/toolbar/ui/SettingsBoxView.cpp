// SPDX-License-Identifier: GPL-3.0-or-later
#include "toolbar/ui/SettingsBoxView.h"

#include "settings/Keys.h"
#include "toolbar/logic/ButtonBox.h"
#include "toolbar/logic/SettingsBox.h"

#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QToolButton>

namespace toolbar {

namespace {

// The dots' diameters, small to large; each sits in the middle of its area.
constexpr std::array<qreal, 3> kDotDiameters{6, 10, 14};
const QColor kEdge(0, 0, 0, 90);

QPointF dotCentre(int dot)
{
    const QRectF area = dotArea(dot);
    return {area.center().x(), 16};
}

} // namespace

SettingsBoxView::SettingsBoxView(QWidget* parent)
    : QWidget(parent)
    , m_popupSize(new QToolButton(this))
{
    setObjectName(QStringLiteral("colorBox"));
    setFixedSize(QSizeF(kColorBoxWidth, kColorBoxHeight).toSize());
    setCursor(Qt::ArrowCursor);

    m_popupSize->setObjectName(QStringLiteral("popupSize"));
    m_popupSize->setPopupMode(QToolButton::InstantPopup);
    m_popupSize->setFocusPolicy(Qt::NoFocus);
    m_popupSize->setGeometry(sizeMenuFrame().toRect());
    auto* menu = new QMenu(m_popupSize);
    for (const QString& title : textSizeTitles()) {
        connect(menu->addAction(title), &QAction::triggered, this, [this, title] {
            m_popupSize->setText(title);
            Q_EMIT textSizeChosen(title);
        });
    }
    m_popupSize->setMenu(menu);
    m_popupSize->hide();
}

void SettingsBoxView::showTool(const QString& toolName, const BoxSettings& settings)
{
    m_tool = toolName;
    m_settings = settings;
    if (!m_settings.color.isValid())
        m_settings.color = Qt::red;
    m_popupSize->setVisible(!showsSizeDots(m_tool));
    m_popupSize->setText(settings.sizeTitle);
    update();
}

void SettingsBoxView::mousePressEvent(QMouseEvent* event)
{
    const QPointF p = event->position();
    const int swatch = swatchUnder(p);
    if (event->button() == Qt::RightButton) {
        if (swatch == 6)
            Q_EMIT userSwatchRightClicked();
        return;
    }
    if (event->button() != Qt::LeftButton)
        return;
    if (swatch > 0) {
        Q_EMIT swatchClicked(swatch);
        return;
    }
    if (const int option = optionUnder(m_tool, p); option >= 0) {
        Q_EMIT optionClicked(option);
        return;
    }
    if (const int dot = dotUnder(m_tool, p); dot >= 0)
        Q_EMIT sizeDotClicked(dot);
}

void SettingsBoxView::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(kEdge, 0.2));
    p.setBrush(Qt::white);
    p.drawRect(QRectF(rect()).adjusted(0.1, 0.1, -0.1, -0.1));

    p.setPen(Qt::NoPen);
    const int marked = markedDot(m_tool, m_settings.size);
    for (int i = 0; i < 3; ++i) {
        // The text tools keep only the largest dot, as a sample of their colour.
        if (!showsSizeDots(m_tool) && i < 2)
            continue;
        QColor fill = unmarkedDotColor();
        if (!showsSizeDots(m_tool))
            fill = m_settings.color;
        else if (i == marked)
            fill = markedDotColor(m_tool, m_settings.color);
        p.setBrush(fill);
        const qreal r = kDotDiameters[static_cast<std::size_t>(i)] / 2;
        p.drawEllipse(dotCentre(i), r, r);
    }
    const QString size = displaySize(m_tool, m_settings.size);
    if (!size.isEmpty()) {
        QFont font = p.font();
        font.setPixelSize(10);
        p.setFont(font);
        p.setPen(QColor(60, 60, 60));
        p.drawText(QRectF(2, 28, 66, 14), Qt::AlignCenter, size + displaySizeUnit(m_tool));
    }

    // The user's own colour has a plus over it while there is none.
    p.setPen(QPen(kEdge, 0.5));
    const QColor& user = m_settings.userColor;
    for (int swatch = 1; swatch <= 6; ++swatch) {
        const QRectF frame = swatchFrame(swatch);
        const bool own = swatch == 6;
        p.setBrush(own ? (user.isValid() ? user : QColor(Qt::white))
                       : swatchColors()[static_cast<std::size_t>(swatch - 1)]);
        p.drawRoundedRect(frame, 2, 2);
        if (own && !user.isValid()) {
            p.setPen(QPen(QColor(90, 90, 90), 1.2));
            p.drawLine(QPointF(frame.center().x(), frame.top() + 3),
                       QPointF(frame.center().x(), frame.bottom() - 3));
            p.drawLine(QPointF(frame.left() + 3, frame.center().y()),
                       QPointF(frame.right() - 3, frame.center().y()));
        }
    }
    paintOptions(p);
}

void SettingsBoxView::paintOptions(QPainter& p) const
{
    const std::vector<QLatin1StringView> keys = shapeOptions(m_tool);
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const QRectF frame = optionFrame(static_cast<int>(i));
        const bool on = i < m_settings.options.size() && m_settings.options[i];
        // An option that is on stands pressed.
        p.setPen(QPen(kEdge, 0.5));
        p.setBrush(on ? QColor(200, 222, 250) : QColor(Qt::white));
        p.drawRoundedRect(frame, 3, 3);
        const QRectF glyph = frame.adjusted(4, 4, -4, -4);
        const QColor ink(70, 70, 70);
        p.setPen(QPen(ink, 1.2));
        p.setBrush(Qt::NoBrush);
        const QLatin1StringView key = keys[i];
        if (key == settings::keys::enableRoundOfSquare) {
            p.drawRoundedRect(glyph, 3, 3);
        } else if (key == settings::keys::filledOfSquare) {
            p.setBrush(ink);
            p.drawRect(glyph);
        } else if (key == settings::keys::filledOfEllipse) {
            p.setBrush(ink);
            p.drawEllipse(glyph);
        } else if (key == settings::keys::normalTypeOfArrow) {
            // The stroked head when on, the dart when off.
            QPainterPath head;
            head.moveTo(glyph.topRight());
            head.lineTo(glyph.right() - 5, glyph.top() + 1);
            head.lineTo(glyph.right() - 1, glyph.top() + 5);
            head.closeSubpath();
            p.setBrush(ink);
            if (on) {
                p.drawLine(glyph.bottomLeft(), glyph.topRight());
                p.drawPath(head);
            } else {
                QPolygonF dart;
                dart << glyph.bottomLeft() << glyph.topRight()
                     << QPointF(glyph.left() + 2, glyph.bottom() - 0.5);
                p.setPen(Qt::NoPen);
                p.drawPolygon(dart);
                p.drawPath(head);
            }
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
