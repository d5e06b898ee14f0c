// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/ui/OverlayPainter.h"

#include "capture/logic/SizeLabelPlacement.h"
#include "capture/logic/SurroundBands.h"
#include "colour/logic/Qorvani.h"
#include "colour/ui/ColorPickerImageView.h"
#include "core/Geometry.h"
#include "core/PixelGrid.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>

#include <cfloat>
#include <cmath>

namespace capture {

namespace {

constexpr double kTipOffset = 10.0;
constexpr double kTipMargin = 10.0;
constexpr double kTipRightMargin = 15.0;
constexpr double kTipRadius = 5.0;
constexpr double kLabelRadius = 4.0;
constexpr int kTextPixelSize = 12;
constexpr double kCrossGap = 4.0;

QSizeF textSize(const QString& text)
{
    // An empty text is measured as one blank, as every label of the overlay is.
    const QString measured = text.isEmpty() ? QStringLiteral(" ") : text;
    return QFontMetricsF(OverlayPainter::textFont())
        .boundingRect(QRectF(0.0, 0.0, FLT_MAX, 0.0), Qt::AlignLeft | Qt::AlignTop, measured)
        .size();
}

} // namespace

OverlayPainter::OverlayPainter(colour::ColorPickerImageView* magnifier)
    : m_magnifier(magnifier)
{}

QColor OverlayPainter::surroundColor()
{
    return QColor::fromRgbF(0.0f, 0.0f, 0.0f, 0.5f);
}

QColor OverlayPainter::outlineColor()
{
    return colour::qorvani::qorvaniBrandingColor().toQColor();
}

QColor OverlayPainter::sizeLabelColor()
{
    return QColor::fromRgbF(0.16862745098039217f, 0.6705882352941176f, 1.0f, 1.0f);
}

QFont OverlayPainter::textFont()
{
    QFont font = QGuiApplication::font();
    font.setPixelSize(kTextPixelSize);
    return font;
}

QRectF OverlayPainter::tipBox(const QString& text)
{
    const QSizeF size = textSize(text);
    return {kTipOffset, kTipOffset, std::ceil(size.width()) + kTipMargin + kTipRightMargin,
            std::ceil(size.height()) + 2.0 * kTipMargin};
}

void OverlayPainter::paint(QPainter& painter, const OverlayFrame& frame)
{
    const double ratio = core::devicePixelRatioOf(painter);
    painter.save();
    paintSurround(painter, frame, ratio);
    paintOutline(painter, frame, ratio);
    paintSizeLabel(painter, frame, ratio);
    paintTip(painter, frame, ratio);
    paintMagnifier(painter, frame, ratio);
    paintCross(painter, frame);
    painter.restore();
}

void OverlayPainter::paintSurround(QPainter& painter, const OverlayFrame& frame, double ratio) const
{
    if (!frame.dimHole)
        return;
    const QRectF screen(QPointF(0.0, 0.0), frame.screenSize);
    QPainterPath dim;
    dim.addRect(screen);
    if (!frame.dimHole->isEmpty()) {
        QPainterPath hole;
        hole.addRect(
            core::snappedToPixels(core::flipped(*frame.dimHole, frame.screenSize.height()), ratio));
        dim = dim.subtracted(hole);
    }
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.fillPath(dim, surroundColor());
}

void OverlayPainter::paintOutline(QPainter& painter, const OverlayFrame& frame, double ratio) const
{
    if (!frame.outlineBox || frame.outlineBox->isEmpty())
        return;
    const QRectF box =
        core::snappedToPixels(core::flipped(*frame.outlineBox, frame.screenSize.height()), ratio);
    const double w =
        std::min(SurroundBands::kOutlineWidth, std::min(box.width(), box.height()) / 2.0);
    painter.setRenderHint(QPainter::Antialiasing, false);
    if (frame.outlineFill.alpha() > 0)
        painter.fillRect(box.adjusted(w, w, -w, -w), frame.outlineFill);
    const QColor color = outlineColor();
    painter.fillRect(QRectF(box.left(), box.top(), box.width(), w), color);
    painter.fillRect(QRectF(box.left(), box.bottom() - w, box.width(), w), color);
    painter.fillRect(QRectF(box.left(), box.top() + w, w, box.height() - 2.0 * w), color);
    painter.fillRect(QRectF(box.right() - w, box.top() + w, w, box.height() - 2.0 * w), color);
}

void OverlayPainter::paintSizeLabel(QPainter& painter, const OverlayFrame& frame,
                                    double ratio) const
{
    if (!frame.sizeLabelFor)
        return;
    const std::optional<SizeLabel> label = placeSizeLabel(*frame.sizeLabelFor, frame.screenSize);
    if (!label)
        return;
    const QRectF box =
        core::snappedToPixels(core::flipped(label->frame, frame.screenSize.height()), ratio);
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setRenderHint(QPainter::TextAntialiasing, true);
    painter.setPen(Qt::NoPen);
    painter.setBrush(sizeLabelColor());
    painter.drawRoundedRect(box, kLabelRadius, kLabelRadius);

    // Width, "X" and height in three fixed fields, as wide as the numbers need.
    painter.setFont(textFont());
    painter.setPen(Qt::white);
    const Qt::Alignment centred = Qt::AlignHCenter | Qt::AlignVCenter;
    const double top = box.top();
    const double h = box.height();
    painter.drawText(QRectF(box.left(), top, 40.0, h), centred, label->widthText);
    painter.drawText(QRectF(box.left() + 38.0, top, 14.0, h), centred, QStringLiteral("X"));
    painter.drawText(QRectF(box.left() + 50.0, top, 40.0, h), centred, label->heightText);
}

void OverlayPainter::paintTip(QPainter& painter, const OverlayFrame& frame, double ratio) const
{
    if (frame.tip.isEmpty())
        return;
    const QRectF box =
        core::snappedToPixels(core::flipped(tipBox(frame.tip), frame.screenSize.height()), ratio);
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setRenderHint(QPainter::TextAntialiasing, true);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::black);
    painter.drawRoundedRect(box, kTipRadius, kTipRadius);
    painter.setFont(textFont());
    painter.setPen(Qt::white);
    const QRectF text = box.adjusted(kTipMargin, kTipMargin, -kTipRightMargin, -kTipMargin);
    painter.drawText(text, Qt::AlignLeft | Qt::AlignTop, frame.tip);
}

void OverlayPainter::paintMagnifier(QPainter& painter, const OverlayFrame& frame, double ratio)
{
    if (!frame.magnifier || m_magnifier == nullptr)
        return;
    const QRectF square =
        core::snappedToPixels(core::flipped(*frame.magnifier, frame.screenSize.height()), ratio);
    // A soft shadow lifts the square off busy pictures.
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setPen(Qt::NoPen);
    for (int i = 3; i >= 1; --i) {
        painter.setBrush(QColor(0, 0, 0, 22));
        const double spread = i;
        painter.drawRoundedRect(square.adjusted(-spread, -spread + 1.0, spread, spread + 1.0),
                                spread + 1.0, spread + 1.0);
    }
    painter.save();
    painter.translate(square.topLeft());
    painter.setClipRect(QRectF(QPointF(0.0, 0.0), square.size()));
    m_magnifier->paint(painter, frame.pointer);
    painter.restore();
}

void OverlayPainter::paintCross(QPainter& painter, const OverlayFrame& frame) const
{
    if (!frame.cross)
        return;
    const QRectF r = core::flipped(*frame.cross, frame.screenSize.height());
    // Centred on the pixel under the pointer, so the lines are one pixel
    // column and row wide at any scale.
    const QPointF c(std::floor(r.center().x()) + 0.5, std::floor(r.center().y()) + 0.5);
    const double arm = r.width() / 2.0;
    QPainterPath lines;
    lines.moveTo(c.x() - arm, c.y());
    lines.lineTo(c.x() - kCrossGap, c.y());
    lines.moveTo(c.x() + kCrossGap, c.y());
    lines.lineTo(c.x() + arm, c.y());
    lines.moveTo(c.x(), c.y() - arm);
    lines.lineTo(c.x(), c.y() - kCrossGap);
    lines.moveTo(c.x(), c.y() + kCrossGap);
    lines.lineTo(c.x(), c.y() + arm);

    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setBrush(Qt::NoBrush);
    QPen halo(QColor(255, 255, 255, 200), 3.0, Qt::SolidLine, Qt::FlatCap);
    painter.setPen(halo);
    painter.drawPath(lines);
    QPen line(QColor(20, 20, 20), 1.0, Qt::SolidLine, Qt::FlatCap);
    painter.setPen(line);
    painter.drawPath(lines);
}

} // namespace capture
