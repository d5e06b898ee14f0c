// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/hotkeys/CaptureActions.h"
#include "capture/logic/CaptureContext.h"
#include "platform/Speaker.h"
#include "platform/null/FakeWindowServer.h"
#include "platform/null/NullServices.h"
#include "settings/Defaults.h"
#include "settings/Keys.h"
#include "settings/MemoryStore.h"
#include "settings/Startup.h"

#include <QBuffer>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QMimeData>
#include <QTemporaryDir>
#include <QTimer>
#include <QUrl>

#include <gtest/gtest.h>

using app::hotkeys::CaptureActions;
using app::hotkeys::RecordStart;
namespace keys = settings::keys;

namespace {

// Says each text at once, on the next turn of the event loop.
class RecordingSpeaker final : public platform::Speaker
{
public:
    std::vector<std::string>* log = nullptr;
    void say(const QString& text, std::function<void(bool)> done) override
    {
        log->push_back("say " + text.toStdString());
        QTimer::singleShot(0, [done = std::move(done)] { done(true); });
    }
};

class LoggingSound final : public platform::SoundPlayer
{
public:
    std::vector<std::string>* log = nullptr;
    void playShutter() override { log->push_back("shutter"); }
};

struct Actions : ::testing::Test
{
    settings::MemoryStore store;
    settings::Defaults defaults{store};
    capture::CaptureContext captureContext;
    capture::CaptureState& state = captureContext.capture();
    platform::null::FakeWindowServer windows;
    platform::null::FixedPointer pointer;
    platform::null::RecordingNotifier notifier;
    std::vector<std::string> log;
    LoggingSound sound;
    RecordingSpeaker speaker;
    std::unique_ptr<CaptureActions> actions;
    int beeps = 0;

    Actions()
    {
        settings::StartContext context;
        context.secondsSince1970 = 1700000000;
        context.downloadsFolder = QStringLiteral("/tmp");
        settings::installFirstRunValues(defaults, context);
        // Primary 1920x1080, and a 1280x1024 screen to its right.
        windows.layout =
            core::ScreenLayout({{QStringLiteral("A"), QRectF(0, 0, 1920, 1080), 1},
                                {QStringLiteral("B"), QRectF(1920, 0, 1280, 1024), 1}});
        sound.log = &log;
        speaker.log = &log;
        actions = std::make_unique<CaptureActions>(defaults, captureContext, windows, pointer,
                                                   sound, speaker);
        actions->setNotifier(&notifier);
        actions->setBeep([this] { ++beeps; });
        auto& hooks = actions->hooks();
        hooks.saveFullImageToFile = [this] {
            log.push_back("save screen " + std::to_string(state.screenOfScreenShot));
        };
        hooks.saveWindowUnderCursor = [this](int shadow) {
            log.push_back("save window shadow " + std::to_string(shadow));
        };
        hooks.savePreviousArea = [this](const QRectF& r, double radius, int shadow) {
            log.push_back(QStringLiteral("save area %1,%2 %3x%4 radius %5 shadow %6")
                              .arg(r.x())
                              .arg(r.y())
                              .arg(r.width())
                              .arg(r.height())
                              .arg(radius)
                              .arg(shadow)
                              .toStdString());
        };
    }

    // Runs the event loop until `condition` holds, at most `ms`.
    bool runUntil(const std::function<bool()>& condition, int ms = 5000)
    {
        QElapsedTimer clock;
        clock.start();
        while (!condition() && clock.elapsed() < ms) {
            QEventLoop loop;
            QTimer::singleShot(10, &loop, &QEventLoop::quit);
            loop.exec();
        }
        return condition();
    }
};

} // namespace

TEST_F(Actions, WindowUnderThePointerTakesItsScreenSoundAndShadow)
{
    pointer.at = QPointF(2000, 100);
    actions->screenshotWindowUnderCursor();
    EXPECT_EQ(state.screenOfScreenShot, 1);
    EXPECT_EQ(log, (std::vector<std::string>{"shutter", "save window shadow 18"}));

    log.clear();
    pointer.at = QPointF(10, 10);
    defaults.setObject(keys::needShadowOfnotSingleWindow, QStringLiteral("NO"));
    defaults.setBool(keys::playSoundWhenScreenShots, false);
    actions->screenshotWindowUnderCursor();
    EXPECT_EQ(state.screenOfScreenShot, 0);
    EXPECT_EQ(log, (std::vector<std::string>{"save window shadow 0"}));

    log.clear();
    defaults.setObject(keys::needShadowOfnotSingleWindow, QStringLiteral("YES"));
    defaults.setObject(keys::sizeOfShadow, QStringLiteral("0"));
    actions->screenshotWindowUnderCursor();
    EXPECT_EQ(log, (std::vector<std::string>{"save window shadow 0"}));

    // Without the image output the action says so and does nothing else.
    actions->hooks().saveWindowUnderCursor = {};
    testing::internal::CaptureStderr();
    actions->screenshotWindowUnderCursor();
    EXPECT_NE(testing::internal::GetCapturedStderr().find("not available"), std::string::npos);
}

TEST_F(Actions, PreviousAreaBeepsWhenThereIsNoneOrItsCentreIsOnNoScreen)
{
    actions->screenshotPreviousArea();
    EXPECT_EQ(beeps, 1);

    // Below the second screen, which is shorter than the primary: the
    // centre's y is flipped with the primary's height.
    state.screenOfScreenShot = 0;
    defaults.setObject(keys::preRectOfScreenShots, QStringLiteral("{{2000, 1030}, {100, 40}}"));
    actions->screenshotPreviousArea();
    EXPECT_EQ(beeps, 2);
    EXPECT_EQ(state.screenOfScreenShot, -1);
    EXPECT_TRUE(log.empty()); // no sound, no picture
}

TEST_F(Actions, PreviousAreaIsCapturedOnTheScreenOfItsCentre)
{
    defaults.setObject(keys::preRectOfScreenShots, QStringLiteral("{{1900, 100}, {200, 50}}"));
    actions->screenshotPreviousArea();
    EXPECT_EQ(beeps, 0);
    EXPECT_EQ(state.screenOfScreenShot, 1);
    EXPECT_EQ(
        log, (std::vector<std::string>{"shutter", "save area 1900,100 200x50 radius 5 shadow 18"}));

    log.clear();
    defaults.setObject(keys::needFilletOfnotSingleWindow, QStringLiteral("NO"));
    defaults.setObject(keys::preRectOfScreenShots, QStringLiteral("{{10, 1000}, {20, 20}}"));
    actions->screenshotPreviousArea();
    EXPECT_EQ(state.screenOfScreenShot, 0);
    EXPECT_EQ(log.back(), "save area 10,1000 20x20 radius 0 shadow 18");
}

TEST_F(Actions, SpokenDelayCountsDownThenSoundsAndSavesTheScreenOfThePress)
{
    pointer.at = QPointF(2500, 500);
    actions->delayScreenShot();
    pointer.at = QPointF(100, 100); // moving away changes nothing
    ASSERT_TRUE(runUntil([this] { return log.size() == 5; }));
    EXPECT_EQ(log,
              (std::vector<std::string>{"say 3", "say 2", "say 1", "shutter", "save screen 1"}));
}

TEST_F(Actions, SilentDelayWaitsTheSecondsWithoutAnySound)
{
    defaults.setObject(keys::playSoundWhenDelayScreenShots, QStringLiteral("NO"));
    defaults.setObject(keys::timeOfDelayScreenshots, QStringLiteral("1"));
    QElapsedTimer clock;
    clock.start();
    actions->delayScreenShot();
    EXPECT_TRUE(log.empty());
    ASSERT_TRUE(runUntil([this] { return !log.empty(); }));
    EXPECT_GE(clock.elapsed(), 900);
    EXPECT_EQ(log, (std::vector<std::string>{"save screen 0"}));
}

TEST_F(Actions, PinsComeFromImageFilesFirstAndOtherwiseFromPictureData)
{
    std::vector<QSize> pinned;
    actions->hooks().mapImageToScreen = [&](const QImage& picture) {
        pinned.push_back(picture.size());
    };
    QTemporaryDir dir;
    QImage(30, 20, QImage::Format_RGB32).save(dir.filePath(QStringLiteral("a.png")));
    QImage(7, 7, QImage::Format_RGB32).save(dir.filePath(QStringLiteral("b.jpg")));
    QFile text(dir.filePath(QStringLiteral("notes.txt")));
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write("not a picture");
    text.close();
    QDir(dir.path()).mkdir(QStringLiteral("folder.png"));

    QMimeData mixed;
    mixed.setUrls({QUrl::fromLocalFile(dir.filePath(QStringLiteral("a.png"))),
                   QUrl::fromLocalFile(dir.filePath(QStringLiteral("notes.txt"))),
                   QUrl::fromLocalFile(dir.filePath(QStringLiteral("folder.png"))),
                   QUrl::fromLocalFile(dir.filePath(QStringLiteral("gone.png"))),
                   QUrl::fromLocalFile(dir.filePath(QStringLiteral("b.jpg")))});
    mixed.setImageData(QImage(99, 99, QImage::Format_RGB32));
    const QMimeData* current = &mixed;
    actions->setPasteboard([&current] { return current; });
    actions->mapFromPaste();
    EXPECT_EQ(pinned, (std::vector<QSize>{QSize(30, 20), QSize(7, 7)}));
    EXPECT_TRUE(notifier.sent.empty());

    pinned.clear();
    QMimeData picture;
    picture.setImageData(QImage(12, 5, QImage::Format_RGB32));
    current = &picture;
    actions->mapFromPaste();
    EXPECT_EQ(pinned, (std::vector<QSize>{QSize(12, 5)}));

    // A copied PDF page offers a picture too, but is no picture to pin.
    pinned.clear();
    picture.setData(QStringLiteral("application/pdf"), QByteArray("%PDF-1.4"));
    actions->mapFromPaste();
    EXPECT_TRUE(pinned.empty());
    ASSERT_EQ(notifier.sent.size(), 1u);
    EXPECT_EQ(notifier.sent[0].body,
              QStringLiteral("The pin is to suspend the picture in the pasteboard on the "
                             "screen,can be dragged,scroll scaled or labeled"));

    // An empty clipboard is silent.
    QMimeData empty;
    current = &empty;
    actions->mapFromPaste();
    EXPECT_EQ(notifier.sent.size(), 1u);
}

TEST(RecordStartDecision, StopsARunningRecordingAndOtherwiseChecksPermissions)
{
    using app::hotkeys::decideRecordStart;
    EXPECT_EQ(decideRecordStart(true, false, false, QString()), RecordStart::Stop);
    EXPECT_EQ(decideRecordStart(false, false, true, QString()),
              RecordStart::ScreenPermissionMissing);
    EXPECT_EQ(decideRecordStart(false, true, false, QString()), RecordStart::AskForMicrophone);
    EXPECT_EQ(decideRecordStart(false, true, false, QStringLiteral("NONE")), RecordStart::Start);
    EXPECT_EQ(decideRecordStart(false, true, true, QStringLiteral("alsa_input.usb")),
              RecordStart::Start);
}

TEST_F(Actions, RefusingTheMicrophoneAndAcceptingThatRecordsWithoutIt)
{
    int starts = 0;
    int stops = 0;
    auto& hooks = actions->hooks();
    hooks.startRecordScreen = [&] { ++starts; };
    hooks.stopRecorder = [&] { ++stops; };
    hooks.isValidToVisitMicroPhone = [] { return false; };
    std::vector<int> answers;
    std::vector<QStringList> asked;
    actions->setAlert([&](const QString&, const QStringList& buttons) {
        asked.push_back(buttons);
        const int answer = answers.front();
        answers.erase(answers.begin());
        return answer;
    });

    answers = {0}; // "Agree": off to the settings, nothing starts
    actions->recordScreenClicked();
    EXPECT_EQ(starts, 0);
    EXPECT_EQ(asked.size(), 1u);

    answers = {1, 0}; // "Refuse", then "I know"
    actions->recordScreenClicked();
    EXPECT_EQ(starts, 1);
    EXPECT_EQ(asked.back(), (QStringList{QStringLiteral("I know"),
                                         QStringLiteral("Set microphone permissions")}));
    EXPECT_EQ(defaults.stringForKey(keys::kDefaultMicIdKey), QStringLiteral("NONE"));

    // From now on no question is asked; and a running recorder is stopped.
    actions->recordScreenClicked();
    EXPECT_EQ(starts, 2);
    EXPECT_EQ(asked.size(), 3u);
    hooks.recorderIsWorking = [] { return true; };
    actions->recordScreenClicked();
    EXPECT_EQ(stops, 1);
    EXPECT_EQ(starts, 2);
}

TEST_F(Actions, PictureBytesFromAnotherProgramAreDecodedAndBadOnesAreNoPin)
{
    std::vector<QSize> pinned;
    actions->hooks().mapImageToScreen = [&](const QImage& picture) {
        pinned.push_back(picture.size());
    };
    QByteArray png;
    {
        QBuffer buffer(&png);
        buffer.open(QIODevice::WriteOnly);
        QImage(40, 10, QImage::Format_RGB32).save(&buffer, "PNG");
    }
    QMimeData offered; // one picture in two formats, as X clipboards offer it
    offered.setData(QStringLiteral("image/bmp"), QByteArray("broken"));
    offered.setData(QStringLiteral("image/png"), png);
    actions->setPasteboard([&offered] { return &offered; });
    actions->mapFromPaste();
    EXPECT_EQ(pinned, (std::vector<QSize>{QSize(40, 10)}));

    QMimeData broken;
    broken.setData(QStringLiteral("image/png"), QByteArray("\x89PNG broken"));
    actions->setPasteboard([&broken] { return &broken; });
    actions->mapFromPaste();
    EXPECT_EQ(pinned.size(), 1u);
    EXPECT_EQ(notifier.sent.size(), 1u);
}
