// SPDX-License-Identifier: GPL-3.0-or-later
// The wait for the desktop's notification popups over a capture, on a clock
// that moves only when told: the overlay makes way at once, the popups are
// looked for from five and a half seconds on every half second, and the
// overlay is back on top at the first look that finds none, or after the
// thirtieth.
#include "capture/ui/BannerWait.h"
#include "platform/null/FakeNotificationStacking.h"
#include "support/SteppedClock.h"

#include <QWidget>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

using namespace std::chrono_literals;
using capture::BannerWait;
using platform::null::FakeNotificationStacking;
using Restack = FakeNotificationStacking::Restack;

namespace {

class BannerWaiting : public ::testing::Test
{
protected:
    BannerWaiting() { overlay.show(); }

    [[nodiscard]] FakeNotificationStacking::Request madeWay(const QWidget& w) const
    {
        return {Restack::NotificationsAbove, w.winId()};
    }
    [[nodiscard]] FakeNotificationStacking::Request onTop(const QWidget& w) const
    {
        return {Restack::OverlayOnTop, w.winId()};
    }
    [[nodiscard]] int raises() const
    {
        return static_cast<int>(std::count_if(stacking.requests.begin(), stacking.requests.end(),
                                              [](const FakeNotificationStacking::Request& r) {
                                                  return r.what == Restack::OverlayOnTop;
                                              }));
    }

    SteppedClock clock;
    FakeNotificationStacking stacking;
    QWidget overlay;
    BannerWait wait{stacking, clock};
};

} // namespace

TEST_F(BannerWaiting, TheOverlayMakesWayAtOnceAndComesBackAtTheFirstLookThatFindsNoPopup)
{
    bool popup = true;
    stacking.shown = [&] { return popup; };
    wait.begin(&overlay);
    ASSERT_EQ(stacking.requests.size(), 1u);
    EXPECT_EQ(stacking.requests.front(), madeWay(overlay));
    EXPECT_EQ(wait.running(), 1);

    // Five quiet seconds, then the first look half a second later.
    clock.advance(5499ms);
    EXPECT_EQ(stacking.looks, 0);
    clock.advance(1ms);
    EXPECT_EQ(stacking.looks, 1);
    // The popup still shows: it is put above the overlay again, which the
    // keyboard's move to it may have raised meanwhile.
    EXPECT_EQ(stacking.requests.back(), madeWay(overlay));

    // The popup goes at 7.2 s; the looks at 6, 6.5 and 7 s still saw it.
    clock.advance(1700ms);
    popup = false;
    EXPECT_EQ(stacking.looks, 4);
    EXPECT_EQ(raises(), 0);
    clock.advance(299ms);
    EXPECT_EQ(raises(), 0);
    clock.advance(1ms);
    EXPECT_EQ(stacking.looks, 5);
    EXPECT_EQ(stacking.requests.back(), onTop(overlay));
    EXPECT_EQ(wait.running(), 0);

    // Over: no more looks, no timer left.
    clock.advance(1min);
    EXPECT_EQ(stacking.looks, 5);
    EXPECT_EQ(raises(), 1);
    EXPECT_EQ(clock.pendingCount(), 0u);
}

TEST_F(BannerWaiting, APopupThatStaysEndsTheWaitAfterTheThirtiethLook)
{
    stacking.shown = [] { return true; };
    wait.begin(&overlay);
    // 5 s, then thirty looks half a second apart: the last at 20 s.
    clock.advance(19999ms);
    EXPECT_EQ(stacking.looks, 29);
    EXPECT_EQ(raises(), 0);
    clock.advance(1ms);
    EXPECT_EQ(stacking.looks, 30);
    EXPECT_EQ(stacking.requests.back(), onTop(overlay));
    clock.advance(1min);
    EXPECT_EQ(stacking.looks, 30);
    EXPECT_EQ(wait.running(), 0);
}

TEST_F(BannerWaiting, EachNoticeWaitsOnItsOwnAndTheFirstToEndRaisesTheOverlay)
{
    bool popup = true;
    stacking.shown = [&] { return popup; };
    wait.begin(&overlay);
    clock.advance(3s);
    wait.begin(&overlay); // a second notice, three seconds later
    EXPECT_EQ(wait.running(), 2);
    clock.advance(4s); // 7 s: the first wait has looked four times
    popup = false;
    clock.advance(500ms); // its fifth look finds none
    EXPECT_EQ(raises(), 1);
    EXPECT_EQ(wait.running(), 1);
    clock.advance(1s); // the second looks at 8.5 s and ends too
    EXPECT_EQ(raises(), 2);
    EXPECT_EQ(wait.running(), 0);
}

TEST_F(BannerWaiting, AnEndedCaptureOrAGoneOverlayIsLeftAlone)
{
    stacking.shown = [] { return true; };
    wait.begin(&overlay);
    clock.advance(6s);
    const int looks = stacking.looks;
    wait.cancel();
    EXPECT_EQ(wait.running(), 0);
    clock.advance(1min);
    EXPECT_EQ(stacking.looks, looks);
    EXPECT_EQ(raises(), 0);

    // An overlay destroyed during the wait is never restacked, and a
    // hidden one (unfrozen, or back in its pool) neither.
    auto gone = std::make_unique<QWidget>();
    gone->show();
    wait.begin(gone.get());
    QWidget hidden;
    wait.begin(&hidden);
    const auto before = stacking.requests.size();
    gone.reset();
    stacking.shown = [] { return false; };
    clock.advance(6s);
    EXPECT_EQ(stacking.requests.size(), before);
    EXPECT_EQ(wait.running(), 0);
}

TEST_F(BannerWaiting, WithoutAnOverlayToMakeWayTheWaitOnlyRunsItsCourse)
{
    stacking.shown = [] { return false; };
    wait.begin(nullptr);
    clock.advance(6s);
    EXPECT_EQ(stacking.looks, 1);
    EXPECT_TRUE(stacking.requests.empty());
    EXPECT_EQ(wait.running(), 0);
}
