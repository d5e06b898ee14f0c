// SPDX-License-Identifier: GPL-3.0-or-later
#include "colour/ui/ColorPickerImageView.h"

#include "colour/logic/Qorvani.h"
#include "colour/logic/ReadoutLayout.h"

#include <QCoreApplication>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace colour {

namespace {

double textWidth(const QFont& font, const QString& text)
{
    return QFontMetricsF(font).horizontalAdvance(text);
}

// A text whose bottom-left corner is at `origin` in the square's y-up
// coordinates, converted to the painter's y-down baseline.
QPointF baselineOf(const QFont& font, QPointF origin)
{
    const QFontMetricsF metrics(font);
    return {origin.x(), readout::kSide - origin.y() - metrics.descent()};
}

} // namespace

ColorPickerImageView::ColorPickerImageView(ColorReadoutState& state)
    : m_state(state)
{}

void ColorPickerImageView::setFrozenScreen(QImage pixels, double devicePixelRatio)
{
    m_frozenScreen = std::move(pixels);
    m_devicePixelRatio = devicePixelRatio > 0.0 ? devicePixelRatio : 1.0;
}

double ColorPickerImageView::screenHeightPoints() const
{
    return m_frozenScreen.height() / m_devicePixelRatio;
}

void ColorPickerImageView::mouseMoved(QPointF locationInWindow, double screenHeight)
{
    m_state.mouseMoved(locationInWindow, screenHeight);
}

QFont ColorPickerImageView::readoutFont(int pixelSize)
{
    QFont font = QGuiApplication::font();
    font.setPixelSize(pixelSize);
    return font;
}

int ColorPickerImageView::nameFontSizeFor(const QString& name)
{
    return readout::nameFontSize([&name](int size) { return textWidth(readoutFont(size), name); });
}

void ColorPickerImageView::paint(QPainter& painter, QPointF pointerInOverlay)
{
    const double side = readout::kSide;
    const QPointF pointerTopLeft(pointerInOverlay.x(), screenHeightPoints() - pointerInOverlay.y());
    const QImage sample = cutSample(m_frozenScreen, m_devicePixelRatio, sampleRect(pointerTopLeft));

    std::optional<SampleAnalysis> analysis;
    ColorInfo info;
    if (m_state.mouseMoving) {
        analysis = analyseSample(core::ImageView::of(sample));
        if (analysis)
            info = m_state.colorNamer().findNameForColor(analysis->picked);
    }

    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
    painter.setRenderHint(QPainter::Antialiasing, false);
    // The enlarged pixels and the grid over them, made as one picture at the
    // device's resolution (nothing to enlarge without a frozen screen).
    const double ratio = painter.device() ? painter.device()->devicePixelRatio() : 1.0;
    const int squarePixels = static_cast<int>(std::lround(side * ratio));
    QImage square = enlargeSample(sample, squarePixels);
    if (square.isNull()) {
        square = QImage(squarePixels, squarePixels, QImage::Format_ARGB32_Premultiplied);
        square.fill(Qt::transparent);
    }
    readout::blendGrid(square, ratio);
    square.setDevicePixelRatio(ratio);
    painter.drawImage(QPointF(0.0, 0.0), square);

    // Lines in the square's own y-up coordinates.
    painter.save();
    painter.translate(0.0, side);
    painter.scale(1.0, -1.0);
    painter.setBrush(Qt::NoBrush);

    const QColor branding = qorvani::qorvaniBrandingColor().toQColor();
    QPen framePen(branding, readout::kFrameLineWidth);
    framePen.setJoinStyle(Qt::MiterJoin);
    painter.setPen(framePen);
    painter.drawRect(readout::frameRect());

    QPen crossPen(branding, readout::kCrossHairLineWidth);
    crossPen.setCapStyle(Qt::FlatCap);
    painter.setPen(crossPen);
    QPainterPath cross;
    for (const QLineF& arm : readout::crossHair(m_state.mouseMoving)) {
        cross.moveTo(arm.p1());
        cross.lineTo(arm.p2());
    }
    painter.drawPath(cross);
    painter.restore();

    if (m_state.mouseMoving) {
        m_state.mouseMoving = false;
        if (analysis) {
            m_state.hexOfColor = info.hex;
            m_state.rgbOfColor = info.rgb;
            painter.setRenderHint(QPainter::Antialiasing, true);
            painter.setRenderHint(QPainter::TextAntialiasing, true);
            drawTexts(painter, info, analysis->textStyle);
        }
    }
    painter.restore();
}

void ColorPickerImageView::drawTexts(QPainter& painter, const ColorInfo& info,
                                     ReadoutTextStyle style)
{
    const bool blackText = style == ReadoutTextStyle::BlackOnWhiteHalo;
    const QColor textColor = blackText ? QColor(Qt::black) : QColor(Qt::white);
    const QColor haloColor = blackText ? QColor(Qt::white) : QColor(Qt::black);

    const QString name =
        QCoreApplication::translate("Localizable", info.colorName.toUtf8().constData());
    const QFont nameFont = readoutFont(nameFontSizeFor(name));
    const QFont smallFont = readoutFont(readout::kSmallFontSize);
    const QString& point = m_state.mousePoint;
    const QString& hex = info.hex;

    const readout::TextOrigins origins =
        readout::textOrigins(textWidth(nameFont, name), textWidth(smallFont, point));

    struct Text
    {
        const QString& text;
        const QFont& font;
        QPointF origin;
    };
    const std::array<Text, 3> texts{{{name, nameFont, origins.name},
                                     {point, smallFont, origins.mousePoint},
                                     {hex, smallFont, origins.hex}}};

    const auto drawAll = [&painter, &texts](QPointF offset) {
        for (const Text& t : texts) {
            painter.setFont(t.font);
            painter.drawText(baselineOf(t.font, t.origin + offset), t.text);
        }
    };
    painter.setPen(haloColor);
    for (const QPointF& offset : readout::haloOffsets())
        drawAll(offset);
    painter.setPen(textColor);
    drawAll(QPointF());
}

} // namespace colour
