// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/logic/SizeLabelPlacement.h"

#include <algorithm>

namespace capture {

namespace {

constexpr double kBorderGrowth = 6.0;

QString points(double value)
{
    return QString::asprintf("%.f", value);
}

} // namespace

std::optional<SizeLabel> placeSizeLabel(const QRectF& selection, QSizeF screenSize)
{
    if (selection.width() < 1.0 || selection.height() < 1.0)
        return std::nullopt;
    const double px = screenSize.width() - SizeLabel::kWidth;
    const double py = screenSize.height() - SizeLabel::kHeight;
    const QRectF border =
        selection.adjusted(-kBorderGrowth, -kBorderGrowth, kBorderGrowth, kBorderGrowth);
    const double x = border.x();
    const double y = border.y();
    const double w = border.width();
    const double h = border.height();

    SizeLabel label;
    label.widthText = points(w - 2.0 * kBorderGrowth);
    label.heightText = points(h - 2.0 * kBorderGrowth);

    const double left = std::max(-5.0, x);
    // The top is compared in single precision, as the label's frame is.
    const auto top = static_cast<double>(static_cast<float>(y + h));
    QPointF origin;
    if (top <= py) {
        origin = {left + 5.0, top};
    } else if (left > 90.0) {
        origin = {left - 92.0, py};
    } else if (px > x + w) {
        origin = {x + w - 1.0, py};
    } else {
        origin = {left + 5.0, y > 20.0 ? y - 20.0 : py};
    }
    // Keep the label wholly on the screen when a rule above would not (a
    // narrow selection at the right edge, say).
    origin.setX(std::clamp(origin.x(), 0.0, std::max(0.0, px)));
    origin.setY(std::clamp(origin.y(), 0.0, std::max(0.0, py)));
    label.frame = QRectF(origin, QSizeF(SizeLabel::kWidth, SizeLabel::kHeight));
    return label;
}

} // namespace capture
