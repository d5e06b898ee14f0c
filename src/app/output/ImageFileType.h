// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace app::output {

// The picture file types with the numbers they are known by in stored
// preferences and callers' tables.
enum class ImageFileType
{
    Tiff = 0,
    Jpeg = 3,
    Png = 4,
};

// The value of formatOfSavePhoto as a type: "jpg" is JPEG, "png" is PNG,
// anything else (an unknown word included) TIFF.
[[nodiscard]] ImageFileType fileTypeForFormat(const QString& format);
// "png", "jpg", "tiff".
[[nodiscard]] QString extensionOf(ImageFileType type);

} // namespace app::output
