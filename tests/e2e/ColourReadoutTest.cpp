// SPDX-License-Identifier: GPL-3.0-or-later
// The magnifier names the colour under the pointer on a real window, and
// the colour keys put it on the clipboard in their formats.
#include "support/CaptureFixture.h"
#include "support/Golden.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QSettings>

using namespace e2e;

namespace {

const QColor kCarmine(0xFF, 0x00, 0x40);
// The magnifier beside the pointer at (601, 421).
const QRect kMagnifierArea(440, 260, 240, 240);

class ColourReadout : public CaptureFixture
{
protected:
    // A window in one known colour, and Kelvo running beside it.
    void showColourAndStart()
    {
        window = std::make_unique<SolidWindow>(*x, QRect(400, 300, 500, 300), kCarmine,
                                               QStringLiteral("carmine"));
        ASSERT_TRUE(waitFor([&] { return x->pixel(650, 450) == kCarmine; }));
        startKelvo();
    }

    // A capture with the pointer over the colour.
    void captureOverColour()
    {
        x->movePointer(600, 420);
        triggerCapture();
        ASSERT_TRUE(waitFor([&] { return overlaysUp(); })) << kelvo->errors().toStdString();
        // The readout names the colour on its repaint after a move; keys act
        // on what it shows, so wait until it shows it, nudging the pointer
        // as a hand would if the first move came while the overlay mapped.
        const auto golden = waitForGolden(
            [&] {
                x->movePointer(600, 420);
                x->movePointer(601, 421);
                barrier();
                return x->grabRoot(kMagnifierArea);
            },
            QStringLiteral("magnifier-carmine"));
        ASSERT_TRUE(golden.matches) << golden.message.toStdString();
    }

    static QString clipboardText()
    {
        QProcess xclip;
        xclip.start(QStringLiteral("xclip"), {QStringLiteral("-o"), QStringLiteral("-selection"),
                                              QStringLiteral("clipboard")});
        xclip.waitForFinished(5000);
        return QString::fromUtf8(xclip.readAllStandardOutput());
    }

    void pressAndExpectOnClipboard(const char* key, const QString& text)
    {
        x->tapKey(key);
        EXPECT_TRUE(waitFor([&] { return overlaysGone(); })) << "the key should end the capture";
        EXPECT_TRUE(waitFor([&] { return clipboardText() == text; }))
            << "clipboard holds '" << clipboardText().toStdString() << "', expected '"
            << text.toStdString() << "'";
    }

    std::unique_ptr<SolidWindow> window;
};

// Whether the window manager has taken the window on: only then does it give
// it the focus when asked, as a person would only type once the dialog shows.
bool managed(const QString& id)
{
    QProcess xprop;
    xprop.start(QStringLiteral("xprop"), {QStringLiteral("-id"), id, QStringLiteral("WM_STATE")});
    xprop.waitForFinished(5000);
    return xprop.readAllStandardOutput().contains("Normal");
}

// Kelvo's visible, managed window titled "Kelvo" (the format dialog), empty
// when none.
QString formatDialogOf(qint64 pid)
{
    QProcess xdotool;
    xdotool.start(QStringLiteral("xdotool"),
                  {QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                   QStringLiteral("--pid"), QString::number(pid), QStringLiteral("--name"),
                   QStringLiteral("^Kelvo$")});
    xdotool.waitForFinished(5000);
    const QString id =
        QString::fromLatin1(xdotool.readAllStandardOutput()).trimmed().section(u'\n', 0, 0);
    return !id.isEmpty() && managed(id) ? id : QString();
}

// Gives the dialog the keyboard as a click on it would, and waits for it.
bool focusWindow(const QString& id)
{
    return QProcess::execute(QStringLiteral("xdotool"),
                             {QStringLiteral("windowactivate"), QStringLiteral("--sync"), id}) == 0;
}

} // namespace

// One Kelvo for every key: each capture ends with its key, so the next one
// also proves the tray instance captures again afterwards.
TEST_F(ColourReadout, TheMagnifierNamesThePixelAndEachColourKeyCopiesItsFormat)
{
    showColourAndStart();
    ASSERT_FALSE(HasFatalFailure());
    // The golden picture holds the enlarged pixels, the name "Carmine", the
    // hex and the position; H and R copy what the command line's look-up
    // says of the same colour.
    const QJsonObject expected =
        QJsonDocument::fromJson(
            KelvoProcess::run({QStringLiteral("colour-name"), QStringLiteral("FF0040")})
                .out.toUtf8())
            .object();
    ASSERT_EQ(expected.value(QStringLiteral("hex")).toString(), QStringLiteral("#FF0040"));
    ASSERT_EQ(expected.value(QStringLiteral("rgb")).toString(), QStringLiteral("255,0,64"));
    captureOverColour();
    ASSERT_FALSE(HasFatalFailure());
    pressAndExpectOnClipboard("h", QStringLiteral("#FF0040"));
    captureOverColour();
    ASSERT_FALSE(HasFatalFailure());
    pressAndExpectOnClipboard("r", QStringLiteral("255,0,64"));

    // No format stored, as after a first start: Z asks for one.
    captureOverColour();
    ASSERT_FALSE(HasFatalFailure());
    ASSERT_FALSE(QSettings(confPath(), QSettings::IniFormat)
                     .contains(QStringLiteral("customizeColorString")));
    x->tapKey("z");
    QString dialog;
    ASSERT_TRUE(waitFor([&] { return !(dialog = formatDialogOf(kelvo->pid())).isEmpty(); }))
        << kelvo->errors().toStdString();
    // The overlays went first; the dialog is on its own.
    EXPECT_TRUE(overlaysGone()) << kelvo->errors().toStdString();
    EXPECT_TRUE(kelvo->isRunning());
    ASSERT_TRUE(focusWindow(dialog));
    x->tapKey("Return"); // OK keeps the offered template
    ASSERT_TRUE(waitFor([&] { return formatDialogOf(kelvo->pid()).isEmpty(); }));
    const QString stored =
        QStringLiteral("[NSColor colorWithRed:_R/255.0 green:_G/255.0 blue:_B/255.0 alpha:1.0];");
    EXPECT_TRUE(waitFor([&] {
        return QSettings(confPath(), QSettings::IniFormat)
                   .value(QStringLiteral("customizeColorString"))
                   .toString() == stored;
    }));

    // The tray process captures again, and Z now copies in that format.
    captureOverColour();
    ASSERT_FALSE(HasFatalFailure());
    pressAndExpectOnClipboard(
        "z",
        QStringLiteral("[NSColor colorWithRed:255/255.0 green:0/255.0 blue:64/255.0 alpha:1.0];"));

    // Shift+Z asks again even with a format; a cancelled dialog keeps it.
    triggerCapture();
    ASSERT_TRUE(waitFor([&] { return overlaysUp(); })) << kelvo->errors().toStdString();
    x->tapKey("z", true);
    ASSERT_TRUE(waitFor([&] { return !(dialog = formatDialogOf(kelvo->pid())).isEmpty(); }))
        << kelvo->errors().toStdString();
    EXPECT_TRUE(overlaysGone()) << kelvo->errors().toStdString();
    ASSERT_TRUE(focusWindow(dialog));
    x->tapKey("Escape");
    ASSERT_TRUE(waitFor([&] { return formatDialogOf(kelvo->pid()).isEmpty(); }));
    EXPECT_EQ(QSettings(confPath(), QSettings::IniFormat)
                  .value(QStringLiteral("customizeColorString"))
                  .toString(),
              stored);
    // The instance captures on after the dialog, with the format it kept.
    captureOverColour();
    ASSERT_FALSE(HasFatalFailure());
    pressAndExpectOnClipboard(
        "z",
        QStringLiteral("[NSColor colorWithRed:255/255.0 green:0/255.0 blue:64/255.0 alpha:1.0];"));

    // A format written in the preferences file before the start is the one
    // Z copies in.
    kelvo.reset();
    ASSERT_TRUE(waitFor([] { return !kelvoOnBus(); }));
    {
        QSettings conf(confPath(), QSettings::IniFormat);
        conf.setValue(QStringLiteral("customizeColorString"), QStringLiteral("R_R G_G B_B"));
    }
    startKelvo();
    captureOverColour();
    ASSERT_FALSE(HasFatalFailure());
    pressAndExpectOnClipboard("z", QStringLiteral("R255 G0 B64"));
}
