// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/output/FileNaming.h"

#include "core/Localized.h"

namespace app::output {

QString pictureBaseName(const QDateTime& when, const QLocale& locale)
{
    // With "AP" in the format, Qt's "hh" is the twelve-hour clock.
    return core::localized("Kelvo") + locale.toString(when, QStringLiteral("yyyy-MM-ddAPhh.mm.ss"));
}

QString freePicturePath(const QString& folder, const QString& baseName, ImageFileType type,
                        const std::function<bool(const QString&)>& exists)
{
    const QString extension = extensionOf(type);
    QString path = QStringLiteral("%1/%2.%3").arg(folder, baseName, extension);
    // Bounded, so a folder that answers "exists" to everything cannot hang
    // the save; the last candidate is then written over.
    for (int n = 2; n < 10000 && exists(path); ++n)
        path = QStringLiteral("%1/%2 %3.%4").arg(folder, baseName).arg(n).arg(extension);
    return path;
}

} // namespace app::output
