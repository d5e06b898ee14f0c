// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/hotkeys/CaptureActions.h"

#include "app/hotkeys/PasteboardPictures.h"
#include "app/hotkeys/RectString.h"
#include "capture/logic/CaptureContext.h"
#include "core/Localized.h"
#include "platform/DesktopNotifier.h"
#include "platform/PointerControl.h"
#include "platform/SoundPlayer.h"
#include "platform/Speaker.h"
#include "platform/WindowServer.h"
#include "settings/Defaults.h"
#include "settings/Keys.h"

#include <QApplication>
#include <QClipboard>
#include <QMessageBox>
#include <QMimeData>
#include <QPointer>
#include <QPushButton>
#include <QTextStream>
#include <QTimer>

#include <algorithm>
#include <chrono>

namespace app::hotkeys {

namespace keys = settings::keys;

namespace {

const QString kNoMicrophone = QStringLiteral("NONE");

int askWithMessageBox(const QString& text, const QStringList& buttons)
{
    QMessageBox box(QMessageBox::Warning, QStringLiteral("Kelvo"), text);
    box.setTextFormat(Qt::PlainText);
    std::vector<QAbstractButton*> added;
    for (const QString& title : buttons)
        added.push_back(box.addButton(title, QMessageBox::AcceptRole));
    // Escape gives the last, most cautious answer, as closing the box does.
    if (!added.empty())
        box.setEscapeButton(added.back());
    box.exec();
    for (std::size_t i = 0; i < added.size(); ++i) {
        if (box.clickedButton() == added[i])
            return static_cast<int>(i);
    }
    return static_cast<int>(buttons.size()) - 1; // closed: the last, most cautious answer
}

const QMimeData* systemClipboard()
{
    return QGuiApplication::clipboard()->mimeData(QClipboard::Clipboard);
}

} // namespace

RecordStart decideRecordStart(bool recorderWorking, bool screenRecordingEnabled,
                              bool microphoneUsable, const QString& microphoneId)
{
    if (recorderWorking)
        return RecordStart::Stop;
    if (!screenRecordingEnabled)
        return RecordStart::ScreenPermissionMissing;
    if (!microphoneUsable && microphoneId != kNoMicrophone)
        return RecordStart::AskForMicrophone;
    return RecordStart::Start;
}

CaptureActions::CaptureActions(settings::Defaults& defaults, capture::CaptureContext& context,
                               platform::WindowServer& windowServer,
                               platform::PointerControl& pointer, platform::SoundPlayer& sound,
                               platform::Speaker& speaker, QObject* parent)
    : QObject(parent)
    , m_defaults(defaults)
    , m_state(context.capture())
    , m_windowServer(windowServer)
    , m_pointer(pointer)
    , m_sound(sound)
    , m_speaker(speaker)
    , m_alert(askWithMessageBox)
    , m_beep([] { QApplication::beep(); })
    , m_pasteboard(systemClipboard)
{}

CaptureActions::~CaptureActions() = default;

void CaptureActions::setAlert(Alert alert)
{
    m_alert = alert ? std::move(alert) : Alert(askWithMessageBox);
}

void CaptureActions::setBeep(std::function<void()> beep)
{
    m_beep = std::move(beep);
}

void CaptureActions::setPasteboard(std::function<const QMimeData*()> pasteboard)
{
    m_pasteboard = std::move(pasteboard);
}

template <typename Hook, typename... Args>
void CaptureActions::run(const Hook& hook, const char* what, Args&&... args)
{
    if (hook) {
        hook(std::forward<Args>(args)...);
        return;
    }
    QTextStream(stderr) << "kelvo: " << what << " is not available in this build\n";
}

int CaptureActions::currentScreenForMouseLocation() const
{
    return m_windowServer.screens().screenAtTopLeft(m_pointer.position());
}

int CaptureActions::shadowSize() const
{
    const auto size = m_defaults.integerForKey(keys::sizeOfShadow);
    return size >= 1 && m_defaults.boolForKey(keys::needShadowOfnotSingleWindow)
               ? static_cast<int>(size)
               : 0;
}

void CaptureActions::delayScreenShot()
{
    // The screen of the moment of the press, wherever the pointer goes
    // during the delay.
    m_state.screenOfScreenShot = currentScreenForMouseLocation();
    const auto seconds = m_defaults.integerForKey(keys::timeOfDelayScreenshots);
    if (m_defaults.boolForKey(keys::playSoundWhenDelayScreenShots)) {
        // Each number takes as long as it takes to say it.
        countDown(static_cast<int>(std::clamp<qint64>(seconds, 0, 3600)));
        return;
    }
    // Silent, and without the shutter sound.
    QPointer<CaptureActions> self(this);
    QTimer::singleShot(std::chrono::seconds(std::clamp<qint64>(seconds, 0, 3600)), this, [self] {
        if (self)
            self->run(self->m_hooks.saveFullImageToFile, "saving a picture of the whole screen");
    });
}

void CaptureActions::countDown(int remaining)
{
    if (remaining < 1) {
        finishDelayedCapture();
        return;
    }
    QPointer<CaptureActions> self(this);
    m_speaker.say(QString::number(remaining), [self, remaining](bool) {
        if (self)
            self->countDown(remaining - 1);
    });
}

void CaptureActions::finishDelayedCapture()
{
    m_sound.playShutter();
    run(m_hooks.saveFullImageToFile, "saving a picture of the whole screen");
}

void CaptureActions::screenshotWindowUnderCursor()
{
    m_state.screenOfScreenShot = currentScreenForMouseLocation();
    if (m_defaults.boolForKey(keys::playSoundWhenScreenShots))
        m_sound.playShutter();
    run(m_hooks.saveWindowUnderCursor, "saving a picture of the window under the pointer",
        shadowSize());
}

std::optional<CaptureActions::PreviousArea> CaptureActions::previousArea() const
{
    // Stored with a top-left origin, as window bounds are.
    const QRectF rect = rectFromString(m_defaults.stringForKey(keys::preRectOfScreenShots));
    if (rect == QRectF())
        return std::nullopt;
    const core::ScreenLayout layout = m_windowServer.screens();
    const QPointF centre(rect.x() + rect.width() * 0.5,
                         layout.deepestHeight() - (rect.y() + rect.height() * 0.5));
    for (int i = 0; i < layout.count(); ++i) {
        const QRectF frame = layout.frameBottomLeft(i);
        // Left and bottom edges inside, right and top outside.
        if (centre.x() >= frame.left() && centre.x() < frame.right() && centre.y() >= frame.top() &&
            centre.y() < frame.bottom()) {
            const double radius =
                m_defaults.boolForKey(keys::needFilletOfnotSingleWindow) ? 5.0 : 0.0;
            return PreviousArea{rect, i, radius, shadowSize()};
        }
    }
    return std::nullopt;
}

void CaptureActions::screenshotPreviousArea()
{
    const auto area = previousArea();
    m_state.screenOfScreenShot = area ? area->screen : -1;
    if (!area) {
        m_beep();
        return;
    }
    if (m_defaults.boolForKey(keys::playSoundWhenScreenShots))
        m_sound.playShutter();
    run(m_hooks.savePreviousArea, "saving a picture of the previous area", area->rect,
        area->cornerRadius, area->shadowSize);
}

void CaptureActions::mapFromPaste()
{
    const QMimeData* data = m_pasteboard ? m_pasteboard() : nullptr;
    if (data == nullptr || data->formats().isEmpty())
        return;
    const std::vector<QImage> pictures = picturesOnPasteboard(data);
    for (const QImage& picture : pictures)
        run(m_hooks.mapImageToScreen, "pinning a picture", picture);
    if (!pictures.empty())
        return;
    const QString tip = core::localized("The pin is to suspend the picture in the pasteboard on "
                                        "the screen,can be dragged,scroll scaled or labeled");
    if (m_notifier != nullptr)
        m_notifier->notify({QStringLiteral("Kelvo"), tip, QString()});
    else
        QTextStream(stderr) << "kelvo: " << tip << '\n';
}

void CaptureActions::recordScreenClicked()
{
    const bool working = m_hooks.recorderIsWorking && m_hooks.recorderIsWorking();
    const bool screen = !m_hooks.isScreenRecordingEnable || m_hooks.isScreenRecordingEnable();
    const bool microphone = !m_hooks.isValidToVisitMicroPhone || m_hooks.isValidToVisitMicroPhone();
    switch (decideRecordStart(working, screen, microphone,
                              m_defaults.stringForKey(keys::kDefaultMicIdKey))) {
    case RecordStart::Stop:
        stopRecorder();
        return;
    case RecordStart::ScreenPermissionMissing:
        m_alert(core::localized("Recorder Scrren needs to obtain the permission of <Screen "
                                "Recording>. Please <tick> or <retick> the option of Kelvo in "
                                "<Screen Recording>."),
                {core::localized("OK")});
        return;
    case RecordStart::AskForMicrophone: {
        const int agree = m_alert(
            core::localized("Recorder Scrren needs to obtain the permission of <Microphone>. "
                            "Please <tick> or <retick> the option of Kelvo in <Microphone>."),
            {core::localized("Agree"), core::localized("Refuse")});
        if (agree == 0)
            return; // off to set the microphone up; nothing starts
        const int iKnow =
            m_alert(core::localized("You have rejected the microphone authorization, which will "
                                    "cause the screen recording to fail to record the microphone "
                                    "sound!"),
                    {core::localized("I know"), core::localized("Set microphone permissions")});
        if (iKnow != 0)
            return;
        m_defaults.setObject(keys::kDefaultMicIdKey, kNoMicrophone);
        m_defaults.synchronize();
        startRecordScreen();
        return;
    }
    case RecordStart::Start:
        startRecordScreen();
        return;
    }
}

void CaptureActions::startRecordScreen()
{
    run(m_hooks.startRecordScreen, "screen recording");
}

void CaptureActions::stopRecorder()
{
    run(m_hooks.stopRecorder, "screen recording");
}

} // namespace app::hotkeys
