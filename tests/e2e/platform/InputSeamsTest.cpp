// SPDX-License-Identifier: GPL-3.0-or-later
// An overlay that lets input through to the window under it, and a wheel
// watched while it does: the two things a capture over a live window needs
// of the X server, checked on one with real (XTest) input.
#include "platform/x11/X11InputShape.h"
#include "platform/x11/X11WheelWatcher.h"
#include "support/TestDesktop.h"
#include "support/XSession.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <vector>

using namespace e2e;
using namespace std::chrono_literals;

namespace {

// Two plain windows of an "application", one partly over the other, both
// reporting the buttons pressed on them. They bypass the window manager so
// that they sit exactly where they are put.
class StackedWindows
{
public:
    static constexpr QRect kLower{100, 100, 400, 300};
    static constexpr QRect kUpper{200, 150, 200, 100};

    StackedWindows()
        : m_connection(xcb_connect(nullptr, nullptr))
    {
        const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
        lower = create(screen, kLower, 0x2060a0);
        upper = create(screen, kUpper, 0xc04020);
        xcb_flush(m_connection);
    }
    ~StackedWindows() { xcb_disconnect(m_connection); }
    StackedWindows(const StackedWindows&) = delete;
    StackedWindows& operator=(const StackedWindows&) = delete;

    // The window that takes the next press of `button`, or 0 when no
    // window takes it within the time.
    xcb_window_t pressedOn(int button, std::chrono::milliseconds timeout = 5s)
    {
        xcb_window_t hit = 0;
        waitFor(
            [&] {
                while (xcb_generic_event_t* event = xcb_poll_for_event(m_connection)) {
                    if ((event->response_type & 0x7f) == XCB_BUTTON_PRESS) {
                        auto* press = reinterpret_cast<xcb_button_press_event_t*>(event);
                        if (press->detail == button && hit == 0)
                            hit = press->event;
                    }
                    std::free(event);
                }
                return hit != 0;
            },
            timeout);
        return hit;
    }

    xcb_window_t lower = 0;
    xcb_window_t upper = 0;

private:
    xcb_window_t create(const xcb_screen_t* screen, const QRect& r, std::uint32_t rgb)
    {
        const xcb_window_t w = xcb_generate_id(m_connection);
        const std::uint32_t values[] = {rgb, 1, XCB_EVENT_MASK_BUTTON_PRESS};
        xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, w, screen->root,
                          static_cast<std::int16_t>(r.x()), static_cast<std::int16_t>(r.y()),
                          static_cast<std::uint16_t>(r.width()),
                          static_cast<std::uint16_t>(r.height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                          screen->root_visual,
                          XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
        xcb_map_window(m_connection, w);
        return w;
    }

    xcb_connection_t* m_connection;
};

class InputSeams : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_desktop.isRunning()) << m_desktop.error().toStdString();
        ASSERT_TRUE(m_x.isConnected());
        m_windows = std::make_unique<StackedWindows>();
        // Both windows on screen before any input is sent.
        ASSERT_TRUE(waitFor([&] { return m_x.pixel(250, 200) == QColor(0xc0, 0x40, 0x20); }));
    }

    // A point where the upper window covers the lower one.
    void pointAtOverlap(int x = 250, int y = 200) { m_x.movePointer(x, y); }

    TestDesktop m_desktop{TestDesktop::Options{.twoMonitors = false}};
    XSession m_x;
    std::unique_ptr<StackedWindows> m_windows;
};

TEST_F(InputSeams, AnInputRegionLetsClicksThroughWhereItLeavesAHoleWhileTheWindowStillShows)
{
    platform::x11::X11InputShape shape;
    ASSERT_TRUE(shape.isAvailable());
    pointAtOverlap();
    m_x.click(1);
    ASSERT_EQ(m_windows->pressedOn(1), m_windows->upper);

    ASSERT_TRUE(shape.makeInputTransparent(m_windows->upper));
    m_x.click(1);
    EXPECT_EQ(m_windows->pressedOn(1), m_windows->lower);
    EXPECT_EQ(m_x.pixel(250, 200), QColor(0xc0, 0x40, 0x20));

    ASSERT_TRUE(shape.clearInputRegion(m_windows->upper));
    m_x.click(1);
    EXPECT_EQ(m_windows->pressedOn(1), m_windows->upper);

    // The left quarter of the upper window keeps its input, the rest is a
    // hole through to the window below.
    ASSERT_TRUE(shape.setInputRegion(m_windows->upper, QRegion(0, 0, 50, 100)));
    pointAtOverlap(220, 200);
    m_x.click(1);
    EXPECT_EQ(m_windows->pressedOn(1), m_windows->upper);
    pointAtOverlap(350, 200);
    m_x.click(1);
    EXPECT_EQ(m_windows->pressedOn(1), m_windows->lower);
}

TEST_F(InputSeams, TheWheelIsSeenUnderAnInputTransparentOverlayAndAnotherClientsGrabUntilStopped)
{
    platform::x11::X11InputShape shape;
    {
        ASSERT_TRUE(shape.makeInputTransparent(m_windows->upper));
        platform::x11::X11WheelWatcher wheel;
        std::vector<QPoint> turns;
        ASSERT_TRUE(wheel.start([&](QPoint delta) { turns.push_back(delta); }));
        EXPECT_TRUE(wheel.isWatching());
        pointAtOverlap();

        auto turnOf = [&](int button) {
            const std::size_t before = turns.size();
            m_x.click(button);
            const bool seen = waitFor([&] {
                QCoreApplication::processEvents();
                return turns.size() > before;
            });
            return seen ? turns.back() : QPoint();
        };
        EXPECT_EQ(turnOf(4), QPoint(0, 120));
        // The application under the overlay scrolled as well.
        EXPECT_EQ(m_windows->pressedOn(4), m_windows->lower);
        EXPECT_EQ(turnOf(5), QPoint(0, -120));
        EXPECT_EQ(turnOf(6), QPoint(120, 0));
        EXPECT_EQ(turnOf(7), QPoint(-120, 0));
        EXPECT_EQ(turns.size(), 4u) << "each turn counts once";

        // A button that is no wheel is not reported.
        m_x.click(1);
        ASSERT_EQ(m_windows->pressedOn(1), m_windows->lower);
        QCoreApplication::processEvents();
        EXPECT_EQ(turns.size(), 4u);
    }
    // With the upper window taking input again, under another client's grab.
    ASSERT_TRUE(shape.clearInputRegion(m_windows->upper));
    platform::x11::X11WheelWatcher wheel;
    int turns = 0;
    ASSERT_TRUE(wheel.start([&](QPoint) { ++turns; }));
    pointAtOverlap();

    auto grab = xcb_grab_pointer_reply(m_x.connection(),
                                       xcb_grab_pointer(m_x.connection(), 0, m_x.root(),
                                                        XCB_EVENT_MASK_BUTTON_PRESS,
                                                        XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC,
                                                        XCB_NONE, XCB_NONE, XCB_CURRENT_TIME),
                                       nullptr);
    ASSERT_NE(grab, nullptr);
    EXPECT_EQ(grab->status, XCB_GRAB_STATUS_SUCCESS);
    std::free(grab);
    m_x.click(4);
    EXPECT_TRUE(waitFor([&] {
        QCoreApplication::processEvents();
        return turns == 1;
    }));
    xcb_ungrab_pointer(m_x.connection(), XCB_CURRENT_TIME);
    m_x.sync();

    wheel.stop();
    EXPECT_FALSE(wheel.isWatching());
    m_x.click(4);
    // The application still gets its wheel; the watcher no longer does.
    ASSERT_EQ(m_windows->pressedOn(4), m_windows->upper);
    QCoreApplication::processEvents();
    EXPECT_EQ(turns, 1);

    // Watching again reports the turns from then on, none from the pause.
    std::vector<QPoint> after;
    ASSERT_TRUE(wheel.start([&](QPoint delta) { after.push_back(delta); }));
    m_x.click(5);
    ASSERT_TRUE(waitFor([&] {
        QCoreApplication::processEvents();
        return !after.empty();
    }));
    EXPECT_EQ(after.front(), QPoint(0, -120));
}

} // namespace
