// SPDX-License-Identifier: GPL-3.0-or-later
// Marking a capture up as a person does: a tool chosen by its key, strokes
// dragged inside the selection, undo, redo and delete, and the marks in the
// picture that reaches the clipboard.
#include "support/CursorImage.h"
#include "support/MarkUpFixture.h"

using namespace e2e;

TEST_F(MarkUp, RectangleKeyDrawsOnTheOverlayAndInTheCopyAndUndoRedoAndDeleteFollow)
{
    // Something other than flat grey under the region, so "unchanged" means
    // the screen's own pixels.
    SolidWindow blue(*x, QRect(250, 350, 300, 300), Qt::blue, QStringLiteral("blue"));
    ASSERT_TRUE(waitFor([&] { return x->pixel(400, 450) == QColor(Qt::blue); }));
    startKelvoWith(kPlain);
    const QImage screen = x->grabRoot(kRegion).convertToFormat(QImage::Format_RGB32);

    // "1" is the rectangle; the drag's press and release are its corners.
    // Its red edge, 3 points wide, straddles them.
    const QRect box(QPoint(100, 80), QPoint(300, 240));
    // As fast hands do: the drag follows the key at once. A key typed right
    // after a release may wait behind what the release posted; the drag
    // waits behind the key.
    selectRegion();
    x->tapKey("1");
    strokeIn(box.topLeft(), box.bottomRight());
    // Away from the active stroke's handles on the corners and edge middles.
    const QPoint leftEdge(box.left(), box.top() + box.height() / 4);
    const QPoint topEdge(box.center().x(), box.top());
    EXPECT_TRUE(waitFor([&] {
        return isRed(x->pixel(kRegion.x() + leftEdge.x(), kRegion.y() + leftEdge.y()));
    })) << "no rectangle on the overlay";

    const QImage marked = copyAndRead({});
    ASSERT_EQ(marked.size(), kRegion.size());
    for (QPoint edge : {leftEdge, topEdge, QPoint(box.right(), box.center().y()),
                        QPoint(box.center().x(), box.bottom())})
        EXPECT_TRUE(isRed(at(marked, edge))) << edge.x() << "," << edge.y();
    // Inside and outside the stroke, the screen as it was: no handles either.
    EXPECT_EQ(changedAwayFrom(marked, screen, box, kStrokeBand), 0);
    EXPECT_EQ(at(marked, box.center()), at(screen, box.center()));

    // Ctrl+Z takes the stroke out of the picture.
    selectRegion();
    chooseTool("1", "square");
    strokeIn(box.topLeft(), box.bottomRight());
    typeKey("z", true);
    EXPECT_TRUE(waitFor([&] {
        return !isRed(x->pixel(kRegion.x() + leftEdge.x(), kRegion.y() + leftEdge.y()));
    })) << "the undone rectangle stays on the overlay";
    EXPECT_EQ(copyAndRead(last), screen);

    // Ctrl+Shift+Z brings it back; Delete drops the active stroke (an arrow
    // here).
    const QRect other(QPoint(60, 40), QPoint(200, 300));
    selectRegion();
    chooseTool("1", "square");
    strokeIn(other.topLeft(), other.bottomRight());
    typeKey("z", true);
    typeKey("z", true, true);
    chooseTool("4", "arrow");
    strokeIn(QPoint(350, 60), QPoint(420, 300));
    typeKey("Delete");
    const QImage redone = copyAndRead(last);
    EXPECT_TRUE(isRed(at(redone, QPoint(other.left(), other.center().y()))));
    EXPECT_EQ(changedAwayFrom(redone, screen, other, kStrokeBand), 0);
}

TEST_F(MarkUp, StrokeEdgesAreSharpOnAScaledMonitor)
{
    // The second monitor at twice the pixels per point.
    QProcessEnvironment env;
    env.insert(QStringLiteral("QT_SCREEN_SCALE_FACTORS"), QStringLiteral("1;2"));
    startKelvoWith(kPlain, env);
    const QRect region(kSecond.x() + 200, 200, 480, 360); // pixels: 240 by 180 points
    const QImage screen = x->grabRoot(region).convertToFormat(QImage::Format_RGB32);

    selectRegion(region);
    typeKey("1");
    // From 50 to 200 points across: the 3-point edge is 6 pixels wide.
    strokeIn(QPoint(100, 80), QPoint(400, 280), region);
    const QImage marked = copyAndRead({});
    ASSERT_EQ(marked.size(), region.size());

    // Across the left edge at half height: red pixels, then the screen,
    // and nothing in between; the skirt's 1% veil is no half-tone.
    const int row = 180;
    int red = 0;
    for (int px = 80; px < 120; ++px) {
        const QColor c = marked.pixelColor(px, row);
        const QColor s = screen.pixelColor(px, row);
        const bool asScreen = std::abs(c.red() - s.red()) <= 3 &&
                              std::abs(c.green() - s.green()) <= 3 &&
                              std::abs(c.blue() - s.blue()) <= 3;
        EXPECT_TRUE(isRed(c) || asScreen)
            << "half-tone at " << px << ": " << c.name().toStdString();
        red += isRed(c) ? 1 : 0;
    }
    EXPECT_EQ(red, 6);
    EXPECT_TRUE(isRed(marked.pixelColor(100, row)));
}

TEST_F(MarkUp, EllipseLineArrowAndPencilKeysDrawWhereThePointerWent)
{
    startKelvoWith(kPlain);
    const QImage screen = x->grabRoot(kRegion).convertToFormat(QImage::Format_RGB32);
    selectRegion();

    chooseTool("2", "ellipse");
    strokeIn(QPoint(20, 20), QPoint(140, 100));
    chooseTool("3", "line");
    strokeIn(QPoint(180, 40), QPoint(300, 40));
    chooseTool("4", "arrow");
    strokeIn(QPoint(20, 200), QPoint(220, 200));
    // The pencil through a bent path, one move at a time.
    chooseTool("5", "pencilPen");
    const std::vector<QPoint> path{{300, 200}, {320, 200}, {340, 200}, {360, 220},
                                   {360, 260}, {340, 280}, {330, 290}};
    x->movePointer(kRegion.x() + path[0].x(), kRegion.y() + path[0].y());
    x->pressButton(1);
    for (std::size_t i = 1; i < path.size(); ++i) {
        // Halfway first, so every leg brings more than one drag event.
        const QPoint half = (path[i - 1] + path[i]) / 2;
        x->movePointer(kRegion.x() + half.x(), kRegion.y() + half.y());
        barrier();
        x->movePointer(kRegion.x() + path[i].x(), kRegion.y() + path[i].y());
        barrier();
    }
    x->releaseButton(1);
    barrier();
    const QImage marked = copyAndRead({});
    ASSERT_EQ(marked.size(), kRegion.size());
    const auto unchanged = [&](QPoint p) { return marked.pixel(p) == screen.pixel(p); };
    // Half-transparent red over the screen, as lines and the pencil start.
    const auto halfRed = [&](QPoint p) {
        const QColor c = marked.pixelColor(p);
        const QColor s = screen.pixelColor(p);
        return std::abs(c.red() - (255 + s.red()) / 2) <= 4 &&
               std::abs(c.green() - s.green() / 2) <= 4 && std::abs(c.blue() - s.blue() / 2) <= 4;
    };

    // The ellipse touches its box's edges, not its corners or its middle.
    EXPECT_TRUE(isRed(marked.pixelColor(80, 20)));
    EXPECT_TRUE(isRed(marked.pixelColor(20, 60)));
    EXPECT_TRUE(unchanged({24, 24}));
    EXPECT_TRUE(unchanged({80, 60}));
    // The line, 16 points wide.
    EXPECT_TRUE(halfRed({240, 40}));
    EXPECT_TRUE(halfRed({240, 46}));
    EXPECT_TRUE(unchanged({240, 60}));
    // The arrow's tip at the release point, nothing past it.
    EXPECT_TRUE(isRed(marked.pixelColor(214, 200)));
    EXPECT_TRUE(unchanged({226, 200}));
    // The pencil passes through every position of the pointer.
    for (QPoint p : path)
        EXPECT_TRUE(halfRed(p)) << p.x() << "," << p.y();
    EXPECT_TRUE(unchanged({320, 260}));
}

TEST_F(MarkUp, AStrokeGrabbedWithAnotherToolMovesResizesWithAFlipAndUndoesStepByStep)
{
    startKelvoWith(kPlain);
    const QImage screen = x->grabRoot(kRegion).convertToFormat(QImage::Format_RGB32);
    const QRect box(QPoint(100, 80), QPoint(300, 240));
    const QRect moved = box.translated(50, 0);
    // The bottom-right handle dragged 50 past the top-left corner's x and
    // 40 past its y: the box turns over that corner, which becomes its
    // bottom right.
    const QPoint pastCorner = moved.topLeft() - QPoint(50, 40);
    const QRect flipped(pastCorner, moved.topLeft());
    const auto onScreen = [](QPoint local) { return kRegion.topLeft() + local; };

    // The drawing tool's cross: 32 by 32, held at its middle, red arms.
    const auto showsToolCross = [&] {
        const std::optional<CursorImage> now = currentCursor(x->connection());
        return now && now->image.size() == QSize(32, 32) && now->hotSpot == QPoint(16, 16) &&
               isRed(now->image.pixelColor(6, 16));
    };
    // Rests the pointer beside `local` and then on it, and waits until the
    // pointer shows that a press there takes hold of a stroke (the drawing
    // tool's cross gives way), then drags by `by` in twelve moves.
    const auto dragFrom = [&](QPoint local, QPoint by, const std::function<void()>& pressed = {}) {
        x->movePointer(onScreen(local).x() - 12, onScreen(local).y() + 12);
        barrier();
        x->movePointer(onScreen(local).x(), onScreen(local).y());
        barrier();
        EXPECT_TRUE(waitFor([&] { return !showsToolCross(); }))
            << "the pointer at " << local.x() << "," << local.y() << " offers no grab";
        x->pressButton(1);
        barrier();
        if (pressed)
            pressed();
        for (int i = 1; i <= 12; ++i) {
            const QPoint p = onScreen(local + by * i / 12);
            x->movePointer(p.x(), p.y());
            barrier();
        }
        x->releaseButton(1);
        barrier();
    };
    // A rectangle drawn, the arrow tool chosen (the rectangle is no longer
    // active), and the rectangle grabbed by its left edge and moved.
    const auto drawAndMove = [&] {
        selectRegion();
        chooseTool("1", "square");
        strokeIn(box.topLeft(), box.bottomRight());
        chooseTool("4", "arrow");
        x->movePointer(onScreen(QPoint(40, 300)).x(), onScreen(QPoint(40, 300)).y());
        barrier();
        EXPECT_TRUE(waitFor(showsToolCross)) << "free space shows no tool cross";
        ASSERT_LT(x->pixel(onScreen(box.topLeft()).x(), onScreen(box.topLeft()).y()).green(), 200);
        dragFrom(QPoint(box.left(), box.center().y()), QPoint(50, 0), [&] {
            // Active at the press: its handles show, white on the corners.
            EXPECT_TRUE(waitFor([&] {
                return x->pixel(onScreen(box.topLeft()).x(), onScreen(box.topLeft()).y()).green() >
                       200;
            })) << "the grabbed rectangle shows no handles";
        });
    };
    const auto showsBoxAlone = [&](const QImage& marked, const QRect& where) {
        for (QPoint edge :
             {QPoint(where.left(), where.center().y()), QPoint(where.right(), where.center().y()),
              QPoint(where.center().x(), where.top()), QPoint(where.center().x(), where.bottom())})
            EXPECT_TRUE(isRed(at(marked, edge))) << edge.x() << "," << edge.y();
        EXPECT_EQ(changedAwayFrom(marked, screen, where, kStrokeBand), 0);
    };

    drawAndMove();
    const QImage afterMove = copyAndRead({});
    ASSERT_EQ(afterMove.size(), kRegion.size());
    showsBoxAlone(afterMove, moved);
    EXPECT_EQ(at(afterMove, QPoint(box.left(), box.center().y())),
              at(screen, QPoint(box.left(), box.center().y())));

    // The bottom-right handle, past the top-left corner.
    drawAndMove();
    dragFrom(moved.bottomRight(), pastCorner - moved.bottomRight());
    const QImage afterFlip = copyAndRead(last);
    showsBoxAlone(afterFlip, flipped);

    // Ctrl+Z takes the resize back, and only the resize.
    drawAndMove();
    dragFrom(moved.bottomRight(), pastCorner - moved.bottomRight());
    typeKey("z", true);
    showsBoxAlone(copyAndRead(last), moved);
}

TEST_F(MarkUp, TheBarStandsUnderTheSelectionItsTipsWaitForTheRestAndTheToolsBoxHangsUnder)
{
    startKelvoWith(kPlain);
    selectRegion();
    const QRectF bar = toolbar::placeButtonBox(QRectF(kRegion), QSizeF(1920, 1080));
    const auto light = [](QColor c) { return c.lightness() > 230; };

    // Fifteen slots of 35 points: along a row above its buttons the bar's
    // light fill runs 525 pixels and stops at both ends.
    const int row = static_cast<int>(bar.top()) + 2;
    ASSERT_TRUE(waitFor([&] { return light(x->pixel(static_cast<int>(bar.left()) + 2, row)); }))
        << "no bar at " << bar.left() << "," << bar.top();
    const QImage strip = x->grabRoot(
        QRect(static_cast<int>(bar.left()) - 10, row, static_cast<int>(bar.width()) + 20, 1));
    int lit = 0;
    for (int px = 0; px < strip.width(); ++px)
        lit += light(strip.pixelColor(px, 0)) ? 1 : 0;
    EXPECT_NEAR(lit, 525, 2); // its hairline edges may be a shade darker
    EXPECT_FALSE(light(strip.pixelColor(5, 0)));
    EXPECT_FALSE(light(strip.pixelColor(strip.width() - 5, 0)));

    // The pointer comes to rest on the rectangle's button. Of any five
    // moves the bar looks at one, so the rest began at one of the last
    // five: the tip opens half a second (delayTimeOfPopupToolbar) after it.
    const QPoint square = toolbar::buttonCentre(bar, QStringLiteral("square")).toPoint();
    const QRect tipArea(square.x() - 4, static_cast<int>(bar.top()) - 12, 8, 6);
    const QImage noTip = x->grabRoot(tipArea);
    ASSERT_FALSE(light(noTip.pixelColor(0, 0)));
    // Each move on its own, as queued moves would reach Kelvo as one.
    const auto moveTo = [&](int px) {
        x->movePointer(px, square.y());
        barrier();
    };
    for (int i = 0; i < 5; ++i)
        moveTo(square.x() - 6 + i);
    const auto rested = std::chrono::steady_clock::now();
    for (int i = 0; i < 5; ++i)
        moveTo(square.x() - 1 + i);
    const QImage soon = x->grabRoot(tipArea);
    if (std::chrono::steady_clock::now() - rested < std::chrono::milliseconds(300)) {
        EXPECT_EQ(soon, noTip) << "the tip opened before the pointer had rested";
    }
    EXPECT_TRUE(waitFor([&] { return light(x->pixel(tipArea.x(), tipArea.y())); }))
        << "no tip over the rectangle's button";
    EXPECT_GE(std::chrono::steady_clock::now() - rested, std::chrono::milliseconds(450));
    // The overlay's corner tells how to reach the settings.
    EXPECT_TRUE(waitFor([&] { return x->pixel(14, 1080 - 14).lightness() < 10; }))
        << "no words about the button in the overlay's corner";

    // "1": the rectangle's settings box under its button, 5 points below the
    // bar, its first size dot (3 points) in the tool's red.
    const QPoint box = QPointF(bar.left(), bar.bottom() + 5).toPoint();
    ASSERT_FALSE(light(x->pixel(box.x() + 145, box.y() + 40)));
    typeKey("1");
    EXPECT_TRUE(waitFor([&] { return light(x->pixel(box.x() + 145, box.y() + 40)); }))
        << "no settings box under the rectangle's button";
    EXPECT_TRUE(isRed(x->pixel(box.x() + 12, box.y() + 16)));
    EXPECT_FALSE(light(x->pixel(box.x() + 160, box.y() + 40)));
}
