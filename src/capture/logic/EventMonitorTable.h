// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "capture/logic/PointerRole.h"
#include "core/Geometry.h"

#include <QPointF>

#include <vector>

namespace capture {

// Event types as the monitors know them; the numbers are the established
// event type codes.
enum class MonitorEventType
{
    LeftMouseDown = 1,
    LeftMouseUp = 2,
    RightMouseDown = 3,
    RightMouseUp = 4,
    MouseMoved = 5,
    LeftMouseDragged = 6,
    KeyDown = 10,
    KeyUp = 11,
    FlagsChanged = 12,
    ScrollWheel = 22,
    Gesture = 29, // magnify, rotate, swipe and the like: never acted on
};

// Which of a controller's two monitors sees the event: the local one gets
// events meant for this application, the global one events that went to
// another client (say while the overlay lets input through).
enum class MonitorKind
{
    Local,
    Global,
};

struct MonitorEvent
{
    MonitorEventType type = MonitorEventType::MouseMoved;
    QPointF mouseLocation; // global bottom-left points, where the pointer is now
};

// Flags of the overlay, the tool bar and the scrolling capture that gate
// the monitors, read at the moment the event arrives.
struct MonitorGates
{
    bool mouseOnButton = false;           // the pointer rests on a tool bar button
    bool clipToolbarWindowOpened = false; // the annotation window is open
    PointerRole pointerRole = PointerRole::Arrow;
    bool scrollScreenShot = false;   // a scrolling capture runs
    int annotationWindowScreen = -1; // screen index of the annotation window, -1 none
};

enum class MonitorAction
{
    PassThrough,             // nothing to do here; the event goes on its usual way
    HideTip,                 // hide the tool bar's tip
    MouseDown,               // mousedown: of this overlay's view
    MouseDragged,            // mousedragged: of this overlay's view
    MouseUp,                 // mouseup: of this overlay's view
    OrderFrontAndActivate,   // raise this overlay and take the keyboard
    CancelAfter10ms,         // after 10 ms, cancel unless mouseOnButton is true then
    Cancel,                  // cancel the capture from this controller
    ForwardKeyDown,          // the capture keys, then keyDown: of the annotation controller
    FlagsChanged,            // flagsChanged: of the annotation controller
    MouseMovedToAnnotation,  // mouseMoved: of the annotation controller
    MouseMovedToView,        // mouseMoved: of this overlay's view
    ScrollWheelToAnnotation, // scrollWheelFromTextView: of the annotation controller
    ScrollWheelToView,       // scrollWheel: of this overlay's view
};

// The two event monitors every screen's controller installs. Every event
// reaches the monitors of every screen; these tables say what the
// controller of `screen` does with it, so that each event is acted on once,
// by the controller of the screen under the mouse (the scroll wheel of the
// local monitor goes to the annotation window's screen instead).
class EventMonitorTable
{
public:
    explicit EventMonitorTable(core::ScreenLayout layout);

    // The actions, in order, for the controller of screen index `screen`;
    // {PassThrough} when it does nothing.
    [[nodiscard]] std::vector<MonitorAction>
    route(MonitorKind kind, int screen, const MonitorEvent& event, const MonitorGates& gates) const;

    // Whether `screen` is the screen under the mouse.
    [[nodiscard]] bool isForScreen(int screen, QPointF mouseLocation) const;

private:
    [[nodiscard]] std::vector<MonitorAction>
    local(bool forThisScreen, int screen, MonitorEventType type, const MonitorGates& gates) const;
    [[nodiscard]] static std::vector<MonitorAction>
    global(bool forThisScreen, MonitorEventType type, const MonitorGates& gates);

    core::ScreenLayout m_layout;
};

} // namespace capture
