// SPDX-License-Identifier: GPL-3.0-or-later
// Where the overlays' events go: the monitors' tables, which decide what
// each screen does with an event, and the session over them, which picks
// the screen and its own points, knows what an ending leaves routable, and
// who holds the keyboard.
#include "capture/logic/OverlayRouting.h"
#include "capture/logic/EventMonitorTable.h"
#include "unit/capture/CaptureTestSupport.h"

#include <gtest/gtest.h>

namespace capture {
namespace {

using A = MonitorAction;
using T = MonitorEventType;
using Routes = std::vector<OverlayRoute>;
using Actions = std::vector<MonitorAction>;

// Mouse locations in global bottom-left points.
constexpr QPointF kOnPrimaryBL{960, 540};
constexpr QPointF kOnSecondBL{2500, 600};

constexpr MonitorKind kLocal = MonitorKind::Local;
constexpr MonitorKind kGlobal = MonitorKind::Global;

class EventMonitorTableTest : public ::testing::Test
{
protected:
    [[nodiscard]] Actions route(MonitorKind kind, int screen, T type, QPointF mouse) const
    {
        return m_table.route(kind, screen, {type, mouse}, m_gates);
    }

    // The screens whose controller does something with the event.
    [[nodiscard]] std::vector<int> actingScreens(MonitorKind kind, T type, QPointF mouse) const
    {
        std::vector<int> acting;
        for (int screen = 0; screen < 2; ++screen) {
            if (route(kind, screen, type, mouse) != Actions{A::PassThrough})
                acting.push_back(screen);
        }
        return acting;
    }

    EventMonitorTable m_table{testing::twoScreens()};
    MonitorGates m_gates;
};

TEST_F(EventMonitorTableTest, EveryEventIsActedOnByTheScreenUnderTheMouseOnly)
{
    // Key downs reach only the local monitor.
    const T local[] = {T::KeyDown,          T::FlagsChanged, T::MouseMoved,    T::LeftMouseDown,
                       T::LeftMouseDragged, T::LeftMouseUp,  T::RightMouseDown};
    const T global[] = {T::FlagsChanged,     T::MouseMoved,  T::LeftMouseDown,
                        T::LeftMouseDragged, T::LeftMouseUp, T::RightMouseUp};
    for (const QPointF mouse : {kOnPrimaryBL, kOnSecondBL}) {
        const std::vector<int> under{mouse == kOnPrimaryBL ? 0 : 1};
        for (const T type : local)
            EXPECT_EQ(actingScreens(kLocal, type, mouse), under) << "local " << int(type);
        for (const T type : global)
            EXPECT_EQ(actingScreens(kGlobal, type, mouse), under) << "global " << int(type);
    }
}

TEST_F(EventMonitorTableTest, EventsNeitherTableHandlesAreLeftAlone)
{
    for (const QPointF mouse : {kOnPrimaryBL, kOnSecondBL}) {
        EXPECT_TRUE(actingScreens(kLocal, T::RightMouseUp, mouse).empty());
        EXPECT_TRUE(actingScreens(kLocal, T::Gesture, mouse).empty());
        EXPECT_TRUE(actingScreens(kLocal, T::KeyUp, mouse).empty());
        EXPECT_TRUE(actingScreens(kGlobal, T::RightMouseDown, mouse).empty());
        EXPECT_TRUE(actingScreens(kGlobal, T::KeyDown, mouse).empty());
    }
}

TEST_F(EventMonitorTableTest, LocalPressAndReleaseGates)
{
    EXPECT_EQ(route(kLocal, 0, T::LeftMouseDown, kOnPrimaryBL),
              (Actions{A::HideTip, A::MouseDown}));
    EXPECT_EQ(route(kLocal, 0, T::LeftMouseUp, kOnPrimaryBL), Actions{A::MouseUp});

    // A text box under the pointer keeps the press and release while marking up.
    m_gates.pointerRole = PointerRole::TextIBeam;
    EXPECT_EQ(route(kLocal, 0, T::LeftMouseDown, kOnPrimaryBL),
              (Actions{A::HideTip, A::MouseDown}));
    m_gates.clipToolbarWindowOpened = true;
    EXPECT_EQ(route(kLocal, 0, T::LeftMouseDown, kOnPrimaryBL), Actions{A::HideTip});
    EXPECT_EQ(route(kLocal, 0, T::LeftMouseUp, kOnPrimaryBL), Actions{A::PassThrough});
    EXPECT_EQ(route(kLocal, 0, T::LeftMouseDragged, kOnPrimaryBL), Actions{A::MouseDragged});
    m_gates.pointerRole = PointerRole::OverStroke;
    EXPECT_EQ(route(kLocal, 0, T::LeftMouseUp, kOnPrimaryBL), Actions{A::MouseUp});

    // A tool bar button swallows all three, but not the right button.
    m_gates.mouseOnButton = true;
    for (const T type : {T::LeftMouseDown, T::LeftMouseDragged, T::LeftMouseUp})
        EXPECT_EQ(route(kLocal, 0, type, kOnPrimaryBL), Actions{A::PassThrough});
    EXPECT_EQ(route(kLocal, 0, T::RightMouseDown, kOnPrimaryBL), Actions{A::CancelAfter10ms});
}

TEST_F(EventMonitorTableTest, LocalKeysModifiersAndMovesGoToTheAnnotationController)
{
    m_gates.mouseOnButton = true;
    EXPECT_EQ(route(kLocal, 1, T::KeyDown, kOnSecondBL), Actions{A::ForwardKeyDown});
    EXPECT_EQ(route(kLocal, 1, T::FlagsChanged, kOnSecondBL), Actions{A::FlagsChanged});
    EXPECT_EQ(route(kLocal, 1, T::MouseMoved, kOnSecondBL), Actions{A::MouseMovedToAnnotation});
}

TEST_F(EventMonitorTableTest, LocalWheelGoesToTheAnnotationWindowsScreenWhereverTheMouseIs)
{
    EXPECT_TRUE(actingScreens(kLocal, T::ScrollWheel, kOnPrimaryBL).empty());
    m_gates.annotationWindowScreen = 1;
    EXPECT_EQ(actingScreens(kLocal, T::ScrollWheel, kOnPrimaryBL), std::vector<int>{1});
    EXPECT_EQ(route(kLocal, 1, T::ScrollWheel, kOnPrimaryBL), Actions{A::ScrollWheelToAnnotation});
}

TEST_F(EventMonitorTableTest, GlobalWheelOnlyDuringAScrollingCaptureAndOffTheButtons)
{
    EXPECT_TRUE(actingScreens(kGlobal, T::ScrollWheel, kOnSecondBL).empty());
    m_gates.scrollScreenShot = true;
    EXPECT_EQ(actingScreens(kGlobal, T::ScrollWheel, kOnSecondBL), std::vector<int>{1});
    EXPECT_EQ(route(kGlobal, 1, T::ScrollWheel, kOnSecondBL), Actions{A::ScrollWheelToView});
    m_gates.mouseOnButton = true;
    EXPECT_TRUE(actingScreens(kGlobal, T::ScrollWheel, kOnSecondBL).empty());
}

TEST_F(EventMonitorTableTest, GlobalMouseGoesToTheViewOnlyWhileTheAnnotationWindowIsClosed)
{
    EXPECT_EQ(route(kGlobal, 0, T::LeftMouseDown, kOnPrimaryBL),
              (Actions{A::HideTip, A::MouseDown, A::OrderFrontAndActivate}));
    EXPECT_EQ(route(kGlobal, 0, T::LeftMouseDragged, kOnPrimaryBL), Actions{A::MouseDragged});
    EXPECT_EQ(route(kGlobal, 0, T::LeftMouseUp, kOnPrimaryBL), Actions{A::MouseUp});
    EXPECT_EQ(route(kGlobal, 0, T::MouseMoved, kOnPrimaryBL), Actions{A::MouseMovedToView});

    m_gates.clipToolbarWindowOpened = true;
    EXPECT_EQ(route(kGlobal, 0, T::LeftMouseDown, kOnPrimaryBL), Actions{A::HideTip});
    EXPECT_EQ(route(kGlobal, 0, T::LeftMouseDragged, kOnPrimaryBL), Actions{A::PassThrough});
    EXPECT_EQ(route(kGlobal, 0, T::LeftMouseUp, kOnPrimaryBL), Actions{A::PassThrough});
    EXPECT_EQ(route(kGlobal, 0, T::MouseMoved, kOnPrimaryBL), Actions{A::MouseMovedToAnnotation});
    EXPECT_EQ(route(kGlobal, 0, T::RightMouseUp, kOnPrimaryBL), Actions{A::Cancel});

    m_gates.mouseOnButton = true;
    EXPECT_EQ(route(kGlobal, 0, T::RightMouseUp, kOnPrimaryBL), Actions{A::PassThrough});
    EXPECT_EQ(route(kGlobal, 0, T::LeftMouseDown, kOnPrimaryBL), Actions{A::PassThrough});
    EXPECT_EQ(route(kGlobal, 0, T::FlagsChanged, kOnPrimaryBL), Actions{A::FlagsChanged});
}

// Pointer positions in global top-left points on the test layout: a
// 1920x1080 primary with a 1280x1024 screen to its right, tops aligned.
constexpr QPointF kOnPrimary{100, 100};
constexpr QPointF kOnSecond{1970, 24};

class OverlayRoutingTest : public ::testing::Test
{
protected:
    OverlayRoutingTest() { routing.begin(testing::twoScreens(), {0, 1}); }

    [[nodiscard]] Routes route(T type, QPointF pointer) const
    {
        return routing.route(type, pointer, gates);
    }
    [[nodiscard]] std::vector<int> actingScreens(T type, QPointF pointer) const
    {
        std::vector<int> screens;
        for (const OverlayRoute& r : route(type, pointer)) {
            if (screens.empty() || screens.back() != r.screen)
                screens.push_back(r.screen);
        }
        return screens;
    }

    OverlayRouting routing;
    MonitorGates gates;
};

TEST_F(OverlayRoutingTest, TwoMonitorsEachEventGoesToTheScreenUnderThePointerInItsOwnPoints)
{
    // Overlay-local points: from the screen's bottom-left corner, y up.
    EXPECT_EQ(route(T::LeftMouseDragged, kOnPrimary),
              (Routes{{0, A::MouseDragged, QPointF(100, 980)}}));
    EXPECT_EQ(route(T::LeftMouseDragged, kOnSecond),
              (Routes{{1, A::MouseDragged, QPointF(50, 1000)}}));
    EXPECT_EQ(route(T::KeyDown, kOnSecond), (Routes{{1, A::ForwardKeyDown, QPointF(50, 1000)}}));
    // A press hides the tip before the view sees it, on one screen only.
    EXPECT_EQ(route(T::LeftMouseDown, kOnPrimary),
              (Routes{{0, A::HideTip, QPointF(100, 980)}, {0, A::MouseDown, QPointF(100, 980)}}));
    // Events that nobody acts on produce no route at all.
    EXPECT_TRUE(route(T::KeyUp, kOnPrimary).empty());
    EXPECT_TRUE(route(T::RightMouseUp, kOnSecond).empty());
}

TEST_F(OverlayRoutingTest, OnTheSeamBetweenScreensExactlyOneScreenActs)
{
    // The second screen's left edge is its own; a hair left is the primary's.
    EXPECT_EQ(actingScreens(T::MouseMoved, {1920, 500}), std::vector<int>{1});
    EXPECT_EQ(route(T::MouseMoved, {1920, 500}).front().local, QPointF(0, 524));
    EXPECT_EQ(actingScreens(T::MouseMoved, {1919.5, 500}), std::vector<int>{0});
    // Below the shorter screen, beside the primary's lower edge: on no
    // screen, so the last screen takes it, and only that one.
    EXPECT_EQ(actingScreens(T::LeftMouseUp, {2000, 1050}), std::vector<int>{1});
    for (double x = 1918; x <= 1922; x += 0.25) {
        for (const T type : {T::LeftMouseDown, T::LeftMouseDragged, T::KeyDown, T::RightMouseDown})
            EXPECT_EQ(actingScreens(type, {x, 300}).size(), 1u) << x << " " << int(type);
    }
}

TEST_F(OverlayRoutingTest, NothingRoutesOutsideASession)
{
    OverlayRouting idle;
    EXPECT_TRUE(idle.route(T::LeftMouseDown, kOnPrimary, gates).empty());
    routing.end();
    EXPECT_FALSE(routing.isRunning());
    EXPECT_TRUE(routing.route(T::LeftMouseDown, kOnPrimary, gates).empty());
    EXPECT_TRUE(routing.route(T::KeyDown, kOnSecond, gates).empty());
    // The layout outlives the session for whoever asks where the pointer was.
    EXPECT_EQ(routing.layout().count(), 2);
}

TEST_F(OverlayRoutingTest, AnEndingDuringAnEventStopsItsRemainingActions)
{
    const Routes routes = route(T::LeftMouseDown, kOnPrimary);
    ASSERT_EQ(routes.size(), 2u);
    // The first action ends the session: the press itself is never acted on.
    std::vector<MonitorAction> performed;
    routing.dispatch(routes, [&](const OverlayRoute& r) {
        performed.push_back(r.action);
        routing.end();
    });
    EXPECT_EQ(performed, std::vector<MonitorAction>{A::HideTip});

    // Without an ending every action is performed, in order.
    routing.begin(testing::twoScreens(), {0, 1});
    performed.clear();
    routing.dispatch(route(T::LeftMouseDown, kOnPrimary),
                     [&](const OverlayRoute& r) { performed.push_back(r.action); });
    EXPECT_EQ(performed, (std::vector<MonitorAction>{A::HideTip, A::MouseDown}));
}

TEST_F(OverlayRoutingTest, ARetiredScreenIsNeverRoutedToAgain)
{
    routing.removeScreen(1);
    // Nor is the other screen given the retired one's events.
    EXPECT_TRUE(route(T::LeftMouseDragged, kOnSecond).empty());
    EXPECT_TRUE(route(T::KeyDown, kOnSecond).empty());
    EXPECT_EQ(actingScreens(T::KeyDown, kOnPrimary), std::vector<int>{0});

    // Nor by the next session, until that session has a part there itself.
    routing.end();
    routing.begin(testing::twoScreens(), {});
    routing.addScreen(0);
    EXPECT_TRUE(route(T::KeyDown, kOnSecond).empty());
    routing.addScreen(1);
    routing.addScreen(1);
    EXPECT_EQ(route(T::KeyDown, kOnSecond).size(), 1u) << "a screen added twice acts once";
    // Screens joined after the end are ignored.
    routing.end();
    routing.addScreen(0);
    EXPECT_TRUE(routing.screens().empty());
}

TEST_F(OverlayRoutingTest, TheKeyboardIsHandedOverReleasingTheLastHolder)
{
    EXPECT_EQ(routing.keyScreen(), -1);
    EXPECT_EQ(routing.takeKeyboard(0), (KeyboardHandover{-1, 0}));
    // Taking it again where it is releases nothing.
    EXPECT_EQ(routing.takeKeyboard(0), (KeyboardHandover{-1, 0}));
    EXPECT_EQ(routing.takeKeyboard(1), (KeyboardHandover{0, 1}));
    EXPECT_EQ(routing.keyScreen(), 1);
    // A screen the session does not have changes nothing.
    EXPECT_EQ(routing.takeKeyboard(2), KeyboardHandover{});
    EXPECT_EQ(routing.takeKeyboard(-1), KeyboardHandover{});
    EXPECT_EQ(routing.keyScreen(), 1);

    // The ending leaves the keyboard with nobody; the next session starts
    // without a holder to release.
    routing.end();
    EXPECT_EQ(routing.keyScreen(), -1);
    EXPECT_EQ(routing.takeKeyboard(1), KeyboardHandover{});
    routing.begin(testing::twoScreens(), {0, 1});
    EXPECT_EQ(routing.takeKeyboard(1), (KeyboardHandover{-1, 1}));
}

TEST_F(OverlayRoutingTest, AFailedGrabIsRetriedOnlyWhileStillWantedAndForABoundedTime)
{
    (void)routing.takeKeyboard(0);
    EXPECT_TRUE(routing.grabStillWanted(0));
    EXPECT_FALSE(routing.grabStillWanted(1));
    // The pointer moved on: the first screen's retry must not take it back.
    (void)routing.takeKeyboard(1);
    EXPECT_FALSE(routing.grabStillWanted(0));
    EXPECT_TRUE(routing.grabStillWanted(1));
    routing.end();
    EXPECT_FALSE(routing.grabStillWanted(1));

    EXPECT_TRUE(OverlayRouting::mayRetryGrab(0));
    EXPECT_TRUE(OverlayRouting::mayRetryGrab(OverlayRouting::kGrabAttempts - 1));
    EXPECT_FALSE(OverlayRouting::mayRetryGrab(OverlayRouting::kGrabAttempts));
}

TEST_F(OverlayRoutingTest, TheKeyboardFollowsThePointerToTheScreenItMovesOn)
{
    (void)routing.takeKeyboard(0);
    const OverlayRoute moveHere = route(T::MouseMoved, kOnPrimary).front();
    const OverlayRoute moveThere = route(T::MouseMoved, kOnSecond).front();
    EXPECT_FALSE(routing.movesKeyboard(moveHere));
    EXPECT_TRUE(routing.movesKeyboard(moveThere));
    EXPECT_FALSE(routing.movesKeyboard({0, A::MouseMovedToView, {}}));
    EXPECT_TRUE(routing.movesKeyboard({1, A::MouseMovedToView, {}}));
    // A raise always asks for it; presses and keys never move it.
    EXPECT_TRUE(routing.movesKeyboard({0, A::OrderFrontAndActivate, {}}));
    EXPECT_FALSE(routing.movesKeyboard({1, A::MouseDown, {}}));
    EXPECT_FALSE(routing.movesKeyboard({1, A::ForwardKeyDown, {}}));
}

} // namespace
} // namespace capture
