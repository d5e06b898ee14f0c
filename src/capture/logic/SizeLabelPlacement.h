// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QRectF>
#include <QSizeF>
#include <QString>

#include <optional>

namespace capture {

// The size label at the selection's top-left corner: its frame and its two
// numbers, the selection's width and height in points.
struct SizeLabel
{
    static constexpr double kWidth = 90.0;
    static constexpr double kHeight = 20.0;

    QRectF frame; // overlay-local (y up), kWidth by kHeight
    QString widthText;
    QString heightText;

    bool operator==(const SizeLabel&) const = default;
};

// Places the label for a selection (overlay-local, the selection itself, not
// the crop border) on a screen of `screenSize` points. It sits on top of the
// selection's border, left-aligned with it. When that would leave the top of
// the screen it moves to the top edge beside the selection: to its left if
// there are more than 90 points there, else to its right if it fits, else
// under the selection's top-left corner. It is finally kept wholly on the
// screen. A selection narrower or lower than one point has no label.
[[nodiscard]] std::optional<SizeLabel> placeSizeLabel(const QRectF& selection, QSizeF screenSize);

} // namespace capture
