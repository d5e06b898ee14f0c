// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/hotkeys/PasteboardPictures.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImageReader>
#include <QMimeData>
#include <QMimeDatabase>
#include <QUrl>

namespace app::hotkeys {

namespace {

// Megabytes one decoded picture may take; a hostile header cannot make us
// allocate more.
constexpr int kAllocationLimitMb = 512;

bool isImageFile(const QFileInfo& info)
{
    if (!info.exists() || info.isDir())
        return false;
    static const QMimeDatabase types;
    const QMimeType type = types.mimeTypeForFile(info, QMimeDatabase::MatchExtension);
    return type.name().startsWith(QLatin1String("image/"));
}

QImage readBounded(QImageReader& reader)
{
    reader.setAllocationLimit(kAllocationLimitMb);
    return reader.read();
}

} // namespace

std::vector<QImage> picturesOnPasteboard(const QMimeData* data)
{
    std::vector<QImage> pictures;
    if (data == nullptr)
        return pictures;
    const QStringList formats = data->formats();
    if (formats.contains(QLatin1String("text/uri-list"))) {
        for (const QUrl& url : data->urls()) {
            if (!url.isLocalFile() || !isImageFile(QFileInfo(url.toLocalFile())))
                continue;
            QImageReader reader(url.toLocalFile());
            const QImage image = readBounded(reader);
            if (!image.isNull())
                pictures.push_back(image);
        }
        return pictures;
    }
    if (formats.contains(QLatin1String("application/pdf")))
        return pictures;
    // A picture put there by Kelvo itself is already decoded.
    if (formats.contains(QLatin1String("application/x-qt-image"))) {
        const QImage image = qvariant_cast<QImage>(data->imageData());
        if (!image.isNull()) {
            pictures.push_back(image);
            return pictures;
        }
    }
    for (const QString& format : formats) {
        if (!format.startsWith(QLatin1String("image/")))
            continue;
        // One picture offered in several formats is still one picture.
        QByteArray bytes = data->data(format);
        QBuffer buffer(&bytes);
        QImageReader reader(&buffer);
        const QImage image = readBounded(reader);
        if (!image.isNull()) {
            pictures.push_back(image);
            break;
        }
    }
    return pictures;
}

} // namespace app::hotkeys
