// SPDX-License-Identifier: GPL-3.0-or-later
// The wheel over a capture being marked up, as a person turns it: notches
// of a mouse wheel (buttons 4 and 5) widen the tool in hand, change the
// opacity of the active stroke under a box that shows it, and do nothing
// while no tool is chosen.
#include "support/MarkUpFixture.h"

using namespace e2e;

namespace {

const QRect kBox(QPoint(100, 80), QPoint(300, 240));
constexpr int kWheelUp = 4;
constexpr int kWheelDown = 5;

QPoint onScreen(QPoint local)
{
    return kRegion.topLeft() + local;
}

// The red pixels across a box's left edge at a quarter of its height.
int edgeWidth(const QImage& marked, const QRect& box = kBox)
{
    const int row = box.top() + box.height() / 4;
    int red = 0;
    for (int px = box.left() - 20; px <= box.left() + 20; ++px)
        red += isRed(marked.pixelColor(px, row)) ? 1 : 0;
    return red;
}

} // namespace

class MarkUpWheel : public MarkUp
{
protected:
    // Brings the pointer to `local` in a few moves, as a hand does, so the
    // overlay's hover has followed it there.
    void glideTo(QPoint local)
    {
        const QPoint target = onScreen(local);
        const QPoint from = target + QPoint(-16, 12);
        for (int i = 0; i <= 4; ++i) {
            const QPoint p = from + (target - from) * i / 4;
            x->movePointer(p.x(), p.y());
            barrier();
        }
    }

    void notches(int button, int count)
    {
        for (int i = 0; i < count; ++i)
            x->click(button);
        barrier();
    }

    // The rectangle drawn from `box`'s corners, seen on the overlay. Twice
    // the fixture's moves, so that a few merged on the way still leave a
    // drag long enough to draw.
    void drawBox(const QRect& box)
    {
        drag(onScreen(box.topLeft()), onScreen(box.bottomRight()), 24);
        const QPoint edge = onScreen(QPoint(box.left(), box.top() + box.height() / 4));
        EXPECT_TRUE(waitFor([&] { return isRed(x->pixel(edge.x(), edge.y())); }))
            << "no rectangle on the overlay";
    }

    // The overlay's red pixels across `box`'s left edge.
    int edgeWidthOnScreen(const QRect& box)
    {
        return edgeWidth(x->grabRoot(kRegion).convertToFormat(QImage::Format_RGB32), box);
    }
};

TEST_F(MarkUpWheel, NotchesOverThePictureWidenTheToolAndItsActiveStrokeButNotWithoutATool)
{
    startKelvoWith(kPlain);
    const QImage screen = x->grabRoot(kRegion).convertToFormat(QImage::Format_RGB32);

    // A rectangle at the rectangle tool's 3 points, still active, and three
    // notches up over the picture inside it, off its edge: 6 points.
    selectRegion();
    chooseTool("1", "square");
    drawBox(kBox);
    glideTo(kBox.center());
    notches(kWheelUp, 3);
    EXPECT_TRUE(waitFor([&] { return edgeWidthOnScreen(kBox) == 6; }))
        << "the overlay's edge stays " << edgeWidthOnScreen(kBox) << " wide";
    const QImage wider = copyAndRead({});
    ASSERT_EQ(wider.size(), kRegion.size());
    EXPECT_EQ(edgeWidth(wider), 6);
    EXPECT_EQ(at(wider, kBox.center()), at(screen, kBox.center()));

    // No tool in hand: the same notches change nothing, not even the
    // size the rectangle tool remembers, which its next stroke is drawn at.
    const QRect other = kBox.translated(60, 40);
    selectRegion();
    glideTo(other.center());
    notches(kWheelUp, 3);
    notches(kWheelDown, 1);
    chooseTool("1", "square");
    drawBox(other);
    const QImage again = copyAndRead(last);
    EXPECT_EQ(edgeWidth(again, other), 6);
    EXPECT_EQ(changedAwayFrom(again, screen, other, kStrokeBand + 2), 0);
}

TEST_F(MarkUpWheel, NotchesOverTheActiveStrokeFadeItUnderABoxThatShowsItsOpacity)
{
    startKelvoWith(kPlain);
    selectRegion();
    chooseTool("1", "square");
    drawBox(kBox);
    // The open hand over the rectangle's left edge, away from its handles.
    const QPoint edge(kBox.left(), kBox.top() + kBox.height() / 4);
    glideTo(edge);

    // The box shows up 16 points above the pointer, dark under light figures.
    const QPoint pointer = onScreen(edge);
    const QRect boxArea(pointer.x() - 20, pointer.y() - 16 - 20, 40, 18);
    const auto boxShown = [&] {
        const QImage shot = x->grabRoot(boxArea);
        int dark = 0;
        for (int y = 0; y < shot.height(); ++y)
            for (int px = 0; px < shot.width(); ++px)
                dark += qGray(shot.pixel(px, y)) < 70 ? 1 : 0;
        return dark > shot.width() * shot.height() / 2;
    };
    EXPECT_FALSE(boxShown());
    notches(kWheelDown, 3);
    EXPECT_TRUE(waitFor(boxShown)) << "no opacity box over the pointer";
    // The next move closes it.
    x->movePointer(pointer.x() + 1, pointer.y());
    EXPECT_TRUE(waitFor([&] { return !boxShown(); })) << "the opacity box stays after a move";

    // Three notches down from opaque: 85% red over the grey desktop.
    const QImage faded = copyAndRead({});
    ASSERT_EQ(faded.size(), kRegion.size());
    const QColor c = at(faded, edge);
    const double alpha = 0.85;
    EXPECT_NEAR(c.red(), alpha * 255 + (1 - alpha) * kDesktop.red(), 3) << c.name().toStdString();
    EXPECT_NEAR(c.green(), (1 - alpha) * kDesktop.green(), 3) << c.name().toStdString();
    EXPECT_NEAR(c.blue(), (1 - alpha) * kDesktop.blue(), 3) << c.name().toStdString();
}
