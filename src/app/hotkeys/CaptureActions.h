// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QObject>
#include <QRectF>
#include <QStringList>

#include <functional>
#include <optional>

class QMimeData;

namespace settings {
class Defaults;
}
namespace capture {
class CaptureContext;
struct CaptureState;
} // namespace capture
namespace platform {
class DesktopNotifier;
class PointerControl;
class SoundPlayer;
class Speaker;
class WindowServer;
} // namespace platform

namespace app::hotkeys {

// Where the recording key leads, given what is under way and allowed.
enum class RecordStart
{
    Stop,                    // a recording runs: the key ends it
    ScreenPermissionMissing, // tell the user; nothing starts
    AskForMicrophone,        // the microphone is wanted but cannot be used
    Start,
};
[[nodiscard]] RecordStart decideRecordStart(bool recorderWorking, bool screenRecordingEnabled,
                                            bool microphoneUsable, const QString& microphoneId);

// The capture actions that work without the overlay: the delayed whole
// screen, the window under the pointer, the previous area, pins from the
// clipboard and the recording key. They decide which screen, which options
// and whether anything happens at all; making and saving the pictures is
// the image output's, reached through the hooks.
class CaptureActions final : public QObject
{
    Q_OBJECT
public:
    // The image output and the recorder. An unset hook means that part of
    // Kelvo is not there: the action says so on stderr and does nothing.
    struct Hooks
    {
        // Saves a picture of the whole screen capture::CaptureState::
        // screenOfScreenShot names.
        std::function<void()> saveFullImageToFile;
        // Saves a picture of the window under the pointer, with a shadow of
        // `shadowSize` points when above 0. Never to the clipboard, never
        // with rounded corners.
        std::function<void(int shadowSize)> saveWindowUnderCursor;
        // Saves a picture of `rect` (global top-left points), its corners
        // rounded by `cornerRadius` and a shadow of `shadowSize` points
        // when these are above 0.
        std::function<void(const QRectF& rect, double cornerRadius, int shadowSize)>
            savePreviousArea;
        // Floats one picture on the screen as a pin.
        std::function<void(const QImage& picture)> mapImageToScreen;
        // The recorder: whether it works now, and its start and stop.
        std::function<bool()> recorderIsWorking;
        std::function<void()> startRecordScreen;
        std::function<void()> stopRecorder;
        // Whether pictures of the desktop and the microphone can be had.
        std::function<bool()> isScreenRecordingEnable;
        std::function<bool()> isValidToVisitMicroPhone;
    };
    // A modal question: the text and the buttons; answers the index of the
    // button chosen. Replaceable so that tests need no dialog.
    using Alert = std::function<int(const QString& text, const QStringList& buttons)>;

    CaptureActions(settings::Defaults& defaults, capture::CaptureContext& context,
                   platform::WindowServer& windowServer, platform::PointerControl& pointer,
                   platform::SoundPlayer& sound, platform::Speaker& speaker,
                   QObject* parent = nullptr);
    ~CaptureActions() override;

    [[nodiscard]] Hooks& hooks() { return m_hooks; }
    void setNotifier(platform::DesktopNotifier* notifier) { m_notifier = notifier; }
    void setAlert(Alert alert);
    void setBeep(std::function<void()> beep);
    void setPasteboard(std::function<const QMimeData*()> pasteboard);

    // The stored previous area (global top-left points), the screen that
    // holds its centre and the decoration the preferences ask for; nullopt
    // when none is stored or its centre lies on no screen.
    struct PreviousArea
    {
        QRectF rect;
        int screen = -1;
        double cornerRadius = 0;
        int shadowSize = 0;
    };
    [[nodiscard]] std::optional<PreviousArea> previousArea() const;

    void delayScreenShot();
    void screenshotWindowUnderCursor();
    void screenshotPreviousArea();
    void mapFromPaste();
    void recordScreenClicked();
    void stopRecorder();

private:
    void countDown(int remaining);
    void finishDelayedCapture();
    void startRecordScreen();
    [[nodiscard]] int currentScreenForMouseLocation() const;
    [[nodiscard]] int shadowSize() const;
    // Runs `hook` when it is set; otherwise tells stderr that `what` is not
    // part of this build yet.
    template <typename Hook, typename... Args>
    void run(const Hook& hook, const char* what, Args&&... args);

    settings::Defaults& m_defaults;
    capture::CaptureState& m_state;
    platform::WindowServer& m_windowServer;
    platform::PointerControl& m_pointer;
    platform::SoundPlayer& m_sound;
    platform::Speaker& m_speaker;
    platform::DesktopNotifier* m_notifier = nullptr;
    Hooks m_hooks;
    Alert m_alert;
    std::function<void()> m_beep;
    std::function<const QMimeData*()> m_pasteboard;
};

} // namespace app::hotkeys
