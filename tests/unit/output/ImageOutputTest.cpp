// SPDX-License-Identifier: GPL-3.0-or-later
// Saving, copying and notifying on real folders: a save never replaces a
// picture, a folder that cannot take one is told and the picture kept, and
// the encoders write files their readers accept.
#include "app/output/ImageOutput.h"
#include "app/output/ImageEncoding.h"
#include "platform/null/NullServices.h"
#include "settings/Defaults.h"
#include "settings/Keys.h"
#include "settings/MemoryStore.h"
#include "support/SteppedClock.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <zlib.h>

using namespace app::output;
namespace keys = settings::keys;

namespace {

QCoreApplication& application()
{
    static int argc = 1;
    static char name[] = "unit_output";
    static char* argv[] = {name, nullptr};
    static QCoreApplication app(argc, argv);
    return app;
}

using std::chrono::milliseconds;

core::Picture checker(int w, int h)
{
    QImage image(w, h, QImage::Format_RGB32);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x)
            image.setPixel(x, y, ((x / 4 + y / 4) % 2) ? qRgb(200, 30, 30) : qRgb(10, 90, 250));
    return core::Picture::pixelsAsPoints(image);
}

class Output : public ::testing::Test
{
protected:
    void SetUp() override
    {
        application();
        ASSERT_TRUE(home.isValid());
        // The fallback folders follow HOME and the XDG user folders.
        qputenv("HOME", home.path().toLocal8Bit());
        qputenv("XDG_CONFIG_HOME", (home.path() + QStringLiteral("/config")).toLocal8Bit());
        QDir(home.path()).mkpath(QStringLiteral("Pictures"));
        QDir(home.path()).mkpath(QStringLiteral("saves"));
        defaults.setObject(keys::pathofSaveScreenShotsPhoto, folder());
        defaults.setObject(keys::formatOfSavePhoto, QStringLiteral("png"));
        defaults.setBool(keys::notifyWhenComplete, true);
    }

    QString folder() const { return home.path() + QStringLiteral("/saves"); }

    ImageOutput makeOutput()
    {
        ImageOutput::Services s;
        s.defaults = &defaults;
        s.notifier = &notifier;
        s.files = &files;
        s.clipboard = [this](const QByteArray& png) { clipboard = png; };
        s.clock = [] { return QDateTime(QDate(2024, 3, 5), QTime(13, 2, 3)); };
        s.timers = &timers;
        s.report = [this](const QString& line) { reported << line; };
        return ImageOutput(s);
    }

    QTemporaryDir home;
    SteppedClock timers;
    settings::MemoryStore store;
    settings::Defaults defaults{store};
    platform::null::RecordingNotifier notifier;
    platform::null::RecordingFileManager files;
    QByteArray clipboard;
    QStringList reported;
};

} // namespace

TEST_F(Output, SavesInTheSameSecondNeverReplaceEachOther)
{
    ImageOutput output = makeOutput();
    const SaveResult a = output.saveImageToFile(checker(30, 20));
    const SaveResult b = output.saveImageToFile(checker(10, 10));
    ASSERT_TRUE(a.saved());
    ASSERT_TRUE(b.saved());
    EXPECT_EQ(a.path, folder() + QStringLiteral("/Kelvo2024-03-05PM01.02.03.png"));
    EXPECT_EQ(b.path, folder() + QStringLiteral("/Kelvo2024-03-05PM01.02.03 2.png"));
    EXPECT_EQ(QImage(a.path).size(), QSize(30, 20));
    EXPECT_EQ(QImage(b.path).size(), QSize(10, 10));
    // The plain save route is silent.
    EXPECT_TRUE(notifier.sent.empty());
    EXPECT_TRUE(reported.isEmpty());
    // No temporary file is left behind.
    EXPECT_EQ(QDir(folder()).entryList(QDir::Files).size(), 2);
}

TEST_F(Output, AnAbsentFormatSavesJpegAndAnUnknownOneTiff)
{
    ImageOutput output = makeOutput();
    defaults.removeObjectForKey(keys::formatOfSavePhoto);
    const SaveResult jpg = output.saveImageToFile(checker(16, 16));
    EXPECT_TRUE(jpg.path.endsWith(QStringLiteral(".jpg")));
    QFile f(jpg.path);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    EXPECT_TRUE(f.read(2) == QByteArray("\xFF\xD8", 2));

    defaults.setObject(keys::formatOfSavePhoto, QStringLiteral("gif"));
    const SaveResult tiff = output.saveImageToFile(checker(16, 16));
    EXPECT_TRUE(tiff.path.endsWith(QStringLiteral(".tiff")));
    // Uncompressed TIFF reads back pixel for pixel.
    EXPECT_EQ(QImage(tiff.path).convertToFormat(QImage::Format_RGB32), checker(16, 16).pixels);
}

TEST_F(Output, AFolderThatCannotTakeThePictureIsToldAndThePictureKept)
{
    defaults.setObject(keys::pathofSaveScreenShotsPhoto,
                       QString(home.path() + QStringLiteral("/gone")));
    ImageOutput output = makeOutput();
    const SaveResult r = output.saveImageToFile(checker(8, 8));
    EXPECT_FALSE(r.saved());
    EXPECT_TRUE(r.error.contains(QStringLiteral("does not exist")));
    EXPECT_EQ(r.keptAt, home.path() + QStringLiteral("/Pictures/Kelvo2024-03-05PM01.02.03.png"));
    EXPECT_EQ(QImage(r.keptAt).size(), QSize(8, 8));
    ASSERT_EQ(reported.size(), 1);
    EXPECT_TRUE(reported.first().contains(r.keptAt));
    ASSERT_EQ(notifier.sent.size(), 1u);
    EXPECT_TRUE(notifier.sent.front().body.contains(r.keptAt));

    // A file where the folder should be is told as such.
    QFile blocker(home.path() + QStringLiteral("/file"));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    const SaveResult r2 = output.saveImage(
        checker(8, 8), blocker.fileName() + QStringLiteral("/x.png"), ImageFileType::Png);
    EXPECT_TRUE(r2.error.contains(QStringLiteral("not a folder")));
    EXPECT_FALSE(r2.keptAt.isEmpty());
}

TEST_F(Output, APictureItsWriterCannotEncodeIsKeptAsPngOnTheClipboardAndInAFallbackFolder)
{
    ImageOutput output = makeOutput();
    // As when the TIFF plugin is missing: the writer answers an error.
    output.setEncoder([](const core::Picture& picture, ImageFileType type, bool normal) {
        if (type == ImageFileType::Tiff)
            return EncodedImage{{}, QStringLiteral("Unsupported image format")};
        return encodeImage(picture, type, normal);
    });
    defaults.setObject(keys::formatOfSavePhoto, QStringLiteral("tiff"));

    const SaveResult r = output.outputCapture(checker(12, 10), false, false);
    EXPECT_FALSE(r.saved());
    EXPECT_TRUE(r.path.isEmpty());
    EXPECT_TRUE(r.error.contains(QStringLiteral("TIFF: Unsupported image format")))
        << r.error.toStdString();
    // Nothing, not even a temporary file, in the save folder.
    EXPECT_TRUE(QDir(folder()).entryList(QDir::Files | QDir::Hidden).isEmpty());
    EXPECT_EQ(r.keptAt, home.path() + QStringLiteral("/Pictures/Kelvo2024-03-05PM01.02.03.png"));
    EXPECT_EQ(QImage(r.keptAt).convertToFormat(QImage::Format_RGB32), checker(12, 10).pixels);
    EXPECT_EQ(QImage::fromData(clipboard, "PNG").convertToFormat(QImage::Format_RGB32),
              checker(12, 10).pixels);
    ASSERT_EQ(reported.size(), 1);
    EXPECT_TRUE(reported.first().contains(QStringLiteral("clipboard")));
    EXPECT_TRUE(reported.first().contains(r.keptAt));
    ASSERT_EQ(notifier.sent.size(), 1u);
    EXPECT_EQ(notifier.sent.front().filePath, r.keptAt);

    // A file name that asks for the format goes the same way.
    clipboard.clear();
    const SaveResult named =
        output.saveImageTo(checker(4, 4), folder() + QStringLiteral("/asked.tiff"));
    EXPECT_FALSE(named.saved());
    EXPECT_FALSE(QFile::exists(folder() + QStringLiteral("/asked.tiff")));
    EXPECT_TRUE(named.keptAt.endsWith(QStringLiteral(".png")));
    EXPECT_FALSE(clipboard.isEmpty());
}

TEST_F(Output, WhenEvenPngCannotBeEncodedTheFailureIsStillTold)
{
    ImageOutput output = makeOutput();
    output.setEncoder([](const core::Picture&, ImageFileType, bool) {
        return EncodedImage{{}, QStringLiteral("out of memory")};
    });
    const SaveResult r = output.saveImageToFile(checker(8, 8));
    EXPECT_FALSE(r.saved());
    EXPECT_TRUE(r.keptAt.isEmpty());
    EXPECT_TRUE(r.error.contains(QStringLiteral("PNG: out of memory")));
    EXPECT_TRUE(clipboard.isEmpty());
    EXPECT_EQ(reported.size(), 1);
    EXPECT_EQ(notifier.sent.size(), 1u);
    EXPECT_TRUE(QDir(home.path() + QStringLiteral("/Pictures")).entryList(QDir::Files).isEmpty());
}

TEST_F(Output, ACaptureSavedIsNotifiedAfterAMomentAndACopyCountsDown)
{
    ImageOutput output = makeOutput();
    const SaveResult saved = output.outputCapture(checker(12, 12), false, false);
    ASSERT_TRUE(saved.saved());
    timers.advance(milliseconds(199));
    EXPECT_TRUE(notifier.sent.empty()); // not before 0.2 s
    timers.advance(milliseconds(1));
    ASSERT_EQ(notifier.sent.size(), 1u);
    EXPECT_EQ(notifier.sent[0].body, saved.path);

    output.outputCapture(checker(12, 12), true, false);
    EXPECT_EQ(notifier.sent.size(), 1u);
    timers.advance(milliseconds(200));
    ASSERT_EQ(notifier.sent.size(), 2u);
    EXPECT_EQ(notifier.sent[1].body,
              QStringLiteral("Screenshot saved to pasteboard, and 5 more reminders"));
    const QImage pasted = QImage::fromData(clipboard, "PNG");
    EXPECT_EQ(pasted.convertToFormat(QImage::Format_RGB32), checker(12, 12).pixels);

    defaults.setBool(keys::notifyWhenComplete, false);
    output.outputCapture(checker(12, 12), false, false);
    timers.advance(milliseconds(1000));
    EXPECT_EQ(notifier.sent.size(), 2u);
}

TEST_F(Output, OpeningGoesToTheChosenAppOrTheFileManager)
{
    ImageOutput output = makeOutput();
    const SaveResult r = output.outputCapture(checker(4, 4), false, true);
    ASSERT_EQ(files.opened.size(), 1u);
    EXPECT_EQ(files.opened[0], r.path);
    timers.advance(milliseconds(1000));
    EXPECT_TRUE(notifier.sent.empty()); // an opened file is not also notified

    defaults.setObject(
        keys::appOfUserSpecified,
        QVariantMap{{QStringLiteral("bundleIdentifier"), QString::fromLatin1(kFileManagerChoice)},
                    {QStringLiteral("executableName"), QStringLiteral("nautilus")}});
    output.openSavedFile(r.path);
    ASSERT_EQ(files.shown.size(), 1u);
    EXPECT_EQ(files.shown[0], r.path);
}

TEST_F(Output, AClickOnASavedFileNoticeShowsTheFileAndCounts)
{
    ImageOutput output = makeOutput();
    platform::Notification n;
    n.title = QStringLiteral("The file saved ( click to open the save path )");
    n.body = QStringLiteral("/pics/a.png");
    output.didActivateNotification(n);
    ASSERT_EQ(files.shown.size(), 1u);
    EXPECT_EQ(files.shown[0], QStringLiteral("/pics/a.png"));
    EXPECT_EQ(defaults.integerForKey(keys::popUpTimesOsSaveImageToFile), 1);

    platform::Notification copy;
    copy.title = QStringLiteral("Kelvo");
    copy.body = QStringLiteral("Screenshot saved to pasteboard, and 4 more reminders");
    output.didActivateNotification(copy);
    EXPECT_EQ(files.shown.size(), 1u);
}

TEST_F(Output, PicturesFromOutsideAreCheckedBeforeTheClipboard)
{
    ImageOutput output = makeOutput();
    EXPECT_FALSE(output.copyPngToClipboard(QByteArray("not a png")).isEmpty());
    const QByteArray good = encodePngOf(checker(9, 9).pixels).bytes;
    EXPECT_FALSE(output.copyPngToClipboard(good.left(good.size() - 20)).isEmpty());
    // A header that claims 100000 x 100000 pixels is refused before any
    // memory is reserved for them.
    QByteArray huge = good;
    for (int at : {16, 20}) { // width and height
        huge[at] = 0;
        huge[at + 1] = 1;
        huge[at + 2] = char(0x86);
        huge[at + 3] = char(0xA0);
    }
    const uLong crc = crc32(0, reinterpret_cast<const Bytef*>(huge.constData()) + 12, 17);
    for (int i = 0; i < 4; ++i)
        huge[29 + i] = char((crc >> (24 - 8 * i)) & 0xff);
    EXPECT_FALSE(output.copyPngToClipboard(huge).isEmpty());
    EXPECT_TRUE(clipboard.isEmpty());
    EXPECT_EQ(output.copyPngToClipboard(good), QString());
    EXPECT_EQ(clipboard, good);
}

TEST(Encoding, NormalQualityKeepsEveryPixelAndTheDensityFollowsThePoints)
{
    const core::Picture dense =
        core::Picture::withScale(QImage(200, 100, QImage::Format_RGB32), 2.0);
    EXPECT_EQ(dense.density(), 2.0);
    EXPECT_EQ(bitmapTarget(dense, true), bitmapTarget(dense, false));
    EXPECT_EQ(bitmapTarget(dense, true).pixels, QSize(200, 100));
    EXPECT_EQ(bitmapTarget(dense, true).points, QSizeF(100, 50));
    const core::Picture plain =
        core::Picture::pixelsAsPoints(QImage(200, 100, QImage::Format_RGB32));
    EXPECT_EQ(bitmapTarget(plain, true), bitmapTarget(plain, false));
    EXPECT_EQ(pixelsPerMetre(QSize(200, 100), QSizeF(100, 50)), 5669u);  // 144 dpi
    EXPECT_EQ(pixelsPerMetre(QSize(200, 100), QSizeF(200, 100)), 2835u); // 72 dpi
    EXPECT_EQ(pixelsPerMetre(QSize(), QSizeF()), 0u);
}

TEST(Encoding, EveryFormatIsWrittenAtThePicturesOwnDensity)
{
    QImage pixels(40, 20, QImage::Format_RGB32);
    pixels.fill(qRgb(9, 8, 7));
    const core::Picture dense = core::Picture::withScale(pixels, 2.0);
    const core::Picture plain = core::Picture::pixelsAsPoints(pixels);
    for (const ImageFileType type :
         {ImageFileType::Png, ImageFileType::Jpeg, ImageFileType::Tiff}) {
        for (const bool normal : {false, true}) {
            const QImage denseRead = QImage::fromData(encodeImage(dense, type, normal).bytes);
            const QImage plainRead = QImage::fromData(encodeImage(plain, type, normal).bytes);
            ASSERT_FALSE(denseRead.isNull());
            ASSERT_FALSE(plainRead.isNull());
            // 144 and 72 dots an inch; the readers round to whole dots.
            EXPECT_NEAR(denseRead.dotsPerMeterX(), 5669, 2) << extensionOf(type).toStdString();
            EXPECT_NEAR(plainRead.dotsPerMeterX(), 2835, 2) << extensionOf(type).toStdString();
        }
    }
}

TEST(Encoding, AnOpaquePictureIsWrittenWithoutAlphaATransparentOneWithIt)
{
    QImage opaque(6, 6, QImage::Format_ARGB32);
    opaque.fill(qRgba(1, 2, 3, 255));
    QImage clear = opaque;
    clear.setPixel(2, 2, qRgba(0, 0, 0, 0));
    const QByteArray a = encodePngOf(opaque).bytes;
    const QByteArray b = encodePngOf(clear).bytes;
    EXPECT_EQ(a[25], 2); // colour type RGB
    EXPECT_EQ(b[25], 6); // RGBA
    EXPECT_EQ(qAlpha(QImage::fromData(b, "PNG").pixel(2, 2)), 0);
}
