// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/logic/HoverHitTest.h"
#include "capture/logic/HoverMoveDecision.h"
#include "capture/logic/HoverTracker.h"
#include "unit/capture/CaptureTestSupport.h"

#include <gtest/gtest.h>

namespace capture {
namespace {

using testing::twoScreens;
using testing::window;

constexpr int kPrimary = 0;
constexpr int kSecond = 1;

// The pointer in the global bottom-left system, from a top-left position.
QPointF mouseAt(const core::ScreenLayout& layout, double x, double y)
{
    return layout.topLeftToBottomLeft(QPointF(x, y));
}

platform::WindowRecord app(std::uint32_t number, int layer, const QRectF& bounds,
                           const QString& bundle)
{
    platform::WindowRecord w = window(number, QStringLiteral("win %1").arg(number), layer, bounds);
    w.bundleIdentifier = bundle;
    return w;
}

platform::WindowRecord desktopPicture(const QRectF& screen)
{
    platform::WindowRecord w =
        window(900, QStringLiteral("Desktop Picture - DP-1"), platform::layers::Desktop, screen);
    w.bundleIdentifier = QStringLiteral("desktop");
    return w;
}

TEST(HoverHitTest, FrontmostWindowOfAnOrdinaryLayerWinsOverTheOnesBehind)
{
    const core::ScreenLayout layout = twoScreens();
    const std::vector<platform::WindowRecord> windows{
        app(1, 0, QRectF(100, 100, 400, 300), "front"),
        app(2, 0, QRectF(200, 150, 600, 400), "back"),
        desktopPicture(QRectF(0, 0, 1920, 1080)),
    };
    const HoverResult overlap = hoverHitTest(windows, mouseAt(layout, 250, 200), layout, kPrimary);
    ASSERT_TRUE(overlap.hit);
    EXPECT_EQ(overlap.hit->number, 1u);
    EXPECT_TRUE(overlap.hit->final);
    // Overlay-local, y up: 1080 - 100 - 300 = 680.
    EXPECT_EQ(overlap.hit->rect, QRectF(100, 680, 400, 300));
    EXPECT_EQ(overlap.appIDUnderMouse, "front");
    EXPECT_EQ(overlap.focusScreen, kPrimary);

    // Only the back window holds this point.
    const HoverResult back = hoverHitTest(windows, mouseAt(layout, 700, 500), layout, kPrimary);
    ASSERT_TRUE(back.hit);
    EXPECT_EQ(back.hit->number, 2u);
}

TEST(HoverHitTest, WindowsAboveLayer1000AreRecordedOnTheWayButTheOrdinaryOneBelowIsTaken)
{
    const core::ScreenLayout layout = twoScreens();
    const std::vector<platform::WindowRecord> windows{
        app(7, 2000, QRectF(0, 0, 1920, 1080), "shield"),
        app(8, platform::layers::Popup, QRectF(300, 300, 100, 100), "menu"),
        app(9, 0, QRectF(200, 200, 800, 600), "editor"),
    };
    const HoverResult underShield =
        hoverHitTest(windows, mouseAt(layout, 600, 700), layout, kPrimary);
    ASSERT_TRUE(underShield.hit);
    EXPECT_EQ(underShield.hit->number, 9u);
    EXPECT_EQ(underShield.appIDUnderMouse, "editor");

    // A popup (layer 101) is an ordinary hover target and is in front.
    const HoverResult onMenu = hoverHitTest(windows, mouseAt(layout, 350, 350), layout, kPrimary);
    ASSERT_TRUE(onMenu.hit);
    EXPECT_EQ(onMenu.hit->number, 8u);

    // With nothing of layer 0 to 1000 there, the high window stays written
    // down but is not final.
    const HoverResult onlyShield = hoverHitTest(windows, mouseAt(layout, 50, 50), layout, kPrimary);
    ASSERT_TRUE(onlyShield.hit);
    EXPECT_EQ(onlyShield.hit->number, 7u);
    EXPECT_FALSE(onlyShield.hit->final);
}

TEST(HoverHitTest, DesktopPictureIsRecordedAsTheWholeScreenButNeverFinal)
{
    const core::ScreenLayout layout = twoScreens();
    const std::vector<platform::WindowRecord> windows{
        app(1, 0, QRectF(100, 100, 400, 300), "front"),
        desktopPicture(QRectF(0, 0, 1920, 1080)),
    };
    const HoverResult result = hoverHitTest(windows, mouseAt(layout, 1500, 900), layout, kPrimary);
    ASSERT_TRUE(result.hit);
    EXPECT_EQ(result.hit->number, 900u);
    EXPECT_FALSE(result.hit->final);
    EXPECT_LT(result.hit->layer, 0);
    EXPECT_EQ(result.hit->rect, QRectF(0, 0, 1920, 1080));
    EXPECT_EQ(result.appIDUnderMouse, "desktop");

    CaptureState state;
    state.currentWindowAppId = QStringLiteral("earlier");
    storeHoverResult(state, result);
    EXPECT_EQ(state.currentWindowID, 900u);
    EXPECT_EQ(state.currentWindowName, "Desktop Picture - DP-1");
    EXPECT_EQ(state.currentWindowRect, QRectF(0, 0, 1920, 1080));
    // Only a final hit names the owner of the current window.
    EXPECT_EQ(state.currentWindowAppId, "earlier");
    EXPECT_EQ(state.appIDUnderMouse, "desktop");
}

TEST(HoverHitTest, EdgesFollowTheTwoContainmentTests)
{
    const core::ScreenLayout layout = twoScreens();
    // Window 1 spans bottom-left y 680 to 980.
    const std::vector<platform::WindowRecord> windows{
        app(1, 0, QRectF(100, 100, 400, 300), "front"),
        app(2, 0, QRectF(0, 0, 1000, 1000), "back"),
    };
    // Its bottom edge: written down, then the pass goes on to the window behind.
    const HoverResult bottom = hoverHitTest(windows, QPointF(300, 680), layout, kPrimary);
    ASSERT_TRUE(bottom.hit);
    EXPECT_EQ(bottom.hit->number, 2u);
    // Its top edge: not held as a rectangle, but the mouse test takes it.
    const HoverResult top = hoverHitTest(windows, QPointF(300, 980), layout, kPrimary);
    ASSERT_TRUE(top.hit);
    EXPECT_EQ(top.hit->number, 1u);
    EXPECT_TRUE(top.hit->final);
    // Its right edge belongs to neither test.
    const HoverResult right = hoverHitTest(windows, QPointF(500, 800), layout, kPrimary);
    ASSERT_TRUE(right.hit);
    EXPECT_EQ(right.hit->number, 2u);
}

TEST(HoverHitTest, NothingUnderThePointerLeavesTheHoverAsItWas)
{
    const core::ScreenLayout layout = twoScreens();
    const std::vector<platform::WindowRecord> windows{app(1, 0, QRectF(0, 0, 100, 100), "a")};
    const HoverResult result = hoverHitTest(windows, mouseAt(layout, 1000, 1000), layout, kPrimary);
    EXPECT_FALSE(result.hit);
    EXPECT_EQ(result.focusScreen, -1);
    EXPECT_TRUE(result.appIDUnderMouse.isNull());

    CaptureState state;
    state.currentWindowID = 5;
    state.appIDUnderMouse = QStringLiteral("stale");
    storeHoverResult(state, result);
    EXPECT_EQ(state.currentWindowID, 5u);
    EXPECT_TRUE(state.appIDUnderMouse.isEmpty());
}

TEST(HoverHitTest, SecondScreenGetsItsOwnLocalRectangleAndTheFocus)
{
    const core::ScreenLayout layout = twoScreens();
    const std::vector<platform::WindowRecord> windows{
        app(3, 0, QRectF(2000, 100, 300, 200), "right"),
    };
    const HoverResult result = hoverHitTest(windows, mouseAt(layout, 2100, 150), layout, kSecond);
    ASSERT_TRUE(result.hit);
    EXPECT_EQ(result.focusScreen, kSecond);
    EXPECT_EQ(result.hit->rect, layout.topLeftToOverlayLocal(kSecond, QRectF(2000, 100, 300, 200)));
    EXPECT_EQ(result.hit->rect, QRectF(80, 724, 300, 200));
}

TEST(HoverTracker, SeesTheWindowsAsTheyWereAtTheFreeze)
{
    const core::ScreenLayout layout = twoScreens();
    CaptureState state;
    state.arrayRect = {app(1, 0, QRectF(100, 100, 400, 300), "closed-since"),
                       app(2, 0, QRectF(0, 0, 1920, 1080), "behind")};
    // Since the freeze window 1 closed and window 50 opened in front; the
    // hover pass never asks the window server again.
    const std::vector<platform::WindowRecord> liveNow{app(50, 0, QRectF(0, 0, 800, 800), "new"),
                                                      state.arrayRect[1]};
    ASSERT_EQ(hoverHitTest(liveNow, mouseAt(layout, 200, 200), layout, kPrimary).hit->number, 50u);

    HoverTracker tracker(layout, kPrimary);
    EXPECT_TRUE(tracker.clipViewMouseMoved(state, mouseAt(layout, 200, 200)).outlineChanged);
    EXPECT_EQ(state.currentWindowID, 1u);
    EXPECT_EQ(state.currentWindowAppId, "closed-since");
    (void)tracker.clipViewMouseMoved(state, mouseAt(layout, 700, 700));
    EXPECT_EQ(state.currentWindowID, 2u);
}

TEST(HoverTracker, OverlayChangesOnlyWhenTheWindowNumberChanges)
{
    const core::ScreenLayout layout = twoScreens();
    CaptureState state;
    state.arrayRect = {app(1, 0, QRectF(100, 100, 400, 300), "a"),
                       app(2, 0, QRectF(600, 100, 400, 300), "b")};
    HoverTracker tracker(layout, kPrimary);
    EXPECT_EQ(tracker.lastWindowRect(), QRectF(0, 0, 1920, 1080));

    const HoverMoveOutcome first = tracker.clipViewMouseMoved(state, mouseAt(layout, 200, 200));
    EXPECT_TRUE(first.outlineChanged);
    EXPECT_EQ(first.windowRect, QRectF(100, 680, 400, 300));
    EXPECT_EQ(first.contentFrame, QRectF(94, 674, 412, 312));
    EXPECT_FALSE(tracker.clipViewMouseMoved(state, mouseAt(layout, 300, 250)).outlineChanged);

    const HoverMoveOutcome next = tracker.clipViewMouseMoved(state, mouseAt(layout, 700, 200));
    EXPECT_TRUE(next.outlineChanged);
    EXPECT_EQ(next.windowRect, QRectF(600, 680, 400, 300));
    EXPECT_EQ(tracker.lastWindowNumber(), 2u);

    // Off every window: nothing written, the outline stays.
    const HoverMoveOutcome off = tracker.clipViewMouseMoved(state, mouseAt(layout, 1500, 900));
    EXPECT_FALSE(off.outlineChanged);
    EXPECT_EQ(off.focusScreen, -1);
    EXPECT_EQ(tracker.lastWindowRect(), QRectF(600, 680, 400, 300));
}

TEST(HoverTracker, PressTakesTheWindowNowUnderThePointer)
{
    const core::ScreenLayout layout = twoScreens();
    CaptureState state;
    state.arrayRect = {app(1, 0, QRectF(100, 100, 400, 300), "a"),
                       app(2, 0, QRectF(600, 100, 400, 300), "b")};
    HoverTracker tracker(layout, kPrimary);
    (void)tracker.clipViewMouseMoved(state, mouseAt(layout, 200, 200));

    // The pointer jumped to window 2 without a move event; the press is taken.
    const HoverPressOutcome pressed =
        tracker.clipViewMouseDown(state, mouseAt(layout, 700, 200), 1, false);
    EXPECT_TRUE(pressed.setClearColor);
    EXPECT_EQ(pressed.apply, HoverPressOutcome::Frame::ContentFrame);
    EXPECT_EQ(pressed.frame, QRectF(594, 674, 412, 312));
    EXPECT_EQ(state.currentWindowID, 2u);
    EXPECT_EQ(state.currentWindowAppId, "b");

    // Pressing again on the same window changes nothing but the pass.
    const HoverPressOutcome again =
        tracker.clipViewMouseDown(state, mouseAt(layout, 750, 250), 1, true);
    EXPECT_FALSE(again.setClearColor);
    EXPECT_EQ(again.apply, HoverPressOutcome::Frame::Unchanged);

    // Still waiting (state 0): the window's own rectangle for the content view.
    const HoverPressOutcome waiting =
        tracker.clipViewMouseDown(state, mouseAt(layout, 200, 200), 0, true);
    EXPECT_EQ(waiting.apply, HoverPressOutcome::Frame::FrameForContentView);
    EXPECT_EQ(waiting.frame, QRectF(100, 680, 400, 300));
}

TEST(HoverMoveSteps, OnlyTheScreenUnderThePointerHoversAndShowsTheMagnifier)
{
    HoverMoveInput here;
    here.screenUnderMouse = true;
    const HoverMoveSteps arrived = hoverMoveSteps(here);
    EXPECT_TRUE(arrived.runHover);
    EXPECT_TRUE(arrived.placeMagnifier);
    EXPECT_TRUE(arrived.claimScreen);
    EXPECT_TRUE(arrived.blankCursor);
    EXPECT_FALSE(arrived.clearMarks);

    here.magnifierShown = true;
    EXPECT_FALSE(hoverMoveSteps(here).claimScreen);

    HoverMoveInput elsewhere;
    const HoverMoveSteps left = hoverMoveSteps(elsewhere);
    EXPECT_TRUE(left.clearMarks);
    EXPECT_FALSE(left.placeMagnifier);

    // Once the annotation window is open no screen clears or hovers.
    elsewhere.annotationWindowOpen = true;
    const HoverMoveSteps annotating = hoverMoveSteps(elsewhere);
    EXPECT_FALSE(annotating.clearMarks);
    EXPECT_FALSE(annotating.runHover);
    EXPECT_TRUE(annotating.checkTips);
}

TEST(HoverMoveSteps, PicksAndRecordingsStopTheMoveEarly)
{
    HoverMoveInput picking;
    picking.screenUnderMouse = true;
    picking.stateOfMultiWindowScreenshots = PickMode::Picking;
    picking.windowsPicked = true;
    const HoverMoveSteps steps = hoverMoveSteps(picking);
    EXPECT_TRUE(steps.runHover);
    EXPECT_FALSE(steps.blankCursor);
    EXPECT_FALSE(steps.placeMagnifier);
    EXPECT_FALSE(steps.checkTips);

    HoverMoveInput otherScreenPick;
    otherScreenPick.pickOnOtherScreen = true;
    const HoverMoveSteps stays = hoverMoveSteps(otherScreenPick);
    EXPECT_TRUE(stays.ignore);
    EXPECT_TRUE(stays.countMove);

    HoverMoveInput recording;
    recording.recordingRuns = true;
    const HoverMoveSteps ignored = hoverMoveSteps(recording);
    EXPECT_TRUE(ignored.ignore);
    EXPECT_FALSE(ignored.countMove);
}

} // namespace
} // namespace capture
