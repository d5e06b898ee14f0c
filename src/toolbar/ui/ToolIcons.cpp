// SPDX-License-Identifier: GPL-3.0-or-later
#include "toolbar/ui/ToolIcons.h"

#include "toolbar/logic/ToolRegistry.h"

#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>

namespace toolbar {

namespace {

// Line drawings on a 20x20 grid, so they stay sharp at any scale.
void drawIcon(QPainter& p, ToolId id)
{
    QPen pen(QColor(40, 40, 40), 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    p.setPen(pen);
    p.setBrush(Qt::NoBrush);
    switch (id) {
    case ToolId::Square:
        p.drawRect(QRectF(3.5, 5.5, 13, 9));
        break;
    case ToolId::Ellipse:
        p.drawEllipse(QRectF(3, 5, 14, 10));
        break;
    case ToolId::Line:
        p.drawLine(QPointF(4, 16), QPointF(16, 4));
        break;
    case ToolId::Arrow:
        p.drawLine(QPointF(4, 16), QPointF(15, 5));
        p.drawPolyline(QPolygonF({QPointF(9, 5), QPointF(15, 5), QPointF(15, 11)}));
        break;
    case ToolId::PencilPen: {
        QPainterPath path(QPointF(3, 14));
        path.cubicTo(QPointF(6, 4), QPointF(10, 18), QPointF(17, 6));
        p.drawPath(path);
        break;
    }
    case ToolId::Mosaic:
        for (int y = 0; y < 3; ++y)
            for (int x = 0; x < 3; ++x)
                p.fillRect(QRectF(4 + x * 4.2, 4 + y * 4.2, 4, 4),
                           (x + y) % 2 ? QColor(40, 40, 40) : QColor(160, 160, 160));
        break;
    case ToolId::Text:
        p.drawLine(QPointF(5, 4), QPointF(15, 4));
        p.drawLine(QPointF(10, 4), QPointF(10, 16));
        break;
    case ToolId::Note:
        p.drawEllipse(QRectF(3.5, 3.5, 13, 13));
        p.drawLine(QPointF(10, 7), QPointF(10, 13));
        break;
    case ToolId::Highlight:
        p.fillRect(QRectF(3, 7, 14, 6), QColor(250, 200, 0));
        break;
    case ToolId::Map:
        p.drawLine(QPointF(10, 10), QPointF(10, 17));
        p.drawEllipse(QRectF(6.5, 3.5, 7, 7));
        break;
    case ToolId::Cancel:
        p.setPen(QPen(QColor(200, 40, 40), 1.8, Qt::SolidLine, Qt::RoundCap));
        p.drawLine(QPointF(5, 5), QPointF(15, 15));
        p.drawLine(QPointF(15, 5), QPointF(5, 15));
        break;
    case ToolId::Save:
        p.drawLine(QPointF(10, 3), QPointF(10, 13));
        p.drawPolyline(QPolygonF({QPointF(6, 9), QPointF(10, 13), QPointF(14, 9)}));
        p.drawLine(QPointF(4, 17), QPointF(16, 17));
        break;
    case ToolId::CopyToPaste:
        p.setPen(QPen(QColor(30, 140, 60), 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        p.drawPolyline(QPolygonF({QPointF(4, 10), QPointF(8.5, 14.5), QPointF(16, 5)}));
        break;
    case ToolId::ScrollScreenshot:
        p.drawRect(QRectF(5.5, 6.5, 9, 7));
        p.drawPolyline(QPolygonF({QPointF(7.5, 4), QPointF(10, 1.5), QPointF(12.5, 4)}));
        p.drawPolyline(QPolygonF({QPointF(7.5, 16), QPointF(10, 18.5), QPointF(12.5, 16)}));
        break;
    case ToolId::Undo: {
        QPainterPath path(QPointF(5, 8));
        path.lineTo(QPointF(12, 8));
        path.cubicTo(QPointF(18, 8), QPointF(18, 16), QPointF(12, 16));
        path.lineTo(QPointF(7, 16));
        p.drawPath(path);
        p.drawPolyline(QPolygonF({QPointF(8, 5), QPointF(5, 8), QPointF(8, 11)}));
        break;
    }
    }
}

class PaintedIcon final : public QIconEngine
{
public:
    explicit PaintedIcon(ToolId id)
        : m_id(id)
    {}
    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override
    {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.topLeft());
        painter->scale(rect.width() / 20.0, rect.height() / 20.0);
        if (mode == QIcon::Disabled)
            painter->setOpacity(0.4);
        drawIcon(*painter, m_id);
        painter->restore();
    }
    QIconEngine* clone() const override { return new PaintedIcon(m_id); }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pm(size);
        pm.fill(Qt::transparent);
        QPainter p(&pm);
        paint(&p, QRect(QPoint(0, 0), size), mode, state);
        return pm;
    }

private:
    ToolId m_id;
};

} // namespace

QIcon toolIcon(const QString& name)
{
    for (const ToolEntry& entry : kTools) {
        if (name == entry.iconName)
            return QIcon(new PaintedIcon(entry.id));
    }
    return {};
}

} // namespace toolbar
