// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/Shadow.h"

#include <QPaintDevice>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <vector>

namespace core {

namespace {

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

QImage shadowOf(const QImage& picture, int margin, double sigma, const QColor& colour)
{
    const QImage source = picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    margin = std::max(0, margin);
    const int w = source.width() + 2 * margin;
    const int h = source.height() + 2 * margin;
    QImage canvas(w, h, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::transparent);
    if (w == 0 || h == 0)
        return canvas;

    std::vector<float> alpha(static_cast<std::size_t>(w) * static_cast<std::size_t>(h), 0.0f);
    for (int y = 0; y < source.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(source.constScanLine(y));
        float* out = alpha.data() +
                     static_cast<std::size_t>(y + margin) * static_cast<std::size_t>(w) + margin;
        for (int x = 0; x < source.width(); ++x)
            out[x] = static_cast<float>(qAlpha(row[x])) / 255.0f;
    }
    blur(alpha, w, h, sigma);
    const float a = colour.alphaF();
    const float r = colour.redF(), g = colour.greenF(), b = colour.blueF();
    for (int y = 0; y < h; ++y) {
        auto* row = reinterpret_cast<QRgb*>(canvas.scanLine(y));
        const float* in = alpha.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(w);
        for (int x = 0; x < w; ++x) {
            const float cover = std::clamp(in[x], 0.0f, 1.0f) * a;
            row[x] = qRgba(qRound(r * cover * 255), qRound(g * cover * 255),
                           qRound(b * cover * 255), qRound(cover * 255));
        }
    }
    return canvas;
}

void drawWithShadow(QPainter& painter, const QRectF& target, const QImage& image,
                    const QColor& colour, qreal blurRadius)
{
    if (blurRadius > 0 && colour.alpha() > 0 && !target.isEmpty()) {
        // The shadow is made at the device's density, from the picture as
        // it will be drawn, so it hugs the picture's edge in every scale.
        const QPaintDevice* device = painter.device();
        const qreal scale = (device != nullptr ? device->devicePixelRatio() : 1.0) *
                            std::abs(painter.worldTransform().m11());
        const QSize pixels(std::max(1, qRound(target.width() * scale)),
                           std::max(1, qRound(target.height() * scale)));
        const double sigma = blurRadius * scale / 2.0;
        const int margin = static_cast<int>(std::ceil(sigma * 3.0));
        const QImage coverage =
            image.hasAlphaChannel()
                ? image.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                : QImage();
        QImage shadow;
        if (coverage.isNull()) {
            // An opaque picture casts the shadow of its rectangle.
            QImage solid(pixels, QImage::Format_ARGB32_Premultiplied);
            solid.fill(Qt::black);
            shadow = shadowOf(solid, margin, sigma, colour);
        } else {
            shadow = shadowOf(coverage, margin, sigma, colour);
        }
        const qreal m = margin / scale;
        painter.drawImage(target.adjusted(-m, -m, m, m), shadow);
    }
    painter.drawImage(target, image);
}

} // namespace core
