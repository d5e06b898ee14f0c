// SPDX-License-Identifier: GPL-3.0-or-later
// The desktop's active window and its notification popups, as a capture
// deals with them, against a real X server and window manager.
#include "platform/x11/X11ActiveWindow.h"
#include "platform/x11/X11NotificationStacking.h"
#include "support/TestDesktop.h"
#include "support/XSession.h"

#include <gtest/gtest.h>

#include <xcb/xcb.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

using namespace e2e;

namespace {

class DesktopWindows : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(desktop.isRunning()) << desktop.error().toStdString();
        ASSERT_TRUE(x.isConnected());
    }
    void TearDown() override
    {
        for (xcb_window_t w : m_created)
            xcb_destroy_window(x.connection(), w);
        x.sync();
    }

    // A window that bypasses the window manager, as overlays and most
    // notification popups do; `notification` types it as a popup.
    xcb_window_t unmanagedWindow(const QRect& r, bool notification)
    {
        xcb_connection_t* c = x.connection();
        const xcb_window_t w = xcb_generate_id(c);
        const std::uint32_t values[] = {0x405060, 1};
        xcb_create_window(c, XCB_COPY_FROM_PARENT, w, x.root(), static_cast<std::int16_t>(r.x()),
                          static_cast<std::int16_t>(r.y()), static_cast<std::uint16_t>(r.width()),
                          static_cast<std::uint16_t>(r.height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                          XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT,
                          values);
        if (notification) {
            const xcb_atom_t type = atom("_NET_WM_WINDOW_TYPE");
            const xcb_atom_t kind = atom("_NET_WM_WINDOW_TYPE_NOTIFICATION");
            xcb_change_property(c, XCB_PROP_MODE_REPLACE, w, type, XCB_ATOM_ATOM, 32, 1, &kind);
        }
        xcb_map_window(c, w);
        x.sync();
        m_created.push_back(w);
        return w;
    }

    // The windows' places in the stack, top first; -1 for one not shown.
    std::vector<int> placesOf(const std::vector<xcb_window_t>& windows)
    {
        const std::vector<XSession::Window> stack = x.topLevels();
        std::vector<int> places;
        for (xcb_window_t w : windows) {
            const auto it = std::find_if(stack.begin(), stack.end(),
                                         [w](const XSession::Window& s) { return s.id == w; });
            places.push_back(it == stack.end() ? -1 : static_cast<int>(it - stack.begin()));
        }
        return places;
    }

    xcb_atom_t atom(const char* name)
    {
        xcb_connection_t* c = x.connection();
        xcb_intern_atom_reply_t* reply = xcb_intern_atom_reply(
            c, xcb_intern_atom(c, 0, static_cast<std::uint16_t>(std::strlen(name)), name), nullptr);
        const xcb_atom_t a = reply != nullptr ? reply->atom : XCB_NONE;
        std::free(reply);
        return a;
    }

    TestDesktop desktop{TestDesktop::Options{.twoMonitors = false}};
    XSession x;

private:
    std::vector<xcb_window_t> m_created;
};

} // namespace

TEST_F(DesktopWindows, PopupsGoDirectlyAboveTheOverlayInTheirOwnOrderAndTheOverlayBackOnTop)
{
    platform::x11::X11NotificationStacking stacking;
    ASSERT_TRUE(stacking.isConnected());
    EXPECT_FALSE(stacking.notificationShown());

    const xcb_window_t lower = unmanagedWindow(QRect(1500, 40, 300, 60), true);
    const xcb_window_t upper = unmanagedWindow(QRect(1500, 110, 300, 60), true);
    const xcb_window_t other = unmanagedWindow(QRect(100, 100, 200, 200), false);
    const xcb_window_t overlay = unmanagedWindow(QRect(0, 0, 1920, 1080), false);
    ASSERT_EQ(placesOf({overlay, other, upper, lower}), (std::vector<int>{0, 1, 2, 3}));
    EXPECT_TRUE(stacking.notificationShown());

    // The popups rise over the overlay; the other window stays under it.
    EXPECT_TRUE(stacking.showNotificationsAbove(overlay));
    x.sync();
    EXPECT_EQ(placesOf({upper, lower, overlay, other}), (std::vector<int>{0, 1, 2, 3}));

    stacking.raiseAboveAll(overlay);
    x.sync();
    EXPECT_EQ(placesOf({overlay, upper, lower, other}), (std::vector<int>{0, 1, 2, 3}));

    // Gone popups are not seen, and nothing is moved for them.
    xcb_unmap_window(x.connection(), upper);
    xcb_unmap_window(x.connection(), lower);
    x.sync();
    EXPECT_FALSE(stacking.notificationShown());
    EXPECT_FALSE(stacking.showNotificationsAbove(overlay));
    EXPECT_EQ(placesOf({overlay, other}), (std::vector<int>{0, 1}));
}

TEST_F(DesktopWindows, TheActiveWindowIsReadAndAskedForAgainButNotOnceItIsGone)
{
    SolidWindow other(x, QRect(900, 300, 300, 200), Qt::darkBlue, QStringLiteral("other"));
    auto editor = std::make_unique<SolidWindow>(x, QRect(100, 100, 400, 300), Qt::darkGreen,
                                                QStringLiteral("editor"));
    const xcb_window_t editorId = editor->id();
    ASSERT_TRUE(activateWindow(QString::number(editorId)));

    platform::x11::X11ActiveWindow active;
    ASSERT_TRUE(active.isConnected());
    EXPECT_EQ(active.current(), editorId);

    ASSERT_TRUE(activateWindow(QString::number(other.id())));
    EXPECT_EQ(active.current(), other.id());
    // It returns once the window manager has done it: a capture started
    // next cannot map its overlay under the window's raise.
    EXPECT_TRUE(active.activate(editorId));
    EXPECT_EQ(active.current(), editorId);

    // Withdrawn, then destroyed: not asked for either time.
    ASSERT_TRUE(activateWindow(QString::number(other.id())));
    xcb_unmap_window(x.connection(), editorId);
    x.sync();
    EXPECT_FALSE(active.activate(editorId));
    editor.reset();
    EXPECT_FALSE(active.activate(editorId));
    EXPECT_FALSE(active.activate(0));
    EXPECT_EQ(active.current(), other.id());
}
