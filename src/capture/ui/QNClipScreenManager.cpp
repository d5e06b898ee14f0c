// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/ui/QNClipScreenManager.h"

#include "capture/logic/ClipEvents.h"
#include "capture/logic/EventMonitorTable.h"
#include "capture/logic/WindowFilter.h"
#include "capture/ui/QNClipView.h"
#include "capture/ui/QNClipWindow.h"
#include "capture/ui/QNClipWindowController.h"
#include "core/MessageBus.h"
#include "platform/PointerControl.h"
#include "platform/SoundPlayer.h"
#include "platform/WindowServer.h"
#include "toolbar/ui/AnnotatedImageController.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLoggingCategory>
#include <QMouseEvent>
#include <QPointer>
#include <QScreen>
#include <QTextStream>
#include <QTimer>
#include <QWindow>

#include <optional>

namespace capture {

// QT_LOGGING_RULES="kelvo.capture.debug=true" prints how long each step of a
// capture's start takes.
Q_LOGGING_CATEGORY(lcCapture, "kelvo.capture", QtWarningMsg)

QNClipScreenManager::QNClipScreenManager(Services services, QObject* parent)
    : QObject(parent)
    , m_state(services.state)
    , m_windowServer(services.windowServer)
    , m_pointer(services.pointer)
    , m_sound(services.sound)
    , m_bus(services.bus)
    , m_defaults(services.defaults)
    , m_readoutState(services.readoutState)
    , m_shortcutOfButton(std::move(services.shortcutOfButton))
    , m_annotation(std::make_unique<toolbar::AnnotatedImageController>(m_state, m_defaults, m_bus))
{
    connect(&m_bus, &core::MessageBus::message, this, &QNClipScreenManager::onMessage);
}

QNClipScreenManager::~QNClipScreenManager()
{
    qApp->removeEventFilter(this);
    // While the pooled windows the controllers borrowed still exist.
    clearClipWindowControllerArray();
    m_retired.clear();
}

QNClipScreenManager::HandlerScope::HandlerScope(QNClipScreenManager& manager)
    : m_manager(manager)
{
    ++m_manager.m_handlerDepth;
}

QNClipScreenManager::HandlerScope::~HandlerScope()
{
    if (--m_manager.m_handlerDepth == 0 && !m_manager.m_retired.empty())
        m_manager.releaseRetired();
}

void QNClipScreenManager::releaseRetired()
{
    // Always from the event loop: even the outermost handler's caller may
    // still hold a view of the capture (a widget's own event handler).
    if (m_releaseQueued)
        return;
    m_releaseQueued = true;
    QTimer::singleShot(0, this, [this] {
        m_releaseQueued = false;
        if (m_handlerDepth > 0)
            return; // the handler's scope queues it again as it ends
        m_retired.clear();
    });
}

QVariantMap QNClipScreenManager::shortcutOfButton() const
{
    return m_shortcutOfButton ? m_shortcutOfButton() : QVariantMap();
}

void QNClipScreenManager::claimScreen(int screen)
{
    for (const auto& controller : m_controllers) {
        if (controller->screen() != screen && controller->clipView() != nullptr)
            controller->clipView()->clearMarks();
    }
}

void QNClipScreenManager::onMessage(const QString& name)
{
    const HandlerScope scope(*this);
    if (name == QLatin1String(core::MessageBus::CancelScreenShot))
        cancelScreenShot();
    else if (name == QLatin1String(core::MessageBus::StartAnnotation))
        startAnnotation();
    else if (name == QLatin1String(core::MessageBus::StartScreenShots))
        startScreenShots();
}

void QNClipScreenManager::startScreenShots()
{
    // The screen under the mouse finishes; it refuses when the selection
    // is on another one.
    if (QNClipWindowController* controller = controllerForScreen(currentScreenForMouseLocation()))
        controller->startScreenShots();
}

void QNClipScreenManager::finishCapture(QNClipWindowController* controller,
                                        const FinishedCapture& result)
{
    // A selection with no picture in it ends like a cancel.
    m_finishing = !result.picture.isNull();
    controller->cancel();
    const bool finished = m_finishing;
    m_finishing = false;
    if (finished)
        Q_EMIT captureFinished(result);
}

void QNClipScreenManager::startCapture()
{
    // A second trigger during a capture changes nothing.
    if (m_isWorking)
        return;
    // While one of our dialogs is modal Qt blocks the input of every other
    // window, the overlays' too: a capture could then never end. The dialog
    // comes first; it is brought forward so the user sees why.
    if (QWidget* modal = QApplication::activeModalWidget()) {
        QTextStream(stderr) << "kelvo: a capture waits until the dialog \"" << modal->windowTitle()
                            << "\" is answered\n";
        qCDebug(lcCapture) << "modal" << modal->metaObject()->className() << modal->isVisible();
        modal->raise();
        modal->activateWindow();
        QApplication::beep();
        return;
    }
    m_isWorking = true;
    m_state.copyToPaste = false;
    m_state.mapImage = false;
    m_state.saveButtonClick = false;
    m_state.startScreenShot = false;
    QElapsedTimer clock;
    clock.start();
    clearClipWindowControllerArray();
    m_state.imageAllWindowArray.clear();
    m_state.arrayRect.clear();

    // The one window pass of this capture; it also freezes the desktop, so
    // it runs before any overlay exists.
    m_layout = m_windowServer.screens();
    const std::vector<platform::WindowRecord> windows = m_windowServer.windowList();
    qCDebug(lcCapture) << "window list and freeze" << clock.nsecsElapsed() / 1e6 << "ms";
    WindowFilter(m_windowServer, m_layout).run(windows, m_state);
    qCDebug(lcCapture) << "window pass" << clock.nsecsElapsed() / 1e6 << "ms";

    m_screens.clear();
    QList<QScreen*> screens = QGuiApplication::screens();
    if (QScreen* primary = QGuiApplication::primaryScreen()) {
        screens.removeAll(primary);
        screens.prepend(primary);
    }
    m_screens.assign(screens.begin(), screens.end());

    qApp->installEventFilter(this);
    m_framesPending = 0;
    for (int i = 0; i < m_layout.count() && i < static_cast<int>(m_screens.size()); ++i) {
        auto controller = std::make_unique<QNClipWindowController>(this, m_state, m_windowServer);
        const core::ScreenInfo& info = m_layout.screen(i);
        controller->startCaptureWithScreen(
            i, m_windowPool.acquire(m_screens[static_cast<std::size_t>(i)]), info.frame);
        if (QNClipWindow* window = controller->window()) {
            ++m_framesPending;
            m_captureConnections.push_back(
                connect(window, &QNClipWindow::firstFramePainted, this, [this, i, clock] {
                    qCDebug(lcCapture)
                        << "screen" << i << "painted" << clock.nsecsElapsed() / 1e6 << "ms";
                    // The keyboard follows the pointer, and a grab needs a window
                    // the server shows: take it once this overlay has painted.
                    if (i == currentScreenForMouseLocation())
                        changeKeyWindowWithScreen(i);
                    if (--m_framesPending == 0)
                        Q_EMIT captureShown();
                }));
        }
        m_controllers.push_back(std::move(controller));
        qCDebug(lcCapture) << "screen" << i << "shown" << clock.nsecsElapsed() / 1e6 << "ms";
    }
    // The map requests went out before this grab on the same connection, so
    // the server sees a viewable window: keys typed right after the trigger
    // are not lost to whatever had the focus.
    changeKeyWindowWithScreen(currentScreenForMouseLocation());
}

void QNClipScreenManager::changeKeyWindowWithScreen(int screen, int attempt)
{
    QNClipWindowController* controller = controllerForScreen(screen);
    if (controller == nullptr || controller->window() == nullptr)
        return;
    QNClipWindow* window = controller->window();
    if (!window->isVisible())
        return;
    if (m_keyScreen >= 0 && m_keyScreen != screen) {
        if (QNClipWindowController* previous = controllerForScreen(m_keyScreen);
            previous != nullptr && previous->window() != nullptr)
            previous->window()->releaseKeyboard();
    }
    m_keyScreen = screen;
    window->raise();
    window->activateWindow();
    window->setFocus(Qt::ActiveWindowFocusReason);
    QWindow* handle = window->windowHandle();
    if (handle != nullptr && !handle->setKeyboardGrabEnabled(true) && attempt < 50) {
        // Another client may hold the keyboard for a moment (a menu closing,
        // the window manager); try again shortly, for up to a second.
        QTimer::singleShot(20, this, [this, screen, attempt] {
            if (m_isWorking && m_keyScreen == screen)
                changeKeyWindowWithScreen(screen, attempt + 1);
        });
    }
}

QNClipWindowController* QNClipScreenManager::controllerForScreen(int screen) const
{
    for (const auto& c : m_controllers) {
        if (c->screen() == screen)
            return c.get();
    }
    return nullptr;
}

int QNClipScreenManager::currentScreenForMouseLocation() const
{
    return m_layout.screenAtTopLeft(m_pointer.position());
}

void QNClipScreenManager::clearClipWindowControllerArray()
{
    m_state.imageAllWindowArray.clear();
    m_state.arrOfAllSelectedScreenshots.clear();
    for (auto& controller : m_controllers) {
        controller->clearDelegate();
        controller->endCapture();
        m_retired.push_back(std::move(controller));
    }
    m_controllers.clear();
    if (!m_retired.empty())
        releaseRetired();
}

void QNClipScreenManager::endAll()
{
    // The overlays outlive the capture; what it connected to them does not.
    for (const QMetaObject::Connection& c : m_captureConnections)
        disconnect(c);
    m_captureConnections.clear();
    qApp->removeEventFilter(this);
    if (m_annotation->isLoaded())
        m_annotation->closeWindow();
    mouseOnButton = false;
    clearClipWindowControllerArray();
    m_windowServer.thaw();
    m_windowPool.idle();
    m_keyScreen = -1;
    const bool wasWorking = m_isWorking;
    m_isWorking = false;
    if (wasWorking)
        Q_EMIT captureEnded(m_finishing);
}

void QNClipScreenManager::reset()
{
    endAll();
}

void QNClipScreenManager::cancelScreenShot()
{
    for (auto& controller : m_controllers)
        controller->endCapture();
    endAll();
}

void QNClipScreenManager::clipWindowControllerDidCancel(QNClipWindowController* controller)
{
    for (auto& other : m_controllers) {
        if (other.get() != controller)
            other->endCapture();
    }
    endAll();
}

void QNClipScreenManager::clipWindowController(QNClipWindowController*)
{
    m_sound.playShutter();
}

void QNClipScreenManager::startAnnotation()
{
    const int underMouse = currentScreenForMouseLocation();
    for (auto& controller : m_controllers)
        controller->startAnnotation(controller->screen() == underMouse);
}

namespace {

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

ClipMouseEvent clipMouseEvent(const QEvent* event, QPointF local)
{
    const auto* mouse = static_cast<const QMouseEvent*>(event);
    ClipMouseEvent e;
    e.location = local;
    e.modifiers = mouse->modifiers();
    e.clickCount = event->type() == QEvent::MouseButtonDblClick ? 2 : 1;
    e.timestamp = static_cast<double>(mouse->timestamp()) / 1000.0;
    return e;
}

} // namespace

QPointF QNClipScreenManager::pointerOf(const QEvent* event) const
{
    // Mouse events carry where the pointer was; keys ask for where it is.
    if (isPointerEvent(event)) {
        const QPointF origin =
            m_screens.empty() ? QPointF() : QPointF(m_screens.front()->geometry().topLeft());
        return static_cast<const QMouseEvent*>(event)->globalPosition() - origin;
    }
    return m_pointer.position();
}

bool QNClipScreenManager::eventFilter(QObject* watched, QEvent* event)
{
    // A modal dialog of ours (an alert of a hot key's action, say) would
    // block the overlays' input and hide under them: it ends the capture.
    if (event->type() == QEvent::Show && m_isWorking) {
        if (auto* widget = qobject_cast<QWidget*>(watched);
            widget != nullptr && widget->isWindow() && widget->isModal()) {
            m_bus.post(QString::fromLatin1(core::MessageBus::CancelScreenShot));
            return false;
        }
    }
    // Only the events Qt delivers to our overlays' windows; the same event
    // reaches the widget afterwards and is not looked at twice.
    auto* window = qobject_cast<QWindow*>(watched);
    if (window == nullptr || !m_isWorking)
        return false;
    const HandlerScope scope(*this);
    bool ours = false;
    for (const auto& c : m_controllers)
        ours = ours || (c->window() != nullptr && c->window()->windowHandle() == window);
    if (!ours)
        return false;
    const std::optional<MonitorEventType> type = monitorTypeOf(event);
    if (!type)
        return false;
    if (isPointerEvent(event)) {
        // Over the tool bar the buttons take the pointer themselves.
        const QPointF global = static_cast<const QMouseEvent*>(event)->globalPosition();
        mouseOnButton = m_annotation->barContains(global.toPoint());
        if (mouseOnButton)
            return false;
    }

    // Every screen's controller is shown the event, as its monitors would
    // be; the table lets exactly one of them act on it.
    const QPointF pointer = pointerOf(event);
    const MonitorEvent monitorEvent{*type, m_layout.topLeftToBottomLeft(pointer)};
    MonitorGates gates;
    gates.mouseOnButton = mouseOnButton;
    gates.clipToolbarWindowOpened = m_state.clipToolbarWindowOpened;
    gates.pointerRole = m_state.pointerRole;
    const EventMonitorTable table(m_layout);
    // Copy the list: an action may end the capture and empty it; the ended
    // controllers are retired, not destroyed, while this filter runs.
    std::vector<QNClipWindowController*> controllers;
    for (const auto& c : m_controllers)
        controllers.push_back(c.get());
    for (QNClipWindowController* controller : controllers) {
        const int screen = controller->screen();
        for (MonitorAction action : table.route(MonitorKind::Local, screen, monitorEvent, gates)) {
            if (!m_isWorking)
                return true;
            perform(action, controller, m_layout.topLeftToOverlayLocal(screen, pointer), event);
        }
    }
    return true;
}

void QNClipScreenManager::perform(MonitorAction action, QNClipWindowController* controller,
                                  QPointF local, const QEvent* event)
{
    QNClipView* view = controller->clipView();
    switch (action) {
    case MonitorAction::MouseDown:
        if (view != nullptr)
            view->mousedown(clipMouseEvent(event, local));
        break;
    case MonitorAction::MouseDragged:
        if (view != nullptr)
            view->mousedragged(clipMouseEvent(event, local));
        break;
    case MonitorAction::MouseUp:
        if (view != nullptr)
            view->mouseup(clipMouseEvent(event, local));
        break;
    case MonitorAction::MouseMovedToAnnotation:
        // The annotation controller passes moves on to the overlay while no
        // annotation window is open; until it exists, so does the manager.
    case MonitorAction::MouseMovedToView:
        if (controller->screen() != m_keyScreen)
            changeKeyWindowWithScreen(controller->screen());
        if (view != nullptr)
            view->mouseMoved(local);
        break;
    case MonitorAction::OrderFrontAndActivate:
        changeKeyWindowWithScreen(controller->screen());
        break;
    case MonitorAction::CancelAfter10ms: {
        // A right press cancels one pass later, unless it hit a button by then.
        QTimer::singleShot(10, this, [this, screen = controller->screen()] {
            QNClipWindowController* target = controllerForScreen(screen);
            if (!mouseOnButton && target != nullptr && m_isWorking)
                target->cancel();
        });
        break;
    }
    case MonitorAction::Cancel:
        controller->cancel();
        break;
    case MonitorAction::ForwardKeyDown:
        if (view != nullptr) {
            const auto* key = static_cast<const QKeyEvent*>(event);
            ClipKeyEvent clipKey;
            clipKey.key = key->key();
            clipKey.modifiers = key->modifiers();
            clipKey.text = key->text();
            clipKey.mouseLocation = local;
            clipKey.timestamp = static_cast<double>(key->timestamp()) / 1000.0;
            view->keyDown(clipKey);
        }
        break;
    case MonitorAction::FlagsChanged:
        if (view != nullptr &&
            (event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease)) {
            const auto* key = static_cast<const QKeyEvent*>(event);
            // X reports the state before the key; the key itself says
            // whether Shift is now down.
            const bool shiftDown = key->key() == Qt::Key_Shift
                                       ? event->type() == QEvent::KeyPress
                                       : key->modifiers().testFlag(Qt::ShiftModifier);
            view->flagsChanged(shiftDown);
        }
        break;
    case MonitorAction::PassThrough:
    case MonitorAction::HideTip:
    case MonitorAction::ScrollWheelToAnnotation:
    case MonitorAction::ScrollWheelToView:
        // Their receivers (tool bar tips, annotation window, scrolling
        // capture) are not part of the overlay yet.
        break;
    }
}

} // namespace capture
