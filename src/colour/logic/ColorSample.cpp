// SPDX-License-Identifier: GPL-3.0-or-later
#include "colour/logic/ColorSample.h"

#include <QPainter>

#include <cmath>
#include <vector>

namespace colour {

namespace {

constexpr double kSampleSide = 12.0;

} // namespace

QRectF sampleRect(QPointF pointerTopLeft)
{
    // The extra point of y is deliberate: the picked pixel sits under the
    // cross hair's hot spot, not on it.
    return {pointerTopLeft.x() - 6.0, pointerTopLeft.y() - 6.0 + 1.0, kSampleSide, kSampleSide};
}

QImage cutSample(const QImage& frozenScreen, double devicePixelRatio, QRectF rectPoints)
{
    if (frozenScreen.isNull() || !(devicePixelRatio > 0.0))
        return {};
    const int side = static_cast<int>(std::lround(rectPoints.width() * devicePixelRatio));
    if (side <= 0)
        return {};
    const int x0 = static_cast<int>(std::floor(rectPoints.x() * devicePixelRatio));
    const int y0 = static_cast<int>(std::floor(rectPoints.y() * devicePixelRatio));

    QImage sample(side, side, QImage::Format_ARGB32);
    sample.fill(Qt::transparent);
    const QRect source = QRect(x0, y0, side, side).intersected(frozenScreen.rect());
    if (source.isEmpty())
        return sample;
    const QImage part = frozenScreen.copy(source).convertToFormat(QImage::Format_ARGB32);
    QPainter painter(&sample);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(QPoint(source.x() - x0, source.y() - y0), part);
    return sample;
}

QImage enlargeSample(const QImage& sample, int side)
{
    if (sample.isNull() || side <= 0)
        return {};
    const QImage source = sample.format() == QImage::Format_ARGB32_Premultiplied
                              ? sample
                              : sample.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    QImage out(side, side, QImage::Format_ARGB32_Premultiplied);
    const int w = source.width();
    const int h = source.height();
    std::vector<int> column(static_cast<std::size_t>(side));
    for (int x = 0; x < side; ++x)
        column[static_cast<std::size_t>(x)] = static_cast<int>(static_cast<qint64>(x) * w / side);
    for (int y = 0; y < side; ++y) {
        const auto* in = reinterpret_cast<const QRgb*>(
            source.constScanLine(static_cast<int>(static_cast<qint64>(y) * h / side)));
        auto* line = reinterpret_cast<QRgb*>(out.scanLine(y));
        for (int x = 0; x < side; ++x)
            line[x] = in[column[static_cast<std::size_t>(x)]];
    }
    return out;
}

ReadoutTextStyle textStyleForMean(double mean)
{
    return static_cast<float>(mean) > 0.5f ? ReadoutTextStyle::BlackOnWhiteHalo
                                           : ReadoutTextStyle::WhiteOnBlackHalo;
}

std::optional<SampleAnalysis> analyseSample(const core::ImageView& sample)
{
    if (!sample.isValid())
        return std::nullopt;
    const int w = sample.width;
    const int h = sample.height;
    // Column h/2 of row w/2: the sample is square, so the swap is harmless,
    // but a view that is not square must still hold that pixel.
    if (h / 2 >= w || w / 2 >= h)
        return std::nullopt;

    std::uint64_t sum = 0;
    for (int y = 0; y < h; ++y) {
        const std::uint8_t* p = sample.row(y);
        for (int x = 0; x < w; ++x, p += 4)
            sum += static_cast<std::uint64_t>(p[0]) + p[1] + p[2];
    }
    const std::uint8_t* picked = sample.row(w / 2) + static_cast<std::ptrdiff_t>(h / 2) * 4;

    SampleAnalysis result;
    result.picked = Color::fromBytes(picked[2], picked[1], picked[0]);
    result.mean = static_cast<double>(sum) / h / w / 255.0 / 3.0;
    result.textStyle = textStyleForMean(result.mean);
    return result;
}

} // namespace colour
