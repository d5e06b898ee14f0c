// SPDX-License-Identifier: GPL-3.0-or-later
#include "scroll/cli/StitchCommand.h"
#include "SyntheticPage.h"

#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace scrolltest;

namespace {

class ScrollStitchCommand : public testing::Test
{
protected:
    QString save(const Pixels& picture, const QString& name)
    {
        const QImage image(picture.bytes.data(), picture.width, picture.height, picture.width * 4,
                           QImage::Format_ARGB32);
        const QString path = m_dir.filePath(name);
        EXPECT_TRUE(image.save(path, "PNG"));
        return path;
    }
    QString path(const QString& name) const { return m_dir.filePath(name); }

    static Pixels load(const QString& path)
    {
        const QImage image = QImage(path).convertToFormat(QImage::Format_ARGB32);
        Pixels out(image.width(), image.height());
        for (int y = 0; y < image.height(); ++y)
            std::memcpy(out.at(0, y), image.constScanLine(y), std::size_t(image.width()) * 4);
        return out;
    }
    static QJsonObject json(const scroll::StitchReport& report)
    {
        return QJsonDocument::fromJson(report.json).object();
    }

    QTemporaryDir m_dir;
};

std::vector<int> ints(const QJsonValue& value)
{
    std::vector<int> out;
    for (const QJsonValue& v : value.toArray())
        out.push_back(v.toInt());
    return out;
}

} // namespace

TEST_F(ScrollStitchCommand, StitchesPicturesInOrderAndPrintsTheEndState)
{
    const Pixels page = texturedPage(180, 700, 21);
    scroll::StitchOptions options;
    options.output = path("out.png");
    int i = 0;
    for (const int offset : {0, 20, 45, 45, 90})
        options.frames << save(page.rows(offset, 140), QStringLiteral("f%1.png").arg(i++));

    const scroll::StitchReport report = scroll::stitchPictures(options);
    ASSERT_TRUE(report.written) << report.problems.join(u'\n').toStdString();
    EXPECT_TRUE(report.problems.isEmpty());
    EXPECT_FALSE(report.json.contains('\n'));
    const QJsonObject state = json(report);
    EXPECT_EQ(state[u"judgedFrames"].toInt(), 5);
    EXPECT_EQ(state[u"acceptedFrames"].toInt(), 3) << "the repeated frame brings nothing";
    EXPECT_EQ(ints(state[u"imageUsedHeightArr"]), std::vector<int>{90});
    EXPECT_EQ(state[u"headSameRow"].toInt(), 0);
    EXPECT_EQ(state[u"tailSameRow"].toInt(), 0);
    EXPECT_EQ(state[u"width"].toInt(), 180);
    EXPECT_EQ(state[u"height"].toInt(), 90 + 140);
    EXPECT_EQ(load(options.output), withLostColumn(page.rows(0, 90 + 140), 1));
}

TEST_F(ScrollStitchCommand, LaterFramesAreCutAsTheSmallerAreaWouldCutThem)
{
    const int h = 200;
    const Pixels content = texturedPage(200, 900, 22);
    const Chrome chrome = windowChrome(content.width, h);
    scroll::StitchOptions options;
    options.scale = 2;
    options.appID = QStringLiteral("com.tencent.qq");
    options.output = path("long.png");
    for (const int offset : {0, 10, 20, 30, 40, 50, 60, 130, 210, 300})
        options.frames << save(windowFrame(content, offset, h, chrome),
                               QStringLiteral("w%1.png").arg(offset));

    const scroll::StitchReport report = scroll::stitchPictures(options);
    ASSERT_TRUE(report.written);
    const QJsonObject state = json(report);
    EXPECT_EQ(state[u"acceptedFrames"].toInt(), 8) << "the frame that settles the header is lost";
    EXPECT_EQ(state[u"headSameRow"].toInt(), 30);
    EXPECT_EQ(state[u"tailSameRow"].toInt(), 20);
    EXPECT_EQ(state[u"leftSameColumn"].toInt(), 25);
    EXPECT_EQ(state[u"rightSameColumn"].toInt(), 12);
    EXPECT_EQ(ints(state[u"imageUsedHeightArr"]), (std::vector<int>{90, 70, 80, 90}));
    EXPECT_EQ(load(options.output), expectedPicture(content, 300 + 150, chrome, 2));
}

TEST_F(ScrollStitchCommand, UnreadableAndMismatchedFramesAreNamedAndSkipped)
{
    const Pixels page = texturedPage(160, 500, 23);
    QFile junk(path("junk.png"));
    ASSERT_TRUE(junk.open(QIODevice::WriteOnly));
    junk.write("\x89PNG\r\n\x1a\n truncated");
    junk.close();

    scroll::StitchOptions options;
    options.output = path("out.png");
    options.frames << path("missing.png") << save(page.rows(0, 120), "a.png") << path("junk.png")
                   << save(page.rows(10, 100), "small.png") << save(page.rows(30, 120), "b.png");
    const scroll::StitchReport report = scroll::stitchPictures(options);
    ASSERT_TRUE(report.written);
    ASSERT_EQ(report.problems.size(), 3);
    EXPECT_TRUE(report.problems[0].startsWith(path("missing.png") + u':'));
    EXPECT_TRUE(report.problems[1].startsWith(path("junk.png") + u':'));
    EXPECT_TRUE(report.problems[2].startsWith(path("small.png") + u':'));
    EXPECT_TRUE(report.problems[2].contains(u"160x100"));
    EXPECT_EQ(json(report)[u"acceptedFrames"].toInt(), 1);
    EXPECT_EQ(load(options.output), withLostColumn(page.rows(0, 150), 1));

    options.frames = QStringList{path("junk.png"), path("missing.png")};
    options.output = path("none.png");
    const scroll::StitchReport nothing = scroll::stitchPictures(options);
    EXPECT_FALSE(nothing.written);
    EXPECT_TRUE(nothing.json.isEmpty());
    EXPECT_EQ(nothing.problems.size(), 3);
    EXPECT_FALSE(QFile::exists(options.output));
}

TEST_F(ScrollStitchCommand, ArgumentsAreCheckedAndFailuresGiveExitCodeOne)
{
    const auto error = [](const QStringList& args) {
        return scroll::parseStitchArguments(args).error;
    };
    EXPECT_TRUE(error({"a.png"}).contains(u"-o"));
    EXPECT_TRUE(error({"-o", "out.png"}).contains(u"no frames"));
    EXPECT_TRUE(error({"--scale", "0", "a.png", "-o", "x.png"}).contains(u"--scale"));
    EXPECT_TRUE(error({"--scale", "two", "a.png", "-o", "x.png"}).contains(u"two"));
    EXPECT_TRUE(error({"--frobnicate", "a.png", "-o", "x.png"}).contains(u"--frobnicate"));
    EXPECT_TRUE(error({"a.png", "-o"}).contains(u"-o needs a value"));
    const auto parsed = scroll::parseStitchArguments(
        {"--app-id", "com.tencent.qq", "a.png", "--scale", "3", "b.png", "-o", "out.png"});
    ASSERT_TRUE(parsed.options);
    EXPECT_EQ(parsed.options->scale, 3);
    EXPECT_EQ(parsed.options->appID, u"com.tencent.qq");
    EXPECT_EQ(parsed.options->frames, (QStringList{"a.png", "b.png"}));
    EXPECT_EQ(parsed.options->output, u"out.png");

    EXPECT_EQ(scroll::runStitchCommand({"--scale", "-1", "a.png", "-o", "x.png"}), 1);
    const QString frame = save(texturedPage(60, 40, 24), "one.png");
    EXPECT_EQ(scroll::runStitchCommand({frame, "-o", path("no-such-dir/out.png")}), 1);
    EXPECT_EQ(scroll::runStitchCommand({frame, "-o", path("one-out.png")}), 0);
    EXPECT_EQ(load(path("one-out.png")).height, 40);
    // A frame that is missing is an error, though the others are kept.
    EXPECT_EQ(scroll::runStitchCommand({frame, path("missing.png"), "-o", path("kept.png")}), 1);
    EXPECT_EQ(load(path("kept.png")).height, 40);
}
