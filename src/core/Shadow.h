// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QImage>
#include <QRectF>
#include <QString>

class QPainter;

namespace core {

// The shadow's colour when the preference holds none: black at 40 %.
[[nodiscard]] QColor defaultShadowColour();
// A stored shadow colour ("#AARRGGBB"), or the default when absent or unreadable.
[[nodiscard]] QColor shadowColourFrom(const QString& stored);

// The soft shadow a picture casts straight down (no offset): an image
// `margin` pixels larger on every side whose alpha is the picture's own
// alpha blurred by a Gaussian of `sigma` pixels, tinted with `colour`.
[[nodiscard]] QImage shadowOf(const QImage& picture, int margin, double sigma,
                              const QColor& colour);

// Draws `image` into `target` with its shadow under it. `blur` is the
// shadow's blur radius in the painter's units (half of it is the Gaussian's
// deviation); the shadow is rendered at the painter's device density.
void drawWithShadow(QPainter& painter, const QRectF& target, const QImage& image,
                    const QColor& colour, qreal blur);

} // namespace core
