// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/logic/WindowFilter.h"
#include "capture/logic/MultiWindowPick.h"
#include "platform/null/FakeWindowServer.h"
#include "unit/capture/CaptureTestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace capture {
namespace {

using testing::darkPicture;
using testing::window;

class WindowFilterTest : public ::testing::Test
{
protected:
    // Every window gets a picture of its own size, so that a missing entry
    // in imageAllWindowArray is the filter's doing.
    void add(const platform::WindowRecord& w)
    {
        m_server.windows.push_back(w);
        if (!m_server.windowPictures.contains(w.number)) {
            QImage picture(std::max(1, qRound(w.bounds.width())),
                           std::max(1, qRound(w.bounds.height())), QImage::Format_ARGB32);
            picture.fill(Qt::red);
            m_server.windowPictures[w.number] = picture;
        }
    }

    void run(const core::ScreenLayout& layout = testing::twoScreens())
    {
        WindowFilter(m_server, layout).run(m_server.windowList(), m_state);
    }

    [[nodiscard]] const platform::WindowRecord* listed(std::uint32_t number) const
    {
        const auto it = std::find_if(m_state.arrayRect.begin(), m_state.arrayRect.end(),
                                     [&](const auto& w) { return w.number == number; });
        return it == m_state.arrayRect.end() ? nullptr : &*it;
    }

    // Null rectangle when the window is not listed.
    [[nodiscard]] QRectF boundsOf(std::uint32_t number) const
    {
        const platform::WindowRecord* w = listed(number);
        return w ? w->bounds : QRectF();
    }

    [[nodiscard]] const WindowPicture* pictured(std::uint32_t number) const
    {
        const auto it =
            std::find_if(m_state.imageAllWindowArray.begin(), m_state.imageAllWindowArray.end(),
                         [&](const auto& p) { return p.number == number; });
        return it == m_state.imageAllWindowArray.end() ? nullptr : &*it;
    }

    platform::null::FakeWindowServer m_server;
    CaptureState m_state;
};

TEST_F(WindowFilterTest, FullScreenWindowsOfNormalLayersAndDocksStay)
{
    add(window(1, "Editor", 0, QRectF(0, 0, 1920, 1080)));
    add(window(2, "Player", 1, QRectF(0, 0, 1920, 1080)));
    add(window(3, "Panel", 20, QRectF(0, 40, 1920, 1080)));
    run();
    EXPECT_NE(listed(1), nullptr);
    EXPECT_NE(listed(2), nullptr);
    EXPECT_NE(listed(3), nullptr);
}

TEST_F(WindowFilterTest, FullSizeShadesAboveTheNormalLayersAreDropped)
{
    add(window(1, "Shade", 2, QRectF(0, 0, 1920, 1080)));
    add(window(2, "Shade", 101, QRectF(0, 0, 1920, 1080)));
    add(window(3, "Below menu bar", 3, QRectF(0, 23, 1920, 1057)));
    add(window(4, "Other screen's size", 3, QRectF(0, 0, 1280, 1024)));
    add(window(5, "Fractional", 3, QRectF(0, 0, 1920.7, 1080.4)));
    add(window(6, "One short", 3, QRectF(0, 0, 1920, 1056)));
    add(window(7, "Narrower", 3, QRectF(0, 0, 1919, 1080)));
    run();
    for (std::uint32_t dropped : {1u, 2u, 3u, 4u, 5u})
        EXPECT_EQ(listed(dropped), nullptr) << dropped;
    EXPECT_NE(listed(6), nullptr);
    EXPECT_NE(listed(7), nullptr);
}

TEST_F(WindowFilterTest, TheFullScreenUtilityIsDroppedEvenInANormalLayer)
{
    add(window(1, "", 0, QRectF(0, 0, 1920, 1080), "Dunmere"));
    add(window(2, "", 0, QRectF(100, 100, 800, 600), "Dunmere"));
    run();
    EXPECT_EQ(listed(1), nullptr);
    EXPECT_NE(listed(2), nullptr);
}

TEST_F(WindowFilterTest, BannersShrinkToTheVisibleCardByThePrimaryScale)
{
    add(window(1, "Banners and Alerts", 18, QRectF(1500, 30, 400, 100)));
    run();
    ASSERT_NE(listed(1), nullptr);
    EXPECT_EQ(boundsOf(1), QRectF(1532, 50, 347, 62));
    // The picture is the window cut to the card.
    ASSERT_NE(pictured(1), nullptr);
    EXPECT_EQ(pictured(1)->KCGWindowImage.pixels().size(), QSize(347, 62));

    m_state = {};
    run(testing::twoScreens(2.0, 1.0));
    ASSERT_NE(listed(1), nullptr);
    EXPECT_EQ(boundsOf(1), QRectF(1532, 50, 348, 63));
}

TEST_F(WindowFilterTest, OtherNotificationsKeepTheirBounds)
{
    add(window(1, "dunst", 18, QRectF(1500, 30, 400, 100)));
    add(window(2, "Banners and Alerts", 0, QRectF(100, 30, 400, 100)));
    run();
    EXPECT_EQ(boundsOf(1), QRectF(1500, 30, 400, 100));
    EXPECT_EQ(boundsOf(2), QRectF(100, 30, 400, 100));
}

TEST_F(WindowFilterTest, PinsAreListedWithoutTheirMarginButPicturedWithIt)
{
    add(window(1, "mappingWindowByKelvo", 25, QRectF(100, 100, 212, 112)));
    run();
    ASSERT_NE(listed(1), nullptr);
    EXPECT_EQ(boundsOf(1), QRectF(106, 106, 200, 100));
    ASSERT_NE(pictured(1), nullptr);
    EXPECT_EQ(pictured(1)->kCGWindowBounds, QRectF(106, 106, 200, 100));
    EXPECT_EQ(pictured(1)->KCGWindowImage.pointSize(), QSizeF(212, 112));
    EXPECT_EQ(pictured(1)->kCGWindowName, QStringLiteral("mappingWindowByKelvo"));
}

TEST_F(WindowFilterTest, WindowsOfFivePointsCanBeHoveredButHaveNoPicture)
{
    add(window(1, "Thin", 0, QRectF(10, 10, 5, 40)));
    add(window(2, "Flat", 0, QRectF(10, 10, 40, 5)));
    add(window(3, "Small", 0, QRectF(10, 10, 6, 6)));
    add(window(4, "Gone", 0, QRectF(10, 10, 60, 60)));
    m_server.windowPictures[4] = QImage();
    run();
    for (std::uint32_t number : {1u, 2u, 3u, 4u})
        EXPECT_NE(listed(number), nullptr) << number;
    EXPECT_EQ(pictured(1), nullptr);
    EXPECT_EQ(pictured(2), nullptr);
    EXPECT_NE(pictured(3), nullptr);
    EXPECT_EQ(pictured(4), nullptr);
}

TEST_F(WindowFilterTest, PicturesKeepListOrderAndAreSizedAsTheirBounds)
{
    add(window(7, "", 0, QRectF(0, 0, 300, 200)));
    add(window(3, "Back", 0, QRectF(50, 50, 640, 480)));
    run();
    ASSERT_EQ(m_state.imageAllWindowArray.size(), 2u);
    EXPECT_EQ(m_state.imageAllWindowArray[0].number, 7u);
    EXPECT_EQ(m_state.imageAllWindowArray[0].kCGWindowName, QString());
    EXPECT_EQ(m_state.imageAllWindowArray[1].number, 3u);
    EXPECT_EQ(m_state.imageAllWindowArray[1].KCGWindowImage.pointSize(), QSizeF(640, 480));
}

TEST_F(WindowFilterTest, DesktopAndLyricsAboveEverythingAreDropped)
{
    add(window(1, "Desktop", 0, QRectF(0, 0, 800, 600)));
    add(window(2, "Desktop Picture - DP-1", platform::layers::Desktop, QRectF(0, 0, 1920, 1080)));
    add(window(3, "Lyrics", 3, QRectF(0, 900, 800, 60), "LyricsX"));
    add(window(4, "Lyrics", 0, QRectF(0, 900, 800, 60), "LyricsX"));
    run();
    EXPECT_EQ(listed(1), nullptr);
    EXPECT_NE(listed(2), nullptr);
    EXPECT_EQ(listed(3), nullptr);
    EXPECT_NE(listed(4), nullptr);
}

TEST_F(WindowFilterTest, NotificationCentreCountsOnlyWithItsPanel)
{
    platform::WindowRecord centre = window(1, "", 21, QRectF(1132, 0, 788, 1080));
    centre.bundleIdentifier = "com.apple.notificationcenterui";
    add(centre);
    platform::WindowRecord other = window(2, "", 21, QRectF(0, 0, 788, 900));
    other.bundleIdentifier = "org.example.panel";
    add(other);
    run();
    EXPECT_EQ(boundsOf(1), QRectF(1132, 0, 344, 1080));
    ASSERT_NE(pictured(1), nullptr);
    EXPECT_EQ(pictured(1)->KCGWindowImage.pixels().width(), 344);
    EXPECT_EQ(boundsOf(2).width(), 788.0);
}

TEST_F(WindowFilterTest, MenuBarNumberIsRecordedAndMenuExtrasArePicturedFromTheScreen)
{
    add(window(9, "Menubar", 24, QRectF(0, 0, 1920, 22)));
    add(window(4, "Extra", 25, QRectF(1700, 0, 30, 22)));
    m_server.desktop = QImage(3200, 1080, QImage::Format_ARGB32);
    m_server.desktop.fill(Qt::blue);
    run();
    EXPECT_EQ(m_state.menuBarWindowID, 9u);
    EXPECT_NE(listed(9), nullptr);
    ASSERT_NE(pictured(4), nullptr);
    EXPECT_EQ(pictured(4)->KCGWindowImage.pixels().pixelColor(0, 0), QColor(Qt::blue));
}

TEST_F(WindowFilterTest, DockIsMeasuredByItsLitPixelsAndPicturedCutToThem)
{
    add(window(5, "Dock", 20, QRectF(0, 0, 1920, 1080)));
    m_server.windowPictures[5] = darkPicture(1920, 1080, {QRect(500, 1000, 920, 80)});
    run();
    ASSERT_NE(listed(5), nullptr);
    EXPECT_EQ(boundsOf(5), QRectF(500, 1000, 920, 80));
    EXPECT_EQ(m_state.dockImage.pointSize, QSizeF(1920, 1080));
    ASSERT_NE(pictured(5), nullptr);
    EXPECT_EQ(pictured(5)->KCGWindowImage.pixels().size(), QSize(920, 80));
}

TEST_F(WindowFilterTest, TransparentMonitorDocksAreMeasuredWhateverTheirName)
{
    add(window(5, "plank", 20, QRectF(1920, 0, 1280, 1024)));
    m_server.windowPictures[5] = darkPicture(1280, 1024, {QRect(0, 100, 60, 800)});
    add(window(6, "tint2", 20, QRectF(0, 1050, 1920, 30)));
    add(window(7, "Dock", 20, QRectF(0, 0, 1920, 1080)));
    m_server.windowPictures[7] = darkPicture(1920, 1080);
    run();
    EXPECT_EQ(boundsOf(5), QRectF(1920, 100, 60, 799));
    EXPECT_EQ(boundsOf(6), QRectF(0, 1050, 1920, 30));
    // A hidden dock stays hoverable but has no width and no picture.
    ASSERT_NE(listed(7), nullptr);
    EXPECT_EQ(boundsOf(7).width(), 0.0);
    EXPECT_EQ(pictured(7), nullptr);
}

// Window pictures are held, not read, by the window pass: a capture that
// only hovers never reads one, a pick reads just its own, copies share that
// read, and a picture first asked for after its capture reads nothing.
TEST_F(WindowFilterTest, PicturesAreReadOnlyWhenAPickNeedsThem)
{
    for (std::uint32_t n = 1; n <= 20; ++n)
        add(window(n, QStringLiteral("w%1").arg(n), 0, QRectF(n * 10, n * 10, 400, 300)));
    m_server.windowPictures[7].fill(Qt::green);
    run();
    ASSERT_EQ(m_state.imageAllWindowArray.size(), 20u);
    EXPECT_EQ(m_server.pictureReads, 0);

    EXPECT_EQ(togglePick(m_state, 7, QRectF(0, 0, 400, 300), 0), PickClick::Added);
    EXPECT_EQ(m_server.pictureReads, 1);
    ASSERT_EQ(m_state.arrOfAllSelectedScreenshots.size(), 1u);
    EXPECT_EQ(m_state.arrOfAllSelectedScreenshots[0].KCGWindowImage.pixels,
              m_server.windowPictures[7]);
    EXPECT_EQ(m_state.arrOfAllSelectedScreenshots[0].KCGWindowImage.pointSize, QSizeF(400, 300));
    const WindowImage copy = pictured(7)->KCGWindowImage;
    EXPECT_TRUE(copy.isRead());
    EXPECT_EQ(copy.pixels(), m_server.windowPictures[7]);
    EXPECT_EQ(m_server.pictureReads, 1);
}

TEST_F(WindowFilterTest, APictureFirstAskedForAfterTheCaptureEndedIsNull)
{
    add(window(1, "front", 0, QRectF(0, 0, 400, 300)));
    add(window(2, "back", 0, QRectF(100, 100, 400, 300)));
    run();
    const WindowImage read = pictured(1)->KCGWindowImage;
    const WindowImage unread = pictured(2)->KCGWindowImage;
    ASSERT_FALSE(read.pixels().isNull());
    m_server.thaw();
    EXPECT_TRUE(unread.pixels().isNull());
    EXPECT_TRUE(unread.isNull());
    EXPECT_FALSE(read.pixels().isNull());
    EXPECT_EQ(m_server.pictureReads, 1);
}

} // namespace
} // namespace capture
