// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/output/ImageFileType.h"

#include <QDateTime>
#include <QLocale>
#include <QString>

#include <functional>

namespace app::output {

// The name of a picture without folder or extension: the localised
// "Kelvo" directly followed by the date as "yyyy-MM-dd", the am/pm marker,
// then the twelve-hour time with points, e.g. "Kelvo2024-03-05PM01.02.03".
[[nodiscard]] QString pictureBaseName(const QDateTime& when, const QLocale& locale = QLocale());

// "folder/base.ext" when no such file exists, else "folder/base 2.ext",
// "folder/base 3.ext", ... the first one free: two pictures taken in the
// same second never replace each other. `exists` is asked about each
// candidate (tests pass their own).
[[nodiscard]] QString freePicturePath(const QString& folder, const QString& baseName,
                                      ImageFileType type,
                                      const std::function<bool(const QString&)>& exists);

} // namespace app::output
