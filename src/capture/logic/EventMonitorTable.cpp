// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/logic/EventMonitorTable.h"

#include <utility>

namespace capture {

namespace {

using Actions = std::vector<MonitorAction>;

// A press or release on a text box while marking up belongs to the text box.
bool belongsToTextBox(const MonitorGates& gates)
{
    return gates.pointerRole == PointerRole::TextIBeam && gates.clipToolbarWindowOpened;
}

} // namespace

EventMonitorTable::EventMonitorTable(core::ScreenLayout layout)
    : m_layout(std::move(layout))
{}

bool EventMonitorTable::isForScreen(int screen, QPointF mouseLocation) const
{
    return screen >= 0 && screen == m_layout.currentScreenForMouseLocation(mouseLocation);
}

std::vector<MonitorAction> EventMonitorTable::route(MonitorKind kind, int screen,
                                                    const MonitorEvent& event,
                                                    const MonitorGates& gates) const
{
    const bool forThisScreen = isForScreen(screen, event.mouseLocation);
    Actions actions = kind == MonitorKind::Local ? local(forThisScreen, screen, event.type, gates)
                                                 : global(forThisScreen, event.type, gates);
    if (actions.empty())
        actions.push_back(MonitorAction::PassThrough);
    return actions;
}

// Events that name no screen of their own (keys, modifiers, moves, the
// right button) are taken by the controller under the mouse only, so that
// each is handled once however many screens there are.
std::vector<MonitorAction> EventMonitorTable::local(bool forThisScreen, int screen,
                                                    MonitorEventType type,
                                                    const MonitorGates& gates) const
{
    switch (type) {
    case MonitorEventType::KeyDown:
        return forThisScreen ? Actions{MonitorAction::ForwardKeyDown} : Actions{};
    case MonitorEventType::FlagsChanged:
        return forThisScreen ? Actions{MonitorAction::FlagsChanged} : Actions{};
    case MonitorEventType::MouseMoved:
        return forThisScreen ? Actions{MonitorAction::MouseMovedToAnnotation} : Actions{};
    case MonitorEventType::LeftMouseDown: {
        if (gates.mouseOnButton || !forThisScreen)
            return {};
        Actions actions{MonitorAction::HideTip};
        if (!belongsToTextBox(gates))
            actions.push_back(MonitorAction::MouseDown);
        return actions;
    }
    case MonitorEventType::LeftMouseDragged:
        if (gates.mouseOnButton || !forThisScreen)
            return {};
        return {MonitorAction::MouseDragged};
    case MonitorEventType::LeftMouseUp:
        if (gates.mouseOnButton || belongsToTextBox(gates) || !forThisScreen)
            return {};
        return {MonitorAction::MouseUp};
    case MonitorEventType::RightMouseDown:
        // The button may be on a tool bar button by the time the delay ends,
        // so mouseOnButton is asked then, not now.
        return forThisScreen ? Actions{MonitorAction::CancelAfter10ms} : Actions{};
    case MonitorEventType::ScrollWheel:
        if (screen >= 0 && screen == gates.annotationWindowScreen)
            return {MonitorAction::ScrollWheelToAnnotation};
        return {};
    case MonitorEventType::RightMouseUp:
    case MonitorEventType::KeyUp:
    case MonitorEventType::Gesture:
        return {};
    }
    return {};
}

std::vector<MonitorAction> EventMonitorTable::global(bool forThisScreen, MonitorEventType type,
                                                     const MonitorGates& gates)
{
    switch (type) {
    case MonitorEventType::ScrollWheel:
        if (gates.mouseOnButton || !gates.scrollScreenShot || !forThisScreen)
            return {};
        return {MonitorAction::ScrollWheelToView};
    case MonitorEventType::FlagsChanged:
        return forThisScreen ? Actions{MonitorAction::FlagsChanged} : Actions{};
    case MonitorEventType::LeftMouseDown: {
        if (gates.mouseOnButton || !forThisScreen)
            return {};
        Actions actions{MonitorAction::HideTip};
        if (!gates.clipToolbarWindowOpened) {
            actions.push_back(MonitorAction::MouseDown);
            actions.push_back(MonitorAction::OrderFrontAndActivate);
        }
        return actions;
    }
    case MonitorEventType::LeftMouseDragged:
        if (gates.mouseOnButton || !forThisScreen || gates.clipToolbarWindowOpened)
            return {};
        return {MonitorAction::MouseDragged};
    case MonitorEventType::LeftMouseUp:
        if (gates.mouseOnButton || !forThisScreen || gates.clipToolbarWindowOpened)
            return {};
        return {MonitorAction::MouseUp};
    case MonitorEventType::MouseMoved:
        if (!forThisScreen)
            return {};
        return {gates.clipToolbarWindowOpened ? MonitorAction::MouseMovedToAnnotation
                                              : MonitorAction::MouseMovedToView};
    case MonitorEventType::RightMouseUp:
        if (gates.mouseOnButton || !forThisScreen)
            return {};
        return {MonitorAction::Cancel};
    case MonitorEventType::RightMouseDown:
    case MonitorEventType::KeyDown:
    case MonitorEventType::KeyUp:
    case MonitorEventType::Gesture:
        return {};
    }
    return {};
}

} // namespace capture
