// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/output/ImageFileType.h"

#include "core/ShortText.h"

#include <QFileInfo>

#include <climits>

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

std::optional<ImageFileType> typeOfFileName(const QString& path)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    if (suffix == QLatin1String("png"))
        return ImageFileType::Png;
    if (suffix == QLatin1String("jpg") || suffix == QLatin1String("jpeg"))
        return ImageFileType::Jpeg;
    if (suffix == QLatin1String("tif") || suffix == QLatin1String("tiff"))
        return ImageFileType::Tiff;
    return std::nullopt;
}

QString targetProblem(const QString& path)
{
    if (path.toLocal8Bit().size() >= PATH_MAX)
        return QStringLiteral("%1 is longer than a path may be (%2 bytes)")
            .arg(core::shortForMessage(path))
            .arg(PATH_MAX - 1);
    const QFileInfo info(path);
    // ".shots" is a hidden name, not an extension.
    const bool hasExtension = !info.suffix().isEmpty() && !info.completeBaseName().isEmpty();
    if (!hasExtension || typeOfFileName(path) || info.isDir())
        return {};
    return QStringLiteral("%1: a picture is written as .png, .jpg or .tiff, not .%2; give such "
                          "a file name or a folder")
        .arg(core::shortForMessage(path), core::shortForMessage(info.suffix()));
}

} // namespace app::output
