// SPDX-License-Identifier: GPL-3.0-or-later
// `kelvo full` and `kelvo screen` taken by the tray instance for a client:
// what it takes gives the client's own answer, in the client's directory;
// what it cannot answer exactly as the client would, it declines untouched.
#include "app/InstanceShots.h"
#include "platform/null/FakeWindowServer.h"
#include "platform/null/NullServices.h"
#include "settings/Defaults.h"
#include "settings/Keys.h"
#include "settings/MemoryStore.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using app::InstanceShots;
namespace keys = settings::keys;

namespace {

class InstanceShotsTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(client.isValid());
        ASSERT_TRUE(folder.isValid());
        windows.layout = core::ScreenLayout({{QStringLiteral("A"), QRectF(0, 0, 40, 30), 1.0},
                                             {QStringLiteral("B"), QRectF(40, 0, 20, 30), 1.0}});
        windows.desktop = QImage(60, 30, QImage::Format_RGB32);
        for (int y = 0; y < 30; ++y)
            for (int x = 0; x < 60; ++x)
                windows.desktop.setPixel(x, y, qRgb(x * 4, y * 8, 200));
        defaults.setObject(keys::pathofSaveScreenShotsPhoto, folder.path());
        defaults.setObject(keys::formatOfSavePhoto, QStringLiteral("png"));
        variables = {{QStringLiteral("DISPLAY"), QStringLiteral(":7")},
                     {QStringLiteral("HOME"), QStringLiteral("/home/someone")},
                     {QStringLiteral("XDG_CONFIG_HOME"), QString()}};
        instanceDirectory = QDir::currentPath();
    }

    InstanceShots shots()
    {
        return InstanceShots({{&windows, &defaults, &notifier, [] { return QPointF(45, 5); }},
                              [this] { return held; },
                              [this](const QString& name) { return variables.value(name); }});
    }

    // The client's variables as it sends them, with `changes` applied.
    QStringList clientEnvironment(const QMap<QString, QString>& changes = {}) const
    {
        QStringList sent;
        for (const QString& name : InstanceShots::sharedVariables())
            sent << name + QLatin1Char('=') + changes.value(name, variables.value(name));
        return sent;
    }

    std::optional<InstanceShots::Answer> take(const QStringList& arguments,
                                              const QStringList& environment, QString* why)
    {
        auto answer = shots().take(arguments, client.path(), environment, why);
        EXPECT_EQ(QDir::currentPath(), instanceDirectory) << "the instance's directory moved";
        return answer;
    }

    QTemporaryDir client; // the client's working directory
    QTemporaryDir folder; // the preferences' folder
    platform::null::FakeWindowServer windows;
    settings::MemoryStore store;
    settings::Defaults defaults{store};
    platform::null::RecordingNotifier notifier;
    QMap<QString, QString> variables;
    QString instanceDirectory;
    bool held = false;
};

} // namespace

TEST_F(InstanceShotsTest, TakesTheRequestInTheClientsDirectoryAndAnswersWhatItsOwnRunWould)
{
    QString why;
    const auto file =
        take({QStringLiteral("screen"), QStringLiteral("-p"), QStringLiteral("b.png")},
             clientEnvironment(), &why);
    ASSERT_TRUE(file) << why.toStdString();
    EXPECT_EQ(file->exitCode, 0);
    const QString written = client.filePath(QStringLiteral("b.png"));
    EXPECT_EQ(file->out, written.toLocal8Bit() + '\n');
    EXPECT_TRUE(file->errors.isEmpty());
    // The monitor under the pointer, pixel for pixel.
    EXPECT_EQ(QImage(written).convertToFormat(QImage::Format_RGB32),
              windows.desktop.copy(40, 0, 20, 30));

    const auto raw =
        take({QStringLiteral("full"), QStringLiteral("--raw")}, clientEnvironment(), &why);
    ASSERT_TRUE(raw) << why.toStdString();
    EXPECT_EQ(raw->exitCode, 0);
    EXPECT_EQ(QImage::fromData(raw->out, "PNG").convertToFormat(QImage::Format_RGB32),
              windows.desktop);
    // Raw goes to stdout only.
    EXPECT_TRUE(QDir(folder.path()).isEmpty());
}

TEST_F(InstanceShotsTest, AFailureComesBackAsTheClientsErrorLinesWithThePictureKept)
{
    // A picture that cannot go where it was asked to is kept in Pictures.
    QTemporaryDir home;
    const QByteArray ownHome = qgetenv("HOME");
    qputenv("HOME", home.path().toLocal8Bit());
    QDir(home.path()).mkpath(QStringLiteral("Pictures"));
    QFile blocker(client.filePath(QStringLiteral("blocker")));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    QString why;
    const auto answer =
        take({QStringLiteral("full"), QStringLiteral("-p"), QStringLiteral("blocker/shots")},
             clientEnvironment(), &why);
    ASSERT_TRUE(answer) << why.toStdString();
    EXPECT_EQ(answer->exitCode, 1);
    EXPECT_TRUE(answer->out.isEmpty());
    EXPECT_TRUE(answer->errors.startsWith(QStringLiteral("kelvo: ")))
        << answer->errors.toStdString();
    EXPECT_TRUE(answer->errors.endsWith(QLatin1Char('\n')));
    EXPECT_TRUE(answer->errors.contains(QStringLiteral("blocker/shots")));
    EXPECT_EQ(notifier.sent.size(), 1U);
    const QStringList kept = QDir(home.path() + QStringLiteral("/Pictures")).entryList(QDir::Files);
    qputenv("HOME", ownHome);
    ASSERT_EQ(kept.size(), 1);
    EXPECT_TRUE(answer->errors.contains(kept.first())) << answer->errors.toStdString();
}

TEST_F(InstanceShotsTest, DeclinesWhatItCannotAnswerExactlyAsTheClientAndTouchesNothing)
{
    const QStringList plain{QStringLiteral("full")};
    struct Case
    {
        const char* what;
        QStringList arguments;
        QStringList environment;
        bool held;
    };
    const std::vector<Case> cases{
        {"another display", plain,
         clientEnvironment({{QStringLiteral("DISPLAY"), QStringLiteral(":8")}}), false},
        {"other preferences", plain,
         clientEnvironment({{QStringLiteral("XDG_CONFIG_HOME"), QStringLiteral("/elsewhere")}}),
         false},
        {"a variable not sent", plain, clientEnvironment().mid(1), false},
        {"a capture holds the desktop", plain, clientEnvironment(), true},
        {"a delay",
         {QStringLiteral("full"), QStringLiteral("-d"), QStringLiteral("10")},
         clientEnvironment(),
         false},
        {"a copy", {QStringLiteral("screen"), QStringLiteral("-c")}, clientEnvironment(), false},
        {"an option it does not know",
         {QStringLiteral("full"), QStringLiteral("-x")},
         clientEnvironment(),
         false},
        {"help", {QStringLiteral("full"), QStringLiteral("--help")}, clientEnvironment(), false},
        {"another verb", {QStringLiteral("gui")}, clientEnvironment(), false},
        {"no verb", {}, clientEnvironment(), false},
    };
    for (const Case& c : cases) {
        held = c.held;
        QString why;
        EXPECT_FALSE(take(c.arguments, c.environment, &why)) << c.what;
        EXPECT_FALSE(why.isEmpty()) << c.what;
    }
    held = false;
    QString why;
    EXPECT_FALSE(shots().take(plain, QStringLiteral("relative/dir"), clientEnvironment(), &why));
    EXPECT_FALSE(
        shots().take(plain, client.filePath(QStringLiteral("gone")), clientEnvironment(), &why));
    EXPECT_EQ(QDir::currentPath(), instanceDirectory);
    EXPECT_TRUE(QDir(folder.path()).isEmpty());
    EXPECT_TRUE(QDir(client.path()).isEmpty());
    EXPECT_TRUE(notifier.sent.empty());
}
