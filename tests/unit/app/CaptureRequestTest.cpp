// SPDX-License-Identifier: GPL-3.0-or-later
// `kelvo gui` options and the Capture method's options: what they accept,
// what they refuse and why.
#include "app/CaptureRequest.h"
#include "app/CommandLine.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using app::CaptureRequest;
using app::CommandLine;

namespace {

CommandLine gui(QStringList args)
{
    args.prepend(QStringLiteral("gui"));
    return CommandLine::parse(args);
}

} // namespace

TEST(GuiOptions, PlainGuiKeepsTheFastPathWithoutARequest)
{
    const CommandLine cl = gui({});
    EXPECT_EQ(cl.verb, CommandLine::Verb::Gui);
    EXPECT_FALSE(cl.capture.has_value());
}

TEST(GuiOptions, CombinationsOfLongAndShortForms)
{
    CommandLine cl = gui({"-p", "/tmp/shots", "-c", "-d", "1500", "--last-region"});
    ASSERT_EQ(cl.verb, CommandLine::Verb::Gui) << cl.error.toStdString();
    ASSERT_TRUE(cl.capture.has_value());
    EXPECT_EQ(cl.capture->path, QStringLiteral("/tmp/shots"));
    EXPECT_TRUE(cl.capture->clipboard);
    EXPECT_EQ(cl.capture->delayMs, 1500);
    EXPECT_TRUE(cl.capture->lastRegion);

    cl = gui({"--clipboard", "--delay", "0"});
    ASSERT_TRUE(cl.capture.has_value()) << cl.error.toStdString();
    EXPECT_TRUE(cl.capture->clipboard);
    EXPECT_TRUE(cl.capture->path.isEmpty());
    EXPECT_EQ(cl.capture->delayMs, 0);
    EXPECT_FALSE(cl.capture->lastRegion);

    cl = gui({"--path", "out.jpg"});
    ASSERT_TRUE(cl.capture.has_value());
    EXPECT_EQ(cl.capture->path, QStringLiteral("out.jpg"));
    EXPECT_FALSE(cl.capture->clipboard);
}

TEST(GuiOptions, BadValuesAndUnknownOptionsAreRefusedWithTheReason)
{
    struct Case
    {
        QStringList args;
        const char* mentions;
    };
    const Case cases[] = {
        {{"-d"}, "-d needs milliseconds"},
        {{"-d", "abc"}, "-d needs milliseconds"},
        {{"-d", "-5"}, "-d needs milliseconds"},
        {{"--delay", "1.5"}, "--delay needs milliseconds"},
        {{"-d", "3600001"}, "from 0 to 3600000"},
        {{"-d", "99999999999"}, "-d needs milliseconds"},
        {{"-p"}, "-p needs a folder or a file name"},
        {{"-p", ""}, "-p needs a folder or a file name"},
        {{"-c", "-x"}, "unknown option for 'gui': -x"},
        {{"--last-region", "extra"}, "unknown option for 'gui': extra"},
        {{"-n", "1"}, "unknown option for 'gui': -n"},
        {{"-p", "shot.gif"}, "-p shot.gif: a picture is written as .png, .jpg or .tiff, not .gif"},
        {{"--path", QString(QString(5000, QLatin1Char('a')) + ".png")},
         "is longer than a path may be"},
    };
    for (const Case& c : cases) {
        const CommandLine cl = gui(c.args);
        EXPECT_EQ(cl.verb, CommandLine::Verb::Invalid) << c.args.join(' ').toStdString();
        EXPECT_TRUE(cl.error.contains(QLatin1String(c.mentions)))
            << c.args.join(' ').toStdString() << ": " << cl.error.toStdString();
    }
}

TEST(GuiOptions, HelpWinsAndListsTheOptions)
{
    EXPECT_EQ(gui({"-c", "--help"}).verb, CommandLine::Verb::Help);
    EXPECT_EQ(gui({"-h"}).verb, CommandLine::Verb::Help);
    const QString usage = CommandLine::usage();
    for (const char* option : {"gui [-p PATH] [-c] [-d MS] [--last-region]", "--last-region",
                               "-p, --path PATH", "-c, --clipboard", "-d, --delay MS"})
        EXPECT_TRUE(usage.contains(QLatin1String(option))) << option;
}

TEST(CaptureOptions, RoundTripThroughTheBusFormWithAnAbsolutePath)
{
    CaptureRequest r;
    r.path = QStringLiteral("shots/today");
    r.clipboard = true;
    r.delayMs = 250;
    r.lastRegion = true;
    const QVariantMap options = r.toOptions();
    // A relative path is the caller's: it is resolved before it travels.
    EXPECT_EQ(options.value(QStringLiteral("path")).toString(),
              QDir::current().absoluteFilePath(QStringLiteral("shots/today")));
    QString error;
    const auto back = CaptureRequest::fromOptions(options, &error);
    ASSERT_TRUE(back.has_value()) << error.toStdString();
    EXPECT_EQ(back->path, options.value(QStringLiteral("path")).toString());
    EXPECT_TRUE(back->clipboard);
    EXPECT_EQ(back->delayMs, 250);
    EXPECT_TRUE(back->lastRegion);

    // Nothing asked: nothing sent, and an empty map is a plain capture.
    EXPECT_TRUE(CaptureRequest().toOptions().isEmpty());
    const auto plain = CaptureRequest::fromOptions({}, &error);
    ASSERT_TRUE(plain.has_value());
    EXPECT_EQ(*plain, CaptureRequest());
}

TEST(CaptureOptions, WrongTypesRangesAndUnknownKeysAreRefused)
{
    struct Case
    {
        QVariantMap options;
        const char* mentions;
    };
    const Case cases[] = {
        {{{"path", QStringLiteral("relative/dir")}}, "must be absolute"},
        {{{"path", QString()}}, "\"path\" must be a non-empty string"},
        {{{"path", 5}}, "\"path\" must be a non-empty string"},
        {{{"clipboard", QStringLiteral("yes")}}, "\"clipboard\" must be a boolean"},
        {{{"lastRegion", 1}}, "\"lastRegion\" must be a boolean"},
        {{{"delay", -1}}, "\"delay\" must be an integer"},
        {{{"delay", 3600001}}, "\"delay\" must be an integer"},
        {{{"delay", QStringLiteral("100")}}, "\"delay\" must be an integer"},
        {{{"delay", 1.5}}, "\"delay\" must be an integer"},
        {{{"delay", quint64(1) << 63}}, "\"delay\" must be an integer"},
        {{{"screen", 1}}, "unknown option: \"screen\""},
        {{{"path", QStringLiteral("/tmp/shot.bmp")}}, "not .bmp"},
        {{{"path", QString(QStringLiteral("/") + QString(6 << 20, QLatin1Char('p')))}},
         "longer than a path may be"},
        {{{QString(6 << 20, QLatin1Char('k')), true}}, "unknown option: \"kkk"},
    };
    for (const Case& c : cases) {
        QString error;
        EXPECT_FALSE(CaptureRequest::fromOptions(c.options, &error).has_value()) << c.mentions;
        EXPECT_TRUE(error.contains(QLatin1String(c.mentions)))
            << c.mentions << " / " << error.left(200).toStdString();
        // Megabytes from a caller do not come back in the answer.
        EXPECT_LT(error.size(), 300);
    }
    QString error;
    const auto unsignedDelay = CaptureRequest::fromOptions({{"delay", uint(700)}}, &error);
    ASSERT_TRUE(unsignedDelay.has_value()) << error.toStdString();
    EXPECT_EQ(unsignedDelay->delayMs, 700);
}

TEST(PathOptions, FoldersAndPictureNamesAreTakenOtherExtensionsAreNot)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    // A folder that exists may have any name; a hidden name has no extension.
    ASSERT_TRUE(QDir(dir.path()).mkdir(QStringLiteral("shots.d")));
    for (const QString& path :
         {dir.filePath(QStringLiteral("shots.d")), dir.filePath(QStringLiteral("new-folder")),
          dir.filePath(QStringLiteral(".hidden")), dir.filePath(QStringLiteral("a.PNG")),
          dir.filePath(QStringLiteral("b.jpeg")), dir.filePath(QStringLiteral("c.tif"))}) {
        const CommandLine cl = gui({"-p", path});
        EXPECT_EQ(cl.verb, CommandLine::Verb::Gui) << cl.error.toStdString();
    }
    const CommandLine missing = gui({"-p", dir.filePath(QStringLiteral("shots.e"))});
    EXPECT_EQ(missing.verb, CommandLine::Verb::Invalid);
    EXPECT_TRUE(missing.error.contains(QStringLiteral("not .e")));
}
