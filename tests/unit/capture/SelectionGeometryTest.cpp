// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/logic/SelectionGeometry.h"
#include "capture/logic/DragMagnifier.h"
#include "capture/logic/ResizeableCropOverlay.h"

#include <gtest/gtest.h>

namespace capture {
namespace {

using G = SelectionGeometry;

// A 200 by 100 selection: left 100, right 300, bottom 100, top 200.
const QRectF kSelection{100, 100, 200, 100};
const QSizeF kScreen{1920, 1080};

TEST(SelectionResize, EachHandleMovesItsOwnSidesAndKeepsTheOpposite)
{
    struct Case
    {
        int handle;
        QPointF to;
        QRectF expected;
    };
    const Case cases[] = {
        {handles::BottomLeft, {50, 60}, {50, 60, 250, 140}},
        {handles::Bottom, {999, 80}, {100, 80, 200, 120}},
        {handles::BottomRight, {350, 80}, {100, 80, 250, 120}},
        {handles::Right, {350, 999}, {100, 100, 250, 100}},
        {handles::TopRight, {350, 250}, {100, 100, 250, 150}},
        {handles::Top, {999, 250}, {100, 100, 200, 150}},
        {handles::TopLeft, {50, 250}, {50, 100, 250, 150}},
        {handles::Left, {50, 999}, {50, 100, 250, 100}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(G::resized(kSelection, c.to, c.handle), c.expected) << "handle " << c.handle;
}

TEST(SelectionResize, CrossingTheOppositeSideFlipsWithoutMinimumOrClamp)
{
    // The right edge dragged past the left one.
    EXPECT_EQ(G::resized(kSelection, {40, 150}, handles::Right), QRectF(40, 100, 60, 100));
    // The bottom-left corner dragged past the top-right one.
    EXPECT_EQ(G::resized(kSelection, {350, 250}, handles::BottomLeft), QRectF(300, 200, 50, 50));
    // The top edge below the bottom one, and off the screen.
    EXPECT_EQ(G::resized(kSelection, {0, -50}, handles::Top), QRectF(100, -50, 200, 150));
    // Onto the opposite side: zero width.
    EXPECT_EQ(G::resized(kSelection, {300, 150}, handles::Left).width(), 0.0);
    // Corners are cut to whole points.
    EXPECT_EQ(G::resized(kSelection, {350.7, 250.9}, handles::TopRight),
              QRectF(100, 100, 250, 150));
    EXPECT_EQ(G::resized(kSelection, {350, 250}, 0), QRectF(0, 0, 0, 0));
    EXPECT_EQ(G::resized(kSelection, {350, 250}, 9), QRectF(0, 0, 0, 0));
}

TEST(SelectionMove, FollowsThePointerAndStopsAtEveryScreenEdgeKeepingItsSize)
{
    const QPointF start{500, 500};
    G::Move m = G::moved(kSelection, {550.6, 480.2}, start, kScreen);
    EXPECT_EQ(m.contentRect, QRectF(150, 80, 200, 100));
    EXPECT_EQ(m.startPoint, QPointF(550, 480));

    EXPECT_EQ(G::moved(kSelection, {300, 500}, start, kScreen).contentRect,
              QRectF(0, 100, 200, 100));
    EXPECT_EQ(G::moved(kSelection, {500, 300}, start, kScreen).contentRect,
              QRectF(100, 0, 200, 100));
    EXPECT_EQ(G::moved(kSelection, {2500, 500}, start, kScreen).contentRect,
              QRectF(1720, 100, 200, 100));
    EXPECT_EQ(G::moved(kSelection, {500, 1500}, start, kScreen).contentRect,
              QRectF(100, 980, 200, 100));
    EXPECT_EQ(G::moved(kSelection, {-900, 1900}, start, kScreen).contentRect,
              QRectF(0, 980, 200, 100));
}

TEST(SelectionKeyboard, ArrowKeysMoveTheSideUnderTheHandleByOnePointAndThePointerAlong)
{
    const QRectF f = G::grown(kSelection, 6); // (94, 94, 212, 112)
    const QPointF p{94, 150};
    struct Case
    {
        int key;
        int handle;
        QRectF frame;
        QPointF pointer;
    };
    const Case cases[] = {
        {Qt::Key_Left, handles::Left, {93, 94, 213, 112}, {93, 150}},
        {Qt::Key_Left, handles::TopLeft, {93, 94, 213, 112}, {93, 150}},
        {Qt::Key_Right, handles::BottomLeft, {95, 94, 211, 112}, {95, 150}},
        {Qt::Key_Left, handles::Right, {94, 94, 211, 112}, {93, 150}},
        {Qt::Key_Right, handles::TopRight, {94, 94, 213, 112}, {95, 150}},
        {Qt::Key_Down, handles::Bottom, {94, 93, 212, 113}, {94, 149}},
        {Qt::Key_Up, handles::BottomRight, {94, 95, 212, 111}, {94, 151}},
        {Qt::Key_Down, handles::Top, {94, 94, 212, 111}, {94, 149}},
        {Qt::Key_Up, handles::TopLeft, {94, 94, 212, 113}, {94, 151}},
    };
    for (const Case& c : cases) {
        const auto step = G::arrowKeyStep(f, c.key, c.handle, p);
        ASSERT_TRUE(step.has_value()) << c.key << " on " << c.handle;
        EXPECT_EQ(*step, (KeyboardStep{c.frame, c.pointer})) << c.key << " on " << c.handle;
    }
}

TEST(SelectionKeyboard, KeysAlongAnEdgeHandleOrOffAHandleDoNothing)
{
    const QRectF f = G::grown(kSelection, 6);
    for (int handle : {handles::Bottom, handles::Top}) {
        EXPECT_FALSE(G::arrowKeyStep(f, Qt::Key_Left, handle, {}));
        EXPECT_FALSE(G::arrowKeyStep(f, Qt::Key_Right, handle, {}));
    }
    for (int handle : {handles::Left, handles::Right}) {
        EXPECT_FALSE(G::arrowKeyStep(f, Qt::Key_Up, handle, {}));
        EXPECT_FALSE(G::arrowKeyStep(f, Qt::Key_Down, handle, {}));
    }
    EXPECT_FALSE(G::arrowKeyStep(f, Qt::Key_Left, 0, {}));
    EXPECT_FALSE(G::arrowKeyStep(f, Qt::Key_Left, 9, {}));
    EXPECT_FALSE(G::arrowKeyStep(f, Qt::Key_A, handles::Left, {}));
}

TEST(SelectionKeyboard, AtTheScreensEdgeTheStepIsNotClamped)
{
    // A selection against the left and bottom edges grows past them, as a
    // mouse resize may.
    const QRectF f{-6, -6, 212, 112};
    EXPECT_EQ(G::arrowKeyStep(f, Qt::Key_Left, handles::BottomLeft, {-6, -6})->borderFrame,
              QRectF(-7, -6, 213, 112));
    EXPECT_EQ(G::arrowKeyStep(f, Qt::Key_Down, handles::BottomLeft, {-6, -6})->pointer,
              QPointF(-6, -7));
}

TEST(SelectionHandles, SquaresSitOnCornersAndEdgeMiddlesInHandleOrder)
{
    const auto squares = G::handleSquareRects({0, 0, 100, 50}, false);
    ASSERT_EQ(squares.size(), 9u);
    EXPECT_EQ(squares[0], QRectF(6, 6, 0, 0));
    const QPointF origins[] = {{-5, -5}, {45, -5}, {95, -5}, {95, 20},
                               {95, 45}, {45, 45}, {-5, 45}, {-5, 20}};
    for (int n = 1; n <= 8; ++n)
        EXPECT_EQ(squares[n], QRectF(origins[n - 1], QSizeF(10, 10))) << n;

    const auto bars = G::handleSquareRects({0, 0, 100, 50}, true);
    ASSERT_EQ(bars.size(), 18u);
    EXPECT_EQ(bars[9], QRectF(6, -5, 38, 10));
    EXPECT_EQ(bars[11], QRectF(95, 6, 10, 13));
    EXPECT_EQ(bars[12], bars[13]);
    EXPECT_EQ(bars[17], QRectF(-5, 31, 10, 13));
    // Bar lengths are single precision.
    const auto odd = G::handleSquareRects({0, 0, 100.1, 50}, true);
    EXPECT_EQ(odd[9].width(), static_cast<double>(static_cast<float>(100.1 / 2 - 12)));
}

TEST(SelectionHandles, ZonesLieInsideTheBorderAndAnswerTheHandleUnderThePoint)
{
    const QSizeF size{200, 100};
    const auto zones = G::handleTrackRects(size);
    EXPECT_EQ(zones[0], QRectF(13, 13, 176, 74));
    EXPECT_EQ(zones[4], QRectF(190, 12, 10, 76));
    EXPECT_EQ(zones[8], QRectF(2, 12, 10, 76));
    const std::pair<QPointF, int> probes[] = {{{5, 5}, 1},    {{100, 5}, 2},   {{195, 5}, 3},
                                              {{195, 50}, 4}, {{195, 95}, 5},  {{100, 95}, 6},
                                              {{5, 95}, 7},   {{5, 50}, 8},    {{100, 50}, 0},
                                              {{0, 0}, -1},   {{11.5, 5}, -1}, {{200, 50}, -1}};
    for (const auto& [p, zone] : probes)
        EXPECT_EQ(G::handleZoneAt(size, p), zone) << p.x() << "," << p.y();
}

TEST(SelectionGeometryHelpers, StoredRectangleAndContainment)
{
    EXPECT_EQ(G::stringFromRect({10, 20, 300, 150.5}), QStringLiteral("{{10, 20}, {300, 150.5}}"));
    EXPECT_TRUE(G::pointInRect({0, 0}, {0, 0, 10, 10}));
    EXPECT_FALSE(G::pointInRect({10, 5}, {0, 0, 10, 10}));
    EXPECT_TRUE(G::containsRect({0, 0, 10, 10}, {0, 0, 10, 10}));
    EXPECT_FALSE(G::containsRect({0, 0, 10, 10}, {-1, 0, 5, 5}));
    EXPECT_EQ(G::truncated(QRectF(1.9, -1.9, 2.5, 3.99)), QRectF(1, -1, 2, 3));
}

// The magnifier during changes, on a 1920 by 1080 screen.
QPointF drag(QPointF mouse, const QRectF& r, int handle, bool window = false)
{
    return DragMagnifier::positionOfDragging(mouse, kScreen, r, handle, window);
}

TEST(DragMagnifierPlacement, EdgeHandlesKeepToTheFarSideOfTheMovingEdge)
{
    const QRectF r{400, 300, 400, 300}; // x 400..800, y 300..600
    EXPECT_EQ(drag({600, 300}, r, handles::Bottom), QPointF(470, 170));
    EXPECT_EQ(drag({600, 600}, r, handles::Top), QPointF(470, 610));
    EXPECT_EQ(drag({800, 450}, r, handles::Right), QPointF(810, 460));
    EXPECT_EQ(drag({400, 450}, r, handles::Left), QPointF(270, 460));
    // Against the screen's edges the magnifier goes inside the selection.
    EXPECT_EQ(drag({600, 50}, {400, 50, 400, 300}, handles::Bottom), QPointF(470, 60));
    EXPECT_EQ(drag({600, 1000}, {400, 300, 400, 700}, handles::Top), QPointF(470, 870));
    EXPECT_EQ(drag({1850, 450}, {1000, 300, 850, 300}, handles::Right), QPointF(1720, 460));
    EXPECT_EQ(drag({50, 450}, {50, 300, 400, 300}, handles::Left), QPointF(60, 460));
}

TEST(DragMagnifierPlacement, CornersAndRegionsStayOnTheScreenNearEveryEdgeAndCorner)
{
    // Free space: left of and above the mouse.
    EXPECT_EQ(drag({700, 500}, {400, 300, 400, 300}, handles::BottomLeft), QPointF(570, 510));
    // Top edge: below the selection's top, beside the mouse.
    EXPECT_EQ(drag({600, 1000}, {400, 300, 400, 700}, handles::TopRight), QPointF(610, 870));
    EXPECT_EQ(drag({300, 1000}, {400, 300, 400, 700}, handles::TopLeft), QPointF(170, 870));
    // Top-right and top-left corners.
    EXPECT_EQ(drag({1900, 1000}, {1000, 300, 900, 700}, handles::TopRight), QPointF(1770, 870));
    EXPECT_EQ(drag({50, 1000}, {100, 300, 400, 700}, handles::TopLeft), QPointF(110, 870));
    // Left edge: under the selection if there is room, else inside it.
    EXPECT_EQ(drag({50, 500}, {100, 600, 400, 300}, handles::BottomLeft), QPointF(110, 470));
    EXPECT_EQ(drag({50, 500}, {100, 100, 400, 300}, handles::TopLeft), QPointF(110, 270));
    // Bottom-left corner.
    EXPECT_EQ(drag({50, 50}, {100, 100, 400, 300}, handles::BottomLeft), QPointF(110, 110));
    // Right of the selection's middle and below its middle: beside it.
    EXPECT_EQ(drag({700, 200}, {400, 300, 400, 300}, 0), QPointF(810, 310));
    // The same at the right edge and the bottom-right corner.
    EXPECT_EQ(drag({1800, 200}, {1400, 300, 500, 300}, 0), QPointF(1770, 170));
    EXPECT_EQ(drag({1800, 150}, {1400, 100, 500, 300}, handles::BottomRight), QPointF(1770, 110));
    // A window selection just follows the mouse.
    EXPECT_EQ(drag({50, 1000}, {0, 0, 100, 100}, 0, true), QPointF(-80, 1010));
}

TEST(ResizeableCropOverlayTest, TheNearestHandlePointChoosesTheSigns)
{
    const auto points = ResizeableCropOverlay::handlePositions({200, 100});
    EXPECT_EQ(points[0], QPointF(0, 0));
    EXPECT_EQ(points[2], QPointF(0, 100));
    EXPECT_EQ(points[4], QPointF(200, 100));
    EXPECT_EQ(points[7], QPointF(100, 0));
    EXPECT_EQ(ResizeableCropOverlay::multiplyerFor({0, 0}, {200, 100}),
              (ResizeMultiplyer{1, -1, 1, 1}));
    EXPECT_EQ(ResizeableCropOverlay::multiplyerFor({200, 100}, {200, 100}),
              (ResizeMultiplyer{-1, 1, 0, 0}));
    EXPECT_EQ(ResizeableCropOverlay::multiplyerFor({100, 0}, {200, 100}),
              (ResizeMultiplyer{0, -1, 0, 1}));
}

TEST(ResizeableCropOverlayTest, ResizeFollowsTheAnchorWithinTheMarginAndTheMinimum)
{
    ResizeableCropOverlay bottomLeft({1000, 800}, kSelection);
    bottomLeft.mouseDown({102, 101}, ResizeableCropOverlay::PressZone::Border);
    EXPECT_EQ(bottomLeft.theAnchor(), QPointF(0, 0));
    bottomLeft.mouseDragged({90, 80});
    EXPECT_EQ(bottomLeft.borderFrame(), QRectF(88, 79, 212, 121));
    // The pointer is held 12 points inside the view.
    bottomLeft.mouseDragged({-50, -50});
    EXPECT_EQ(bottomLeft.borderFrame(), QRectF(10, 11, 290, 189));

    ResizeableCropOverlay topRight({1000, 800}, kSelection);
    topRight.mouseDown({298, 199}, ResizeableCropOverlay::PressZone::Border);
    EXPECT_EQ(topRight.corpRectMode(), ResizeableCropOverlay::CropRectMode::Resize);
    topRight.mouseDragged({320, 210});
    EXPECT_EQ(topRight.borderFrame(), QRectF(100, 100, 222, 111));
    // Below 64 a dimension keeps its old origin and length; the other changes.
    topRight.mouseDragged({150, 260});
    EXPECT_EQ(topRight.borderFrame(), QRectF(100, 100, 222, 161));
}

TEST(ResizeableCropOverlayTest, MoveStaysInsideTheViewByShorteningTheOvershoot)
{
    ResizeableCropOverlay overlay({1000, 800}, kSelection);
    overlay.mouseDown({150, 150}, ResizeableCropOverlay::PressZone::Content);
    overlay.mouseDragged({170, 140});
    EXPECT_EQ(overlay.borderFrame(), QRectF(120, 90, 200, 100));
    overlay.mouseDragged({20, 140});
    EXPECT_EQ(overlay.borderFrame(), QRectF(0, 90, 170, 100));
    overlay.mouseDragged({870, 140});
    EXPECT_EQ(overlay.borderFrame(), QRectF(850, 90, 150, 100));

    ResizeableCropOverlay idle({1000, 800}, kSelection);
    idle.mouseDown({900, 700}, ResizeableCropOverlay::PressZone::Elsewhere);
    idle.mouseDragged({10, 10});
    EXPECT_EQ(idle.borderFrame(), kSelection);
}

TEST(ResizeableCropOverlayTest, ToolBarAndLabel)
{
    EXPECT_EQ(ResizeableCropOverlay::toolBarOrigin(kSelection, {80, 30}), QPointF(160, 110));
    EXPECT_EQ(ResizeableCropOverlay::indicatorText({200, 100.4}), QStringLiteral("200 X 100"));
    EXPECT_TRUE(ResizeableCropOverlay::indicatorShown(80, 70));
    EXPECT_FALSE(ResizeableCropOverlay::indicatorShown(79, 70));
}

} // namespace
} // namespace capture
