// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/logic/EventMonitorTable.h"
#include "unit/capture/CaptureTestSupport.h"

#include <gtest/gtest.h>

namespace capture {
namespace {

using A = MonitorAction;
using T = MonitorEventType;
using Actions = std::vector<MonitorAction>;

// Mouse locations in global bottom-left points.
constexpr QPointF kOnPrimary{960, 540};
constexpr QPointF kOnSecond{2500, 600};
constexpr QPointF kOffEveryScreen{5000, 5000};

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
    for (const QPointF mouse : {kOnPrimary, kOnSecond}) {
        const std::vector<int> under{mouse == kOnPrimary ? 0 : 1};
        for (const T type : local)
            EXPECT_EQ(actingScreens(kLocal, type, mouse), under) << "local " << int(type);
        for (const T type : global)
            EXPECT_EQ(actingScreens(kGlobal, type, mouse), under) << "global " << int(type);
    }
}

TEST_F(EventMonitorTableTest, EventsNeitherTableHandlesAreLeftAlone)
{
    for (const QPointF mouse : {kOnPrimary, kOnSecond}) {
        EXPECT_TRUE(actingScreens(kLocal, T::RightMouseUp, mouse).empty());
        EXPECT_TRUE(actingScreens(kLocal, T::Gesture, mouse).empty());
        EXPECT_TRUE(actingScreens(kLocal, T::KeyUp, mouse).empty());
        EXPECT_TRUE(actingScreens(kGlobal, T::RightMouseDown, mouse).empty());
        EXPECT_TRUE(actingScreens(kGlobal, T::KeyDown, mouse).empty());
    }
}

TEST_F(EventMonitorTableTest, PointerOffEveryScreenBelongsToTheLastScreen)
{
    EXPECT_EQ(actingScreens(kLocal, T::LeftMouseDown, kOffEveryScreen), std::vector<int>{1});
    // The second screen's left edge is its own; a hair left of it is the primary's.
    EXPECT_EQ(actingScreens(kLocal, T::LeftMouseUp, {1920, 600}), std::vector<int>{1});
    EXPECT_EQ(actingScreens(kLocal, T::LeftMouseUp, {1919.5, 600}), std::vector<int>{0});
}

TEST_F(EventMonitorTableTest, LocalPressAndReleaseGates)
{
    EXPECT_EQ(route(kLocal, 0, T::LeftMouseDown, kOnPrimary), (Actions{A::HideTip, A::MouseDown}));
    EXPECT_EQ(route(kLocal, 0, T::LeftMouseUp, kOnPrimary), Actions{A::MouseUp});

    // A text box under the pointer keeps the press and release while marking up.
    m_gates.pointerRole = PointerRole::TextIBeam;
    EXPECT_EQ(route(kLocal, 0, T::LeftMouseDown, kOnPrimary), (Actions{A::HideTip, A::MouseDown}));
    m_gates.clipToolbarWindowOpened = true;
    EXPECT_EQ(route(kLocal, 0, T::LeftMouseDown, kOnPrimary), Actions{A::HideTip});
    EXPECT_EQ(route(kLocal, 0, T::LeftMouseUp, kOnPrimary), Actions{A::PassThrough});
    EXPECT_EQ(route(kLocal, 0, T::LeftMouseDragged, kOnPrimary), Actions{A::MouseDragged});
    m_gates.pointerRole = PointerRole::OverStroke;
    EXPECT_EQ(route(kLocal, 0, T::LeftMouseUp, kOnPrimary), Actions{A::MouseUp});

    // A tool bar button swallows all three, but not the right button.
    m_gates.mouseOnButton = true;
    for (const T type : {T::LeftMouseDown, T::LeftMouseDragged, T::LeftMouseUp})
        EXPECT_EQ(route(kLocal, 0, type, kOnPrimary), Actions{A::PassThrough});
    EXPECT_EQ(route(kLocal, 0, T::RightMouseDown, kOnPrimary), Actions{A::CancelAfter10ms});
}

TEST_F(EventMonitorTableTest, LocalKeysModifiersAndMovesGoToTheAnnotationController)
{
    m_gates.mouseOnButton = true;
    EXPECT_EQ(route(kLocal, 1, T::KeyDown, kOnSecond), Actions{A::ForwardKeyDown});
    EXPECT_EQ(route(kLocal, 1, T::FlagsChanged, kOnSecond), Actions{A::FlagsChanged});
    EXPECT_EQ(route(kLocal, 1, T::MouseMoved, kOnSecond), Actions{A::MouseMovedToAnnotation});
}

TEST_F(EventMonitorTableTest, LocalWheelGoesToTheAnnotationWindowsScreenWhereverTheMouseIs)
{
    EXPECT_TRUE(actingScreens(kLocal, T::ScrollWheel, kOnPrimary).empty());
    m_gates.annotationWindowScreen = 1;
    EXPECT_EQ(actingScreens(kLocal, T::ScrollWheel, kOnPrimary), std::vector<int>{1});
    EXPECT_EQ(route(kLocal, 1, T::ScrollWheel, kOnPrimary), Actions{A::ScrollWheelToAnnotation});
}

TEST_F(EventMonitorTableTest, GlobalWheelOnlyDuringAScrollingCaptureAndOffTheButtons)
{
    EXPECT_TRUE(actingScreens(kGlobal, T::ScrollWheel, kOnSecond).empty());
    m_gates.scrollScreenShot = true;
    EXPECT_EQ(actingScreens(kGlobal, T::ScrollWheel, kOnSecond), std::vector<int>{1});
    EXPECT_EQ(route(kGlobal, 1, T::ScrollWheel, kOnSecond), Actions{A::ScrollWheelToView});
    m_gates.mouseOnButton = true;
    EXPECT_TRUE(actingScreens(kGlobal, T::ScrollWheel, kOnSecond).empty());
}

TEST_F(EventMonitorTableTest, GlobalMouseGoesToTheViewOnlyWhileTheAnnotationWindowIsClosed)
{
    EXPECT_EQ(route(kGlobal, 0, T::LeftMouseDown, kOnPrimary),
              (Actions{A::HideTip, A::MouseDown, A::OrderFrontAndActivate}));
    EXPECT_EQ(route(kGlobal, 0, T::LeftMouseDragged, kOnPrimary), Actions{A::MouseDragged});
    EXPECT_EQ(route(kGlobal, 0, T::LeftMouseUp, kOnPrimary), Actions{A::MouseUp});
    EXPECT_EQ(route(kGlobal, 0, T::MouseMoved, kOnPrimary), Actions{A::MouseMovedToView});

    m_gates.clipToolbarWindowOpened = true;
    EXPECT_EQ(route(kGlobal, 0, T::LeftMouseDown, kOnPrimary), Actions{A::HideTip});
    EXPECT_EQ(route(kGlobal, 0, T::LeftMouseDragged, kOnPrimary), Actions{A::PassThrough});
    EXPECT_EQ(route(kGlobal, 0, T::LeftMouseUp, kOnPrimary), Actions{A::PassThrough});
    EXPECT_EQ(route(kGlobal, 0, T::MouseMoved, kOnPrimary), Actions{A::MouseMovedToAnnotation});
    EXPECT_EQ(route(kGlobal, 0, T::RightMouseUp, kOnPrimary), Actions{A::Cancel});

    m_gates.mouseOnButton = true;
    EXPECT_EQ(route(kGlobal, 0, T::RightMouseUp, kOnPrimary), Actions{A::PassThrough});
    EXPECT_EQ(route(kGlobal, 0, T::LeftMouseDown, kOnPrimary), Actions{A::PassThrough});
    EXPECT_EQ(route(kGlobal, 0, T::FlagsChanged, kOnPrimary), Actions{A::FlagsChanged});
}

} // namespace
} // namespace capture
