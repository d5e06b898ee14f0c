// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Picture.h"
#include "core/Shadow.h"

#include <QColor>
#include <QRectF>
#include <QSizeF>

namespace app::output {

// The shadow's colour and how it is stored are shared with the capture.
using core::defaultShadowColour;
using core::shadowColourFrom;

// Where a picture lies on its shadow's canvas, in points: the canvas is
// `size` larger on every side and the picture sits at (size, size).
struct ShadowGeometry
{
    QSizeF canvas;
    QRectF picture;
    qreal blur = 0; // 1.1 times the size
};
[[nodiscard]] ShadowGeometry shadowGeometry(QSizeF picture, qreal size);

// A new picture `size` points larger on every side with a soft shadow of
// `colour` around the picture (no offset, blur 1.1 times the size). The
// pixels keep the picture's density.
[[nodiscard]] core::Picture addShadow(const core::Picture& picture, qreal size,
                                      const QColor& colour);

// The picture clipped to its bubble outline of `radius` on all corners;
// outside the outline it is transparent. Same size.
[[nodiscard]] core::Picture addRoundImgae(const core::Picture& picture, qreal radius);

} // namespace app::output
