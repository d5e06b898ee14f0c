// SPDX-License-Identifier: GPL-3.0-or-later
#include "toolbar/logic/ToolBarState.h"

#include "toolbar/logic/ToolRegistry.h"

namespace toolbar {

void ToolBarState::openWindow()
{
    mouseOnButton = false;
    mouseOnWhichButtonBox = 0;
    tipsBoxIsOpening = false;
    mouseMovedTimes = 0;
    scrollScreenshotEnabled = true;
}

void ToolBarState::resetButtonBox(const BarPlacement& placement)
{
    buttonBoxOrigin = placement.buttonBoxOrigin;
    buttonBoxNeedHidden = placement.buttonBoxNeedHidden;
    oldSelectFunction.clear();
}

void ToolBarState::adjust(int number)
{
    const bool drawing = number >= 0 && number < static_cast<int>(kTools.size()) &&
                         kTools[static_cast<std::size_t>(number)].can(can::Draw);
    numberOfSelectFunction = drawing ? number : -1;
    selectFunction = drawing ? QString(kTools[static_cast<std::size_t>(number)].name) : QString();
    if (drawing)
        toolHaveSelected = true;
    refreshAllButtonState();
    oldSelectFunction = selectFunction;
}

void ToolBarState::refreshAllButtonState()
{
    const int selected = toolSlot(selectFunction);
    if (selected >= 0)
        toolButtonOn[static_cast<std::size_t>(selected)] = true;
    // The tool left behind goes off, unless it is the one chosen again. The
    // pencil is compared under a name no tool has, so choosing it again
    // while it is the tool left behind paints it off.
    const int old = toolSlot(oldSelectFunction);
    if (old < 0)
        return;
    const bool pencil = oldSelectFunction == tool(ToolId::PencilPen).name;
    const QString same = pencil ? QStringLiteral("pencilPan") : oldSelectFunction;
    if (selectFunction != same)
        toolButtonOn[static_cast<std::size_t>(old)] = false;
}

ButtonLook ToolBarState::look(int slot, bool canUndo) const
{
    if (slot >= 0 && slot < kUndoSlot)
        return toolButtonOn[static_cast<std::size_t>(slot)] ? ButtonLook::Selected
                                                            : ButtonLook::Normal;
    if (slot == kUndoSlot)
        return canUndo ? ButtonLook::Normal : ButtonLook::Disabled;
    if (slot == kScrollSlot)
        return scrollScreenshotEnabled ? ButtonLook::Normal : ButtonLook::Disabled;
    return ButtonLook::Normal;
}

} // namespace toolbar
