// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "capture/logic/EventMonitorTable.h"
#include "capture/logic/OverlayRouting.h"
#include "capture/ui/OverlayWindowPool.h"
#include "core/Geometry.h"

#include <QMetaObject>
#include <QObject>
#include <QPointF>

#include <deque>
#include <memory>
#include <vector>

class QEvent;
class QScreen;
class QWindow;

namespace core {
class Clock;
}
namespace platform {
class PointerControl;
}

namespace capture {

class OverlayPart;
class QNClipWindow;

// What runs on an overlay session tells it how to act on the events the
// session routes to it.
class OverlaySessionClient
{
public:
    virtual ~OverlaySessionClient() = default;

    // The gates of the monitors, read as each event arrives.
    [[nodiscard]] virtual MonitorGates monitorGates() const = 0;
    // Whether a pointer event at `global` (Qt's global position) belongs to
    // a widget of the client's own that takes it itself, such as a tool bar
    // over the overlay; such events are not routed.
    virtual bool pointerOnOwnWidget(QPointF global) = 0;
    // Performs one routed action on `part`; `event` is the Qt event the
    // route came from. The keyboard has already followed the pointer.
    virtual void perform(const OverlayRoute& route, OverlayPart& part, const QEvent& event) = 0;
    // A modal dialog of ours came up during the session. It would block the
    // overlays' input and hide under them, so the session must end.
    virtual void modalDialogShown() = 0;
    // Whether keys must wait behind work the client has queued: a key typed
    // right after a release must meet what that release started (the
    // mark-up's window, say), even when both arrive in one batch.
    [[nodiscard]] virtual bool keysMustWait() const { return false; }

protected:
    OverlaySessionClient() = default;
    OverlaySessionClient(const OverlaySessionClient&) = default;
    OverlaySessionClient& operator=(const OverlaySessionClient&) = default;
};

// The overlay over every screen while something runs on it: one window per
// screen from a pool, the routing of Qt's events to the part of the screen
// that acts on them, the keyboard grab, and an ending that never frees what
// a running handler still uses.
class OverlaySession : public QObject
{
    Q_OBJECT
public:
    OverlaySession(OverlaySessionClient& client, platform::PointerControl& pointer,
                   core::Clock& clock, QObject* parent = nullptr);
    ~OverlaySession() override;

    // Marks a stretch in which the session's parts may be on the stack: the
    // event filter, and any handler of the client's own that may end the
    // session. An ending inside one retires the parts instead of freeing
    // them; they go once the outermost stretch has returned to the event loop.
    class HandlerScope
    {
    public:
        explicit HandlerScope(OverlaySession& session);
        ~HandlerScope();
        HandlerScope(const HandlerScope&) = delete;
        HandlerScope& operator=(const HandlerScope&) = delete;

    private:
        OverlaySession& m_session;
    };

    [[nodiscard]] bool isRunning() const { return m_routing.isRunning(); }
    // A session over `layout` begins: from now on Qt's events for the
    // overlays are routed. Its screens are matched with Qt's in layout
    // order, primary first.
    void begin(const core::ScreenLayout& layout);
    // The hidden overlay window for `screen`, lent for this session; null
    // when Qt has no such screen. Between sessions the windows are kept.
    [[nodiscard]] QNClipWindow* windowFor(int screen);
    // `part` takes part in the session until it is retired.
    void addPart(OverlayPart& part);
    // `part` takes no more part: it is retired now and freed once no handler
    // can be using it.
    void retire(std::unique_ptr<OverlayPart> part);
    // A connection to the session's windows that ends with the session (the
    // windows themselves outlive it in the pool).
    void keepUntilEnd(QMetaObject::Connection connection);
    // No more routing, no keyboard; the windows wait in the pool. The parts
    // are the client's to retire.
    void end();

    [[nodiscard]] const core::ScreenLayout& layout() const { return m_routing.layout(); }
    [[nodiscard]] int screenUnderPointer() const;
    [[nodiscard]] OverlayPart* partForScreen(int screen) const;
    [[nodiscard]] const std::vector<OverlayPart*>& parts() const { return m_parts; }

    // The keyboard goes to the overlay of `screen`: raised, activated and
    // grabbed; a grab another client holds is tried again for a second.
    void giveKeyboardTo(int screen, int attempt = 0);
    [[nodiscard]] int keyScreen() const { return m_routing.keyScreen(); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    // Whether `event` must wait its turn; it has been sent round again then.
    bool mustWait(QWindow& window, const QEvent& event, bool isKey);

private:
    void releaseRetired();
    [[nodiscard]] QPointF pointerOf(const QEvent* event) const;

    OverlaySessionClient& m_client;
    platform::PointerControl& m_pointer;
    core::Clock& m_clock;
    OverlayRouting m_routing;
    std::vector<QScreen*> m_screens; // Qt's screens in layout order
    std::vector<OverlayPart*> m_parts;
    // Input events sent round the queue again, in the order they came.
    std::deque<const QEvent*> m_deferredInput;
    // Parts of ended sessions, kept until no handler can use them.
    std::vector<std::unique_ptr<OverlayPart>> m_retired;
    int m_handlerDepth = 0;
    bool m_releaseQueued = false;
    std::vector<QMetaObject::Connection> m_sessionConnections;
    OverlayWindowPool m_windowPool;
};

} // namespace capture
