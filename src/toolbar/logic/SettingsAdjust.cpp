// SPDX-License-Identifier: GPL-3.0-or-later
#include "toolbar/logic/SettingsAdjust.h"

#include "annotation/logic/StrokeState.h"
#include "toolbar/logic/DataOfUsers.h"
#include "toolbar/logic/SettingsBox.h"

namespace toolbar {

namespace {

bool isText(QStringView tool)
{
    return tool == u"text" || tool == u"note";
}

} // namespace

std::optional<int> sizeOfDotClick(QStringView tool, int dot)
{
    if (dot < 0 || dot > 2 || (dot == 2 && isText(tool)))
        return std::nullopt;
    return sizeDots(tool)[static_cast<std::size_t>(dot)];
}

const QStringList& textSizeTitles()
{
    static const QStringList titles{
        QStringLiteral("10"), QStringLiteral("11"), QStringLiteral("12"), QStringLiteral("13"),
        QStringLiteral("14"), QStringLiteral("18"), QStringLiteral("24"), QStringLiteral("36"),
        QStringLiteral("48"), QStringLiteral("64"), QStringLiteral("72"),
    };
    return titles;
}

QString colorText(const QColor& color)
{
    return color.name(QColor::HexArgb);
}

QColor storedUserColor(const QVariantMap& storedDataOfUsers, const QString& tool)
{
    const QString text =
        storedDataOfUsers.value(tool).toMap().value(QStringLiteral("userColor")).toString();
    // Unreadable text counts as no colour: the swatch asks for one again.
    const QColor color = text.isEmpty() ? QColor() : QColor::fromString(text);
    return color.isValid() ? color : QColor();
}

BoxSettings settingsToShow(const DataOfUsers& data, const QString& tool,
                           const std::optional<annotation::Stroke>& current,
                           const QColor& userColor, int fontSize)
{
    BoxSettings shown;
    if (current) {
        shown.color = current->color;
        shown.size = static_cast<int>(current->size);
    } else {
        shown.color = data.color(tool);
        shown.size = data.size(tool);
    }
    shown.userColor = userColor;
    if (isText(tool))
        shown.sizeTitle = QString::number(fontSize > 0 ? fontSize : shown.size);
    return shown;
}

std::optional<int> applyToActiveStroke(annotation::StrokeState& strokes, const QColor& color,
                                       int size)
{
    std::optional<annotation::Stroke>& stroke = strokes.dicOfCurrentStroke;
    if (!stroke)
        return std::nullopt;
    if (static_cast<int>(stroke->size) == size && stroke->color == color)
        return std::nullopt;
    stroke->color = color;
    stroke->size = size;
    strokes.append();
    return stroke->type;
}

StrokeRefresh refreshAfterChange(int type)
{
    if (type == annotation::stroketype::Mosaic)
        return StrokeRefresh::Mosaic;
    if (type == annotation::stroketype::Highlight)
        return StrokeRefresh::HighlightAndMosaic;
    return StrokeRefresh::ImageView;
}

} // namespace toolbar
