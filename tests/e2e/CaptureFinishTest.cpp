// SPDX-License-Identifier: GPL-3.0-or-later
// Ending a capture as a person does: the tool bar's buttons and the keys
// that copy and save, a pick of several windows, and what lands on the
// clipboard and in the save folder.
#include "support/MarkUpFixture.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QProcess>
#include <QRegularExpression>

using namespace e2e;

namespace {

class CaptureFinish : public MarkUp
{
protected:
    void SetUp() override
    {
        MarkUp::SetUp();
        shots = desktop.path(QStringLiteral("shots"));
        QDir().mkpath(shots);
    }

    // The overlays go before the picture is handed on, so the clipboard
    // may still be empty, or hold the one before, when they are seen gone.
    QImage clipboardImage()
    {
        QByteArray png;
        waitFor([&] {
            png = x->clipboardPng();
            return !png.isEmpty() && png != last;
        });
        last = png;
        return QImage::fromData(png, "PNG");
    }

    QStringList savedFiles() const
    {
        return QDir(shots).entryList({QStringLiteral("*.png")}, QDir::Files, QDir::Name);
    }

    QString shots;
};

QImage opaque(const QImage& image)
{
    return image.convertToFormat(QImage::Format_RGB32);
}

} // namespace

// Every way onto the clipboard in one Kelvo; each picture differs from the
// one before, so each is seen arriving.
TEST_F(CaptureFinish, APinKeypadEnterAndTheCopyButtonPutExactlyTheFrozenPictureOnTheClipboard)
{
    SolidWindow red(*x, QRect(200, 300, 300, 200), Qt::red, QStringLiteral("red"));
    SolidWindow blue(*x, QRect(600, 100, 300, 300), Qt::blue, QStringLiteral("blue"));
    ASSERT_TRUE(waitFor([&] { return x->pixel(750, 250) == QColor(Qt::blue); }));
    startKelvoWith(kPlain);
    const QImage expected = opaque(x->grabRoot(kRegion));

    // A pin before pins exist keeps the picture on the clipboard.
    selectRegion();
    x->tapKey("t");
    ASSERT_TRUE(waitFor([&] { return overlaysGone(); })) << kelvo->errors().toStdString();
    EXPECT_EQ(opaque(clipboardImage()), expected);
    EXPECT_TRUE(waitFor([&] { return kelvo->errors().contains(QStringLiteral("pins")); }));

    // A click on the bare desktop takes the screen as a region with
    // handles; what the top handle, dragged down to row 300, leaves of it.
    const QImage lower = opaque(x->grabRoot(QRect(0, 300, 1920, 780)));
    x->movePointer(700, 600);
    triggerCapture();
    ASSERT_TRUE(waitFor([&] { return overlaysUp(); })) << kelvo->errors().toStdString();
    x->movePointer(701, 600);
    barrier();
    x->click(1);
    barrier();
    // The top handle lies along the screen's top edge.
    x->movePointer(960, 3);
    x->movePointer(961, 3);
    barrier();
    drag(QPoint(961, 3), QPoint(961, 300), 10);
    barrier();
    x->tapKey("KP_Enter");
    ASSERT_TRUE(waitFor([&] { return overlaysGone(); })) << kelvo->errors().toStdString();
    const QImage screen = clipboardImage();
    ASSERT_EQ(screen.size(), QSize(1920, 780)) << kelvo->errors().toStdString();
    EXPECT_EQ(opaque(screen), lower);

    // The tool bar sits under the selection; its copy button ends the capture.
    selectRegion();
    const QRectF bar = toolbar::placeButtonBox(QRectF(kRegion), QSizeF(1920, 1080));
    const QPoint copy = toolbar::buttonCentre(bar, QStringLiteral("copyToPaste")).toPoint();
    // Moved away and back: the press lands far from the drag's release.
    x->movePointer(copy.x() + 1, copy.y());
    x->movePointer(copy.x(), copy.y());
    barrier();
    x->click(1);
    ASSERT_TRUE(waitFor([&] { return overlaysGone(); })) << kelvo->errors().toStdString();
    const QImage copied = clipboardImage();
    ASSERT_EQ(copied.size(), kRegion.size());
    EXPECT_EQ(opaque(copied), expected);
    EXPECT_TRUE(savedFiles().isEmpty());
}

TEST_F(CaptureFinish, ShiftClicksOnTwoWindowsGiveOnePictureOfBothAndGuiWithAPathSavesTheNext)
{
    SolidWindow red(*x, QRect(200, 200, 300, 200), Qt::red, QStringLiteral("red"));
    SolidWindow blue(*x, QRect(700, 350, 200, 250), Qt::blue, QStringLiteral("blue"));
    ASSERT_TRUE(waitFor([&] { return x->pixel(800, 450) == QColor(Qt::blue); }));
    const QRect a = x->frameOf(red.id());
    const QRect b = x->frameOf(blue.id());
    startKelvoWith(kPlain);
    x->movePointer(a.center().x(), a.center().y());
    triggerCapture();
    ASSERT_TRUE(waitFor([&] { return overlaysUp(); }));

    x->movePointer(a.center().x() + 1, a.center().y());
    barrier();
    x->pressKey("Shift_L");
    x->click(1);
    barrier();
    // The pick is tinted blue over the red window.
    ASSERT_TRUE(
        waitFor([&] { return x->pixel(a.center().x(), a.center().y()) != QColor(Qt::red); }));
    x->movePointer(b.center().x(), b.center().y());
    x->movePointer(b.center().x() + 1, b.center().y());
    barrier();
    x->click(1);
    barrier();
    x->releaseKey("Shift_L");
    barrier();
    // Letting Shift go makes one selection of both; Return copies it.
    x->tapKey("Return");
    ASSERT_TRUE(waitFor([&] { return overlaysGone(); })) << kelvo->errors().toStdString();

    const QImage both = clipboardImage();
    const QRect box = a.united(b);
    ASSERT_EQ(both.size(), box.size()) << kelvo->errors().toStdString();
    auto at = [&](QPoint global) { return both.pixelColor(global - box.topLeft()); };
    EXPECT_EQ(at(a.center()), QColor(Qt::red));
    EXPECT_EQ(at(b.center()), QColor(Qt::blue));
    // Between the windows the picture is empty, not the desktop.
    EXPECT_EQ(at(QPoint(600, 250)).alpha(), 0);

    // `kelvo gui -p` waits for the finish and prints the file; Return would
    // copy, but the request decides: the picture goes to the folder.
    const QImage expected = opaque(x->grabRoot(kRegion));
    x->movePointer(250, 150);
    QProcess gui;
    gui.start(kelvoBinary(), {QStringLiteral("gui"), QStringLiteral("-p"), shots});
    ASSERT_TRUE(gui.waitForStarted(10000));
    ASSERT_TRUE(waitFor([&] { return overlaysUp(); })) << kelvo->errors().toStdString();
    drag(kRegion.topLeft(), kRegion.topLeft() + QPoint(kRegion.width(), kRegion.height()), 12);
    barrier();
    x->tapKey("Return");
    ASSERT_TRUE(gui.waitForFinished(30000));
    EXPECT_EQ(gui.exitCode(), 0) << gui.readAllStandardError().toStdString();
    const QString path = QString::fromLocal8Bit(gui.readAllStandardOutput()).trimmed();
    ASSERT_TRUE(path.startsWith(shots)) << path.toStdString();
    EXPECT_EQ(opaque(QImage(path)), expected);
}

TEST_F(CaptureFinish, AClickedWindowIsSavedWholeInsideItsShadow)
{
    SolidWindow red(*x, QRect(400, 300, 300, 200), Qt::red, QStringLiteral("red"));
    ASSERT_TRUE(waitFor([&] { return x->pixel(550, 420) == QColor(Qt::red); }));
    const QRect frame = x->frameOf(red.id());
    // The finish draws the window's frozen picture inside room for its shadow.
    startKelvoWith({{"pathofSaveScreenShotsPhoto", shots},
                    {"formatOfSavePhoto", "png"},
                    {"needShadowOfnotSingleWindow", "YES"},
                    {"sizeOfShadow", "18"}});
    const QImage window = opaque(x->grabRoot(frame));
    x->movePointer(frame.center().x(), frame.center().y());
    triggerCapture();
    ASSERT_TRUE(waitFor([&] { return overlaysUp(); }));
    x->movePointer(frame.center().x() + 1, frame.center().y());
    barrier();
    x->click(1);
    barrier();
    x->tapKey("space");
    ASSERT_TRUE(waitFor([&] { return overlaysGone(); })) << kelvo->errors().toStdString();
    ASSERT_TRUE(waitFor([&] { return savedFiles().size() == 1; })) << kelvo->errors().toStdString();

    const QImage saved(QDir(shots).filePath(savedFiles().front()));
    ASSERT_EQ(saved.size(), frame.size() + QSize(36, 36));
    EXPECT_EQ(opaque(saved.copy(QRect(QPoint(18, 18), frame.size()))), window);
    // The margin holds a soft shadow: some cover near the window, none at the corner.
    EXPECT_GT(saved.pixelColor(9, 18 + frame.height() / 2).alpha(), 0);
    EXPECT_LT(saved.pixelColor(9, 18 + frame.height() / 2).alpha(), 255);
    EXPECT_EQ(saved.pixelColor(0, 0).alpha(), 0);
}

TEST_F(CaptureFinish, SpaceSavesNamedFilesADoubleClickCopiesAndTwoModifierTapsSaveAndOpen)
{
    // The application chosen to open saved pictures only copies the file
    // it is given, so the test sees what was opened.
    const QString opened = desktop.path(QStringLiteral("opened.png"));
    const QString apps = desktop.path(QStringLiteral("data/applications"));
    ASSERT_TRUE(QDir().mkpath(apps));
    QFile entry(apps + QStringLiteral("/kelvo-test-viewer.desktop"));
    ASSERT_TRUE(entry.open(QIODevice::WriteOnly));
    entry.write(QStringLiteral("[Desktop Entry]\nType=Application\nName=Viewer\n"
                               "Exec=cp %f %1\nMimeType=image/png;\n")
                    .arg(opened)
                    .toUtf8());
    entry.close();
    QMap<QString, QString> prefs = kPlain;
    prefs.insert(QStringLiteral("pathofSaveScreenShotsPhoto"), shots);
    prefs.insert(QStringLiteral("formatOfSavePhoto"), QStringLiteral("png"));
    prefs.insert(QStringLiteral("doubleClickToSavePaste"), QStringLiteral("YES"));
    prefs.insert(QStringLiteral("doubleClickModifierKey"), QStringLiteral("Option"));
    prefs.insert(
        QStringLiteral("appOfUserSpecified"),
        QStringLiteral(R"({"bundleIdentifier":"kelvo-test-viewer","executableName":"cp"})"));
    SolidWindow green(*x, QRect(350, 250, 200, 150), Qt::green, QStringLiteral("green"));
    ASSERT_TRUE(waitFor([&] { return x->pixel(400, 300) == QColor(Qt::green); }));
    startKelvoWith(prefs);
    const QImage expected = opaque(x->grabRoot(kRegion));

    // Space saves; twice the same region, as fast as the overlay allows.
    for (int i = 1; i <= 2; ++i) {
        selectRegion();
        x->tapKey("space");
        ASSERT_TRUE(waitFor([&] { return overlaysGone(); })) << kelvo->errors().toStdString();
        ASSERT_TRUE(waitFor([&] { return savedFiles().size() == i; }))
            << savedFiles().join(' ').toStdString() << kelvo->errors().toStdString();
    }
    const QStringList files = savedFiles();
    const QRegularExpression name(
        QStringLiteral("^Kelvo\\d{4}-\\d{2}-\\d{2}(AM|PM)\\d{2}\\.\\d{2}\\.\\d{2}( 2)?\\.png$"));
    for (const QString& file : files) {
        EXPECT_TRUE(name.match(file).hasMatch()) << file.toStdString();
        QImageReader reader(QDir(shots).filePath(file));
        EXPECT_EQ(reader.format(), "png");
        EXPECT_EQ(opaque(reader.read()), expected) << file.toStdString();
    }

    // A double click inside the selection copies it.
    selectRegion();
    x->movePointer(500, 400);
    x->movePointer(501, 400);
    barrier();
    x->click(1);
    x->click(1);
    ASSERT_TRUE(waitFor([&] { return overlaysGone(); })) << kelvo->errors().toStdString();
    EXPECT_EQ(opaque(clipboardImage()), expected);
    EXPECT_EQ(savedFiles().size(), 2);

    // Alt (Option) tapped twice saves into the folder and opens the file.
    selectRegion();
    x->tapKey("Alt_L");
    x->tapKey("Alt_L");
    ASSERT_TRUE(waitFor([&] { return overlaysGone(); })) << kelvo->errors().toStdString();
    ASSERT_TRUE(waitFor([&] { return savedFiles().size() == 3; })) << kelvo->errors().toStdString();
    ASSERT_TRUE(waitFor([&] { return !QImage(opened).isNull(); })) << kelvo->errors().toStdString();
    EXPECT_EQ(opaque(QImage(opened)), expected);
}
