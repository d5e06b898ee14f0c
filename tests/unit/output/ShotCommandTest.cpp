// SPDX-License-Identifier: GPL-3.0-or-later
// `kelvo full` and `kelvo screen` over a desktop of known pixels.
#include "app/output/ShotCommand.h"
#include "platform/null/FakeWindowServer.h"
#include "platform/null/NullServices.h"
#include "settings/Defaults.h"
#include "settings/Keys.h"
#include "settings/MemoryStore.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace app::output;
namespace keys = settings::keys;

namespace {

std::optional<ShotRequest> parse(ShotRequest::Area area, const QStringList& args,
                                 QString* error = nullptr)
{
    return ShotRequest::parse(area, args, error);
}

class Shot : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        // Two monitors: 40x30 at the origin, 20x30 to its right.
        windows.layout = core::ScreenLayout({{QStringLiteral("A"), QRectF(0, 0, 40, 30), 1.0},
                                             {QStringLiteral("B"), QRectF(40, 0, 20, 30), 1.0}});
        windows.desktop = QImage(60, 30, QImage::Format_RGB32);
        windows.desktop.fill(qRgb(0, 0, 255));
        for (int y = 0; y < 30; ++y)
            for (int x = 40; x < 60; ++x)
                windows.desktop.setPixel(x, y, qRgb(255, 0, (x * 10) % 256));
        defaults.setObject(keys::pathofSaveScreenShotsPhoto, dir.path());
        defaults.setObject(keys::formatOfSavePhoto, QStringLiteral("png"));
    }

    int run(const QStringList& args, ShotRequest::Area area = ShotRequest::Area::Desktop)
    {
        QString error;
        const auto request = parse(area, args, &error);
        EXPECT_TRUE(request) << error.toStdString();
        if (!request)
            return -1;
        ShotCommand::Services s;
        s.windows = &windows;
        s.defaults = &defaults;
        s.notifier = &notifier;
        s.pointer = [this] { return pointer; };
        s.clipboard = [this](const QByteArray& png) {
            copied = png;
            return clipboardError;
        };
        s.writeOut = [this](const QByteArray& b) { out += b; };
        s.report = [this](const QString& line) { errors << line; };
        s.sleep = [this](int ms) { slept += ms; };
        return ShotCommand(s).run(*request);
    }

    QTemporaryDir dir;
    platform::null::FakeWindowServer windows;
    settings::MemoryStore store;
    settings::Defaults defaults{store};
    platform::null::RecordingNotifier notifier;
    QPointF pointer{5, 5};
    QByteArray copied;
    QString clipboardError;
    QByteArray out;
    QStringList errors;
    int slept = 0;
};

} // namespace

TEST(ShotRequestParse, OptionsAndTheirMistakes)
{
    const auto r = parse(ShotRequest::Area::Screen,
                         {QStringLiteral("-n"), QStringLiteral("1"), QStringLiteral("-p"),
                          QStringLiteral("/tmp"), QStringLiteral("-c"), QStringLiteral("--raw"),
                          QStringLiteral("-d"), QStringLiteral("250")});
    ASSERT_TRUE(r);
    EXPECT_EQ(r->screen, 1);
    EXPECT_EQ(r->path, QStringLiteral("/tmp"));
    EXPECT_TRUE(r->clipboard);
    EXPECT_TRUE(r->raw);
    EXPECT_EQ(r->delayMs, 250);

    QString error;
    EXPECT_FALSE(
        parse(ShotRequest::Area::Desktop, {QStringLiteral("-n"), QStringLiteral("1")}, &error));
    EXPECT_TRUE(error.contains(QStringLiteral("-n")));
    EXPECT_FALSE(
        parse(ShotRequest::Area::Desktop, {QStringLiteral("-d"), QStringLiteral("-5")}, &error));
    EXPECT_FALSE(parse(ShotRequest::Area::Desktop,
                       {QStringLiteral("-d"), QStringLiteral("99999999")}, &error));
    EXPECT_FALSE(parse(ShotRequest::Area::Desktop, {QStringLiteral("-p")}, &error));
    EXPECT_FALSE(
        parse(ShotRequest::Area::Screen, {QStringLiteral("-n"), QStringLiteral("x")}, &error));
    // A file name must say which picture type it is.
    EXPECT_FALSE(parse(ShotRequest::Area::Desktop,
                       {QStringLiteral("-p"), QStringLiteral("/tmp/out.webp")}, &error));
    EXPECT_EQ(error, QStringLiteral("-p /tmp/out.webp: a picture is written as .png, .jpg or "
                                    ".tiff, not .webp; give such a file name or a folder"));
    EXPECT_TRUE(parse(ShotRequest::Area::Desktop,
                      {QStringLiteral("--path"), QStringLiteral("/tmp/out.JPG")}, &error));
}

TEST_F(Shot, FullWritesTheWholeDesktopIntoTheFolderAndPrintsThePath)
{
    EXPECT_EQ(run({QStringLiteral("-p"), dir.path(), QStringLiteral("-d"), QStringLiteral("40")}),
              0);
    EXPECT_EQ(slept, 40);
    const QString path = QString::fromLocal8Bit(out).trimmed();
    ASSERT_TRUE(path.startsWith(dir.path() + QStringLiteral("/Kelvo"))) << path.toStdString();
    EXPECT_TRUE(path.endsWith(QStringLiteral(".png")));
    EXPECT_EQ(QImage(path).convertToFormat(QImage::Format_RGB32), windows.desktop);
    EXPECT_TRUE(errors.isEmpty());
}

TEST_F(Shot, ScreenTakesTheNumberedMonitorOrTheOneUnderThePointer)
{
    const QString file = dir.filePath(QStringLiteral("b.png"));
    EXPECT_EQ(run({QStringLiteral("-n"), QStringLiteral("1"), QStringLiteral("-p"), file},
                  ShotRequest::Area::Screen),
              0);
    EXPECT_EQ(QImage(file).convertToFormat(QImage::Format_RGB32),
              windows.desktop.copy(40, 0, 20, 30));

    // The same name again is not written over.
    out.clear();
    pointer = QPointF(50, 10);
    EXPECT_EQ(run({QStringLiteral("-p"), file}, ShotRequest::Area::Screen), 0);
    EXPECT_EQ(QString::fromLocal8Bit(out).trimmed(), dir.filePath(QStringLiteral("b 2.png")));
    EXPECT_EQ(QImage(dir.filePath(QStringLiteral("b 2.png"))).size(), QSize(20, 30));

    EXPECT_EQ(run({QStringLiteral("-n"), QStringLiteral("2")}, ShotRequest::Area::Screen), 1);
    EXPECT_TRUE(errors.last().contains(QStringLiteral("0 to 1")));
}

TEST_F(Shot, RawGoesToStdoutAndTheClipboardToItsKeeperWithoutAFile)
{
    EXPECT_EQ(run({QStringLiteral("-r"), QStringLiteral("-c")}), 0);
    EXPECT_EQ(QImage::fromData(out, "PNG").convertToFormat(QImage::Format_RGB32), windows.desktop);
    EXPECT_EQ(copied, out);
    EXPECT_TRUE(QDir(dir.path()).entryList(QDir::Files).isEmpty());
}

TEST_F(Shot, ACopyThatFailsKeepsThePictureInTheSaveFolder)
{
    clipboardError = QStringLiteral("no Kelvo");
    EXPECT_EQ(run({QStringLiteral("-c")}), 1);
    EXPECT_TRUE(errors.first().contains(QStringLiteral("no Kelvo")));
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files).size(), 1);
}

TEST_F(Shot, WithoutAFolderToSaveInNothingIsTaken)
{
    defaults.setObject(keys::pathofSaveScreenShotsPhoto, QString::fromLatin1(keys::notSpecified));
    windows.desktop = QImage(); // a grab would fail loudly
    EXPECT_EQ(run({}), 1);
    ASSERT_EQ(errors.size(), 1);
    EXPECT_TRUE(errors.first().contains(QStringLiteral("-p")));
}

TEST_F(Shot, AnUnusableFolderIsToldAndThePictureKeptElsewhere)
{
    QTemporaryDir home;
    qputenv("HOME", home.path().toLocal8Bit());
    qputenv("XDG_CONFIG_HOME", (home.path() + QStringLiteral("/config")).toLocal8Bit());
    QDir(home.path()).mkpath(QStringLiteral("Pictures"));
    EXPECT_EQ(run({QStringLiteral("-p"), dir.filePath(QStringLiteral("missing/"))}), 1);
    ASSERT_FALSE(errors.isEmpty());
    EXPECT_TRUE(errors.first().contains(QStringLiteral("does not exist")));
    EXPECT_TRUE(errors.first().contains(home.path() + QStringLiteral("/Pictures/Kelvo")));
    ASSERT_EQ(notifier.sent.size(), 1u);
    EXPECT_EQ(QDir(home.path() + QStringLiteral("/Pictures")).entryList(QDir::Files).size(), 1);
}
