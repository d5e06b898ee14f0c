// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/ui/QNClipScreenManager.h"

#include "capture/logic/ClipEvents.h"
#include "capture/logic/ModifierDoubleTap.h"
#include "capture/logic/WindowFilter.h"
#include "capture/ui/BannerWait.h"
#include "capture/ui/QNClipView.h"
#include "capture/ui/QNClipWindow.h"
#include "capture/ui/QNClipWindowController.h"
#include "core/Clock.h"
#include "core/MessageBus.h"
#include "platform/ActiveWindow.h"
#include "platform/PointerControl.h"
#include "platform/SoundPlayer.h"
#include "platform/WindowServer.h"
#include "toolbar/ui/AnnotatedImageController.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLoggingCategory>
#include <QMouseEvent>
#include <QScreen>
#include <QTextStream>
#include <QWheelEvent>
#include <QWindow>

#include <chrono>
#include <utility>

namespace capture {

// QT_LOGGING_RULES="kelvo.capture.debug=true" prints how long each step of a
// capture's start takes.
Q_LOGGING_CATEGORY(lcCapture, "kelvo.capture", QtWarningMsg)

template <typename Handler>
void QNClipScreenManager::handleMessage(Handler handler)
{
    const OverlaySession::HandlerScope scope(m_session);
    handler();
}

QNClipScreenManager::QNClipScreenManager(Services services, QObject* parent)
    : QObject(parent)
    , m_context(services.context)
    , m_state(m_context.capture())
    , m_windowServer(services.windowServer)
    , m_pointer(services.pointer)
    , m_sound(services.sound)
    , m_bus(services.bus)
    , m_defaults(services.defaults)
    , m_readoutState(services.readoutState)
    , m_shortcutOfButton(std::move(services.shortcutOfButton))
    , m_ownClock(services.clock != nullptr ? nullptr : std::make_unique<core::SystemClock>())
    , m_clock(services.clock != nullptr ? *services.clock : *m_ownClock)
    , m_annotation(std::make_unique<toolbar::AnnotatedImageController>(m_context, m_defaults, m_bus,
                                                                       m_clock))
    , m_session(*this, m_pointer, m_clock)
{
    connect(&m_bus, &core::MessageBus::cancelScreenShot, this,
            [this] { handleMessage([this] { cancelScreenShot(); }); });
    connect(&m_bus, &core::MessageBus::startAnnotation, this,
            [this] { handleMessage([this] { startAnnotation(); }); });
    connect(&m_bus, &core::MessageBus::startScreenShots, this,
            [this] { handleMessage([this] { startScreenShots(); }); });
    connect(&m_bus, &core::MessageBus::didDeliverNotification, this,
            [this] { handleMessage([this] { didDeliverNotification(); }); });
}

void QNClipScreenManager::setDesktopWindows(platform::ActiveWindow* activeWindow,
                                            platform::NotificationStacking* notifications)
{
    m_activeWindow = activeWindow;
    m_bannerWait =
        notifications != nullptr ? std::make_unique<BannerWait>(*notifications, m_clock) : nullptr;
}

QNClipScreenManager::~QNClipScreenManager()
{
    m_session.end();
    // The session frees them while the pooled windows they borrowed exist.
    clearClipWindowControllerArray();
}

QVariantMap QNClipScreenManager::shortcutOfButton() const
{
    return m_shortcutOfButton ? m_shortcutOfButton() : QVariantMap();
}

overlay::AnnotationInput& QNClipScreenManager::markup()
{
    return *m_annotation;
}

void QNClipScreenManager::openAnnotationWindow(QWidget* overlay, std::function<QRectF()> selection)
{
    m_context.capture().doubleClickModifierkey = false;
    m_annotation->openWindow(overlay, std::move(selection));
}

void QNClipScreenManager::saveAndOpen()
{
    m_context.capture().doubleClickModifierkey = true;
    m_annotation->saveButtonClick();
}

void QNClipScreenManager::claimScreen(int screen)
{
    for (const auto& controller : m_controllers) {
        if (controller->screen() != screen && controller->clipView() != nullptr)
            controller->clipView()->clearMarks();
    }
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
    // Before any overlay takes the keyboard.
    m_windowBefore = m_activeWindow != nullptr ? m_activeWindow->current() : 0;
    m_state.finish.clear();
    m_state.startScreenShot = false;
    const auto started = m_clock.now();
    const auto elapsedMs = [this, started] {
        return std::chrono::duration<double, std::milli>(m_clock.now() - started).count();
    };
    clearClipWindowControllerArray();
    m_state.imageAllWindowArray.clear();
    m_state.arrayRect.clear();

    // The one window pass of this capture; it also freezes the desktop, so
    // it runs before any overlay exists.
    const core::ScreenLayout layout = m_windowServer.screens();
    const std::vector<platform::WindowRecord> windows = m_windowServer.windowList();
    qCDebug(lcCapture) << "window list and freeze" << elapsedMs() << "ms";
    WindowFilter(m_windowServer, layout).run(windows, m_state);
    qCDebug(lcCapture) << "window pass" << elapsedMs() << "ms";

    m_session.begin(layout);
    m_framesPending = 0;
    for (int i = 0; i < layout.count(); ++i) {
        QNClipWindow* overlay = m_session.windowFor(i);
        if (overlay == nullptr)
            break; // Qt knows fewer screens than the window server
        const QNClipViewServices services{m_context,      layout,         m_defaults,
                                          m_readoutState, m_windowServer, m_pointer,
                                          m_bus,          m_clock,        *this};
        auto controller = std::make_unique<QNClipWindowController>(this, services);
        controller->startCaptureWithScreen(i, overlay, layout.screen(i).frame);
        if (QNClipWindow* window = controller->window()) {
            ++m_framesPending;
            m_session.keepUntilEnd(
                connect(window, &QNClipWindow::firstFramePainted, this, [this, i, elapsedMs] {
                    qCDebug(lcCapture) << "screen" << i << "painted" << elapsedMs() << "ms";
                    // The keyboard follows the pointer, and a grab needs a window
                    // the server shows: take it once this overlay has painted.
                    if (i == currentScreenForMouseLocation())
                        changeKeyWindowWithScreen(i);
                    if (--m_framesPending == 0)
                        Q_EMIT captureShown();
                }));
        }
        m_session.addPart(*controller);
        m_controllers.push_back(std::move(controller));
        qCDebug(lcCapture) << "screen" << i << "shown" << elapsedMs() << "ms";
    }
    // The map requests went out before this grab on the same connection, so
    // the server sees a viewable window: keys typed right after the trigger
    // are not lost to whatever had the focus.
    changeKeyWindowWithScreen(currentScreenForMouseLocation());
}

void QNClipScreenManager::changeKeyWindowWithScreen(int screen, int attempt)
{
    m_session.giveKeyboardTo(screen, attempt);
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
    return m_session.screenUnderPointer();
}

void QNClipScreenManager::clearClipWindowControllerArray()
{
    m_state.imageAllWindowArray.clear();
    m_state.arrOfAllSelectedScreenshots.clear();
    // Retired, not destroyed: a handler may still be running in one.
    for (auto& controller : m_controllers)
        m_session.retire(std::move(controller));
    m_controllers.clear();
}

void QNClipScreenManager::endAll()
{
    m_session.end();
    if (m_annotation->isLoaded())
        m_annotation->closeWindow();
    mouseOnButton = false;
    clearClipWindowControllerArray();
    m_windowServer.thaw();
    if (m_bannerWait)
        m_bannerWait->cancel();
    giveFocusBack();
    const bool wasWorking = m_isWorking;
    m_isWorking = false;
    if (wasWorking)
        Q_EMIT captureEnded(m_finishing);
}

void QNClipScreenManager::giveFocusBack()
{
    const std::uint32_t window = std::exchange(m_windowBefore, 0);
    // The user lands where the capture began; a pin keeps the focus it
    // takes, and so does a dialog of ours that ended the capture, which
    // would otherwise go behind that window. The overlays are hidden by
    // now, on the same connection.
    if (window != 0 && !m_state.finish.isPin() && m_activeWindow != nullptr &&
        QApplication::activeModalWidget() == nullptr)
        (void)m_activeWindow->activate(window);
}

void QNClipScreenManager::didDeliverNotification()
{
    if (!m_isWorking || !m_bannerWait)
        return;
    // Only the overlay of the deepest screen (the layout's first) makes
    // way, and only with the pointer on it.
    constexpr int deepestScreen = 0;
    const QNClipWindowController* controller = currentScreenForMouseLocation() == deepestScreen
                                                   ? controllerForScreen(deepestScreen)
                                                   : nullptr;
    m_bannerWait->begin(controller != nullptr ? controller->window() : nullptr);
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

ClipMouseEvent clipMouseEvent(const QEvent& event, QPointF local)
{
    const auto& mouse = static_cast<const QMouseEvent&>(event);
    ClipMouseEvent e;
    e.location = local;
    e.modifiers = mouse.modifiers();
    e.clickCount = event.type() == QEvent::MouseButtonDblClick ? 2 : 1;
    e.timestamp = static_cast<double>(mouse.timestamp()) / 1000.0;
    return e;
}

} // namespace

MonitorGates QNClipScreenManager::monitorGates() const
{
    MonitorGates gates;
    gates.mouseOnButton = mouseOnButton;
    gates.clipToolbarWindowOpened = m_state.clipToolbarWindowOpened;
    gates.pointerRole = m_state.pointerRole;
    // The wheel goes to the screen the annotation window is open on.
    if (const QWidget* overlay = m_annotation->openOverlay()) {
        for (const auto& controller : m_controllers) {
            if (controller->overlayWindow() == overlay)
                gates.annotationWindowScreen = controller->screen();
        }
    }
    return gates;
}

bool QNClipScreenManager::pointerOnOwnWidget(QPointF global)
{
    // Over the tool bar the buttons take the pointer themselves.
    const bool wasOnButton = mouseOnButton;
    mouseOnButton = m_annotation->barContains(global.toPoint());
    if (wasOnButton && !mouseOnButton) {
        // The bar showed its own cursor, and as the overlay takes the moves
        // off it, Qt never puts the overlay's back: do that here.
        for (const auto& controller : m_controllers) {
            QWidget* overlay = controller->overlayWindow();
            if (overlay != nullptr && overlay->windowHandle() != nullptr)
                overlay->windowHandle()->setCursor(overlay->cursor());
        }
    }
    return mouseOnButton;
}

bool QNClipScreenManager::keysMustWait() const
{
    return m_bus.hasPending();
}

void QNClipScreenManager::modalDialogShown()
{
    // A modal dialog of ours (an alert of a hot key's action, say) would
    // block the overlays' input and hide under them: it ends the capture.
    m_bus.post(core::Message::CancelScreenShot);
}

void QNClipScreenManager::perform(const OverlayRoute& route, OverlayPart& part, const QEvent& event)
{
    // Every part of this session is one of our controllers.
    auto& controller = static_cast<QNClipWindowController&>(part);
    QNClipView* view = controller.clipView();
    const QPointF local = route.local;
    switch (route.action) {
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
        // The tool bar's hover sees the move first. The annotation
        // controller passes moves on to the overlay while no annotation
        // window is open; until it exists, so does the manager.
        m_annotation->mouseMoved(static_cast<const QMouseEvent&>(event).globalPosition());
        [[fallthrough]];
    case MonitorAction::MouseMovedToView:
        if (view != nullptr)
            view->mouseMoved(local);
        break;
    case MonitorAction::CancelAfter10ms: {
        // A right press cancels one pass later, unless it hit a button by then.
        m_clock.singleShot(std::chrono::milliseconds(10), this, [this, screen = route.screen] {
            QNClipWindowController* target = controllerForScreen(screen);
            if (!mouseOnButton && target != nullptr && m_isWorking)
                target->cancel();
        });
        break;
    }
    case MonitorAction::Cancel:
        controller.cancel();
        break;
    case MonitorAction::ForwardKeyDown:
        if (view != nullptr) {
            const auto& key = static_cast<const QKeyEvent&>(event);
            ClipKeyEvent clipKey;
            clipKey.key = key.key();
            clipKey.modifiers = key.modifiers();
            clipKey.text = key.text();
            clipKey.mouseLocation = local;
            clipKey.timestamp = static_cast<double>(key.timestamp()) / 1000.0;
            view->keyDown(clipKey);
        }
        break;
    case MonitorAction::FlagsChanged:
        if (view != nullptr &&
            (event.type() == QEvent::KeyPress || event.type() == QEvent::KeyRelease)) {
            const auto& key = static_cast<const QKeyEvent&>(event);
            const Qt::KeyboardModifiers held =
                heldAfter(key.key(), event.type() == QEvent::KeyPress, key.modifiers());
            view->flagsChanged(held, static_cast<double>(key.timestamp()) / 1000.0);
            // A tap of Control moves a tool bar that stands inside the selection.
            m_annotation->flagsChanged(held, controller.overlayWindow());
        }
        break;
    case MonitorAction::ScrollWheelToAnnotation:
        if (event.type() == QEvent::Wheel) {
            const auto& wheel = static_cast<const QWheelEvent&>(event);
            overlay::ClipWheelEvent clipWheel;
            clipWheel.location = local;
            clipWheel.angleDelta = wheel.angleDelta();
            clipWheel.pixelDelta = wheel.pixelDelta();
            clipWheel.phase = wheel.phase();
            m_annotation->scrollWheel(clipWheel);
        }
        break;
    case MonitorAction::OrderFrontAndActivate:
        // The session has raised this overlay and given it the keyboard.
    case MonitorAction::PassThrough:
    case MonitorAction::HideTip:
    case MonitorAction::ScrollWheelToView:
        // Their receivers (tool bar tips, the scrolling capture) are not
        // part of the overlay yet.
        break;
    }
}

} // namespace capture
