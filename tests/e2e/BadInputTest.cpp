// SPDX-License-Identifier: GPL-3.0-or-later
// Mistakes and hostile input at each way into Kelvo: calls on the bus
// built by hand, a damaged preferences file, and commands with wrong
// options. Each gets a clear error, and Kelvo goes on answering.
#include "support/CaptureFixture.h"
#include "support/PrivateBus.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace e2e;

namespace {

const QString kService = QStringLiteral("org.kelvo.Kelvo");
const QString kPath = QStringLiteral("/org/kelvo/Kelvo");
const QString kInterface = QStringLiteral("org.kelvo.Kelvo");
const QString kInvalidArgs = QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs");
const QString kUnknownMethod = QStringLiteral("org.freedesktop.DBus.Error.UnknownMethod");

class BadInput : public CaptureFixture
{
protected:
    void SetUp() override
    {
        CaptureFixture::SetUp();
        bus = std::make_unique<PrivateBus>();
        ASSERT_TRUE(bus->isConnected());
    }

    void TearDown() override
    {
        kelvo.reset();
        bus.reset();
    }

    QDBusMessage call(const QString& method, const QVariantList& arguments = {},
                      const QString& interface = kInterface)
    {
        QDBusMessage m = QDBusMessage::createMethodCall(kService, kPath, interface, method);
        m.setArguments(arguments);
        return bus->call(m, QDBus::Block, 20000);
    }

    // Kelvo is still there and still itself.
    void expectAnswersVersion()
    {
        const QDBusMessage v = call(QStringLiteral("Version"));
        ASSERT_EQ(v.type(), QDBusMessage::ReplyMessage) << v.errorMessage().toStdString();
        EXPECT_FALSE(v.arguments().value(0).toString().isEmpty());
        EXPECT_TRUE(kelvo->isRunning());
    }

    static QByteArray garbage(int size)
    {
        QByteArray bytes;
        quint32 seed = 4242;
        for (int i = 0; i < size; ++i) {
            seed = seed * 1103515245u + 12345u;
            bytes.append(char(seed >> 24));
        }
        return bytes;
    }

    std::unique_ptr<PrivateBus> bus;
};

} // namespace

// One desktop for every wrong input that reaches a running Kelvo: each part
// starts from what the one before left, so each also proves Kelvo came
// through the part before unharmed.
TEST_F(BadInput, BadPreferencesAndWrongCallsAreToldAndKelvoGoesOn)
{
    // A preferences file of random bytes is set aside and Kelvo starts.
    const QByteArray noise = garbage(16384);
    ASSERT_TRUE(QDir().mkpath(QFileInfo(confPath()).absolutePath()));
    {
        QFile file(confPath());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(noise);
    }
    startKelvo();
    ASSERT_FALSE(HasFatalFailure());
    expectAnswersVersion();

    const QString aside = confPath() + QStringLiteral(".bad");
    QFile kept(aside);
    ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
    EXPECT_EQ(kept.readAll(), noise);
    ASSERT_TRUE(waitFor([&] {
        return QSettings(confPath(), QSettings::IniFormat).contains(QStringLiteral("installTime"));
    })) << kelvo->errors().toStdString();
    EXPECT_TRUE(kelvo->errors().contains(QStringLiteral("moved to ") + aside))
        << kelvo->errors().toStdString();

    // Bad values in a readable file are told and put back to their defaults.
    kelvo.reset();
    ASSERT_TRUE(waitFor([] { return !kelvoOnBus(); }));
    startKelvoWith({{QStringLiteral("sizeOfShadow"), QStringLiteral("-3")},
                    {QStringLiteral("timeOfDelayScreenshots"), QStringLiteral("99999")},
                    {QStringLiteral("hideMenuBarIcon"), QStringLiteral("5")},
                    {QStringLiteral("formatOfSavePhoto"), QStringLiteral("bmp")}});
    ASSERT_FALSE(HasFatalFailure());
    expectAnswersVersion();
    ASSERT_TRUE(waitFor([&] {
        return kelvo->errors().contains(QStringLiteral("preference formatOfSavePhoto"));
    })) << kelvo->errors().toStdString();
    const QString errors = kelvo->errors();
    for (const char* line :
         {"preference sizeOfShadow is \"-3\", not a whole number from 0 to 100; using the "
          "default \"18\"",
          "preference timeOfDelayScreenshots is \"99999\", not a whole number from 1 to 20; "
          "using the default \"3\"",
          "preference hideMenuBarIcon is \"5\", not YES or NO; using the default \"NO\"",
          "preference formatOfSavePhoto is \"bmp\", not jpg, png or tiff; using the default "
          "\"png\""})
        EXPECT_EQ(errors.count(QString::fromUtf8(line)), 1) << line << "\n" << errors.toStdString();
    QSettings conf(confPath(), QSettings::IniFormat);
    EXPECT_EQ(conf.value(QStringLiteral("sizeOfShadow")).toString(), QStringLiteral("18"));
    EXPECT_EQ(conf.value(QStringLiteral("timeOfDelayScreenshots")).toString(), QStringLiteral("3"));
    EXPECT_EQ(conf.value(QStringLiteral("hideMenuBarIcon")).toString(), QStringLiteral("NO"));
    EXPECT_EQ(conf.value(QStringLiteral("formatOfSavePhoto")).toString(), QStringLiteral("png"));

    // Wrong calls on the bus are answered with a reason.
    const QString huge(6 << 20, QLatin1Char('x')); // several megabytes
    struct Case
    {
        const char* what;
        QString method;
        QVariantList arguments;
        QString errorName;
        QString mentions;
    };
    const Case cases[] = {
        {"CopyImage with a string",
         QStringLiteral("CopyImage"),
         {QStringLiteral("a.png")},
         kUnknownMethod,
         QStringLiteral("(signature 's')")},
        {"CopyImage without its argument",
         QStringLiteral("CopyImage"),
         {},
         kUnknownMethod,
         QStringLiteral("CopyImage")},
        {"Capture with a number",
         QStringLiteral("Capture"),
         {42},
         kUnknownMethod,
         QStringLiteral("(signature 'i')")},
        {"Capture with a list",
         QStringLiteral("Capture"),
         {QStringList{"path", "/tmp"}},
         kUnknownMethod,
         QStringLiteral("(signature 'as')")},
        {"Capture with an unknown key",
         QStringLiteral("Capture"),
         {QVariantMap{{QStringLiteral("screen"), 1}}},
         kInvalidArgs,
         QStringLiteral("unknown option: \"screen\"")},
        {"Capture with a path that is a number",
         QStringLiteral("Capture"),
         {QVariantMap{{QStringLiteral("path"), 7}}},
         kInvalidArgs,
         QStringLiteral("\"path\" must be a non-empty string")},
        {"Capture with a variant inside the variant",
         QStringLiteral("Capture"),
         {QVariantMap{
             {QStringLiteral("clipboard"), QVariant::fromValue(QDBusVariant(QVariant(true)))}}},
         kInvalidArgs,
         QStringLiteral("\"clipboard\" must be a boolean")},
        {"Capture with a negative delay",
         QStringLiteral("Capture"),
         {QVariantMap{{QStringLiteral("delay"), -5}}},
         kInvalidArgs,
         QStringLiteral("\"delay\" must be an integer")},
        {"Capture with a path that names no picture type",
         QStringLiteral("Capture"),
         {QVariantMap{{QStringLiteral("path"), QStringLiteral("/tmp/shot.gif")}}},
         kInvalidArgs,
         QStringLiteral("not .gif")},
        {"Capture with a path of megabytes",
         QStringLiteral("Capture"),
         {QVariantMap{{QStringLiteral("path"), QString(QLatin1Char('/') + huge)}}},
         kInvalidArgs,
         QStringLiteral("longer than a path may be")},
        {"Capture with a key of megabytes",
         QStringLiteral("Capture"),
         {QVariantMap{{huge, true}}},
         kInvalidArgs,
         QStringLiteral("unknown option: \"xxx")},
        {"an unknown method",
         QStringLiteral("TakeEverything"),
         {},
         kUnknownMethod,
         QStringLiteral("TakeEverything")},
        {"Version with an argument",
         QStringLiteral("Version"),
         {huge},
         kUnknownMethod,
         QStringLiteral("Version")},
    };
    for (const Case& c : cases) {
        const QDBusMessage reply = call(c.method, c.arguments);
        ASSERT_EQ(reply.type(), QDBusMessage::ErrorMessage) << c.what;
        EXPECT_EQ(reply.errorName(), c.errorName) << c.what;
        EXPECT_TRUE(reply.errorMessage().contains(c.mentions))
            << c.what << ": " << reply.errorMessage().left(300).toStdString();
        // A caller's megabytes do not come back.
        EXPECT_LT(reply.errorMessage().size(), 400) << c.what;
    }
    // An unknown interface on our path is refused too.
    const QDBusMessage foreign =
        call(QStringLiteral("Version"), {}, QStringLiteral("org.example.X"));
    EXPECT_EQ(foreign.type(), QDBusMessage::ErrorMessage);

    // CopyImage answers its refusal as its result: megabytes of noise, an
    // empty picture, a PNG cut short.
    for (const QByteArray& bytes :
         {garbage(5 << 20), QByteArray(), QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16)}) {
        const QDBusMessage reply = call(QStringLiteral("CopyImage"), {bytes});
        ASSERT_EQ(reply.type(), QDBusMessage::ReplyMessage) << reply.errorMessage().toStdString();
        const QString refusal = reply.arguments().value(0).toString();
        EXPECT_FALSE(refusal.isEmpty());
        EXPECT_LT(refusal.size(), 400);
    }
    expectAnswersVersion();

    // Calls during a capture start no second one.
    const QDBusMessage started = call(QStringLiteral("ScreenShotsByTessikGroup"));
    ASSERT_EQ(started.type(), QDBusMessage::ReplyMessage) << started.errorMessage().toStdString();
    ASSERT_TRUE(waitFor([&] { return overlaysUp(); }, std::chrono::seconds(20)))
        << kelvo->errors().toStdString();
    const auto overlays = x->overlaysOf(kelvo->pid());

    // The method, the broadcast signal and a Capture request, all during it.
    const QDBusMessage again = call(QStringLiteral("ScreenShotsByTessikGroup"));
    EXPECT_EQ(again.type(), QDBusMessage::ReplyMessage) << again.errorMessage().toStdString();
    bus->send(QDBusMessage::createSignal(QStringLiteral("/"), kInterface,
                                         QStringLiteral("ScreenShotsByTessikGroup")));
    const QDBusMessage request = call(QStringLiteral("Capture"), {QVariantMap{}});
    ASSERT_EQ(request.type(), QDBusMessage::ErrorMessage);
    EXPECT_EQ(request.errorName(), QStringLiteral("org.freedesktop.DBus.Error.Failed"));
    EXPECT_TRUE(request.errorMessage().contains(QStringLiteral("already running")))
        << request.errorMessage().toStdString();
    barrier();

    // The same two overlays, no more.
    const auto now = x->overlaysOf(kelvo->pid());
    ASSERT_EQ(now.size(), overlays.size());
    for (std::size_t i = 0; i < now.size(); ++i)
        EXPECT_EQ(now[i].id, overlays[i].id);
    x->tapKey("Escape");
    ASSERT_TRUE(waitFor([&] { return overlaysGone(); })) << kelvo->errors().toStdString();
    expectAnswersVersion();
}

TEST_F(BadInput, CommandsWithWrongOptionsExitOneWithOneLine)
{
    QTemporaryDir files;
    ASSERT_TRUE(files.isValid());
    const QString out = files.filePath(QStringLiteral("out.png"));
    struct Case
    {
        QStringList arguments;
        const char* mentions;
    };
    const Case cases[] = {
        {{"frobnicate"}, "unknown command: frobnicate"},
        {{"--frobnicate"}, "unknown option: --frobnicate"},
        {{"full", "-d"}, "-d needs milliseconds"},
        {{"full", "--delay", "soon"}, "--delay needs milliseconds"},
        {{"screen", "-d", "-5"}, "-d needs milliseconds"},
        {{"screen", "-n"}, "-n needs a screen number"},
        {{"screen", "-n", "-1"}, "-n needs a screen number"},
        {{"screen", "-n", "7"}, "there is no screen 7; screens are 0 to 1"},
        {{"full", "-p", out + ".gif"}, "not .gif"},
        {{"full", "--bogus"}, "unknown option for 'full': --bogus"},
        {{"gui", "-p"}, "-p needs a folder or a file name"},
        {{"gui", "-d", "1e3"}, "-d needs milliseconds"},
        {{"gui", "--path", out + ".bmp"}, "not .bmp"},
        {{"colour-name", "12345g"}, "is not a colour"},
        {{"colour-name"}, "expected one colour"},
        {{"stitch", "-o"}, "-o needs a value"},
        {{"stitch", files.filePath(QStringLiteral("a.png"))}, "no output file given"},
    };
    for (const Case& c : cases) {
        const auto r = KelvoProcess::run(c.arguments);
        const std::string what = c.arguments.join(' ').toStdString();
        EXPECT_EQ(r.exitCode, 1) << what << ": " << r.err.toStdString();
        EXPECT_TRUE(r.err.contains(QLatin1String(c.mentions)))
            << what << ": " << r.err.toStdString();
        EXPECT_TRUE(r.err.startsWith(QStringLiteral("kelvo")));
        EXPECT_EQ(r.err.count(QLatin1Char('\n')), 1) << what << ": " << r.err.toStdString();
        EXPECT_TRUE(r.out.isEmpty()) << what;
    }

    // Frames that are missing or not pictures: each is named, and nothing
    // is written when none is left.
    QFile junk(files.filePath(QStringLiteral("junk.png")));
    ASSERT_TRUE(junk.open(QIODevice::WriteOnly));
    junk.write(garbage(3000));
    junk.close();
    const auto r =
        KelvoProcess::run({QStringLiteral("stitch"), files.filePath(QStringLiteral("missing.png")),
                           junk.fileName(), QStringLiteral("-o"), out});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.contains(files.filePath(QStringLiteral("missing.png")) + u':'))
        << r.err.toStdString();
    EXPECT_TRUE(r.err.contains(junk.fileName() + u':')) << r.err.toStdString();
    EXPECT_FALSE(QFile::exists(out));
}
