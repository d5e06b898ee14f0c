// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/ui/QNClipScreenManager.h"

#include "capture/logic/WindowFilter.h"
#include "capture/ui/QNClipView.h"
#include "capture/ui/QNClipWindow.h"
#include "capture/ui/QNClipWindowController.h"
#include "core/MessageBus.h"
#include "platform/PointerControl.h"
#include "platform/SoundPlayer.h"
#include "platform/WindowServer.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScreen>
#include <QTimer>
#include <QWindow>

namespace capture {

QNClipScreenManager::QNClipScreenManager(CaptureState& state, platform::WindowServer& windowServer,
                                         platform::PointerControl& pointer,
                                         platform::SoundPlayer& sound, core::MessageBus& bus,
                                         QObject* parent)
    : QObject(parent)
    , m_state(state)
    , m_windowServer(windowServer)
    , m_pointer(pointer)
    , m_sound(sound)
    , m_bus(bus)
{
    connect(&m_bus, &core::MessageBus::message, this, &QNClipScreenManager::onMessage);
}

QNClipScreenManager::~QNClipScreenManager()
{
    qApp->removeEventFilter(this);
}

void QNClipScreenManager::onMessage(const QString& name)
{
    if (name == QLatin1String(core::MessageBus::CancelScreenShot))
        cancelScreenShot();
    else if (name == QLatin1String(core::MessageBus::StartAnnotation))
        startAnnotation();
}

void QNClipScreenManager::startCapture()
{
    // A second trigger during a capture changes nothing.
    if (m_isWorking)
        return;
    m_isWorking = true;
    clearClipWindowControllerArray();
    m_state.imageAllWindowArray.clear();
    m_state.arrayRect.clear();

    // The one window pass of this capture; it also freezes the desktop, so
    // it runs before any overlay exists.
    m_layout = m_windowServer.screens();
    WindowFilter(m_windowServer, m_layout).run(m_windowServer.windowList(), m_state);

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
        controller->startCaptureWithScreen(i, m_screens[static_cast<std::size_t>(i)], info.frame,
                                           info.scale);
        if (QNClipWindow* window = controller->window()) {
            ++m_framesPending;
            connect(window, &QNClipWindow::firstFramePainted, this, [this, i] {
                // The keyboard follows the pointer, and a grab needs a window
                // the server shows: take it once this overlay has painted.
                if (i == currentScreenForMouseLocation())
                    changeKeyWindowWithScreen(i);
                if (--m_framesPending == 0)
                    Q_EMIT captureShown();
            });
        }
        m_controllers.push_back(std::move(controller));
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

QPointF QNClipScreenManager::localPoint(int screen) const
{
    return m_layout.topLeftToOverlayLocal(screen, m_pointer.position());
}

void QNClipScreenManager::clearClipWindowControllerArray()
{
    m_state.imageAllWindowArray.clear();
    m_state.arrOfAllSelectedScreenshots.clear();
    for (auto& controller : m_controllers) {
        controller->clearDelegate();
        controller->endCapture();
    }
    m_controllers.clear();
}

void QNClipScreenManager::endAll()
{
    qApp->removeEventFilter(this);
    clearClipWindowControllerArray();
    m_windowServer.thaw();
    m_keyScreen = -1;
    const bool wasWorking = m_isWorking;
    m_isWorking = false;
    if (wasWorking)
        Q_EMIT captureEnded();
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

bool QNClipScreenManager::eventFilter(QObject* watched, QEvent* event)
{
    // Only the events Qt delivers to our overlays' windows; the same event
    // reaches the widget afterwards and is not looked at twice.
    auto* window = qobject_cast<QWindow*>(watched);
    if (window == nullptr || !m_isWorking)
        return false;
    bool ours = false;
    for (const auto& c : m_controllers)
        ours = ours || (c->window() != nullptr && c->window()->windowHandle() == window);
    if (!ours)
        return false;

    const int screen = currentScreenForMouseLocation();
    QNClipWindowController* target = controllerForScreen(screen);
    QNClipView* view = target != nullptr ? target->clipView() : nullptr;
    switch (event->type()) {
    case QEvent::KeyPress: {
        const auto* key = static_cast<QKeyEvent*>(event);
        const Qt::KeyboardModifiers mods =
            key->modifiers() &
            (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
        if (key->key() == Qt::Key_Escape && mods == Qt::NoModifier)
            m_bus.post(QString::fromLatin1(core::MessageBus::CancelScreenShot));
        return true;
    }
    case QEvent::KeyRelease:
        return true;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick: {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        if (mouse->button() == Qt::RightButton) {
            // A right press cancels one pass later, unless it hit a button.
            QTimer::singleShot(10, this, [this, target] {
                if (!mouseOnButton && target != nullptr && m_isWorking)
                    target->cancel();
            });
            return true;
        }
        if (mouse->button() == Qt::LeftButton && !mouseOnButton && view != nullptr)
            view->mousedown(localPoint(screen));
        return true;
    }
    case QEvent::MouseMove: {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        if (screen != m_keyScreen)
            changeKeyWindowWithScreen(screen);
        if (view != nullptr) {
            if (mouse->buttons() & Qt::LeftButton) {
                if (!mouseOnButton)
                    view->mousedragged(localPoint(screen));
            } else {
                view->mouseMoved(localPoint(screen));
            }
        }
        return true;
    }
    case QEvent::MouseButtonRelease: {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        if (mouse->button() == Qt::LeftButton && !mouseOnButton && view != nullptr)
            view->mouseup(localPoint(screen));
        return true;
    }
    default:
        return false;
    }
}

} // namespace capture
