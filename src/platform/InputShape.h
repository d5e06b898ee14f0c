// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QRegion>
#include <QtGui/qwindowdefs.h>

namespace platform {

// Which part of a top-level window takes pointer input; elsewhere input
// falls through to the windows below, while the window still shows. A
// scrolling capture and the recording frame use it to leave the live window
// under them usable without a compositor: their overlay lets everything
// through, or keeps input only on its own controls.
class InputShape
{
public:
    virtual ~InputShape() = default;

    // `window` is a native top-level (QWindow::winId()); `region` is in its
    // own device pixels. An empty region makes the whole window
    // input-transparent. False when the window system cannot do it.
    [[nodiscard]] virtual bool setInputRegion(WId window, const QRegion& region) = 0;
    // The whole window takes input again.
    [[nodiscard]] virtual bool clearInputRegion(WId window) = 0;

    [[nodiscard]] bool makeInputTransparent(WId window) { return setInputRegion(window, {}); }
};

} // namespace platform
