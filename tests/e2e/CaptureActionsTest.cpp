// SPDX-License-Identifier: GPL-3.0-or-later
// The capture actions that need no overlay, and captures asked for from the
// command line and the session bus, on a real desktop: Alt+Z saves the
// window under the pointer with its shadow, Alt+X the previous area (or
// rings the X bell when there is none), `kelvo gui` with options waits for
// the capture's end, and the end is broadcast on the bus.
#include "support/CaptureFixture.h"
#include "support/PrivateBus.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>

// The XKB header names a field "explicit", a C++ keyword.
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit

#include <gtest/gtest.h>

#include <memory>

using namespace e2e;
using namespace std::chrono_literals;

namespace {

const QString kService = QStringLiteral("org.kelvo.Kelvo");
const QString kPath = QStringLiteral("/org/kelvo/Kelvo");
const QString kInterface = QStringLiteral("org.kelvo.Kelvo");

// The ends of requested captures as the bus broadcasts them.
class CaptureEnds : public QObject
{
    Q_OBJECT
public:
    struct End
    {
        QString kind; // "done", "cancelled", "failed"
        uint id = 0;
        QString text;
    };
    std::vector<End> seen;

public Q_SLOTS:
    void done(uint id, const QString& path) { seen.push_back({QStringLiteral("done"), id, path}); }
    void cancelled(uint id) { seen.push_back({QStringLiteral("cancelled"), id, {}}); }
    void failed(uint id, const QString& error)
    {
        seen.push_back({QStringLiteral("failed"), id, error});
    }
};

// Bell notifications of the X keyboard extension, on a connection of the
// test's own: every bell rung on the server shows here.
class BellWatch
{
public:
    BellWatch()
        : m_c(xcb_connect(nullptr, nullptr))
    {
        if (xcb_connection_has_error(m_c))
            return;
        const xcb_query_extension_reply_t* ext = xcb_get_extension_data(m_c, &xcb_xkb_id);
        if (ext == nullptr || !ext->present)
            return;
        m_firstEvent = ext->first_event;
        std::unique_ptr<xcb_xkb_use_extension_reply_t, decltype(&std::free)> use(
            xcb_xkb_use_extension_reply(m_c, xcb_xkb_use_extension(m_c, 1, 0), nullptr),
            &std::free);
        if (!use || !use->supported)
            return;
        xcb_xkb_select_events(m_c, XCB_XKB_ID_USE_CORE_KBD, XCB_XKB_EVENT_TYPE_BELL_NOTIFY, 0,
                              XCB_XKB_EVENT_TYPE_BELL_NOTIFY, 0, 0, nullptr);
        m_ready =
            xcb_request_check(m_c, xcb_xkb_select_events_checked(m_c, XCB_XKB_ID_USE_CORE_KBD,
                                                                 XCB_XKB_EVENT_TYPE_BELL_NOTIFY, 0,
                                                                 XCB_XKB_EVENT_TYPE_BELL_NOTIFY, 0,
                                                                 0, nullptr)) == nullptr;
    }
    ~BellWatch() { xcb_disconnect(m_c); }
    [[nodiscard]] bool ready() const { return m_ready; }

    // Bells seen since the last call.
    int bells()
    {
        int n = 0;
        while (xcb_generic_event_t* ev = xcb_poll_for_event(m_c)) {
            if ((ev->response_type & 0x7f) == m_firstEvent &&
                reinterpret_cast<xcb_xkb_bell_notify_event_t*>(ev)->xkbType == XCB_XKB_BELL_NOTIFY)
                ++n;
            std::free(ev);
        }
        return n;
    }

private:
    xcb_connection_t* m_c;
    std::uint8_t m_firstEvent = 0;
    bool m_ready = false;
};

class CaptureActions : public CaptureFixture
{
protected:
    void SetUp() override
    {
        CaptureFixture::SetUp();
        if (HasFatalFailure())
            return;
        shots = desktop.path(QStringLiteral("shots"));
        ASSERT_TRUE(QDir().mkpath(shots));
        bus = std::make_unique<PrivateBus>();
        ASSERT_TRUE(bus->isConnected());
        for (const char* name : {"CaptureDone", "CaptureCancelled", "CaptureFailed"}) {
            const char* slot = name == std::string_view("CaptureDone") ? SLOT(done(uint, QString))
                               : name == std::string_view("CaptureCancelled")
                                   ? SLOT(cancelled(uint))
                                   : SLOT(failed(uint, QString));
            ASSERT_TRUE(
                bus->connect(QString(), kPath, kInterface, QString::fromLatin1(name), &ends, slot));
        }
    }

    void TearDown() override
    {
        kelvo.reset();
        bus.reset();
    }

    // Kelvo with these preferences, once it says it has taken the two hot
    // keys these tests press; a probe of our own would race its grabs.
    void startKelvoWith(const QMap<QString, QString>& preferences)
    {
        CaptureFixture::startKelvoWith(preferences);
        if (HasFatalFailure())
            return;
        ASSERT_TRUE(pumpUntil([&] {
            const QVariantMap keys = kelvoHotKeys(*bus);
            return keys.value(QStringLiteral("screenshotWindowUnderCursorRecorder")) ==
                       QStringLiteral("registered") &&
                   keys.value(QStringLiteral("screenshotPreviousAreaRecorder")) ==
                       QStringLiteral("registered");
        })) << kelvo->errors().toStdString();
    }

    void restartKelvoWith(const QMap<QString, QString>& preferences)
    {
        kelvo.reset();
        ASSERT_TRUE(pumpUntil([&] { return !kelvoOnBus(*bus); }));
        startKelvoWith(preferences);
    }

    QMap<QString, QString> saveToShots() const
    {
        return {{QStringLiteral("pathofSaveScreenShotsPhoto"), shots},
                {QStringLiteral("formatOfSavePhoto"), QStringLiteral("png")},
                {QStringLiteral("playSoundWhenScreenShots"), QStringLiteral("NO")}};
    }
    QMap<QString, QString> plainPictures() const
    {
        auto p = saveToShots();
        p.insert(QStringLiteral("needShadowOfnotSingleWindow"), QStringLiteral("NO"));
        p.insert(QStringLiteral("needFilletOfnotSingleWindow"), QStringLiteral("NO"));
        return p;
    }

    QStringList shotFiles() const { return QDir(shots).entryList(QDir::Files); }

    // The file once it is there (written whole: it appears by rename).
    QImage waitForShot()
    {
        if (!waitFor([&] { return !shotFiles().isEmpty(); }))
            return {};
        return QImage(shots + '/' + shotFiles().first());
    }

    static KelvoProcess::Result run(const QStringList& args) { return KelvoCommand(args).finish(); }

    // Same pixels, alpha left out (a saved PNG may carry an alpha channel).
    static ::testing::AssertionResult samePixels(const QImage& a, const QImage& b)
    {
        if (a.size() != b.size())
            return ::testing::AssertionFailure() << a.width() << 'x' << a.height() << " against "
                                                 << b.width() << 'x' << b.height();
        const QImage l = a.convertToFormat(QImage::Format_RGB32);
        const QImage r = b.convertToFormat(QImage::Format_RGB32);
        for (int y = 0; y < l.height(); ++y)
            for (int px = 0; px < l.width(); ++px)
                if (l.pixel(px, y) != r.pixel(px, y))
                    return ::testing::AssertionFailure()
                           << "differs at " << px << ',' << y << ": " << std::hex << l.pixel(px, y)
                           << " against " << r.pixel(px, y);
        return ::testing::AssertionSuccess();
    }

    QString shots;
    std::unique_ptr<PrivateBus> bus;
    CaptureEnds ends;
};

const QRect kArea(100, 200, 300, 150);
const QString kAreaText = QStringLiteral("{{100, 200}, {300, 150}}");

} // namespace

TEST_F(CaptureActions, AltZSavesTheWindowUnderThePointerInsideItsShadow)
{
    constexpr int kShadow = 18;
    SolidWindow red(*x, QRect(300, 200, 400, 300), Qt::red, QStringLiteral("red"));
    ASSERT_TRUE(waitFor([&] { return x->pixel(500, 350) == QColor(Qt::red); }));
    auto prefs = saveToShots();
    prefs.insert(QStringLiteral("sizeOfShadow"), QString::number(kShadow));
    prefs.insert(QStringLiteral("needShadowOfnotSingleWindow"), QStringLiteral("YES"));
    prefs.insert(QStringLiteral("needFilletOfnotSingleWindow"), QStringLiteral("YES"));
    prefs.insert(QStringLiteral("colorOfShadow"), QStringLiteral("#66000000"));
    startKelvoWith(prefs);
    ASSERT_FALSE(HasFatalFailure());

    x->movePointer(500, 350);
    const QRect frame = x->frameOf(red.id());
    const QImage onScreen = x->grabRoot(frame);
    x->tapKeyWithAlt("z");
    const QImage shot = waitForShot();
    ASSERT_FALSE(shot.isNull()) << kelvo->errors().toStdString();
    EXPECT_TRUE(shotFiles().first().endsWith(QLatin1String(".png")));

    // The window's frame, pixel for pixel (no rounded corners), inside a
    // margin of the shadow's size on every side.
    ASSERT_EQ(shot.size(), frame.size() + QSize(2 * kShadow, 2 * kShadow));
    EXPECT_TRUE(samePixels(shot.copy(QRect(QPoint(kShadow, kShadow), frame.size())), onScreen));
    EXPECT_EQ(shot.pixelColor(shot.width() / 2, shot.height() / 2), QColor(Qt::red));
    // The margin is the shadow: dark and see-through, darkest at the window.
    const QColor nearWindow = shot.pixelColor(kShadow - 1, shot.height() / 2);
    const QColor corner = shot.pixelColor(0, 0);
    EXPECT_GT(nearWindow.alpha(), 0);
    EXPECT_LT(nearWindow.alpha(), 0x66 + 1);
    EXPECT_EQ(nearWindow.red(), 0);
    EXPECT_LT(corner.alpha(), nearWindow.alpha());
    EXPECT_TRUE(kelvo->isRunning());
}

TEST_F(CaptureActions, WithoutAPreviousAreaAltXRingsTheBellAndGuiFailsOnceStoredBothSaveIt)
{
    BellWatch bells;
    ASSERT_TRUE(bells.ready());
    x->setRootColor(QColor(0x30, 0x60, 0x90));
    SolidWindow blue(*x, QRect(200, 250, 400, 300), Qt::blue, QStringLiteral("blue"));
    ASSERT_TRUE(waitFor([&] { return x->pixel(400, 400) == QColor(Qt::blue); }))
        << x->pixel(400, 400).name().toStdString();
    startKelvoWith(plainPictures());
    ASSERT_FALSE(HasFatalFailure());
    (void)bells.bells();

    x->tapKeyWithAlt("x");
    ASSERT_TRUE(waitFor([&] { return bells.bells() > 0; })) << kelvo->errors().toStdString();
    // The bell is the action's end: nothing was written.
    EXPECT_TRUE(shotFiles().isEmpty());
    // Asked for from the command line, it fails with the reason.
    const auto r =
        run({QStringLiteral("gui"), QStringLiteral("--last-region"), QStringLiteral("-p"), shots});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.contains(QStringLiteral("no previous area"))) << r.err.toStdString();
    EXPECT_TRUE(r.out.isEmpty());
    EXPECT_TRUE(shotFiles().isEmpty());

    restartKelvoWith({{QStringLiteral("preRectOfScreenShots"), kAreaText}});
    ASSERT_FALSE(HasFatalFailure());
    const QImage onScreen = x->grabRoot(kArea);
    x->tapKeyWithAlt("x");
    const QImage shot = waitForShot();
    ASSERT_FALSE(shot.isNull()) << kelvo->errors().toStdString();
    EXPECT_TRUE(samePixels(shot, onScreen));
    EXPECT_EQ(bells.bells(), 0);
}

TEST_F(CaptureActions, TheCaptureMethodAndGuiLastRegionSaveTheStoredAreaWhereAsked)
{
    SolidWindow green(*x, QRect(150, 150, 200, 150), Qt::green, QStringLiteral("green"));
    ASSERT_TRUE(waitFor([&] { return x->pixel(250, 250) == QColor(Qt::green); }));
    auto prefs = plainPictures();
    prefs.insert(QStringLiteral("preRectOfScreenShots"), kAreaText);
    startKelvoWith(prefs);
    ASSERT_FALSE(HasFatalFailure());
    auto call = [&](const QVariantMap& options) {
        QDBusMessage m =
            QDBusMessage::createMethodCall(kService, kPath, kInterface, QStringLiteral("Capture"));
        m.setArguments({options});
        return bus->call(m, QDBus::Block, 10000);
    };

    const QDBusMessage bad = call({{QStringLiteral("delay"), QStringLiteral("soon")}});
    ASSERT_EQ(bad.type(), QDBusMessage::ErrorMessage);
    EXPECT_EQ(bad.errorName(), QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs"));
    EXPECT_TRUE(bad.errorMessage().contains(QStringLiteral("delay")));

    const QDBusMessage reply =
        call({{QStringLiteral("lastRegion"), true}, {QStringLiteral("path"), shots}});
    ASSERT_EQ(reply.type(), QDBusMessage::ReplyMessage) << reply.errorMessage().toStdString();
    const uint id = reply.arguments().value(0).toUInt();
    EXPECT_GT(id, 0u);
    ASSERT_TRUE(pumpUntil([&] { return !ends.seen.empty(); })) << kelvo->errors().toStdString();
    ASSERT_EQ(ends.seen.size(), 1u);
    EXPECT_EQ(ends.seen[0].kind, QStringLiteral("done"));
    EXPECT_EQ(ends.seen[0].id, id);
    EXPECT_EQ(QFileInfo(ends.seen[0].text).absolutePath(), shots);
    EXPECT_EQ(QImage(ends.seen[0].text).size(), kArea.size());

    // An interactive one: its id differs, and Escape ends it as cancelled.
    const QDBusMessage second = call({{QStringLiteral("path"), shots}});
    ASSERT_EQ(second.type(), QDBusMessage::ReplyMessage) << second.errorMessage().toStdString();
    const uint secondId = second.arguments().value(0).toUInt();
    EXPECT_NE(secondId, id);
    ASSERT_TRUE(pumpUntil([&] { return overlaysUp(); })) << kelvo->errors().toStdString();
    // One request at a time.
    const QDBusMessage third = call({{QStringLiteral("clipboard"), true}});
    EXPECT_EQ(third.type(), QDBusMessage::ErrorMessage);
    x->tapKey("Escape");
    ASSERT_TRUE(pumpUntil([&] { return ends.seen.size() == 2; }));
    EXPECT_EQ(ends.seen[1].kind, QStringLiteral("cancelled"));
    EXPECT_EQ(ends.seen[1].id, secondId);
    ASSERT_TRUE(pumpUntil([&] { return overlaysGone(); }));

    // The same area from the command line, saved only where it asks.
    const int inShots = static_cast<int>(shotFiles().size());
    const QImage onScreen = x->grabRoot(kArea);

    const QString elsewhere = desktop.path(QStringLiteral("elsewhere"));
    ASSERT_TRUE(QDir().mkpath(elsewhere));
    const auto r = run(
        {QStringLiteral("gui"), QStringLiteral("--last-region"), QStringLiteral("-p"), elsewhere});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    const QString path = r.out.trimmed();
    EXPECT_EQ(QFileInfo(path).absolutePath(), elsewhere);
    EXPECT_TRUE(samePixels(QImage(path), onScreen));
    // Only there: not in the save folder.
    EXPECT_EQ(shotFiles().size(), inShots);

    // A file name picks the name and the format, and never replaces a file.
    const QString named = elsewhere + QStringLiteral("/area.jpg");
    const auto first = run(
        {QStringLiteral("gui"), QStringLiteral("--last-region"), QStringLiteral("--path"), named});
    ASSERT_EQ(first.exitCode, 0) << first.err.toStdString();
    EXPECT_EQ(first.out.trimmed(), named);
    EXPECT_EQ(QImage(named).size(), kArea.size());
    const auto again = run(
        {QStringLiteral("gui"), QStringLiteral("--last-region"), QStringLiteral("--path"), named});
    ASSERT_EQ(again.exitCode, 0) << again.err.toStdString();
    EXPECT_EQ(again.out.trimmed(), elsewhere + QStringLiteral("/area 2.jpg"));

    // A bad option is refused before anything is asked of Kelvo.
    const auto badOption =
        run({QStringLiteral("gui"), QStringLiteral("-d"), QStringLiteral("soon")});
    EXPECT_EQ(badOption.exitCode, 1);
    EXPECT_TRUE(badOption.err.contains(QStringLiteral("-d needs milliseconds")))
        << badOption.err.toStdString();
}

TEST_F(CaptureActions, ADelayedGuiCaptureWaitsForItsEndAndAltZWorksDuringACapture)
{
    SolidWindow red(*x, QRect(300, 200, 400, 300), Qt::red, QStringLiteral("red"));
    ASSERT_TRUE(waitFor([&] { return x->pixel(500, 350) == QColor(Qt::red); }));
    startKelvoWith(plainPictures());
    ASSERT_FALSE(HasFatalFailure());
    constexpr int kDelayMs = 1200;
    QElapsedTimer clock;
    clock.start();
    KelvoCommand command({QStringLiteral("gui"), QStringLiteral("-d"), QString::number(kDelayMs),
                          QStringLiteral("-p"), shots});
    x->movePointer(800, 500);
    ASSERT_TRUE(pumpUntil([&] { return overlaysUp(); })) << kelvo->errors().toStdString();
    EXPECT_GE(clock.elapsed(), kDelayMs);
    EXPECT_TRUE(command.isRunning()); // it waits for the capture's end
    x->tapKey("Escape");
    const auto r = command.finish();
    EXPECT_EQ(r.exitCode, 2) << r.err.toStdString();
    EXPECT_TRUE(r.out.isEmpty());
    EXPECT_TRUE(shotFiles().isEmpty());
    ASSERT_TRUE(pumpUntil([&] { return !ends.seen.empty(); }));
    EXPECT_EQ(ends.seen.back().kind, QStringLiteral("cancelled"));

    const QRect frame = x->frameOf(red.id());
    const QImage onScreen = x->grabRoot(frame);

    x->movePointer(500, 350);
    ASSERT_EQ(run({QStringLiteral("gui")}).exitCode, 0);
    ASSERT_TRUE(pumpUntil([&] { return overlaysUp(); })) << kelvo->errors().toStdString();
    x->movePointer(501, 350);
    // The overlay holds the keyboard, yet the hot key still works: the
    // window under the pointer (not the overlay over it) is saved.
    x->tapKeyWithAlt("z");
    const QImage shot = waitForShot();
    ASSERT_FALSE(shot.isNull()) << kelvo->errors().toStdString();
    EXPECT_TRUE(samePixels(shot, onScreen));

    // The capture is not disturbed by it: still up, and still ends by key.
    EXPECT_TRUE(overlaysUp());
    x->tapKey("Escape");
    EXPECT_TRUE(pumpUntil([&] { return x->overlaysOf(kelvo->pid()).empty(); }));
    EXPECT_EQ(shotFiles().size(), 1);
    EXPECT_TRUE(kelvo->isRunning());
}

#include "CaptureActionsTest.moc"
