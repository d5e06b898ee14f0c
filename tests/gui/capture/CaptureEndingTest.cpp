// SPDX-License-Identifier: GPL-3.0-or-later
// A capture ended from inside one of its own handlers: what the handler is
// still using outlives it, and nothing of the capture outlives the next
// turn of the event loop.
#include "capture/ui/QNClipView.h"
#include "capture/ui/QNClipWindowController.h"
#include "support/ClipManagerFixture.h"

#include <QCoreApplication>
#include <QDialog>
#include <QGuiApplication>
#include <QPointer>
#include <QScreen>
#include <QWindow>

#include <algorithm>

#include <gtest/gtest.h>

using namespace capture;

namespace {

class CaptureEnding : public ClipManagerFixture
{
protected:
    // The controllers of the running capture, watched.
    std::vector<QPointer<QNClipWindowController>> watchControllers()
    {
        std::vector<QPointer<QNClipWindowController>> out;
        for (const auto& c : manager.controllers())
            out.emplace_back(c.get());
        return out;
    }

    static void turnEventLoop()
    {
        for (int i = 0; i < 3; ++i)
            QCoreApplication::processEvents();
    }
};

} // namespace

TEST_F(CaptureEnding, AnEndingInsideAMessageHandlerRetiresTheControllersUntilItReturns)
{
    manager.startCapture();
    ASSERT_TRUE(manager.isWorking());
    auto watched = watchControllers();
    ASSERT_FALSE(watched.empty());
    QPointer<QNClipView> view = manager.controllers().front()->clipView();
    ASSERT_FALSE(view.isNull());

    // A receiver of the ending that runs inside the cancel's message
    // handler, as code returning into a key handler would.
    bool sawEnd = false;
    const auto connection = QObject::connect(&manager, &QNClipScreenManager::captureEnded, [&] {
        sawEnd = true;
        EXPECT_TRUE(manager.controllers().empty());
        for (const auto& c : watched)
            EXPECT_FALSE(c.isNull()) << "a controller went while a handler could still use it";
        EXPECT_FALSE(view.isNull());
        EXPECT_TRUE(view->isHidden());
    });
    bus.send(core::Message::CancelScreenShot);
    QObject::disconnect(connection);
    EXPECT_TRUE(sawEnd);
    EXPECT_FALSE(manager.isWorking());

    turnEventLoop();
    for (const auto& c : watched)
        EXPECT_TRUE(c.isNull()) << "an ended capture's controller outlived the event loop's turn";
    EXPECT_TRUE(view.isNull());
}

TEST_F(CaptureEnding, AnEventLoopSpunInsideTheEndingHandlerDoesNotFreeTheCapture)
{
    // A receiver of the ending spins an event loop of its own before it
    // returns, as a dialog would: the retired objects must survive that
    // inner loop, and go once the outer handler has returned.
    manager.startCapture();
    auto watched = watchControllers();
    ASSERT_FALSE(watched.empty());
    int aliveAfterInnerLoop = -1;
    const auto connection = QObject::connect(&manager, &QNClipScreenManager::captureEnded, [&] {
        turnEventLoop();
        aliveAfterInnerLoop = static_cast<int>(std::count_if(
            watched.begin(), watched.end(), [](const auto& c) { return !c.isNull(); }));
    });
    bus.send(core::Message::CancelScreenShot);
    QObject::disconnect(connection);
    EXPECT_EQ(aliveAfterInnerLoop, static_cast<int>(watched.size()));
    turnEventLoop();
    for (const auto& c : watched)
        EXPECT_TRUE(c.isNull());

    // And the next capture starts clean.
    manager.startCapture();
    EXPECT_TRUE(manager.isWorking());
    EXPECT_EQ(manager.controllers().size(), watched.size());
    manager.cancelScreenShot();
    turnEventLoop();
}

TEST_F(CaptureEnding, AModalDialogAndACaptureAreNeverUpTogether)
{
    // Qt blocks every other window's input while a dialog is modal, the
    // overlays' too, so a capture under one could never be ended.
    QDialog dialog;
    dialog.setModal(true);
    dialog.show();
    manager.startCapture();
    EXPECT_FALSE(manager.isWorking()) << "a capture started under a modal dialog";
    dialog.hide();
    turnEventLoop();

    // A modal dialog that opens during a capture ends it, and keeps the
    // focus the capture would give back.
    constexpr std::uint32_t editor = 5;
    desktop.existing = {editor};
    desktop.active = editor;
    manager.startCapture();
    ASSERT_TRUE(manager.isWorking());
    QDialog alert;
    alert.setModal(true);
    alert.show();
    turnEventLoop();
    EXPECT_FALSE(manager.isWorking());
    EXPECT_TRUE(desktop.activated.empty());
    alert.hide();

    // A window that is not modal leaves the capture alone.
    manager.startCapture();
    ASSERT_TRUE(manager.isWorking());
    QDialog plain;
    plain.show();
    turnEventLoop();
    EXPECT_TRUE(manager.isWorking());
    manager.cancelScreenShot();
    EXPECT_EQ(desktop.activated, std::vector<std::uint32_t>{editor});
    turnEventLoop();
}
