// SPDX-License-Identifier: GPL-3.0-or-later
// The pictures of the hot-key actions and for pins, on a fake window
// server and a real save folder: which screen is pictured, at what density
// the file is written and decorated, when nothing is taken, and which
// files become pins.
#include "app/ActionPictures.h"
#include "capture/logic/CaptureContext.h"
#include "capture/ui/QNClipScreenManager.h"
#include "platform/null/FakeWindowServer.h"
#include "platform/null/NullServices.h"
#include "settings/Defaults.h"
#include "settings/Keys.h"
#include "settings/MemoryStore.h"
#include "support/SteppedClock.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using app::ActionPictures;
namespace keys = settings::keys;

namespace {

// 72 and 144 dots an inch, as pixels per metre.
constexpr int kPlainDensity = 2835;
constexpr int kDoubleDensity = 5669;

class Pictures : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(folder.isValid());
        defaults.setObject(keys::pathofSaveScreenShotsPhoto, folder.path());
        defaults.setObject(keys::formatOfSavePhoto, QStringLiteral("png"));
        // Two screens side by side: a plain one and a dense one.
        windows.layout =
            core::ScreenLayout({{QStringLiteral("plain"), QRectF(0, 0, 100, 50), 1.0},
                                {QStringLiteral("dense"), QRectF(100, 0, 60, 40), 2.0}});
        windows.desktop = QImage(160, 50, QImage::Format_RGB32);
        windows.desktop.fill(Qt::blue);
        for (int y = 0; y < 50; ++y)
            for (int x = 100; x < 160; ++x)
                windows.desktop.setPixel(x, y, qRgb(0, 200, 0));

        app::output::ImageOutput::Services o;
        o.defaults = &defaults;
        o.notifier = &notifier;
        o.clipboard = [this](const QByteArray& png) { clipboard = png; };
        o.timers = &clock;
        o.report = [this](const QString& line) { reported << line; };
        output = std::make_unique<app::output::ImageOutput>(std::move(o));

        ActionPictures::Services s;
        s.windows = &windows;
        s.pointer = &pointer;
        s.defaults = &defaults;
        s.context = &context;
        s.output = output.get();
        s.captureRunning = [this] { return captureRunning; };
        s.beep = [this] { ++beeps; };
        s.report = [this](const QString& line) { reported << line; };
        pictures = std::make_unique<ActionPictures>(std::move(s));
        QObject::connect(pictures.get(), &ActionPictures::pinRequested,
                         [this](const QImage& image) { pins.push_back(image); });
    }

    QStringList saved() const { return QDir(folder.path()).entryList(QDir::Files); }
    QImage onlySaved() const
    {
        const QStringList files = saved();
        EXPECT_EQ(files.size(), 1);
        return files.isEmpty() ? QImage() : QImage(QDir(folder.path()).filePath(files.first()));
    }

    QTemporaryDir folder;
    settings::MemoryStore store;
    settings::Defaults defaults{store};
    platform::null::FakeWindowServer windows;
    platform::null::FixedPointer pointer;
    platform::null::RecordingNotifier notifier;
    SteppedClock clock;
    capture::CaptureContext context;
    capture::CaptureState& state = context.capture();
    bool captureRunning = false;
    int beeps = 0;
    QByteArray clipboard;
    QStringList reported;
    std::vector<QImage> pins;
    std::unique_ptr<app::output::ImageOutput> output;
    std::unique_ptr<ActionPictures> pictures;
};

} // namespace

TEST_F(Pictures, TheWholeScreenIsTheOneNamedAndWrittenAtItsDensity)
{
    state.screenOfScreenShot = 1;
    pictures->saveFullImageToFile();
    const QImage dense = onlySaved();
    EXPECT_EQ(dense.size(), QSize(60, 40));
    EXPECT_EQ(dense.pixelColor(30, 20), QColor(0, 200, 0));
    EXPECT_NEAR(dense.dotsPerMeterX(), kDoubleDensity, 1);

    // A screen that is gone falls back to the primary, at its density.
    QDir(folder.path()).removeRecursively();
    QDir().mkpath(folder.path());
    state.screenOfScreenShot = 5;
    pictures->saveFullImageToFile();
    const QImage plain = onlySaved();
    EXPECT_EQ(plain.size(), QSize(100, 50));
    EXPECT_EQ(plain.pixelColor(10, 10), QColor(Qt::blue));
    EXPECT_NEAR(plain.dotsPerMeterX(), kPlainDensity, 1);
    EXPECT_TRUE(reported.isEmpty());
}

TEST_F(Pictures, NoScreenOrNoPictureSavesNothingAndSaysWhy)
{
    windows.desktop = QImage();
    pictures->saveFullImageToFile();
    windows.layout = core::ScreenLayout();
    pictures->saveFullImageToFile();
    EXPECT_TRUE(saved().isEmpty());
    EXPECT_EQ(reported, QStringList({QStringLiteral("the X server gave no picture of the screen"),
                                     QStringLiteral("no screen to take a picture of")}));
}

TEST_F(Pictures, WhileACaptureRunsTheWindowComesFromTheListTheCaptureFroze)
{
    // The capture froze window 42 under the pointer; the live list would
    // now answer window 7 there (our overlay is never listed).
    platform::WindowRecord frozen;
    frozen.number = 42;
    frozen.bounds = QRectF(10, 10, 30, 20);
    state.arrayRect = {frozen};
    platform::WindowRecord live = frozen;
    live.number = 7;
    live.bounds = QRectF(0, 0, 40, 40);
    windows.windows = {live};
    windows.windowPictures[42] = QImage(30, 20, QImage::Format_RGB32);
    windows.windowPictures[42].fill(Qt::yellow);
    windows.windowPictures[7] = QImage(40, 40, QImage::Format_RGB32);
    windows.windowPictures[7].fill(Qt::red);
    pointer.at = QPointF(20, 20);
    state.screenOfScreenShot = 0;
    const auto heldByCapture = windows.holdPictureOfWindow(42, QRectF());

    captureRunning = true;
    pictures->saveWindowUnderCursor(0);
    const QImage taken = onlySaved();
    EXPECT_EQ(taken.size(), QSize(30, 20));
    EXPECT_EQ(taken.pixelColor(5, 5), QColor(Qt::yellow));
    // No window pass, and the capture keeps its freeze.
    EXPECT_EQ(windows.windowListCalls, 0);
    EXPECT_FALSE(heldByCapture->read().isNull());
    EXPECT_EQ(beeps, 0);

    // Without a capture: a fresh list, and the freeze it made is let go.
    QDir(folder.path()).removeRecursively();
    QDir().mkpath(folder.path());
    captureRunning = false;
    pictures->saveWindowUnderCursor(0);
    const QImage fresh = onlySaved();
    EXPECT_EQ(fresh.pixelColor(5, 5), QColor(Qt::red));
    EXPECT_EQ(windows.windowListCalls, 1);
    EXPECT_TRUE(heldByCapture->read().isNull());
}

TEST_F(Pictures, ThePreviousAreaIsDecoratedAtTheDensityOfItsScreen)
{
    state.screenOfScreenShot = 1; // the dense screen: two pixels a point
    pictures->savePreviousArea(QRectF(110, 5, 20, 10), 5.0, 4);
    const QImage area = onlySaved();
    // 20 x 10 pixels are 10 x 5 points; a 4-point shadow is 8 pixels a side.
    EXPECT_EQ(area.size(), QSize(36, 26));
    EXPECT_NEAR(area.dotsPerMeterX(), kDoubleDensity, 1);
    EXPECT_EQ(area.pixelColor(0, 0).alpha(), 0);
    // Inside the rounded outline the area itself, whole.
    EXPECT_EQ(area.pixelColor(18, 13), QColor(0, 200, 0));
}

TEST_F(Pictures, ARequestedPreviousAreaNamesItsScreenOrSaysThereIsNone)
{
    QString error;
    EXPECT_TRUE(pictures->pictureOfStoredArea(std::nullopt, &error).isNull());
    EXPECT_TRUE(error.startsWith(QStringLiteral("there is no previous area")))
        << error.toStdString();

    error.clear();
    state.screenOfScreenShot = 0;
    const core::Picture picture = pictures->pictureOfStoredArea(
        app::hotkeys::CaptureActions::PreviousArea{QRectF(100, 0, 10, 10), 1, 0, 0}, &error);
    EXPECT_TRUE(error.isEmpty());
    EXPECT_EQ(state.screenOfScreenShot, 1);
    EXPECT_EQ(picture.pixels.size(), QSize(10, 10));
    EXPECT_EQ(picture.density(), 2.0);

    windows.desktop = QImage();
    EXPECT_TRUE(
        pictures
            ->pictureOfStoredArea(
                app::hotkeys::CaptureActions::PreviousArea{QRectF(0, 0, 10, 10), 0, 0, 0}, &error)
            .isNull());
    EXPECT_EQ(error, QStringLiteral("the X server gave no picture of the area"));
}

TEST_F(Pictures, OnlyFilesThatReadAsPicturesBecomePins)
{
    QImage small(7, 5, QImage::Format_RGB32);
    small.fill(Qt::red);
    const QString good = folder.filePath(QStringLiteral("good.png"));
    ASSERT_TRUE(small.save(good));
    QFile text(folder.filePath(QStringLiteral("text.png")));
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write("not a picture");
    text.close();
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("folder.png")));

    pictures->openURLs({folder.filePath(QStringLiteral("missing.png")), text.fileName(),
                        folder.filePath(QStringLiteral("folder.png")), good});
    ASSERT_EQ(pins.size(), 1u);
    EXPECT_EQ(pins[0].size(), QSize(7, 5));
}

TEST_F(Pictures, APinnedFinishIsKeptOnTheClipboardUntilPinsExist)
{
    capture::FinishedCapture finish;
    finish.picture = core::Picture::pixelsAsPoints(QImage(9, 4, QImage::Format_RGB32));
    finish.picture.pixels.fill(Qt::cyan);
    finish.destination = capture::FinishDestination::Pin;
    const app::output::SaveResult r = pictures->sendFinishedCapture(finish);
    EXPECT_TRUE(r.path.isEmpty());
    ASSERT_EQ(pins.size(), 1u);
    EXPECT_EQ(pins[0], finish.picture.pixels);
    EXPECT_EQ(QImage::fromData(clipboard, "PNG").size(), QSize(9, 4));
    ASSERT_EQ(reported.size(), 1);
    EXPECT_TRUE(reported.first().contains(QStringLiteral("pins")));
    EXPECT_TRUE(saved().isEmpty());

    // The save button's finish goes to the save folder.
    finish.destination = capture::FinishDestination::File;
    const app::output::SaveResult file = pictures->sendFinishedCapture(finish);
    EXPECT_EQ(saved(), QStringList{QFileInfo(file.path).fileName()});
    EXPECT_EQ(pins.size(), 1u);
}
