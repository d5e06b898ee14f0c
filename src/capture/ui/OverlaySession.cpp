// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/ui/OverlaySession.h"

#include "capture/ui/OverlayPart.h"
#include "capture/ui/QNClipWindow.h"
#include "core/Clock.h"
#include "platform/PointerControl.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLoggingCategory>
#include <QMouseEvent>
#include <QScreen>
#include <QWidget>
#include <QWindow>

#include <algorithm>
#include <chrono>
#include <optional>

namespace capture {

namespace {

using namespace std::chrono_literals;

Q_LOGGING_CATEGORY(lcKeyboard, "kelvo.keyboard", QtWarningMsg)

// How long a grab another client holds waits before it is tried again.
constexpr auto kGrabRetryDelay = 20ms;

bool isModifierKey(int key)
{
    return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt ||
           key == Qt::Key_Meta || key == Qt::Key_AltGr || key == Qt::Key_CapsLock ||
           key == Qt::Key_Super_L || key == Qt::Key_Super_R;
}

// The monitors' view of a Qt event; nullopt for events they never see.
std::optional<MonitorEventType> monitorTypeOf(const QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick: {
        const auto button = static_cast<const QMouseEvent*>(event)->button();
        if (button == Qt::LeftButton)
            return MonitorEventType::LeftMouseDown;
        if (button == Qt::RightButton)
            return MonitorEventType::RightMouseDown;
        return std::nullopt;
    }
    case QEvent::MouseButtonRelease: {
        const auto button = static_cast<const QMouseEvent*>(event)->button();
        if (button == Qt::LeftButton)
            return MonitorEventType::LeftMouseUp;
        if (button == Qt::RightButton)
            return MonitorEventType::RightMouseUp;
        return std::nullopt;
    }
    case QEvent::MouseMove:
        return (static_cast<const QMouseEvent*>(event)->buttons() & Qt::LeftButton)
                   ? MonitorEventType::LeftMouseDragged
                   : MonitorEventType::MouseMoved;
    case QEvent::KeyPress:
        return isModifierKey(static_cast<const QKeyEvent*>(event)->key())
                   ? MonitorEventType::FlagsChanged
                   : MonitorEventType::KeyDown;
    case QEvent::KeyRelease:
        return isModifierKey(static_cast<const QKeyEvent*>(event)->key())
                   ? MonitorEventType::FlagsChanged
                   : MonitorEventType::KeyUp;
    case QEvent::Wheel:
        return MonitorEventType::ScrollWheel;
    default:
        return std::nullopt;
    }
}

bool isPointerEvent(const QEvent* event)
{
    const QEvent::Type t = event->type();
    return t == QEvent::MouseMove || t == QEvent::MouseButtonPress ||
           t == QEvent::MouseButtonRelease || t == QEvent::MouseButtonDblClick;
}

} // namespace

OverlaySession::OverlaySession(OverlaySessionClient& client, platform::PointerControl& pointer,
                               core::Clock& clock, QObject* parent)
    : QObject(parent)
    , m_client(client)
    , m_pointer(pointer)
    , m_clock(clock)
    , m_windowPool(clock)
{}

OverlaySession::~OverlaySession()
{
    qApp->removeEventFilter(this);
    // While the pooled windows the parts borrowed still exist.
    m_retired.clear();
}

OverlaySession::HandlerScope::HandlerScope(OverlaySession& session)
    : m_session(session)
{
    ++m_session.m_handlerDepth;
}

OverlaySession::HandlerScope::~HandlerScope()
{
    if (--m_session.m_handlerDepth == 0 && !m_session.m_retired.empty())
        m_session.releaseRetired();
}

void OverlaySession::releaseRetired()
{
    // Always from the event loop: even the outermost handler's caller may
    // still hold a view of the session (a widget's own event handler).
    if (m_releaseQueued)
        return;
    m_releaseQueued = true;
    m_clock.singleShot(0ms, this, [this] {
        m_releaseQueued = false;
        if (m_handlerDepth > 0)
            return; // the handler's scope queues it again as it ends
        m_retired.clear();
    });
}

void OverlaySession::begin(const core::ScreenLayout& layout)
{
    m_routing.begin(layout, {});
    m_deferredInput.clear(); // input of an earlier session were delivered or dropped
    m_screens.clear();
    QList<QScreen*> screens = QGuiApplication::screens();
    if (QScreen* primary = QGuiApplication::primaryScreen()) {
        screens.removeAll(primary);
        screens.prepend(primary);
    }
    m_screens.assign(screens.begin(), screens.end());
    qApp->installEventFilter(this);
}

QNClipWindow* OverlaySession::windowFor(int screen)
{
    if (screen < 0 || screen >= static_cast<int>(m_screens.size()) || screen >= layout().count())
        return nullptr;
    return m_windowPool.acquire(m_screens[static_cast<std::size_t>(screen)]);
}

void OverlaySession::addPart(OverlayPart& part)
{
    m_parts.push_back(&part);
    m_routing.addScreen(part.screen());
}

void OverlaySession::retire(std::unique_ptr<OverlayPart> part)
{
    if (part == nullptr)
        return;
    std::erase(m_parts, part.get());
    if (partForScreen(part->screen()) == nullptr)
        m_routing.removeScreen(part->screen());
    part->retire();
    m_retired.push_back(std::move(part));
    releaseRetired();
}

void OverlaySession::keepUntilEnd(QMetaObject::Connection connection)
{
    m_sessionConnections.push_back(std::move(connection));
}

void OverlaySession::end()
{
    for (const QMetaObject::Connection& c : m_sessionConnections)
        disconnect(c);
    m_sessionConnections.clear();
    qApp->removeEventFilter(this);
    m_routing.end();
}

int OverlaySession::screenUnderPointer() const
{
    return layout().screenAtTopLeft(m_pointer.position());
}

OverlayPart* OverlaySession::partForScreen(int screen) const
{
    for (OverlayPart* part : m_parts) {
        if (part->screen() == screen)
            return part;
    }
    return nullptr;
}

void OverlaySession::giveKeyboardTo(int screen, int attempt)
{
    const OverlayPart* part = partForScreen(screen);
    QWidget* window = part != nullptr ? part->overlayWindow() : nullptr;
    if (window == nullptr || !window->isVisible())
        return;
    const KeyboardHandover handover = m_routing.takeKeyboard(screen);
    if (handover.grab < 0)
        return;
    if (const OverlayPart* previous = partForScreen(handover.release);
        previous != nullptr && previous->overlayWindow() != nullptr)
        previous->overlayWindow()->releaseKeyboard();
    window->raise();
    window->activateWindow();
    window->setFocus(Qt::ActiveWindowFocusReason);
    QWindow* handle = window->windowHandle();
    if (handle == nullptr || handle->setKeyboardGrabEnabled(true)) {
        qCDebug(lcKeyboard) << "screen" << screen << "has the keyboard, attempt" << attempt;
        return;
    }
    if (!OverlayRouting::mayRetryGrab(attempt)) {
        qCWarning(lcKeyboard) << "kelvo: could not take the keyboard; keys typed now go to"
                              << "the window that has the focus";
        return;
    }
    // Another client may hold the keyboard for a moment (a menu closing, the
    // window manager); try again shortly, for up to a second.
    qCDebug(lcKeyboard) << "screen" << screen << "keyboard grab failed, attempt" << attempt;
    m_clock.singleShot(kGrabRetryDelay, this, [this, screen, attempt] {
        if (m_routing.grabStillWanted(screen))
            giveKeyboardTo(screen, attempt + 1);
    });
}

QPointF OverlaySession::pointerOf(const QEvent* event) const
{
    // Mouse events carry where the pointer was; keys ask for where it is.
    if (isPointerEvent(event)) {
        const QPointF origin =
            m_screens.empty() ? QPointF() : QPointF(m_screens.front()->geometry().topLeft());
        return static_cast<const QMouseEvent*>(event)->globalPosition() - origin;
    }
    return m_pointer.position();
}

bool OverlaySession::mustWait(QWindow& window, const QEvent& event, bool isKey)
{
    // A key waits for the messages posted before it. Input that waits keeps
    // its order, pointer events included, or a drag right after a tool's key
    // would draw before the tool is chosen. A waiting event goes round the
    // queue again in its place until it is the oldest and may act.
    const auto repost = [&window, &event] {
        QEvent* again = event.clone();
        QCoreApplication::postEvent(&window, again);
        return again;
    };
    const auto queued = std::find(m_deferredInput.begin(), m_deferredInput.end(), &event);
    if (queued == m_deferredInput.end()) {
        if (m_deferredInput.empty() && !(isKey && m_client.keysMustWait()))
            return false;
        m_deferredInput.push_back(repost());
        return true;
    }
    if (queued != m_deferredInput.begin() || (isKey && m_client.keysMustWait())) {
        *queued = repost();
        return true;
    }
    m_deferredInput.pop_front();
    return false;
}

bool OverlaySession::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Show && isRunning()) {
        if (auto* widget = qobject_cast<QWidget*>(watched);
            widget != nullptr && widget->isWindow() && widget->isModal()) {
            m_client.modalDialogShown();
            return false;
        }
    }
    // Only the events Qt delivers to our overlays' windows; the same event
    // reaches the widget afterwards and is not looked at twice.
    auto* window = qobject_cast<QWindow*>(watched);
    if (window == nullptr || !isRunning())
        return false;
    const HandlerScope scope(*this);
    const bool ours = std::any_of(m_parts.begin(), m_parts.end(), [window](const OverlayPart* p) {
        return p->overlayWindow() != nullptr && p->overlayWindow()->windowHandle() == window;
    });
    if (!ours)
        return false;
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease;
    if ((isKey || isPointerEvent(event)) && mustWait(*window, *event, isKey))
        return true;
    const std::optional<MonitorEventType> type = monitorTypeOf(event);
    if (!type)
        return false;
    if (isPointerEvent(event) &&
        m_client.pointerOnOwnWidget(static_cast<const QMouseEvent*>(event)->globalPosition()))
        return false;

    // The routes are decided up front; an action may end the session, and
    // then nothing further is acted on. The parts it ended are retired, not
    // freed, while this filter runs.
    const std::vector<OverlayRoute> routes =
        m_routing.route(*type, pointerOf(event), m_client.monitorGates());
    m_routing.dispatch(routes, [this, event](const OverlayRoute& route) {
        OverlayPart* part = partForScreen(route.screen);
        if (part == nullptr)
            return;
        if (m_routing.movesKeyboard(route))
            giveKeyboardTo(route.screen);
        if (route.action != MonitorAction::OrderFrontAndActivate)
            m_client.perform(route, *part, *event);
    });
    return true;
}

} // namespace capture
