// SPDX-License-Identifier: GPL-3.0-or-later
// Window pictures under a compositor are held on the server when a capture
// starts and read only when a pick needs them. These tests run the capture's
// window pass against a real X server with picom and prove that the pass
// reads no window, that what a pick reads later is byte for byte what an
// immediate read gives, frozen at the start, and that windows which go away
// and captures which end behave as they did when every picture was read at
// once.
#include "capture/logic/CaptureState.h"
#include "capture/logic/MultiWindowPick.h"
#include "capture/logic/WindowFilter.h"
#include "platform/x11/X11WindowServer.h"
#include "support/TestDesktop.h"
#include "support/XSession.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <memory>

using namespace e2e;

namespace {

platform::x11::NativeScreens oneScreen()
{
    return platform::x11::NativeScreens(
        {{QStringLiteral("DUMMY0"), QRect(0, 0, 1920, 1080), QRectF(0, 0, 1920, 1080), 1.0}});
}

// Same size, format and bytes: what a pick would put into the finished picture.
bool sameBytes(const QImage& a, const QImage& b)
{
    if (a.isNull() || a.size() != b.size() || a.format() != b.format())
        return false;
    const auto rowBytes = static_cast<std::size_t>(a.width()) * 4;
    for (int y = 0; y < a.height(); ++y) {
        if (std::memcmp(a.constScanLine(y), b.constScanLine(y), rowBytes) != 0)
            return false;
    }
    return true;
}

// picom starts, takes the screen and redirects windows slowly on a loaded
// machine (the sanitizer build, tests run side by side).
constexpr std::chrono::seconds kPicomTimeout(30);

class HeldWindowPicturesTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_desktop.isRunning()) << m_desktop.error().toStdString();
        ASSERT_TRUE(m_x.isConnected());
        ASSERT_TRUE(m_server.isConnected());
        ASSERT_TRUE(waitFor([&] { return m_server.compositorRunning(); }, kPicomTimeout));
    }

    // Opens `count` windows in a diagonal row, each overlapping the next, and
    // waits until the window manager lists them all.
    void openWindows(int count)
    {
        for (int i = 0; i < count; ++i) {
            const QColor color = QColor::fromHsv((i * 47) % 360, 200, 220);
            m_windows.push_back(
                std::make_unique<SolidWindow>(m_x, QRect(80 + i * 70, 60 + i * 50, 320, 220), color,
                                              QStringLiteral("held-%1").arg(i)));
        }
        ASSERT_TRUE(waitFor(
            [&] {
                int listed = 0;
                for (const platform::WindowRecord& w : m_server.windowList())
                    listed += w.name.startsWith(QLatin1String("held-")) ? 1 : 0;
                m_server.thaw();
                return listed == count;
            },
            kPicomTimeout));
        // picom redirects the windows a while after it takes the screen;
        // until then a window can only be cut from the root.
        ASSERT_TRUE(waitFor(
            [&] {
                const int before = m_server.windowReads();
                m_list = m_server.windowList();
                (void)m_server.pictureOfWindow(frameOf(0), QRectF());
                m_server.thaw();
                return m_server.windowReads() > before;
            },
            kPicomTimeout))
            << "picom holds no window";
        m_readsBefore = m_server.windowReads();
    }

    // Window pixels read from the server since the windows were opened.
    [[nodiscard]] int reads() const { return m_server.windowReads() - m_readsBefore; }

    // The capture's start: one window list, the window pass over it.
    void startCapture()
    {
        m_state = capture::CaptureState();
        m_list = m_server.windowList();
        capture::WindowFilter(m_server, m_server.screens()).run(m_list, m_state);
    }

    [[nodiscard]] std::uint32_t frameOf(int index) const
    {
        const QString name = QStringLiteral("held-%1").arg(index);
        for (const platform::WindowRecord& w : m_list) {
            if (w.name == name)
                return w.number;
        }
        return 0;
    }

    // The listed frame, root pixels (one screen at scale 1).
    [[nodiscard]] QRect boundsOf(std::uint32_t frame) const
    {
        for (const platform::WindowRecord& w : m_list) {
            if (w.number == frame)
                return w.bounds.toRect();
        }
        return {};
    }

    [[nodiscard]] bool exists(xcb_window_t window) const
    {
        xcb_connection_t* c = m_x.connection();
        xcb_get_geometry_reply_t* g =
            xcb_get_geometry_reply(c, xcb_get_geometry(c, window), nullptr);
        std::free(g);
        return g != nullptr;
    }

    [[nodiscard]] const capture::WindowPicture* pictureOf(std::uint32_t frame) const
    {
        for (const capture::WindowPicture& w : m_state.imageAllWindowArray) {
            if (w.number == frame)
                return &w;
        }
        return nullptr;
    }

    // Shift-click on a window: the pick holds the pixels the finish draws.
    [[nodiscard]] QImage pick(std::uint32_t frame)
    {
        EXPECT_EQ(capture::togglePick(m_state, frame, QRectF(0, 0, 10, 10), 0),
                  capture::PickClick::Added);
        for (const capture::PickedWindow& p : m_state.arrOfAllSelectedScreenshots) {
            if (p.windowId == frame)
                return p.KCGWindowImage.pixels;
        }
        return {};
    }

    TestDesktop m_desktop{TestDesktop::Options{.twoMonitors = false, .compositor = true}};
    XSession m_x;
    platform::x11::X11WindowServer m_server{oneScreen()};
    std::vector<std::unique_ptr<SolidWindow>> m_windows;
    std::vector<platform::WindowRecord> m_list;
    capture::CaptureState m_state;
    int m_readsBefore = 0;
};

TEST_F(HeldWindowPicturesTest, TheWindowPassReadsNoWindowAndAPickReadsWhatAnImmediateReadGives)
{
    constexpr int kWindows = 8;
    openWindows(kWindows);
    startCapture();
    for (int i = 0; i < kWindows; ++i) {
        const capture::WindowPicture* w = pictureOf(frameOf(i));
        ASSERT_NE(w, nullptr) << "window " << i;
        EXPECT_FALSE(w->KCGWindowImage.isNull());
        EXPECT_FALSE(w->KCGWindowImage.isRead());
    }
    EXPECT_EQ(reads(), 0) << "hovering needs bounds only";

    // The back window is covered by the next one; the compositor's copy has
    // it whole, and the pick gives exactly the bytes of an immediate read.
    const std::uint32_t back = frameOf(0);
    const QImage picked = pick(back);
    EXPECT_EQ(reads(), 1);
    const QImage now = m_server.pictureOfWindow(back, QRectF());
    EXPECT_TRUE(sameBytes(picked, now));
    const QRect frame = m_x.frameOf(m_windows[0]->id());
    const QPoint covered = QPoint(80 + 70 + 60, 60 + 50 + 60) - frame.topLeft();
    EXPECT_EQ(picked.pixelColor(covered).rgb(), QColor::fromHsv(0, 200, 220).rgb());

    // Read once, shared by every copy of the window's picture.
    (void)pictureOf(back)->KCGWindowImage.pixels();
    EXPECT_EQ(reads(), 2) << "the immediate read above, and no more";
}

TEST_F(HeldWindowPicturesTest, APickShowsTheWindowAsItWasAtTheStartEvenChangedOrGone)
{
    openWindows(2);
    startCapture();
    const std::uint32_t back = frameOf(0);
    const std::uint32_t front = frameOf(1);
    ASSERT_NE(pictureOf(back), nullptr);
    const QImage backAtStart = m_server.pictureOfWindow(back, QRectF());
    const QImage frontAtStart = m_server.pictureOfWindow(front, QRectF());

    // The front window changes after the start: the pick shows it unchanged.
    m_windows[1]->setColor(QColor(5, 5, 250));
    m_x.sync();
    ASSERT_TRUE(waitFor([&] {
        const QImage live = m_server.pictureOfWindow(front, QRectF());
        return !live.isNull() && live.pixelColor(live.width() / 2, live.height() / 2).rgb() ==
                                     QColor(5, 5, 250).rgb();
    })) << "the window did not change";
    EXPECT_TRUE(sameBytes(pick(front), frontAtStart));

    // The pick made the server hold its copies; the back window goes, and
    // keeps its picture.
    m_windows[0].reset();
    EXPECT_TRUE(sameBytes(pick(back), backAtStart));
}

TEST_F(HeldWindowPicturesTest, AWindowGoneBeforeItsPictureIsHeldIsCutFromTheFrozenDesktop)
{
    openWindows(2);
    m_list = m_server.windowList();
    const std::uint32_t back = frameOf(0);
    const QRect frame = boundsOf(back);
    m_windows[0].reset();
    ASSERT_TRUE(waitFor([&] { return !exists(back); })) << "the window manager kept the frame";

    // As when every picture was read at once: the compositor has nothing
    // of it any more, so the frozen desktop gives what it showed there.
    capture::WindowFilter(m_server, m_server.screens()).run(m_list, m_state);
    const capture::WindowPicture* w = pictureOf(back);
    ASSERT_NE(w, nullptr);
    EXPECT_FALSE(w->KCGWindowImage.isNull());
    EXPECT_TRUE(sameBytes(w->KCGWindowImage.pixels(), m_server.frozenRoot().copy(frame)));
}

TEST_F(HeldWindowPicturesTest, NothingIsReadOnceTheCaptureHasEnded)
{
    openWindows(2);
    startCapture();
    ASSERT_NE(pictureOf(frameOf(0)), nullptr);
    const capture::WindowImage ofAnEarlierCapture = pictureOf(frameOf(0))->KCGWindowImage;

    // A new capture's freeze is not the earlier one's.
    startCapture();
    EXPECT_TRUE(ofAnEarlierCapture.pixels().isNull());
    EXPECT_EQ(reads(), 0);

    ASSERT_NE(pictureOf(frameOf(0)), nullptr);
    ASSERT_NE(pictureOf(frameOf(1)), nullptr);
    const capture::WindowImage unread = pictureOf(frameOf(0))->KCGWindowImage;
    const capture::WindowImage read = pictureOf(frameOf(1))->KCGWindowImage;
    ASSERT_FALSE(read.pixels().isNull());
    EXPECT_EQ(reads(), 1);

    m_server.thaw();
    EXPECT_TRUE(unread.pixels().isNull());
    EXPECT_EQ(reads(), 1);
    EXPECT_FALSE(read.pixels().isNull()) << "what was read stays read";
}

} // namespace
