// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/output/ScreenPicture.h"

#include "platform/WindowServer.h"

namespace app::output {

core::Picture pictureOfScreenArea(platform::WindowServer& windows, const QRectF& area, double scale,
                                  QString* error)
{
    QImage image = windows.pictureOfRect(area);
    if (image.isNull()) {
        *error = QStringLiteral("the X server gave no picture of the screen");
        return {};
    }
    return core::Picture::withScale(std::move(image), scale);
}

} // namespace app::output
