// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/logic/WindowUnderMouse.h"
#include "capture/logic/ScreenRecordingCheck.h"
#include "unit/capture/CaptureTestSupport.h"

#include <gtest/gtest.h>

#include <map>

namespace capture {
namespace {

using testing::window;
using Kind = WindowUnderMouseChoice::Kind;

class WindowUnderMouseTest : public ::testing::Test
{
protected:
    [[nodiscard]] WindowUnderMouseChoice choose(QPointF pointerTopLeft) const
    {
        return chooseWindowUnderMouse(m_windows, pointerTopLeft, m_layout);
    }

    core::ScreenLayout m_layout = testing::twoScreens();
    std::vector<platform::WindowRecord> m_windows;
};

TEST_F(WindowUnderMouseTest, TheFrontmostWindowHoldingThePointerIsTaken)
{
    m_windows = {window(1, "Elsewhere", 0, QRectF(1000, 0, 200, 200)),
                 window(2, "Front", 0, QRectF(100, 100, 400, 300)),
                 window(3, "Back", 0, QRectF(0, 0, 1000, 800))};
    EXPECT_EQ(choose({200, 200}), (WindowUnderMouseChoice{Kind::Window, 2}));
    EXPECT_EQ(choose({700, 700}), (WindowUnderMouseChoice{Kind::Window, 3}));
}

TEST_F(WindowUnderMouseTest, EdgesCountAsTheFlippedRectangleHoldsThePoint)
{
    m_windows = {window(2, "Front", 0, QRectF(100, 100, 400, 300))};
    // Left and bottom edges are in, right and top edges out once flipped.
    EXPECT_EQ(choose({100, 400}).kind, Kind::Window);
    EXPECT_EQ(choose({500, 200}).kind, Kind::WholeScreen);
    EXPECT_EQ(choose({200, 100}).kind, Kind::WholeScreen);
    EXPECT_EQ(choose({200, 100.5}).kind, Kind::Window);
}

TEST_F(WindowUnderMouseTest, DesktopShadesDocksAndLyricsAreLookedThrough)
{
    m_windows = {window(1, "Desktop Picture - DP-1", -2147483623, QRectF(0, 0, 1920, 1080)),
                 window(2, "Shade", 3, QRectF(0, 0, 1920, 1080)),
                 window(3, "Dock", 20, QRectF(0, 0, 1920, 1080)),
                 window(4, "Lyrics", 3, QRectF(0, 0, 800, 600), "LyricsX"),
                 window(5, "Editor", 0, QRectF(0, 0, 800, 600))};
    EXPECT_EQ(choose({300, 300}), (WindowUnderMouseChoice{Kind::Window, 5}));
    EXPECT_EQ(choose({1500, 900}),
              (WindowUnderMouseChoice{Kind::WholeScreen, 0, 0, QRectF(0, 0, 1920, 1080)}));
}

TEST_F(WindowUnderMouseTest, WindowsAboveLayerThousandAreKeptOnlyUntilSomethingForgetsThem)
{
    m_windows = {window(8, "Drag icon", 1500, QRectF(0, 0, 100, 100)),
                 window(2, "Elsewhere", 0, QRectF(1000, 0, 200, 200))};
    EXPECT_EQ(choose({50, 50}), (WindowUnderMouseChoice{Kind::Window, 8}));

    m_windows.push_back(window(9, "Under", 0, QRectF(0, 0, 300, 300)));
    EXPECT_EQ(choose({50, 50}), (WindowUnderMouseChoice{Kind::Window, 9}));

    m_windows = {window(8, "Drag icon", 1500, QRectF(0, 0, 100, 100)),
                 window(3, "Dock", 20, QRectF(1920, 0, 1280, 1024))};
    EXPECT_EQ(choose({50, 50}).kind, Kind::WholeScreen);
}

TEST_F(WindowUnderMouseTest, NoHitPicturesTheScreenUnderThePointerAndNumberZeroNothing)
{
    EXPECT_EQ(choose({2500, 500}),
              (WindowUnderMouseChoice{Kind::WholeScreen, 0, 1, QRectF(1920, 0, 1280, 1024)}));
    m_windows = {window(0, "Unnumbered", 0, QRectF(0, 0, 300, 300))};
    EXPECT_EQ(choose({50, 50}).kind, Kind::Nothing);
    EXPECT_EQ(chooseWindowUnderMouse({}, {10, 10}, core::ScreenLayout()).kind, Kind::Nothing);
}

class ScreenRecordingCheckTest : public ::testing::Test
{
protected:
    [[nodiscard]] bool check(const std::vector<platform::WindowRecord>& windows) const
    {
        return isScreenRecordingEnable(windows, kOwnPid, [this](std::int64_t pid) {
            const auto it = m_executables.find(pid);
            return it == m_executables.end() ? std::nullopt : std::optional<QString>(it->second);
        });
    }

    static constexpr std::int64_t kOwnPid = 42;
    std::map<std::int64_t, QString> m_executables{
        {kOwnPid, "kelvo"}, {1001, "Dock"}, {1002, "firefox"}, {1003, "xterm"}};
};

TEST_F(ScreenRecordingCheckTest, OwnDockUntitledAndUnknownWindowsProveNothing)
{
    EXPECT_FALSE(check({}));
    platform::WindowRecord own = window(50, "Pin", 0, QRectF(0, 0, 10, 10));
    own.ownerPid = kOwnPid;
    const platform::WindowRecord dock = window(1, "Dock", 20, QRectF(0, 0, 10, 10));
    const platform::WindowRecord untitled = window(2, "", 0, QRectF(0, 0, 10, 10));
    const platform::WindowRecord unknown = window(7, "Ghost", 0, QRectF(0, 0, 10, 10));
    EXPECT_FALSE(check({own, dock, untitled, unknown}));
}

TEST_F(ScreenRecordingCheckTest, AnyTitleOfAnotherKnownProcessGrantsIt)
{
    const platform::WindowRecord untitled = window(2, "", 0, QRectF(0, 0, 10, 10));
    platform::WindowRecord emptyTitle = window(3, "", 0, QRectF(0, 0, 10, 10));
    emptyTitle.hasName = true;
    EXPECT_TRUE(check({untitled, emptyTitle}));
    EXPECT_TRUE(check({untitled, window(2, "Mozilla Firefox", 0, QRectF(0, 0, 10, 10))}));
}

} // namespace
} // namespace capture
