// SPDX-License-Identifier: GPL-3.0-or-later
#include "toolbar/logic/SettingsBox.h"

namespace toolbar {

namespace {

bool isText(QStringView tool)
{
    return tool == u"text" || tool == u"note";
}

bool sizeIsNotColour(QStringView tool)
{
    return tool == u"mosaic" || tool == u"highlight";
}

} // namespace

std::array<int, 3> sizeDots(QStringView tool)
{
    if (tool == u"mosaic")
        return {3, 6, 10};
    if (tool == u"highlight")
        return {10, 20, 30};
    return {3, 10, 16};
}

bool showsSizeDots(QStringView tool)
{
    return !isText(tool);
}

int markedDot(QStringView tool, int size)
{
    if (!showsSizeDots(tool))
        return -1;
    const std::array<int, 3> dots = sizeDots(tool);
    for (int i = 0; i < 3; ++i) {
        if (dots[static_cast<std::size_t>(i)] == size)
            return i;
    }
    return -1;
}

QColor markedDotColor(QStringView tool, const QColor& toolColor)
{
    return sizeIsNotColour(tool) ? QColor::fromRgbF(0.47F, 0.74F, 0.99F) : toolColor;
}

QColor unmarkedDotColor()
{
    return QColor::fromRgbF(0.45F, 0.44F, 0.45F);
}

QString displaySize(QStringView tool, int size)
{
    if (isText(tool))
        return {};
    if (tool == u"highlight")
        return QString::number(size * 2.5, 'f', 0);
    return QString::number(size);
}

QString displaySizeUnit(QStringView tool)
{
    if (isText(tool))
        return {};
    return tool == u"highlight" ? QStringLiteral("%") : QStringLiteral("Pt");
}

const std::array<QColor, 5>& swatchColors()
{
    static const std::array<QColor, 5> colors{
        QColor::fromRgbF(1.0F, 0.0F, 0.0F),    QColor::fromRgbF(0.93F, 0.41F, 0.59F),
        QColor::fromRgbF(0.28F, 0.66F, 0.83F), QColor::fromRgbF(0.97F, 0.82F, 0.41F),
        QColor::fromRgbF(0.28F, 0.63F, 0.31F),
    };
    return colors;
}

} // namespace toolbar
