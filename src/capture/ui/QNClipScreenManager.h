// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "capture/logic/CaptureContext.h"
#include "capture/ui/OverlaySession.h"
#include "capture/ui/QNClipViewDelegate.h"
#include "core/Geometry.h"
#include "core/Picture.h"

#include <QObject>
#include <QPointF>
#include <QVariantMap>

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace colour {
class ColorReadoutState;
}
namespace core {
class Clock;
class MessageBus;
} // namespace core
namespace settings {
class Defaults;
}
namespace platform {
class ActiveWindow;
class NotificationStacking;
class WindowServer;
class PointerControl;
class SoundPlayer;
} // namespace platform

namespace toolbar {
class AnnotatedImageController;
}

namespace capture {

class BannerWait;
class QNClipWindowController;

// The picture a capture ended with, composed from the frozen screen or
// windows, in the pixels of the screen it was taken on.
struct FinishedCapture
{
    core::Picture picture;
    FinishDestination destination = FinishDestination::File;
    int screen = -1;            // index in the capture's screen layout
    QRectF rect;                // global top-left points the picture covers, its margin left out
    bool openAfterSave = false; // the save was asked for with the modifier that opens the file
};

// Starts and ends one region capture across all screens: one window pass,
// then one controller per screen on an overlay session, which routes every
// pointer and key event to the controller of the screen under the mouse.
class QNClipScreenManager : public QObject, private OverlaySessionClient, private QNClipViewDelegate
{
    Q_OBJECT
public:
    // The services a capture runs on, all owned by the application.
    struct Services
    {
        CaptureContext& context;
        platform::WindowServer& windowServer;
        platform::PointerControl& pointer;
        platform::SoundPlayer& sound;
        core::MessageBus& bus;
        settings::Defaults& defaults;
        colour::ColorReadoutState& readoutState;
        // The live tool short cuts.
        std::function<QVariantMap()> shortcutOfButton;
        // The timers that decide behaviour run on it; null: the real clock.
        core::Clock* clock = nullptr;
    };

    explicit QNClipScreenManager(Services services, QObject* parent = nullptr);
    ~QNClipScreenManager() override;

    // The desktop's active window and notification popups, where the
    // platform can tell them (either may be null): the window active at the
    // trigger gets the focus back when the capture ends, and notices of ours
    // show over the overlay.
    void setDesktopWindows(platform::ActiveWindow* activeWindow,
                           platform::NotificationStacking* notifications);

    [[nodiscard]] bool isWorking() const { return m_isWorking; }
    void startCapture();
    void changeKeyWindowWithScreen(int screen, int attempt = 0);
    void clearClipWindowControllerArray();
    void reset();

    // Message handlers.
    void cancelScreenShot();
    void startAnnotation();
    void startScreenShots();
    void didDeliverNotification();

    // The capture ends with `result`: the overlays go, then the picture is
    // handed on.
    void finishCapture(QNClipWindowController* controller, const FinishedCapture& result);
    // The annotation window, one for the process.
    [[nodiscard]] toolbar::AnnotatedImageController& annotatedImageController()
    {
        return *m_annotation;
    }

    // From the controllers.
    void clipWindowController(QNClipWindowController* controller);
    void clipWindowControllerDidCancel(QNClipWindowController* controller);

    [[nodiscard]] int currentScreenForMouseLocation() const override;
    [[nodiscard]] const core::ScreenLayout& layout() const { return m_session.layout(); }
    [[nodiscard]] QVariantMap shortcutOfButton() const override;
    // The global hot keys while the overlay holds the keyboard: `hotKey`
    // answers whether a key is one of them, and runs its action if so.
    void setGlobalHotKeys(std::function<bool(int key, Qt::KeyboardModifiers)> hotKey)
    {
        m_globalHotKey = std::move(hotKey);
    }
    // The pointer arrived on `screen`: the other screens drop their marks.
    void claimScreen(int screen) override;
    [[nodiscard]] const std::vector<std::unique_ptr<QNClipWindowController>>& controllers() const
    {
        return m_controllers;
    }

    // Set by the tool bar while the pointer is over one of its buttons.
    bool mouseOnButton = false;

Q_SIGNALS:
    // Every overlay has painted its frozen screen once.
    void captureShown();
    // The overlays are gone. With `finished` a picture follows at once in
    // captureFinished(); without, the capture was cancelled.
    void captureEnded(bool finished);
    void captureFinished(const capture::FinishedCapture& result);

private:
    // OverlaySessionClient
    [[nodiscard]] MonitorGates monitorGates() const override;
    bool pointerOnOwnWidget(QPointF global) override;
    void perform(const OverlayRoute& route, OverlayPart& part, const QEvent& event) override;
    void modalDialogShown() override;
    [[nodiscard]] bool keysMustWait() const override;

    // QNClipViewDelegate
    void giveKeyboardTo(int screen) override { changeKeyWindowWithScreen(screen); }
    [[nodiscard]] overlay::AnnotationInput& markup() override;
    void openAnnotationWindow(QWidget* overlay, std::function<QRectF()> selection) override;
    [[nodiscard]] bool globalHotKey(int key, Qt::KeyboardModifiers modifiers) const override
    {
        return m_globalHotKey && m_globalHotKey(key, modifiers);
    }
    void saveAndOpen() override;

    // A message handler: it may end the capture.
    template <typename Handler>
    void handleMessage(Handler handler);
    void endAll();
    void giveFocusBack();
    [[nodiscard]] QNClipWindowController* controllerForScreen(int screen) const;

    CaptureContext& m_context;
    CaptureState& m_state; // the capture's own part of the context
    platform::WindowServer& m_windowServer;
    platform::PointerControl& m_pointer;
    platform::SoundPlayer& m_sound;
    core::MessageBus& m_bus;
    settings::Defaults& m_defaults;
    colour::ColorReadoutState& m_readoutState;
    std::function<QVariantMap()> m_shortcutOfButton;
    std::function<bool(int, Qt::KeyboardModifiers)> m_globalHotKey;
    std::unique_ptr<core::Clock> m_ownClock; // when none was given
    core::Clock& m_clock;
    std::unique_ptr<toolbar::AnnotatedImageController> m_annotation;
    // After the annotation controller: ended controllers go before it.
    OverlaySession m_session;
    std::vector<std::unique_ptr<QNClipWindowController>> m_controllers;
    platform::ActiveWindow* m_activeWindow = nullptr;
    std::uint32_t m_windowBefore = 0; // active at the trigger
    std::unique_ptr<BannerWait> m_bannerWait;
    bool m_isWorking = false;
    bool m_finishing = false; // the capture ends with a picture
    int m_framesPending = 0;
};

} // namespace capture
