// SPDX-License-Identifier: GPL-3.0-or-later
#include "toolbar/ui/ToolIcons.h"

#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>

namespace toolbar {

namespace {

// Line drawings on a 20x20 grid, so they stay sharp at any scale.
void drawIcon(QPainter& p, const QString& name)
{
    QPen pen(QColor(40, 40, 40), 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    p.setPen(pen);
    p.setBrush(Qt::NoBrush);
    if (name == QLatin1String("square")) {
        p.drawRect(QRectF(3.5, 5.5, 13, 9));
    } else if (name == QLatin1String("ellipse")) {
        p.drawEllipse(QRectF(3, 5, 14, 10));
    } else if (name == QLatin1String("line")) {
        p.drawLine(QPointF(4, 16), QPointF(16, 4));
    } else if (name == QLatin1String("arrow")) {
        p.drawLine(QPointF(4, 16), QPointF(15, 5));
        p.drawPolyline(QPolygonF({QPointF(9, 5), QPointF(15, 5), QPointF(15, 11)}));
    } else if (name == QLatin1String("pencilPen")) {
        QPainterPath path(QPointF(3, 14));
        path.cubicTo(QPointF(6, 4), QPointF(10, 18), QPointF(17, 6));
        p.drawPath(path);
    } else if (name == QLatin1String("mosaic")) {
        for (int y = 0; y < 3; ++y)
            for (int x = 0; x < 3; ++x)
                p.fillRect(QRectF(4 + x * 4.2, 4 + y * 4.2, 4, 4),
                           (x + y) % 2 ? QColor(40, 40, 40) : QColor(160, 160, 160));
    } else if (name == QLatin1String("text")) {
        p.drawLine(QPointF(5, 4), QPointF(15, 4));
        p.drawLine(QPointF(10, 4), QPointF(10, 16));
    } else if (name == QLatin1String("note")) {
        p.drawEllipse(QRectF(3.5, 3.5, 13, 13));
        p.drawLine(QPointF(10, 7), QPointF(10, 13));
    } else if (name == QLatin1String("highlight")) {
        p.fillRect(QRectF(3, 7, 14, 6), QColor(250, 200, 0));
    } else if (name == QLatin1String("map")) {
        p.drawLine(QPointF(10, 10), QPointF(10, 17));
        p.drawEllipse(QRectF(6.5, 3.5, 7, 7));
    } else if (name == QLatin1String("cancel")) {
        p.setPen(QPen(QColor(200, 40, 40), 1.8, Qt::SolidLine, Qt::RoundCap));
        p.drawLine(QPointF(5, 5), QPointF(15, 15));
        p.drawLine(QPointF(15, 5), QPointF(5, 15));
    } else if (name == QLatin1String("save")) {
        p.drawLine(QPointF(10, 3), QPointF(10, 13));
        p.drawPolyline(QPolygonF({QPointF(6, 9), QPointF(10, 13), QPointF(14, 9)}));
        p.drawLine(QPointF(4, 17), QPointF(16, 17));
    } else if (name == QLatin1String("copyToPaste")) {
        p.setPen(QPen(QColor(30, 140, 60), 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        p.drawPolyline(QPolygonF({QPointF(4, 10), QPointF(8.5, 14.5), QPointF(16, 5)}));
    }
}

class PaintedIcon final : public QIconEngine
{
public:
    explicit PaintedIcon(QString name)
        : m_name(std::move(name))
    {}
    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override
    {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.topLeft());
        painter->scale(rect.width() / 20.0, rect.height() / 20.0);
        if (mode == QIcon::Disabled)
            painter->setOpacity(0.4);
        drawIcon(*painter, m_name);
        painter->restore();
    }
    QIconEngine* clone() const override { return new PaintedIcon(m_name); }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pm(size);
        pm.fill(Qt::transparent);
        QPainter p(&pm);
        paint(&p, QRect(QPoint(0, 0), size), mode, state);
        return pm;
    }

private:
    QString m_name;
};

} // namespace

QIcon toolIcon(const QString& name)
{
    return QIcon(new PaintedIcon(name));
}

} // namespace toolbar
