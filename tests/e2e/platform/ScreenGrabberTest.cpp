// SPDX-License-Identifier: GPL-3.0-or-later
// Repeated grabs of one rectangle, as a scrolling capture or a recorder
// takes them: each shows the screen as it is now, reuses the memory of the
// last one once that is dropped, and never changes a frame still held.
#include "platform/x11/X11ScreenGrabber.h"
#include "support/TestDesktop.h"
#include "support/XSession.h"

#include <gtest/gtest.h>

using namespace e2e;

namespace {

class ScreenGrabberTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_desktop.isRunning()) << m_desktop.error().toStdString();
        ASSERT_TRUE(m_x.isConnected());
        ASSERT_TRUE(m_grabber.isConnected());
    }

    TestDesktop m_desktop{TestDesktop::Options{.twoMonitors = false}};
    XSession m_x;
    platform::x11::X11ScreenGrabber m_grabber;
};

const QRect kRect(40, 30, 64, 48);

TEST_F(ScreenGrabberTest, GrabsAsItIsNowReusingADroppedFramesMemoryButNeverAHeldOnes)
{
    EXPECT_EQ(m_grabber.desktopSize(), QSize(1920, 1080));
    m_x.setRootColor(QColor(10, 200, 30));
    QImage first = m_grabber.grab(kRect);
    ASSERT_EQ(first.size(), kRect.size());
    EXPECT_EQ(first.pixelColor(0, 0), QColor(10, 200, 30));
    EXPECT_EQ(first.pixelColor(63, 47), QColor(10, 200, 30));
    const uchar* memory = first.constBits();
    first = QImage();
    const QImage again = m_grabber.grab(kRect);
    EXPECT_EQ(again.constBits(), memory) << "a dropped frame's memory serves the next grab";

    // Held: the next grab shows the screen as it is now, but not by writing
    // into the held frame.
    m_x.setRootColor(QColor(220, 20, 90));
    const QImage next = m_grabber.grab(kRect);
    EXPECT_NE(next.constBits(), again.constBits());
    EXPECT_EQ(again.pixelColor(5, 5), QColor(10, 200, 30));
    EXPECT_EQ(next.pixelColor(5, 5), QColor(220, 20, 90));
}

TEST_F(ScreenGrabberTest, ClipsToTheDesktopAndAnswersNullOutsideIt)
{
    const QImage corner = m_grabber.grab(QRect(1900, 1070, 40, 40));
    EXPECT_EQ(corner.size(), QSize(20, 10));
    EXPECT_TRUE(m_grabber.grab(QRect(2000, 0, 10, 10)).isNull());
    EXPECT_EQ(m_grabber.grabDesktop().size(), QSize(1920, 1080));
}

} // namespace
