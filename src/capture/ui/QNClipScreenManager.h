// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "capture/logic/CaptureState.h"
#include "capture/logic/EventMonitorTable.h"
#include "capture/ui/OverlayWindowPool.h"
#include "core/Geometry.h"

#include <QObject>
#include <QPointF>

#include <memory>
#include <vector>

class QKeyEvent;
class QScreen;

namespace core {
class MessageBus;
}
namespace platform {
class WindowServer;
class PointerControl;
class SoundPlayer;
} // namespace platform

namespace capture {

class QNClipWindowController;

// Starts and ends one capture across all screens: one window pass, then one
// controller with its overlay per screen. While a capture runs it is the
// application's event filter and hands every pointer and key event to the
// one screen under the mouse.
class QNClipScreenManager : public QObject
{
    Q_OBJECT
public:
    QNClipScreenManager(CaptureState& state, platform::WindowServer& windowServer,
                        platform::PointerControl& pointer, platform::SoundPlayer& sound,
                        core::MessageBus& bus, QObject* parent = nullptr);
    ~QNClipScreenManager() override;

    [[nodiscard]] bool isWorking() const { return m_isWorking; }
    void startCapture();
    void changeKeyWindowWithScreen(int screen, int attempt = 0);
    void clearClipWindowControllerArray();
    void reset();

    // Message handlers.
    void cancelScreenShot();
    void startAnnotation();

    // From the controllers.
    void clipWindowController(QNClipWindowController* controller);
    void clipWindowControllerDidCancel(QNClipWindowController* controller);

    [[nodiscard]] int currentScreenForMouseLocation() const;
    [[nodiscard]] const core::ScreenLayout& layout() const { return m_layout; }
    [[nodiscard]] const std::vector<std::unique_ptr<QNClipWindowController>>& controllers() const
    {
        return m_controllers;
    }

    // Set by the tool bar while the pointer is over one of its buttons.
    bool mouseOnButton = false;

Q_SIGNALS:
    // Every overlay has painted its frozen screen once.
    void captureShown();
    void captureEnded();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void onMessage(const QString& name);
    void endAll();
    [[nodiscard]] QNClipWindowController* controllerForScreen(int screen) const;
    [[nodiscard]] QPointF pointerOf(const QEvent* event) const;
    void perform(MonitorAction action, QNClipWindowController* controller, QPointF local,
                 const QEvent* event);
    void keyDown(const QKeyEvent* key);

    CaptureState& m_state;
    platform::WindowServer& m_windowServer;
    platform::PointerControl& m_pointer;
    platform::SoundPlayer& m_sound;
    core::MessageBus& m_bus;
    core::ScreenLayout m_layout;
    std::vector<QScreen*> m_screens; // Qt's screens in layout order
    std::vector<std::unique_ptr<QNClipWindowController>> m_controllers;
    OverlayWindowPool m_windowPool;
    std::vector<QMetaObject::Connection> m_captureConnections;
    bool m_isWorking = false;
    int m_framesPending = 0;
    int m_keyScreen = -1;
};

} // namespace capture
