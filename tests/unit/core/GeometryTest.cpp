// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/Geometry.h"

#include <gtest/gtest.h>

using core::ScreenInfo;
using core::ScreenLayout;

namespace {

// The test desktop: a 1920x1080 primary and a 1280x1024 monitor to its right,
// both top-aligned, as RandR lays them out.
ScreenLayout twoScreens()
{
    return ScreenLayout(
        {{"DUMMY0", QRectF(0, 0, 1920, 1080), 1.0}, {"DUMMY1", QRectF(1920, 0, 1280, 1024), 1.0}});
}

} // namespace

TEST(ScreenLayout, BottomLeftFramesFlipAgainstThePrimaryHeight)
{
    const ScreenLayout layout = twoScreens();
    EXPECT_EQ(layout.frameBottomLeft(0), QRectF(0, 0, 1920, 1080));
    // The shorter screen is top-aligned, so its bottom sits 56 points above
    // the primary's bottom.
    EXPECT_EQ(layout.frameBottomLeft(1), QRectF(1920, 56, 1280, 1024));
}

TEST(ScreenLayout, OverlayLocalRoundTripsOnEachScreen)
{
    const ScreenLayout layout = twoScreens();
    // The top-left pixel of the second screen is its overlay's top edge.
    EXPECT_EQ(layout.topLeftToOverlayLocal(1, QPointF(1920, 0)), QPointF(0, 1024));
    EXPECT_EQ(layout.topLeftToOverlayLocal(1, QPointF(2000, 1000)), QPointF(80, 24));
    EXPECT_EQ(layout.overlayLocalToTopLeft(1, QPointF(80, 24)), QPointF(2000, 1000));

    const QRectF window(100, 50, 300, 200);
    const QRectF local = layout.topLeftToOverlayLocal(0, window);
    EXPECT_EQ(local, QRectF(100, 1080 - 50 - 200, 300, 200));
    EXPECT_EQ(layout.overlayLocalToTopLeft(0, local), window);

    const QRectF onSecond(2000, 100, 50, 60);
    EXPECT_EQ(layout.topLeftToOverlayLocal(1, onSecond), QRectF(80, 1024 - 100 - 60, 50, 60));
    EXPECT_EQ(layout.overlayLocalToTopLeft(1, layout.topLeftToOverlayLocal(1, onSecond)), onSecond);
}

TEST(ScreenLayout, WindowRectFlipsAgainstTheScreenAtTheOrigin)
{
    const ScreenLayout layout = twoScreens();
    EXPECT_EQ(layout.cgWindowRectToScreenRect(QRectF(10, 20, 30, 40)), QRectF(10, 1020, 30, 40));

    // A primary that is not at the bottom-left origin leaves the height of
    // the primary in force only when no screen sits at (0, 0).
    const ScreenLayout shifted({{"A", QRectF(0, 0, 800, 600), 1.0}});
    EXPECT_EQ(shifted.cgWindowRectToScreenRect(QRectF(0, 0, 800, 600)), QRectF(0, 0, 800, 600));
}

TEST(ScreenLayout, MouseLocationPicksExactlyOneScreen)
{
    const ScreenLayout layout = twoScreens();
    // Every top-left pixel position maps to one screen, seams included.
    EXPECT_EQ(layout.screenAtTopLeft(QPointF(0, 0)), 0);
    EXPECT_EQ(layout.screenAtTopLeft(QPointF(1919, 1079)), 0);
    EXPECT_EQ(layout.screenAtTopLeft(QPointF(1920, 0)), 1);
    EXPECT_EQ(layout.screenAtTopLeft(QPointF(3199, 1023)), 1);
    // Below the second screen (the dead area) no screen holds the mouse, and
    // the last screen tested answers.
    EXPECT_EQ(layout.screenAtTopLeft(QPointF(2000, 1050)), 1);
    // In bottom-left terms the top edge belongs to the screen, the bottom
    // edge does not.
    EXPECT_EQ(layout.currentScreenForMouseLocation(QPointF(5, 1080)), 0);
    EXPECT_EQ(layout.currentScreenForMouseLocation(QPointF(1920, 56)), 1);
    EXPECT_EQ(layout.currentScreenForMouseLocation(QPointF(1920, 56.5)), 1);
    EXPECT_EQ(ScreenLayout().currentScreenForMouseLocation(QPointF(0, 0)), -1);
}

TEST(ScreenLayout, MouseInRectCountsEdgesLikeAnUnflippedView)
{
    const QRectF r(0, 0, 10, 10);
    EXPECT_TRUE(core::mouseInRect(QPointF(0, 10), r));
    EXPECT_FALSE(core::mouseInRect(QPointF(0, 0), r));
    EXPECT_FALSE(core::mouseInRect(QPointF(10, 5), r));
    EXPECT_TRUE(core::mouseInRect(QPointF(9.99, 0.01), r));
}
