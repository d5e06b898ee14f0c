// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/CaptureRequest.h"
#include "capture/logic/CaptureContext.h"
#include "colour/logic/ColorReadoutState.h"
#include "core/Clock.h"
#include "core/MessageBus.h"
#include "settings/ShortcutOfButton.h"

#include <QImage>
#include <QObject>
#include <QVariantMap>

#include <memory>

namespace settings {
class Defaults;
class SettingsStore;
} // namespace settings
namespace platform {
class AudioDevices;
class Autostart;
class DesktopNotifier;
class FileManager;
class HotKeyCenter;
class PointerControl;
class SoundPlayer;
class Speaker;
class WindowServer;
} // namespace platform
namespace capture {
class QNClipScreenManager;
struct FinishedCapture;
} // namespace capture

namespace app {

namespace hotkeys {
class CaptureActions;
class HotKeyController;
} // namespace hotkeys
namespace output {
class ImageOutput;
struct SaveResult;
} // namespace output

class ActionPictures;
class KelvoBus;
class PreferencesWindow;
class RequestedCaptures;
class StatusItem;

// The composition root: it owns every long-lived service and object of the
// process, wires them together and runs the start-up sequence. Pictures are
// ActionPictures' to make and hand on, requested captures
// RequestedCaptures' to run.
class AppDelegate : public QObject
{
    Q_OBJECT
public:
    // The services the application runs on; tests hand in their own.
    struct Services
    {
        std::unique_ptr<settings::SettingsStore> store;
        std::unique_ptr<platform::WindowServer> windowServer;
        std::unique_ptr<platform::PointerControl> pointer;
        std::unique_ptr<platform::SoundPlayer> sound;
        std::unique_ptr<platform::Autostart> autostart;
        std::unique_ptr<platform::AudioDevices> audio;
        std::unique_ptr<platform::HotKeyCenter> hotKeys;
        std::unique_ptr<platform::Speaker> speaker;
        // Result notices, and the file manager a click on one opens.
        std::unique_ptr<platform::DesktopNotifier> notifier;
        std::unique_ptr<platform::FileManager> files;
        // Time for the capture's, the requests' and the notices' delays;
        // the system's timers when unset.
        std::unique_ptr<core::Clock> clock;
        // What went wrong with the preferences before the delegate existed
        // (a file set aside); told with the start's own findings.
        QStringList preferenceNotes;
    };

    explicit AppDelegate(Services services, QObject* parent = nullptr);
    ~AppDelegate() override;

    // The start-up sequence; the second half is also the first-run set-up.
    void applicationDidFinishLaunching();
    void applicationDidStart();

    // Claims the session bus; false when another instance owns it.
    bool registerOnBus();

    void regionalScreenshots();
    void delayScreenShot();
    void screenshotWindowUnderCursor();
    void screenshotPreviousArea();
    void mapFromPaste();
    void recordScreenClicked();
    void openURLs(const QStringList& paths);
    void OpenPreferences();
    void reset();
    void Quit();

    [[nodiscard]] bool isScreenRecordingEnable();
    [[nodiscard]] bool isValidToVisitMicroPhone();
    void showScreenRecordingPrompt();

    [[nodiscard]] settings::Defaults& defaults() { return *m_defaults; }
    [[nodiscard]] capture::QNClipScreenManager& clipScreenManager() { return *m_clipManager; }
    // The capture's messages, for what the desktop tells from outside.
    [[nodiscard]] core::MessageBus& messages() { return m_messages; }
    [[nodiscard]] const QVariantMap& shortcutOfButton() const { return m_shortcutOfButton.table(); }
    // The actions' hooks into the image output and the recorder.
    [[nodiscard]] hotkeys::CaptureActions& captureActions() { return *m_captureActions; }
    [[nodiscard]] output::ImageOutput& imageOutput() { return *m_output; }

    // A capture asked for on the bus; an error's text when it is refused.
    [[nodiscard]] QString startRequestedCapture(uint id, const CaptureRequest& request);

Q_SIGNALS:
    // A picture that should float on the screen as a pin.
    void pinRequested(const QImage& image);

private:
    // Bad preference values put back at this start, on stderr and in one
    // notification.
    void tellPreferenceRepairs();
    void setStatusItemVisible(bool visible);
    void registerAllHotKey();
    void connectImageOutput();
    void connectCaptureActions();
    void connectRequests();

    // The end of an interactive capture.
    void onCaptureFinished(const capture::FinishedCapture& result);

    Services m_services;
    std::unique_ptr<settings::Defaults> m_defaults;
    core::MessageBus m_messages;
    // What the objects of a capture share, from one capture to the next.
    capture::CaptureContext m_context;
    // What the magnifier read last; it carries over from one capture to the next.
    colour::ColorReadoutState m_readoutState;
    std::unique_ptr<capture::QNClipScreenManager> m_clipManager;
    KelvoBus* m_bus = nullptr;
    StatusItem* m_statusItem = nullptr;
    std::unique_ptr<PreferencesWindow> m_preferences; // made when first opened
    // The live tool short cuts; follows their preferences from the start.
    settings::ShortcutOfButton m_shortcutOfButton{*m_defaults};
    std::unique_ptr<hotkeys::CaptureActions> m_captureActions;
    std::unique_ptr<hotkeys::HotKeyController> m_hotKeys;
    std::unique_ptr<output::ImageOutput> m_output;
    std::unique_ptr<ActionPictures> m_pictures;
    std::unique_ptr<RequestedCaptures> m_requests;
};

} // namespace app
