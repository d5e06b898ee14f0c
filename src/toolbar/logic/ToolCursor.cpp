// SPDX-License-Identifier: GPL-3.0-or-later
#include "toolbar/logic/ToolCursor.h"

#include "toolbar/logic/SettingsBox.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include <array>

namespace toolbar {

namespace {

bool isText(QStringView tool)
{
    return tool == u"text" || tool == u"note";
}

// The four arms of the cross, each `gap` points short of the centre and
// `inset` points short of the edge.
QPainterPath arms(double inset, double gap)
{
    constexpr double c = kToolCursorSide / 2.0;
    constexpr double side = kToolCursorSide;
    QPainterPath path;
    path.moveTo(inset, c);
    path.lineTo(c - gap, c);
    path.moveTo(c + gap, c);
    path.lineTo(side - inset, c);
    path.moveTo(c, inset);
    path.lineTo(c, c - gap);
    path.moveTo(c, c + gap);
    path.lineTo(c, side - inset);
    return path;
}

void strokePath(QPainter& painter, const QPainterPath& path, const QColor& color, double width)
{
    // Butt ends: the arms stop exactly where they are told to.
    painter.strokePath(path, QPen(color, width, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
}

} // namespace

ToolCursorLook toolCursorLook(QStringView tool, const std::optional<ActiveStrokeLook>& stroke,
                              const QColor& toolColor, int toolSize)
{
    ToolCursorLook look;
    look.color = stroke && stroke->color.isValid() ? stroke->color : toolColor;
    if (!look.color.isValid())
        look.color = Qt::red;
    // The box shows the active stroke's size whenever a stroke is active;
    // the plain tools fall back to the tool's when the stroke has none.
    const int strokeSize = stroke ? static_cast<int>(stroke->size) : 0;
    if (isText(tool))
        look.number = stroke ? strokeSize : toolSize;
    else if (tool == u"highlight")
        look.number = displaySize(tool, stroke ? strokeSize : toolSize).toInt();
    else
        look.number = strokeSize != 0 ? strokeSize : toolSize;
    return look;
}

QImage toolCursorImage(const ToolCursorLook& look, double devicePixelRatio)
{
    const double ratio = devicePixelRatio > 0 ? devicePixelRatio : 1.0;
    const int pixels = qRound(kToolCursorSide * ratio);
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);

    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);

    constexpr double c = kToolCursorSide / 2.0;
    QPainterPath ring;
    ring.arcMoveTo(QRectF(c - 2.5, c - 2.5, 5, 5), 0);
    ring.arcTo(QRectF(c - 2.5, c - 2.5, 5, 5), 0, 359.9);
    strokePath(painter, ring, Qt::black, 1);
    // The white under the colour keeps the cross visible on any picture.
    strokePath(painter, arms(0, 3), Qt::white, 3);
    strokePath(painter, arms(0.5, 3.5), look.color, 2);

    QFont font;
    font.setPixelSize(7);
    painter.setFont(font);
    const QFontMetricsF metrics(font, &image);
    const QString text = QString::number(look.number);
    // Centred over the right arm's 14.5 points, its foot half a point above
    // the bottom edge.
    const QPointF origin((14.5 - metrics.horizontalAdvance(text)) * 0.5 + 18,
                         kToolCursorSide - 0.5 - metrics.descent());
    // A hard black rim all round makes the white digits readable on any colour.
    static constexpr std::array<QPointF, 8> kShadows{{{0.7, 0},
                                                      {-0.7, 0},
                                                      {0, -0.7},
                                                      {0, 0.7},
                                                      {0.5, 0.5},
                                                      {0.5, -0.5},
                                                      {-0.5, 0.5},
                                                      {-0.5, -0.5}}};
    for (const QPointF& offset : kShadows) {
        painter.setPen(Qt::black);
        painter.drawText(origin + offset, text);
        painter.setPen(Qt::white);
        painter.drawText(origin, text);
    }
    painter.end();
    return image;
}

} // namespace toolbar
