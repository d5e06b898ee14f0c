// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/output/ImageDecoration.h"

#include "app/output/BubblePath.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <vector>

namespace app::output {

namespace {

[[nodiscard]] double scaleOf(const core::Picture& picture)
{
    if (picture.pointSize.width() <= 0)
        return 1.0;
    return picture.pixels.width() / picture.pointSize.width();
}

// One pass of a running-sum box blur of radius r along rows (step 1) or
// columns (step = width), over `count` lines of `length` values.
void boxPass(std::vector<float>& data, std::vector<float>& scratch, int length, int count, int step,
             int lineStep, int r)
{
    if (r <= 0)
        return;
    const float norm = 1.0f / static_cast<float>(2 * r + 1);
    for (int line = 0; line < count; ++line) {
        float* base = data.data() + static_cast<std::ptrdiff_t>(line) * lineStep;
        for (int i = 0; i < length; ++i)
            scratch[static_cast<std::size_t>(i)] = base[static_cast<std::ptrdiff_t>(i) * step];
        auto at = [&](int i) {
            return i < 0 || i >= length ? 0.0f : scratch[static_cast<std::size_t>(i)];
        };
        float sum = 0;
        for (int i = -r; i <= r; ++i)
            sum += at(i);
        for (int i = 0; i < length; ++i) {
            base[static_cast<std::ptrdiff_t>(i) * step] = sum * norm;
            sum += at(i + r + 1) - at(i - r);
        }
    }
}

// A Gaussian of standard deviation sigma, approximated by three box blurs.
void blur(std::vector<float>& alpha, int width, int height, double sigma)
{
    if (sigma <= 0)
        return;
    const int r = std::max(
        1, static_cast<int>(std::lround((std::sqrt(4.0 * sigma * sigma + 1.0) - 1.0) / 2.0)));
    std::vector<float> scratch(static_cast<std::size_t>(std::max(width, height)));
    for (int pass = 0; pass < 3; ++pass) {
        boxPass(alpha, scratch, width, height, 1, width, r);
        boxPass(alpha, scratch, height, width, width, 1, r);
    }
}

} // namespace

QColor defaultShadowColour()
{
    QColor c(Qt::black);
    c.setAlphaF(0.4f);
    return c;
}

QColor shadowColourFrom(const QString& stored)
{
    const QColor c = QColor::fromString(stored);
    return stored.isEmpty() || !c.isValid() ? defaultShadowColour() : c;
}

ShadowGeometry shadowGeometry(QSizeF picture, qreal size)
{
    return {QSizeF(picture.width() + 2 * size, picture.height() + 2 * size),
            QRectF(QPointF(size, size), picture), 1.1 * size};
}

core::Picture addShadow(const core::Picture& picture, qreal size, const QColor& colour)
{
    if (picture.isNull())
        return picture;
    const double scale = scaleOf(picture);
    const ShadowGeometry g = shadowGeometry(picture.pointSize, size);
    const int margin = static_cast<int>(std::lround(size * scale));
    const QImage source = picture.pixels.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const int w = source.width() + 2 * margin;
    const int h = source.height() + 2 * margin;
    QImage canvas(w, h, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::transparent);

    // The shadow is the picture's own coverage, blurred and tinted.
    std::vector<float> alpha(static_cast<std::size_t>(w) * static_cast<std::size_t>(h), 0.0f);
    for (int y = 0; y < source.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(source.constScanLine(y));
        float* out = alpha.data() +
                     static_cast<std::size_t>(y + margin) * static_cast<std::size_t>(w) + margin;
        for (int x = 0; x < source.width(); ++x)
            out[x] = static_cast<float>(qAlpha(row[x])) / 255.0f;
    }
    blur(alpha, w, h, g.blur * scale / 2.0);
    const float a = colour.alphaF();
    const float r = colour.redF(), gr = colour.greenF(), b = colour.blueF();
    for (int y = 0; y < h; ++y) {
        auto* row = reinterpret_cast<QRgb*>(canvas.scanLine(y));
        const float* in = alpha.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(w);
        for (int x = 0; x < w; ++x) {
            const float cover = std::clamp(in[x], 0.0f, 1.0f) * a;
            row[x] = qRgba(qRound(r * cover * 255), qRound(gr * cover * 255),
                           qRound(b * cover * 255), qRound(cover * 255));
        }
    }
    QPainter painter(&canvas);
    painter.drawImage(QPoint(margin, margin), source);
    painter.end();
    return {canvas, g.canvas};
}

core::Picture addRoundImgae(const core::Picture& picture, qreal radius)
{
    if (picture.isNull())
        return picture;
    const double scale = scaleOf(picture);
    const QSizeF size = picture.pointSize;
    QPainterPath bubble;
    makeBubble(bubble, QRectF(QPointF(0, 0), size), radius, radius);
    QImage result(picture.pixels.size(), QImage::Format_ARGB32_Premultiplied);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    painter.setRenderHint(QPainter::Antialiasing);
    // The outline is in points with y up; the pixels run y down.
    painter.scale(scale, scale);
    painter.translate(0, size.height());
    painter.scale(1, -1);
    painter.setClipPath(bubble);
    painter.resetTransform();
    painter.drawImage(QPoint(0, 0), picture.pixels);
    painter.end();
    return {result, picture.pointSize};
}

} // namespace app::output
