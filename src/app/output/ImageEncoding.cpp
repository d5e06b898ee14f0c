// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/output/ImageEncoding.h"

#include "core/Localized.h"

#include <QBuffer>
#include <QImageWriter>

#include <cmath>

namespace app::output {

namespace {

[[nodiscard]] bool isOpaque(const QImage& image)
{
    if (!image.hasAlphaChannel())
        return true;
    for (int y = 0; y < image.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(row[x]) != 255)
                return false;
        }
    }
    return true;
}

[[nodiscard]] QString pngErrorText(PngError error)
{
    switch (error) {
    case PngError::None:
        return {};
    case PngError::InvalidImage:
        return core::localized("The picture has no pixels.");
    case PngError::TooLarge:
        return core::localized("The picture is too large to save.");
    case PngError::Compression:
        break;
    }
    return core::localized("The picture could not be compressed.");
}

[[nodiscard]] EncodedImage writeWithQt(const QImage& image, const char* format, int quality,
                                       int compression)
{
    EncodedImage out;
    QBuffer buffer(&out.bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, format);
    if (quality >= 0)
        writer.setQuality(quality);
    if (compression >= 0)
        writer.setCompression(compression);
    if (!writer.write(image)) {
        out.bytes.clear();
        out.error = writer.errorString();
    }
    return out;
}

} // namespace

BitmapTarget bitmapTarget(const core::Picture& picture, bool nomalQualityImage)
{
    const double density = picture.density();
    if (density > 1.0 && nomalQualityImage) {
        const QSizeF small = picture.pointSize / density;
        return {picture.pixels.size(), small * density};
    }
    return {picture.pixels.size(), picture.pointSize};
}

std::uint32_t pixelsPerMetre(QSize pixels, QSizeF points)
{
    if (pixels.isEmpty() || points.width() <= 0)
        return 0;
    const double perInch = 72.0 * pixels.width() / points.width();
    return static_cast<std::uint32_t>(std::lround(perInch / 0.0254));
}

core::Picture flatten(const core::Picture& picture)
{
    if (picture.isNull())
        return {};
    // RGB32 is ARGB32 with every pixel opaque; copying a whole desktop
    // just to say so would cost more than encoding it.
    const QImage::Format f = picture.pixels.format();
    if (f == QImage::Format_RGB32 || f == QImage::Format_ARGB32)
        return picture;
    return {picture.pixels.convertToFormat(QImage::Format_ARGB32), picture.pointSize};
}

PngOptions fastPngOptions()
{
    PngOptions o;
    o.compressionLevel = 2;
    o.filter = PngFilter::Up;
    return o;
}

EncodedImage encodePngOf(const QImage& image, std::uint32_t density)
{
    const QImage flat =
        image.format() == QImage::Format_RGB32 || image.format() == QImage::Format_ARGB32
            ? image
            : image.convertToFormat(QImage::Format_ARGB32);
    PngOptions options = fastPngOptions();
    options.alpha = isOpaque(flat) ? PngAlpha::Opaque : PngAlpha::Straight;
    options.pixelsPerMetre = density;
    PngResult png = encodePng(core::ImageView::of(flat), options);
    EncodedImage out;
    if (!png.ok()) {
        out.error = pngErrorText(png.error);
        return out;
    }
    out.bytes = QByteArray(reinterpret_cast<const char*>(png.bytes.data()),
                           static_cast<qsizetype>(png.bytes.size()));
    return out;
}

EncodedImage encodeImage(const core::Picture& picture, ImageFileType type, bool nomalQualityImage)
{
    const core::Picture flat = flatten(picture);
    if (flat.isNull())
        return {{}, core::localized("The picture has no pixels.")};
    const BitmapTarget target = bitmapTarget(flat, nomalQualityImage);
    const std::uint32_t density = pixelsPerMetre(target.pixels, target.points);
    switch (type) {
    case ImageFileType::Png:
        return encodePngOf(flat.pixels, density);
    case ImageFileType::Jpeg: {
        QImage rgb = flat.pixels.convertToFormat(QImage::Format_RGB888);
        rgb.setDotsPerMeterX(static_cast<int>(density));
        rgb.setDotsPerMeterY(static_cast<int>(density));
        return writeWithQt(rgb, "jpeg", 85, -1);
    }
    case ImageFileType::Tiff: {
        QImage image = flat.pixels;
        image.setDotsPerMeterX(static_cast<int>(density));
        image.setDotsPerMeterY(static_cast<int>(density));
        return writeWithQt(image, "tiff", -1, 0);
    }
    }
    return {};
}

} // namespace app::output
