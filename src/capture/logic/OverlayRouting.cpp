// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/logic/OverlayRouting.h"

#include <algorithm>
#include <utility>

namespace capture {

void OverlayRouting::begin(core::ScreenLayout layout, std::vector<int> screens)
{
    m_layout = std::move(layout);
    m_screens = std::move(screens);
    m_running = true;
    m_keyScreen = -1;
}

void OverlayRouting::end()
{
    m_screens.clear();
    m_running = false;
    m_keyScreen = -1;
}

void OverlayRouting::addScreen(int screen)
{
    if (m_running && !hasScreen(screen))
        m_screens.push_back(screen);
}

void OverlayRouting::removeScreen(int screen)
{
    std::erase(m_screens, screen);
}

bool OverlayRouting::hasScreen(int screen) const
{
    return std::find(m_screens.begin(), m_screens.end(), screen) != m_screens.end();
}

std::vector<OverlayRoute> OverlayRouting::route(MonitorEventType type, QPointF pointer,
                                                const MonitorGates& gates) const
{
    std::vector<OverlayRoute> routes;
    if (!m_running)
        return routes;
    // Every screen is shown the event, as its monitors would be; the table
    // lets exactly one of them act on it.
    const MonitorEvent event{type, m_layout.topLeftToBottomLeft(pointer)};
    const EventMonitorTable table(m_layout);
    for (const int screen : m_screens) {
        for (const MonitorAction action : table.route(MonitorKind::Local, screen, event, gates)) {
            if (action != MonitorAction::PassThrough)
                routes.push_back({screen, action, m_layout.topLeftToOverlayLocal(screen, pointer)});
        }
    }
    return routes;
}

void OverlayRouting::dispatch(const std::vector<OverlayRoute>& routes,
                              const std::function<void(const OverlayRoute&)>& perform) const
{
    for (const OverlayRoute& route : routes) {
        if (!m_running)
            return;
        perform(route);
    }
}

bool OverlayRouting::movesKeyboard(const OverlayRoute& route) const
{
    switch (route.action) {
    case MonitorAction::MouseMovedToView:
    case MonitorAction::MouseMovedToAnnotation:
        return route.screen != m_keyScreen;
    case MonitorAction::OrderFrontAndActivate:
        return true;
    default:
        return false;
    }
}

KeyboardHandover OverlayRouting::takeKeyboard(int screen)
{
    if (!m_running || !hasScreen(screen))
        return {};
    KeyboardHandover handover;
    if (m_keyScreen >= 0 && m_keyScreen != screen)
        handover.release = m_keyScreen;
    handover.grab = screen;
    m_keyScreen = screen;
    return handover;
}

bool OverlayRouting::grabStillWanted(int screen) const
{
    return m_running && m_keyScreen == screen;
}

} // namespace capture
