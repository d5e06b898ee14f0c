// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/CaptureRequest.h"
#include "capture/logic/CaptureState.h"
#include "colour/logic/ColorReadoutState.h"
#include "core/MessageBus.h"

#include <QImage>
#include <QObject>
#include <QVariantMap>

#include <functional>
#include <memory>
#include <optional>

namespace settings {
class Defaults;
class SettingsStore;
} // namespace settings
namespace platform {
class AudioDevices;
class Autostart;
class HotKeyCenter;
class PointerControl;
class SoundPlayer;
class Speaker;
class WindowServer;
} // namespace platform
namespace platform::freedesktop {
class FreedesktopFileManager;
class FreedesktopNotifier;
} // namespace platform::freedesktop
namespace capture {
class QNClipScreenManager;
struct FinishedCapture;
} // namespace capture
namespace core {
struct Picture;
}

namespace app {

namespace hotkeys {
class CaptureActions;
class HotKeyController;
} // namespace hotkeys
namespace output {
class ImageOutput;
struct SaveResult;
} // namespace output

class KelvoBus;
class StatusItem;
class PreferencesWindow;

// The composition root: it owns every long-lived service and object of the
// process, runs the start-up sequence and is home to the capture actions.
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
    [[nodiscard]] const QVariantMap& shortcutOfButton() const { return m_shortcutOfButton; }
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

    // The pictures of the capture actions, at their screens' density.
    void saveFullImageToFile();
    void saveWindowUnderCursor(int shadowSize);
    void savePreviousArea(const QRectF& rect, double cornerRadius, int shadowSize);
    [[nodiscard]] core::Picture pictureOfPreviousArea(const QRectF& rect, double cornerRadius,
                                                      int shadowSize);
    [[nodiscard]] double scaleOfScreen(int screen);

    // The end of an interactive capture.
    void onCaptureEnded(bool finished);
    void onCaptureFinished(const capture::FinishedCapture& result);

    // A capture request under way: its id and what was asked.
    struct PendingRequest
    {
        uint id = 0;
        CaptureRequest request;
        bool started = false; // its overlay is up
    };
    void runRequest();
    // Sends a request's picture where the request says; with neither a
    // path nor the clipboard asked for, where `fallback` says.
    void deliverRequest(const core::Picture& picture,
                        const std::function<output::SaveResult()>& fallback);
    void endRequest(const output::SaveResult* saved, const QString& error);

    Services m_services;
    std::unique_ptr<settings::Defaults> m_defaults;
    core::MessageBus m_messages;
    capture::CaptureState m_captureState;
    // What the magnifier read last; it carries over from one capture to the next.
    colour::ColorReadoutState m_readoutState;
    std::unique_ptr<capture::QNClipScreenManager> m_clipManager;
    KelvoBus* m_bus = nullptr;
    StatusItem* m_statusItem = nullptr;
    std::unique_ptr<PreferencesWindow> m_preferences; // made when first opened
    QVariantMap m_shortcutOfButton;
    std::unique_ptr<hotkeys::CaptureActions> m_captureActions;
    std::unique_ptr<hotkeys::HotKeyController> m_hotKeys;
    std::unique_ptr<platform::freedesktop::FreedesktopNotifier> m_notifier;
    std::unique_ptr<platform::freedesktop::FreedesktopFileManager> m_files;
    std::unique_ptr<output::ImageOutput> m_output;
    std::optional<PendingRequest> m_request;
};

} // namespace app
