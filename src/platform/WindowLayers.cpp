// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/WindowLayers.h"

#include "platform/WindowRecord.h"

#include <algorithm>

namespace platform {

namespace {

bool hasType(const WindowFacts& facts, WindowType type)
{
    return std::find(facts.types.begin(), facts.types.end(), type) != facts.types.end();
}

bool isTransient(const WindowFacts& facts)
{
    return facts.overrideRedirect || hasType(facts, WindowType::Menu) ||
           hasType(facts, WindowType::DropdownMenu) || hasType(facts, WindowType::PopupMenu) ||
           hasType(facts, WindowType::Tooltip) || hasType(facts, WindowType::Combo) ||
           hasType(facts, WindowType::Dnd);
}

} // namespace

bool hasState(const WindowFacts& facts, WindowState state)
{
    return std::find(facts.states.begin(), facts.states.end(), state) != facts.states.end();
}

int layerOf(const WindowFacts& facts)
{
    if (hasType(facts, WindowType::Desktop))
        return layers::Desktop;
    if (hasType(facts, WindowType::Dock))
        return layers::Dock;
    if (hasType(facts, WindowType::Notification))
        return layers::Notification;
    if (isTransient(facts))
        return layers::Popup;
    if (hasState(facts, WindowState::Above))
        return layers::Above;
    return layers::Normal;
}

} // namespace platform
