// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>

#include <vector>

class QMimeData;

namespace app::hotkeys {

// The pictures a pin can be made of from what the clipboard (or the primary
// selection) holds. A file list wins over everything else: each existing
// file that is no folder and whose name is that of an image type is read.
// Without a file list, one picture given as image data, unless it comes
// with a PDF, which is then the thing that was copied. Pictures are read
// with a bound on their size; what cannot be read is left out.
[[nodiscard]] std::vector<QImage> picturesOnPasteboard(const QMimeData* data);

} // namespace app::hotkeys
