// SPDX-License-Identifier: GPL-3.0-or-later
// Selecting on the overlay as a person does it: hover, click, drag, handles,
// arrow keys; checked on the screen's pixels.
#include "support/Golden.h"
#include "support/MarkUpFixture.h"

using namespace e2e;

namespace {

class Selecting : public MarkUp
{
protected:
    // Whether the selection's lit area already reaches `corner` from above left.
    bool litUpTo(QPoint corner) { return x->pixel(corner.x() - 3, corner.y() - 3) == kDesktop; }

    // The columns of row `y` between `from` and `to` painted in `color`.
    std::vector<int> columnsIn(QColor color, int y, int from, int to)
    {
        const QImage row = x->grabRoot(QRect(from, y, to - from, 1));
        std::vector<int> xs;
        for (int i = 0; i < row.width(); ++i) {
            if (row.pixelColor(i, 0) == color)
                xs.push_back(from + i);
        }
        return xs;
    }
};

bool darker(QColor a, QColor b)
{
    return a.red() < b.red() && a.green() < b.green() && a.blue() < b.blue();
}

} // namespace

TEST_F(Selecting, HoverOutlinesExactlyTheWindowFrameOnItsScreenOnlyAndAClickSelectsIt)
{
    SolidWindow red(*x, QRect(400, 300, 500, 300), Qt::red, QStringLiteral("red"));
    ASSERT_TRUE(waitFor([&] { return x->pixel(650, 450) == QColor(Qt::red); }));
    const QRect frame = x->frameOf(red.id());
    startKelvo();
    x->movePointer(frame.left() + 40, frame.top() + 40);
    const QImage secondBefore = x->grabRoot(kSecond);
    const int cy = frame.center().y();
    const QColor edgeBefore = x->pixel(frame.left(), cy);
    triggerCapture();
    ASSERT_TRUE(waitFor([&] { return overlaysUp(); })) << kelvo->errors().toStdString();
    x->movePointer(frame.left() + 42, frame.top() + 42);

    ASSERT_TRUE(waitFor([&] { return x->pixel(frame.left(), cy) != edgeBefore; }));
    // The outline is a 2-pixel band on the frame's edge, in one colour.
    const QColor outline = x->pixel(frame.left(), cy);
    EXPECT_EQ(x->pixel(frame.left() + 1, cy), outline);
    EXPECT_NE(x->pixel(frame.left() + 2, cy), outline);
    EXPECT_EQ(x->pixel(frame.right(), cy), outline);
    EXPECT_EQ(x->pixel(frame.right() - 1, cy), outline);
    EXPECT_NE(x->pixel(frame.right() + 1, cy), outline);
    EXPECT_EQ(x->pixel(frame.center().x(), frame.top()), outline);
    EXPECT_EQ(x->pixel(frame.center().x(), frame.bottom()), outline);
    // Inside stays as it was, outside is dimmed.
    EXPECT_EQ(x->pixel(frame.left() + 30, frame.bottom() - 30), QColor(Qt::red));
    EXPECT_TRUE(darker(x->pixel(frame.left() - 30, cy), kDesktop));
    // The other monitor shows no box while the pointer is on this one.
    EXPECT_EQ(x->grabRoot(kSecond), secondBefore);
    // And the whole of it as a person sees it: outline, dimmed desktop,
    // magnifier and cross hair at the pointer.
    const auto golden = waitForGolden([&] { return x->grabRoot(frame.adjusted(-60, -60, 60, 60)); },
                                      QStringLiteral("hover-window"));
    EXPECT_TRUE(golden.matches) << golden.message.toStdString();

    // A click selects it: moving away leaves the outline where it was and
    // dims the rest.
    x->click(1);
    x->movePointer(1500, 900);
    ASSERT_TRUE(waitFor([&] { return darker(x->pixel(frame.left() - 30, cy), kDesktop); }));
    EXPECT_EQ(x->pixel(frame.left() + 30, frame.bottom() - 30), QColor(Qt::red));
    EXPECT_TRUE(darker(x->pixel(frame.right() + 30, cy), kDesktop));
    EXPECT_TRUE(darker(x->pixel(1200, 900), kDesktop));
    x->tapKey("Escape");
    EXPECT_TRUE(waitFor([&] { return overlaysGone(); }));
}

TEST_F(Selecting, DragMakesARegionThatHandlesAndArrowKeysResizeWithTheirTips)
{
    startKelvo();
    x->movePointer(250, 150);
    triggerCapture();
    ASSERT_TRUE(waitFor([&] { return overlaysUp(); }));
    drag(QPoint(300, 200), QPoint(780, 560), 12, [&](QPoint p) { return litUpTo(p); });

    // The region is lit, the rest dimmed, and a size label reads its size.
    ASSERT_TRUE(waitFor([&] { return darker(x->pixel(250, 380), kDesktop); }));
    EXPECT_EQ(x->pixel(540, 380), kDesktop);
    const auto golden = waitForGolden([&] { return x->grabRoot(QRect(260, 150, 560, 450)); },
                                      QStringLiteral("region-480x360"));
    EXPECT_TRUE(golden.matches) << golden.message.toStdString();

    // The right edge's outline, found on row 250: far from the pointer, so
    // the magnifier that follows a drag never sits on it.
    // A fixed selection's outline runs 2 pixels outside it.
    const QColor outline = x->pixel(420, 198);
    ASSERT_NE(outline, kDesktop);
    ASSERT_FALSE(darker(outline, kDesktop));
    const auto rightEdge = [&] {
        const auto xs = columnsIn(outline, 250, 700, 1000);
        return xs.empty() ? -1 : xs.back();
    };
    const int right0 = rightEdge();
    ASSERT_GT(right0, 760);

    // The tip box sits 10 points from the corner: black, with the text in
    // white above a 10-point margin. Row 1065 is in that margin, so the box
    // is one black run there whose length tells the tips apart.
    const int row = 1065;
    const auto tipWidth = [&] {
        const std::vector<int> xs = columnsIn(QColor(Qt::black), row, 0, 1200);
        return xs.empty() || xs.front() > 15 ? 0 : xs.back() - xs.front() + 1;
    };
    // Above the box the corner shows the dimmed desktop (the first press
    // hid the opening tip).
    const QColor dimmed = x->pixel(15, 1000);
    ASSERT_TRUE(darker(dimmed, kDesktop));

    // On the right handle: the left and right arrow keys.
    x->movePointer(781, 380);
    x->movePointer(781, 381);
    ASSERT_TRUE(waitFor([&] { return tipWidth() > 0; })) << kelvo->errors().toStdString();
    const int sideTip = tipWidth();
    // On a corner: all four arrow keys, a longer text.
    x->movePointer(780, 201);
    x->movePointer(780, 200);
    ASSERT_TRUE(waitFor([&] { return tipWidth() > sideTip; })) << tipWidth() << " " << sideTip;
    // Inside the selection the tip goes.
    x->movePointer(540, 380);
    x->movePointer(541, 380);
    EXPECT_TRUE(waitFor([&] { return x->pixel(15, row) == dimmed; }));

    // The bottom-right handle takes the corner where the pointer goes. The
    // press lands a few pixels from the last release, or it would be the
    // second click of a double click, which copies and ends the capture.
    const int band = right0 - 780; // the outline's offset from the edge
    drag(QPoint(775, 555), QPoint(855, 615), 8);
    ASSERT_TRUE(waitFor([&] { return rightEdge() == 855 + band; })) << rightEdge();
    EXPECT_TRUE(darker(x->pixel(870, 380), kDesktop));
    EXPECT_EQ(x->pixel(850, 380), kDesktop);

    // With the pointer resting on the right handle, an arrow key moves that
    // edge by one point and the pointer with it.
    x->movePointer(855, 410);
    x->movePointer(855, 409);
    barrier();
    x->tapKey("Right");
    barrier();
    EXPECT_TRUE(waitFor([&] { return rightEdge() == 856 + band; })) << rightEdge();
    EXPECT_EQ(x->pointerPosition(), QPoint(856, 409));

    x->click(3);
    ASSERT_TRUE(waitFor([&] { return overlaysGone(); }));

    // A region at the top-right corner keeps its size label on the screen.
    x->movePointer(1700, 5);
    triggerCapture();
    ASSERT_TRUE(waitFor([&] { return overlaysUp(); }));
    drag(QPoint(1720, 0), QPoint(1919, 160), 10,
         [&](QPoint p) { return x->pixel(p.x() - 3, std::max(p.y() - 3, 1)) == kDesktop; });
    ASSERT_TRUE(waitFor([&] { return darker(x->pixel(1600, 100), kDesktop); }));
    const auto atEdge = waitForGolden([&] { return x->grabRoot(QRect(1540, 0, 380, 200)); },
                                      QStringLiteral("region-at-top-right-edge"));
    EXPECT_TRUE(atEdge.matches) << atEdge.message.toStdString();
    x->tapKey("Escape");
    EXPECT_TRUE(waitFor([&] { return overlaysGone(); }));
}
