// SPDX-License-Identifier: GPL-3.0-or-later
// The region capture's timers run on the clock it is given: the right
// button's short delay, the release of an ended capture's objects, the
// first turn on which the overlay windows are made ahead of any capture, and
// the wait for a notice's popup. Also what a capture leaves the desktop: the
// focus back where it began.
#include "capture/ui/QNClipWindow.h"
#include "capture/ui/QNClipWindowController.h"
#include "support/ClipManagerFixture.h"

#include <QApplication>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QPointer>
#include <QScreen>
#include <QWindow>

#include <gtest/gtest.h>

#include <chrono>
#include <vector>

using namespace capture;
using namespace std::chrono_literals;

namespace {

class ClipScreenManagerClock : public ClipManagerFixture
{
protected:
    ClipScreenManagerClock()
        : ClipManagerFixture({.steppedClock = true, .watchNotifications = true})
    {}
    ~ClipScreenManagerClock() override
    {
        manager.cancelScreenShot();
        clock.advance(1s);
    }

    // A right press on the overlay, where the pointer is.
    void pressRightButton()
    {
        QNClipWindow* window = manager.controllers().front()->window();
        ASSERT_NE(window, nullptr);
        ASSERT_NE(window->windowHandle(), nullptr);
        const QPointF global = QGuiApplication::primaryScreen()->geometry().topLeft() + pointer.at;
        QMouseEvent press(QEvent::MouseButtonPress, pointer.at, global, Qt::RightButton,
                          Qt::RightButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window->windowHandle(), &press);
    }
};

} // namespace

TEST_F(ClipScreenManagerClock, ARightPressCancelsOnlyOnceItsDelayIsOver)
{
    manager.startCapture();
    ASSERT_TRUE(manager.isWorking());
    bool ended = false;
    QObject::connect(&manager, &QNClipScreenManager::captureEnded, [&](bool finished) {
        ended = true;
        EXPECT_FALSE(finished);
    });
    pressRightButton();
    clock.advance(9ms);
    EXPECT_TRUE(manager.isWorking()) << "the right press cancelled before its delay was over";
    clock.advance(1ms);
    EXPECT_TRUE(ended);
    EXPECT_FALSE(manager.isWorking());
}

TEST_F(ClipScreenManagerClock, ARightPressThatEndsOnAToolBarButtonDoesNotCancel)
{
    manager.startCapture();
    pressRightButton();
    // The pointer reached a button of the tool bar before the delay ended.
    manager.mouseOnButton = true;
    clock.advance(50ms);
    EXPECT_TRUE(manager.isWorking());

    // The same press away from the buttons does cancel.
    manager.mouseOnButton = false;
    pressRightButton();
    clock.advance(10ms);
    EXPECT_FALSE(manager.isWorking());
}

TEST_F(ClipScreenManagerClock, AnEndedCapturesControllersGoOnTheClocksNextTurnOnly)
{
    manager.startCapture();
    QPointer<QNClipWindowController> controller = manager.controllers().front().get();
    bus.send(core::Message::CancelScreenShot);
    EXPECT_FALSE(manager.isWorking());
    // Qt's own event loop turning does not free them; the clock's turn does.
    QCoreApplication::processEvents();
    EXPECT_FALSE(controller.isNull());
    clock.advance(0ms);
    EXPECT_TRUE(controller.isNull());
}

namespace {

std::vector<QNClipWindow*> overlayWindows()
{
    std::vector<QNClipWindow*> found;
    for (QWidget* w : QApplication::topLevelWidgets()) {
        if (auto* overlay = qobject_cast<QNClipWindow*>(w))
            found.push_back(overlay);
    }
    return found;
}

// Counts the paints of overlay windows, wherever they go.
class OverlayPaints : public QObject
{
public:
    int count = 0;
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint && qobject_cast<QNClipWindow*>(watched) != nullptr)
            ++count;
        return false;
    }
};

} // namespace

TEST_F(ClipScreenManagerClock, TheOverlaysArePaintedUnseenOnTheFirstTurnAndKeptForEveryCapture)
{
    ASSERT_TRUE(overlayWindows().empty());
    OverlayPaints paints;
    qApp->installEventFilter(&paints);
    clock.advance(0ms);
    qApp->removeEventFilter(&paints);
    const std::vector<QNClipWindow*> made = overlayWindows();
    ASSERT_EQ(made.size(), static_cast<std::size_t>(QGuiApplication::screens().size()));
    // Painted once, so its backing store is there, yet neither shown nor
    // left unable to show.
    EXPECT_GE(paints.count, 1);
    QPointer<QNClipWindow> window = made.front();
    EXPECT_FALSE(window->isVisible());
    EXPECT_FALSE(window->testAttribute(Qt::WA_DontShowOnScreen));

    manager.startCapture();
    EXPECT_EQ(manager.controllers().front()->window(), window.data());
    EXPECT_TRUE(window->isVisible());
    manager.cancelScreenShot();
    // However long the quiet, the next capture finds the same window.
    clock.advance(2h);
    ASSERT_FALSE(window.isNull());
    manager.startCapture();
    EXPECT_EQ(manager.controllers().front()->window(), window.data());
    EXPECT_EQ(overlayWindows().size(), made.size());
    manager.cancelScreenShot();
}

TEST_F(ClipScreenManagerClock, TheWindowActiveAtTheTriggerGetsTheFocusBackHoweverTheCaptureEnds)
{
    constexpr std::uint32_t editor = 7;
    constexpr std::uint32_t chat = 9;
    desktop.existing = {editor, chat};
    const auto focusAfter = [&](const std::function<void()>& ending) {
        desktop.active = editor;
        desktop.activated.clear();
        manager.startCapture();
        // Another window takes the focus meanwhile (one that opened, say).
        desktop.active = chat;
        ending();
        EXPECT_FALSE(manager.isWorking());
        clock.advance(1s);
        return desktop.activated;
    };
    using Granted = std::vector<std::uint32_t>;

    EXPECT_EQ(focusAfter([&] { bus.send(core::Message::CancelScreenShot); }), Granted{editor});
    EXPECT_EQ(focusAfter([&] {
                  pressRightButton();
                  clock.advance(10ms);
              }),
              Granted{editor});
    EXPECT_EQ(focusAfter([&] {
                  FinishedCapture copy;
                  copy.picture = core::Picture::pixelsAsPoints(windows.desktop);
                  copy.destination = FinishDestination::Clipboard;
                  manager.finishCapture(manager.controllers().front().get(), copy);
              }),
              Granted{editor});
    EXPECT_EQ(desktop.active, editor);

    // A pin keeps the focus it takes.
    EXPECT_EQ(focusAfter([&] {
                  state.finish.pin();
                  FinishedCapture pin;
                  pin.picture = core::Picture::pixelsAsPoints(windows.desktop);
                  pin.destination = FinishDestination::Pin;
                  manager.finishCapture(manager.controllers().front().get(), pin);
              }),
              Granted{});
    state.finish.clear();

    // A window closed during the capture is not asked for, and the capture
    // still ends; so does one with no window active at the trigger.
    desktop.existing.erase(editor);
    EXPECT_EQ(focusAfter([&] { manager.cancelScreenShot(); }), Granted{});
    desktop.active = 0;
    manager.startCapture();
    desktop.active = chat;
    manager.cancelScreenShot();
    EXPECT_TRUE(desktop.activated.empty());
    EXPECT_EQ(desktop.active, chat);
}

TEST_F(ClipScreenManagerClock, ANoticeDeliveredDuringACaptureShowsOverItsOverlayUntilItGoes)
{
    bool popup = true;
    stacking.shown = [&] { return popup; };
    // Outside a capture there is no overlay to make way.
    bus.send(core::Message::DidDeliverNotification);
    EXPECT_TRUE(stacking.requests.empty());

    manager.startCapture();
    QNClipWindow* overlay = manager.controllers().front()->window();
    ASSERT_NE(overlay, nullptr);
    bus.send(core::Message::DidDeliverNotification);
    using Request = platform::null::FakeNotificationStacking::Request;
    using Restack = platform::null::FakeNotificationStacking::Restack;
    ASSERT_EQ(stacking.requests,
              (std::vector<Request>{{Restack::NotificationsAbove, overlay->winId()}}));
    popup = false;
    clock.advance(5500ms);
    EXPECT_EQ(stacking.requests.back(), (Request{Restack::OverlayOnTop, overlay->winId()}));

    // A capture that ends during the wait takes it along: its overlay, kept
    // for the next capture, is not raised.
    popup = true;
    bus.send(core::Message::DidDeliverNotification);
    const auto before = stacking.requests.size();
    manager.cancelScreenShot();
    popup = false;
    clock.advance(30s);
    EXPECT_EQ(stacking.requests.size(), before);
}
