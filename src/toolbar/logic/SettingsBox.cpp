// SPDX-License-Identifier: GPL-3.0-or-later
#include "toolbar/logic/SettingsBox.h"

#include "core/Geometry.h"
#include "settings/Keys.h"
#include "toolbar/logic/ButtonBox.h"

#include <cstdio>

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
    // Written as printf writes it: a half goes to the even neighbour, so 5
    // (12.5%) reads 12.
    if (tool == u"highlight") {
        std::array<char, 32> text{};
        std::snprintf(text.data(), text.size(), "%.f", size * 2.5);
        return QString::fromLatin1(text.data());
    }
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

QRectF dotArea(int dot)
{
    // Each dot's share of the left part, split between the dots' centres.
    static constexpr std::array<qreal, 4> edges{3, 21, 39, 63};
    if (dot < 0 || dot > 2)
        return {};
    const auto i = static_cast<std::size_t>(dot);
    return {QPointF(edges[i], 2), QPointF(edges[i + 1], 30)};
}

QRectF swatchFrame(int swatch)
{
    if (swatch < 1 || swatch > 6)
        return {};
    // Two rows of three: the five fixed colours, then the user's own.
    const int i = swatch - 1;
    return {74 + (i % 3) * 19.0, i < 3 ? 5.0 : 25.0, 14, 14};
}

QRectF sizeMenuFrame()
{
    return {2, 8, 38, 24};
}

std::vector<QLatin1StringView> shapeOptions(QStringView tool)
{
    namespace keys = settings::keys;
    if (tool == u"square")
        return {keys::enableRoundOfSquare, keys::filledOfSquare};
    if (tool == u"ellipse")
        return {keys::filledOfEllipse};
    if (tool == u"arrow")
        return {keys::normalTypeOfArrow};
    return {};
}

QRectF optionFrame(int i)
{
    // Stacked in the strip right of the swatches.
    return {134, 5 + 20.0 * i, 16, 16};
}

int optionUnder(QStringView tool, QPointF p)
{
    const auto count = static_cast<int>(shapeOptions(tool).size());
    for (int i = 0; i < count; ++i) {
        if (optionFrame(i).contains(p))
            return i;
    }
    return -1;
}

int dotUnder(QStringView tool, QPointF p)
{
    for (int dot = 0; dot < 3; ++dot) {
        // The text tools show only the third, as a colour sample.
        if (!showsSizeDots(tool) && dot < 2)
            continue;
        if (dotArea(dot).contains(p))
            return dot;
    }
    return -1;
}

int swatchUnder(QPointF p)
{
    for (int swatch = 1; swatch <= 6; ++swatch) {
        // A point or two around each swatch still counts: they are small.
        if (swatchFrame(swatch).adjusted(-2, -2, 2, 2).contains(p))
            return swatch;
    }
    return -1;
}

QRectF placeColorBoxInOverlay(QStringView tool, const QRectF& selection, const QSizeF& screen)
{
    const QRectF bar = placeButtonBox(selection, screen);
    const QPointF origin = core::flipped(bar, screen.height()).topLeft();
    const std::optional<ColorBoxPlacement> box = placeColorBox(tool, origin);
    return box ? core::flipped(box->colorBox, screen.height()) : QRectF();
}

} // namespace toolbar
