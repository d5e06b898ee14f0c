// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/output/ImageFileType.h"

namespace app::output {

ImageFileType fileTypeForFormat(const QString& format)
{
    if (format == QLatin1String("jpg"))
        return ImageFileType::Jpeg;
    if (format == QLatin1String("png"))
        return ImageFileType::Png;
    return ImageFileType::Tiff;
}

QString extensionOf(ImageFileType type)
{
    switch (type) {
    case ImageFileType::Png:
        return QStringLiteral("png");
    case ImageFileType::Jpeg:
        return QStringLiteral("jpg");
    case ImageFileType::Tiff:
        break;
    }
    return QStringLiteral("tiff");
}

} // namespace app::output
