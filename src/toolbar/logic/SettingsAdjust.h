// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "annotation/logic/Stroke.h"

#include <QColor>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <optional>
#include <vector>

namespace annotation {
class StrokeState;
}

// How a change in the settings box reaches a tool's remembered settings
// and the active stroke.
namespace toolbar {

class DataOfUsers;

// The number a click on dot 0, 1 or 2 stores as the tool's size; none for
// the third dot of the text tools, which only shows their colour.
[[nodiscard]] std::optional<int> sizeOfDotClick(QStringView tool, int dot);

// The point sizes of the text tools' size menu, smallest first.
[[nodiscard]] const QStringList& textSizeTitles();

// A colour as the remembered settings keep it: "#AARRGGBB".
[[nodiscard]] QString colorText(const QColor& color);

// The user's own colour of `tool` in the saved "DataOfUsers" dictionary;
// invalid while none is saved. Only a saved colour counts.
[[nodiscard]] QColor storedUserColor(const QVariantMap& storedDataOfUsers, const QString& tool);

// What the settings box shows for a tool.
struct BoxSettings
{
    QColor color;
    int size = 0;
    QColor userColor;  // invalid: the plus sign instead
    QString sizeTitle; // the text tools' size menu
    // Whether each of the tool's shape options is on (see shapeOptions()).
    std::vector<bool> options;
};

// The active stroke's colour and size while one is active, else the tool's
// remembered ones; `fontSize` is the active text's font size, 0 for none.
[[nodiscard]] BoxSettings settingsToShow(const DataOfUsers& data, const QString& tool,
                                         const std::optional<annotation::Stroke>& current,
                                         const QColor& userColor, int fontSize = 0);

// The active stroke takes the tool's colour and size when either differs,
// and a copy of it joins the history as an undo step (the undone tail is
// kept, as for every change of settings). The stroke's type when it
// changed; none when no stroke is active or nothing differs.
std::optional<int> applyToActiveStroke(annotation::StrokeState& strokes, const QColor& color,
                                       int size);

// What must be painted again after a change to a stroke of `type`.
enum class StrokeRefresh
{
    ImageView,          // the stroke layer
    Mosaic,             // the mosaic layer
    HighlightAndMosaic, // both layers a highlight lies in
};
[[nodiscard]] StrokeRefresh refreshAfterChange(int type);

} // namespace toolbar
