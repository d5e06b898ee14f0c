// SPDX-License-Identifier: GPL-3.0-or-later
// What a capture leaves the rest of the desktop: the window that had the
// focus gets it back however the capture ends, and a notice of Kelvo's own
// that arrives while the overlay is up shows above it, without getting
// into the picture.
#include "support/CaptureFixture.h"

#include <QBuffer>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QImage>

#include <memory>
#include <optional>

using namespace e2e;
using namespace std::chrono_literals;

namespace {

const QColor kDesktop(0x60, 0x70, 0x80);

// Exact pictures: no shadow, no rounded corners.
const QMap<QString, QString> kPlain{
    {QStringLiteral("needShadowOfnotSingleWindow"), QStringLiteral("NO")},
    {QStringLiteral("needFilletOfnotSingleWindow"), QStringLiteral("NO")}};

quint64 activeWindow()
{
    return xdotool({QStringLiteral("getactivewindow")}).toULongLong();
}

bool activate(const SolidWindow& window)
{
    return activateWindow(QString::number(window.id()));
}

class CaptureFocus : public CaptureFixture
{
protected:
    CaptureFocus()
        : CaptureFixture(kDesktop)
    {}

    // The capture is up over a desktop where `before` had the focus; then
    // `thief` takes it, as a window that opens meanwhile does.
    void captureOver(const SolidWindow& before, const SolidWindow& thief, bool byHotKey)
    {
        ASSERT_TRUE(activate(before));
        x->movePointer(700, 650);
        if (byHotKey)
            x->tapKeyWithAlt("a");
        else
            triggerCapture();
        ASSERT_TRUE(waitFor([&] { return overlaysUp(); })) << kelvo->errors().toStdString();
        ASSERT_TRUE(activate(thief));
    }
};

} // namespace

TEST_F(CaptureFocus, TheWindowThatHadTheFocusGetsItBackAfterEscapeOrACopyUnlessItClosed)
{
    SolidWindow editor(*x, QRect(100, 100, 500, 350), QColor(0x20, 0x80, 0x40),
                       QStringLiteral("editor"));
    SolidWindow chat(*x, QRect(1000, 200, 400, 300), QColor(0x20, 0x40, 0x90),
                     QStringLiteral("chat"));
    ASSERT_TRUE(waitFor([&] { return x->pixel(1200, 350) == QColor(0x20, 0x40, 0x90); }));
    startKelvoWith(kPlain);

    // Alt+A, then Escape.
    captureOver(editor, chat, true);
    x->tapKey("Escape");
    ASSERT_TRUE(waitFor([&] { return overlaysGone(); })) << kelvo->errors().toStdString();
    EXPECT_TRUE(waitFor([&] { return activeWindow() == editor.id(); }))
        << "active: " << activeWindow() << ", the editor: " << editor.id();

    // `kelvo gui`, a region, then Return copies.
    captureOver(editor, chat, false);
    drag(QPoint(300, 600), QPoint(800, 900));
    x->tapKey("Return");
    ASSERT_TRUE(waitFor([&] { return overlaysGone(); })) << kelvo->errors().toStdString();
    EXPECT_TRUE(waitFor([&] { return activeWindow() == editor.id(); }))
        << "active: " << activeWindow() << ", the editor: " << editor.id();
    EXPECT_TRUE(waitFor([&] { return !x->clipboardPng().isEmpty(); }));

    // The window that had the focus closes during the capture: nothing is
    // asked for it, and Kelvo carries on.
    {
        auto note = std::make_unique<SolidWindow>(*x, QRect(200, 700, 300, 200), Qt::darkYellow,
                                                  QStringLiteral("note"));
        ASSERT_TRUE(waitFor([&] { return x->pixel(350, 800) == QColor(Qt::darkYellow); }));
        captureOver(*note, chat, false);
        note.reset();
    }
    x->tapKey("Escape");
    ASSERT_TRUE(waitFor([&] { return overlaysGone(); })) << kelvo->errors().toStdString();
    EXPECT_TRUE(kelvo->isRunning());
    barrier();
    EXPECT_FALSE(kelvo->errors().contains(QStringLiteral("XCB error")))
        << kelvo->errors().toStdString();
}

namespace {

// dunst on the desktop, which shows every notice in one window.
class CaptureNotices : public CaptureFixture
{
protected:
    CaptureNotices()
        : CaptureFixture({.twoMonitors = true, .compositor = false, .notifications = true})
    {}

    // The notification server's window, when it is on screen.
    std::optional<XSession::Window> popup()
    {
        for (const XSession::Window& w : x->topLevels()) {
            if (w.name == QLatin1String("Dunst"))
                return w;
        }
        return std::nullopt;
    }

    // Whether the popup is stacked above the overlay of the primary monitor.
    bool popupAboveOverlay()
    {
        const std::vector<XSession::Window> stack = x->topLevels(); // top first
        int popupAt = -1;
        int overlayAt = -1;
        for (int i = 0; i < static_cast<int>(stack.size()); ++i) {
            const XSession::Window& w = stack[static_cast<std::size_t>(i)];
            if (w.name == QLatin1String("Dunst"))
                popupAt = i;
            else if (w.name == QLatin1String("Kelvo capture") && w.geometry == kPrimary)
                overlayAt = i;
        }
        return popupAt >= 0 && overlayAt >= 0 && popupAt < overlayAt;
    }

    // A notice from another program, left up for a minute.
    static void notifyFromElsewhere()
    {
        QDBusMessage call = QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.Notifications"),
            QStringLiteral("/org/freedesktop/Notifications"),
            QStringLiteral("org.freedesktop.Notifications"), QStringLiteral("Notify"));
        call.setArguments({QStringLiteral("calendar"), 0u, QString(), QStringLiteral("Meeting"),
                           QStringLiteral("in five minutes"), QStringList(), QVariantMap(), 60000});
        const QDBusMessage reply = QDBusConnection::sessionBus().call(call, QDBus::Block, 10000);
        ASSERT_EQ(reply.type(), QDBusMessage::ReplyMessage) << reply.errorMessage().toStdString();
    }

    // A picture handed to Kelvo for the clipboard (what `kelvo full -c`
    // does), which Kelvo tells with a notice of its own.
    static void handKelvoAPicture()
    {
        QImage image(16, 16, QImage::Format_RGB32);
        image.fill(Qt::magenta);
        QByteArray png;
        QBuffer buffer(&png);
        buffer.open(QIODevice::WriteOnly);
        ASSERT_TRUE(image.save(&buffer, "PNG"));
        QDBusMessage call = QDBusMessage::createMethodCall(
            QStringLiteral("org.kelvo.Kelvo"), QStringLiteral("/org/kelvo/Kelvo"),
            QStringLiteral("org.kelvo.Kelvo"), QStringLiteral("CopyImage"));
        call.setArguments({png});
        const QDBusMessage reply = QDBusConnection::sessionBus().call(call, QDBus::Block, 10000);
        ASSERT_EQ(reply.type(), QDBusMessage::ReplyMessage) << reply.errorMessage().toStdString();
        ASSERT_TRUE(reply.arguments().value(0).toString().isEmpty())
            << reply.arguments().value(0).toString().toStdString();
    }
};

} // namespace

TEST_F(CaptureNotices, ANoticeOfOursDuringACaptureShowsAboveTheOverlayButNotInThePicture)
{
    x->setRootColor(kDesktop);
    startKelvoWith(kPlain);
    // Another program's notice is up at the trigger, so the overlay covers
    // its window, and Kelvo's notice later joins that same window rather
    // than mapping (and raising) a new one.
    notifyFromElsewhere();
    // Drawn, not only mapped: its window shows more than one colour, and
    // the same twice running.
    QImage lastLook;
    ASSERT_TRUE(waitFor([&] {
        const auto p = popup();
        if (!p)
            return false;
        const QImage look = x->grabRoot(p->geometry);
        const bool settled =
            look == lastLook && look.pixel(0, 0) != look.pixel(look.rect().center());
        lastLook = look;
        return settled;
    }));
    const QRect shownAtTrigger = popup()->geometry;
    ASSERT_TRUE(kPrimary.contains(shownAtTrigger));
    const QImage desktopAtTrigger = x->grabRoot(kPrimary);

    x->movePointer(700, 500);
    triggerCapture();
    ASSERT_TRUE(waitFor([&] { return overlaysUp(); })) << kelvo->errors().toStdString();
    ASSERT_FALSE(popupAboveOverlay());

    handKelvoAPicture();
    ASSERT_TRUE(waitFor([&] {
        const auto p = popup();
        return p && p->geometry.height() > shownAtTrigger.height();
    })) << "Kelvo's notice never reached the notification server";
    EXPECT_TRUE(waitFor([&] { return popupAboveOverlay(); }))
        << "Kelvo's notice stays hidden under the overlay";
    // Seen, not only stacked: the screen there is no longer the frozen one.
    const QRect shown = popup()->geometry;
    EXPECT_NE(x->grabRoot(shown), desktopAtTrigger.copy(shown));

    // The whole monitor, copied: the frozen desktop, without the notice.
    x->tapKey("f");
    barrier();
    x->tapKey("Return");
    ASSERT_TRUE(waitFor([&] { return overlaysGone(); })) << kelvo->errors().toStdString();
    QImage copied;
    ASSERT_TRUE(waitFor([&] {
        copied = QImage::fromData(x->clipboardPng(), "PNG");
        return copied.size() == kPrimary.size();
    })) << "clipboard: "
        << copied.width() << "x" << copied.height();
    EXPECT_EQ(copied.convertToFormat(QImage::Format_RGB32),
              desktopAtTrigger.convertToFormat(QImage::Format_RGB32));
}
