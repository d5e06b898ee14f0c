// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/output/ImageFileType.h"
#include "app/output/PngEncoder.h"
#include "core/Picture.h"

#include <QByteArray>
#include <QString>

namespace app::output {

// The bitmap a picture is written as: its pixels, and the size in points a
// viewer should show it at (written as the file's density).
struct BitmapTarget
{
    QSize pixels;
    QSizeF points;
    bool operator==(const BitmapTarget&) const = default;
};

// The "normal quality" switch on a high-density picture: it is first given
// a size of its points over its density and its bitmap then that size times
// the density again, which lands on the picture's own point size; pixels
// are never resampled, so both settings write the same bitmap.
[[nodiscard]] BitmapTarget bitmapTarget(const core::Picture& picture, bool nomalQualityImage);

// Pixels per metre that make a viewer show `pixels` at `points` (72 points
// an inch); 0 when either is empty.
[[nodiscard]] std::uint32_t pixelsPerMetre(QSize pixels, QSizeF points);

// The picture flattened to one 8-bit RGBA bitmap of its largest pixel size
// (non-premultiplied), keeping its point size. Null for a picture without
// pixels.
[[nodiscard]] core::Picture flatten(const core::Picture& picture);

// The PNG settings Kelvo writes with: chosen on screen captures by
// bench/capture-to-file (the fastest whose files are no larger than
// scrot's).
[[nodiscard]] PngOptions fastPngOptions();

struct EncodedImage
{
    QByteArray bytes;
    QString error; // empty when encoded
};

// PNG (Kelvo's encoder), JPEG at quality 85 and uncompressed TIFF (Qt's
// writers). A picture whose alpha is all opaque is written without alpha.
// The file's density is the picture's.
[[nodiscard]] EncodedImage encodeImage(const core::Picture& picture, ImageFileType type,
                                       bool nomalQualityImage = false);

// PNG only, at Kelvo's settings, e.g. for the clipboard.
[[nodiscard]] EncodedImage encodePngOf(const QImage& image, std::uint32_t pixelsPerMetre = 0);

} // namespace app::output
