// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "capture/logic/EventMonitorTable.h"
#include "core/Geometry.h"

#include <QPointF>

#include <functional>
#include <vector>

namespace capture {

// One action an event asks of one screen of the overlay session.
struct OverlayRoute
{
    int screen = -1;
    MonitorAction action = MonitorAction::PassThrough;
    QPointF local; // the pointer in that screen's overlay-local points

    bool operator==(const OverlayRoute&) const = default;
};

// The keyboard moves to another overlay: `release` gives it up (-1: nobody
// held it), `grab` takes it (-1: nothing to take).
struct KeyboardHandover
{
    int release = -1;
    int grab = -1;

    bool operator==(const KeyboardHandover&) const = default;
};

// The decisions of one overlay session, free of windows: which screens take
// part, which of them acts on each event, and which one holds the keyboard.
// Whoever runs on the overlay (region capture, scrolling capture, the
// recording overlay) performs the routes; the monitors' tables decide them.
class OverlayRouting
{
public:
    // A grab another client is holding is tried again this many times.
    static constexpr int kGrabAttempts = 50;

    // A session on `screens` (indices into `layout`, in the order their
    // parts were made) begins; any earlier one is forgotten.
    void begin(core::ScreenLayout layout, std::vector<int> screens);
    // The session is over: nothing routes any more and nobody holds the
    // keyboard.
    void end();
    // `screen` joins the running session, after those already in it.
    void addScreen(int screen);
    // `screen` leaves the session: nothing routes to it any more.
    void removeScreen(int screen);
    [[nodiscard]] bool isRunning() const { return m_running; }
    [[nodiscard]] const core::ScreenLayout& layout() const { return m_layout; }
    [[nodiscard]] const std::vector<int>& screens() const { return m_screens; }
    [[nodiscard]] bool hasScreen(int screen) const;

    // The actions for an event with the pointer at `pointer` (global
    // top-left points), in the order they are to be performed: screen by
    // screen as the session lists them, each screen's as its local monitor
    // lists them. Screens that let the event pass do not appear; nothing
    // routes while no session runs.
    [[nodiscard]] std::vector<OverlayRoute> route(MonitorEventType type, QPointF pointer,
                                                  const MonitorGates& gates) const;
    // Performs `routes` in order through `perform`, and stops as soon as
    // one of them has ended the session: an ended session acts on nothing.
    void dispatch(const std::vector<OverlayRoute>& routes,
                  const std::function<void(const OverlayRoute&)>& perform) const;

    // Whether `route` first moves the keyboard to its screen: it follows
    // the pointer to the screen it moves on, and a raise asks for it.
    [[nodiscard]] bool movesKeyboard(const OverlayRoute& route) const;
    [[nodiscard]] int keyScreen() const { return m_keyScreen; }
    // The keyboard goes to `screen`; nothing changes for a screen the
    // session does not have.
    [[nodiscard]] KeyboardHandover takeKeyboard(int screen);
    // Whether a grab of `screen` that failed is still wanted: the session
    // runs and nobody has taken the keyboard elsewhere since.
    [[nodiscard]] bool grabStillWanted(int screen) const;
    [[nodiscard]] static bool mayRetryGrab(int attempt) { return attempt < kGrabAttempts; }

private:
    core::ScreenLayout m_layout;
    std::vector<int> m_screens;
    bool m_running = false;
    int m_keyScreen = -1;
};

} // namespace capture
