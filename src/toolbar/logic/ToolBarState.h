// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "toolbar/logic/ToolRegistry.h"

#include <QString>

namespace toolbar {

// Which drawing tool is on. The name and the number are set together;
// the number is also the "type" of the strokes the tool makes.
struct ToolBarState
{
    QString selectFunction;    // the tool that is on, "" for none
    QString oldSelectFunction; // the tool that was on before the last choice
    int numberOfSelectFunction = -1;
    bool toolHaveSelected = false; // a tool was chosen in this capture

    // Sets the tool, or none for a number that names no drawing tool.
    void adjust(int number)
    {
        const bool drawing = number >= 0 && number < static_cast<int>(kTools.size()) &&
                             kTools[static_cast<std::size_t>(number)].can(can::Draw);
        numberOfSelectFunction = drawing ? number : -1;
        selectFunction =
            drawing ? QString(kTools[static_cast<std::size_t>(number)].name) : QString();
        if (drawing)
            toolHaveSelected = true;
        oldSelectFunction = selectFunction;
    }
    // A press in the selection draws only with a drawing tool of a real name.
    [[nodiscard]] bool drawingToolChosen() const
    {
        return numberOfSelectFunction >= 0 && selectFunction.size() >= 2;
    }
    void reset() { *this = ToolBarState{}; }
};

} // namespace toolbar
