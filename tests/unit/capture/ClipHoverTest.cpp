// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/logic/ClipHover.h"
#include "capture/logic/OverlayTips.h"
#include "capture/logic/SelectionGeometry.h"
#include "unit/capture/CaptureTestSupport.h"
#include "unit/capture/FakeClipViewHost.h"

#include <gtest/gtest.h>

namespace capture {
namespace {

// The hover steps of the primary overlay (1920 by 1080, a second screen to
// its right) as the overlay opens: the opening tip shown, the pointer noted
// as the arrow.
class ClipHoverTest : public ::testing::Test
{
protected:
    ClipHoverTest()
    {
        m_look.tipViewShown = true;
        m_look.tipText = openingTipText();
        m_state.lastHotSpot = hotSpotOf(PointerRole::Arrow);
    }

    // The pointer as `role` over the handle `handle` (-1: off the handles).
    void pointer(PointerRole role, int handle)
    {
        m_state.pointerRole = role;
        m_host.border =
            handle < 0 ? CropBorderStatus{} : CropBorderStatus{false, true, handle, handle};
    }

    CaptureState m_state;
    testing::FakeClipViewHost m_host{m_state};
    core::ScreenLayout m_layout = testing::twoScreens();
    ClipSelection m_selection;
    ClipLook m_look;
    ClipHover m_hover{m_state, m_host, m_layout, m_selection, m_look};
};

TEST_F(ClipHoverTest, HandleTipsComeWithTheResizeCursorAndGoWithIt)
{
    // Hovering as the arrow leaves the opening tip alone.
    m_hover.checkTips(false, false);
    EXPECT_EQ(m_look.tipText, openingTipText());

    m_look.tipViewShown = false; // a press hid it
    pointer(PointerRole::Resize, handles::Right);
    m_hover.checkTips(false, false);
    EXPECT_TRUE(m_look.tipViewShown);
    EXPECT_EQ(
        m_look.tipText,
        QStringLiteral("Press left and right direction keys to adjust the size by one pixel"));
    // Further moves with the same cursor change nothing, even onto another
    // handle of its family.
    const int repaints = m_host.repaints;
    pointer(PointerRole::Resize, handles::Left);
    m_hover.checkTips(false, false);
    EXPECT_EQ(m_host.repaints, repaints);
    // A corner has the other resize cursor and names all four keys.
    pointer(PointerRole::ResizeAlternate, handles::TopRight);
    m_hover.checkTips(false, false);
    EXPECT_EQ(m_look.tipText,
              QStringLiteral(
                  "Press up, down, left and right direction keys to adjust the size by one pixel"));
    // Off the handles the tip goes.
    pointer(PointerRole::Arrow, -1);
    m_hover.checkTips(false, false);
    EXPECT_FALSE(m_look.tipViewShown);

    // The very first move of all only notes the cursor.
    pointer(PointerRole::Resize, handles::Bottom);
    m_hover.checkTips(true, false);
    EXPECT_FALSE(m_look.tipViewShown);
    // Once the hot spot is forgotten (a release), the same cursor is asked again.
    m_state.lastHotSpot = QPointF(-1, -1);
    m_hover.checkTips(false, false);
    EXPECT_EQ(m_look.tipText,
              QStringLiteral("Press up, down direction keys to adjust the size by one pixel"));

    // A window selection has no handles to hint at.
    m_state.lastHotSpot = QPointF(-1, -1);
    m_look.tipViewShown = false;
    pointer(PointerRole::Resize, handles::Right);
    m_hover.checkTips(false, true);
    EXPECT_FALSE(m_look.tipViewShown);
}

TEST_F(ClipHoverTest, TheMagnifierRefreshesAtMost25TimesASecondUnlessTheSelectionJumps)
{
    m_hover.setFrameForContentView({10, 10, 100, 100}, {110, 110}, 1.00, false, false);
    m_hover.setFrameForContentView({10, 10, 101, 100}, {111, 110}, 1.02, false, false);
    m_hover.setFrameForContentView({10, 10, 102, 100}, {112, 110}, 1.05, false, false);
    m_hover.setFrameForContentView({10, 10, 140, 100}, {150, 110}, 1.06, false, false);
    EXPECT_EQ(m_host.magnifierRefreshes, 3);
    EXPECT_EQ(m_selection.selectedBoxFrame, QRectF(8, 8, 144, 104));
    EXPECT_EQ(m_selection.surround().hole, QRectF(9, 9, 142, 102));
}

TEST_F(ClipHoverTest, AHoveredWindowIsOutlinedWithABrightHoleInsideTheOutline)
{
    const QRectF window{100, 200, 400, 300};
    m_hover.showHoveredWindow(window);
    EXPECT_EQ(m_selection.surround().outlineBox, window);
    EXPECT_EQ(m_selection.surround().hole, QRectF(102, 202, 396, 296));
    EXPECT_GT(m_host.repaints, 0);
}

} // namespace
} // namespace capture
