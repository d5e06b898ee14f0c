// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <optional>

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

// The type a file name asks for by its extension (.png, .jpg, .jpeg, .tif,
// .tiff, in any case); nullopt for any other name.
[[nodiscard]] std::optional<ImageFileType> typeOfFileName(const QString& path);

// Why a picture cannot be written to `path` as -p or the Capture method's
// "path" give it (a folder, or a file whose extension names the type): too
// long for a path, or a name with another extension that is no existing
// folder. Empty when it can be tried; the folder itself is checked later.
[[nodiscard]] QString targetProblem(const QString& path);

} // namespace app::output
