// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Picture.h"

#include <QRectF>
#include <QString>

namespace platform {
class WindowServer;
}

namespace app::output {

// What is on screen in `area` (global top-left points), as a picture at
// `scale`, the density of the screen it was taken on: the one way the
// whole-screen pictures are taken, by `kelvo full` and `kelvo screen` and
// by the hot-key actions alike. Null, with why in `error`, when the X
// server gives no picture.
[[nodiscard]] core::Picture pictureOfScreenArea(platform::WindowServer& windows, const QRectF& area,
                                                double scale, QString* error);

} // namespace app::output
