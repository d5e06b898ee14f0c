// SPDX-License-Identifier: GPL-3.0-or-later
#include "annotation/render/MosaicPainter.h"

#include <QPainter>

#include <gtest/gtest.h>

#include <algorithm>

namespace annotation {
namespace {

namespace st = stroketype;

// A 400 by 300 point screen whose every pixel differs from its neighbours.
QImage screen()
{
    QImage image(400, 300, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < 300; ++y)
        for (int x = 0; x < 400; ++x)
            image.setPixel(x, y, qRgb((x * 37) & 0xff, (y * 53) & 0xff, (x * y) & 0xff));
    return image;
}

Stroke patch(int list, QRectF rect, int size, bool blocks = true)
{
    Stroke s;
    s.type = st::Mosaic;
    s.list = list;
    s.size = size;
    s.Rect = rect;
    s.selectedMosaic = blocks ? 1 : 0;
    return s;
}

class MosaicLayer : public ::testing::Test
{
protected:
    QImage paint(const StrokeState& strokes, const QString& underPointer = {},
                 bool finishing = false)
    {
        QImage out = frozen.copy();
        QPainter painter(&out);
        paintMosaicLayer(painter, strokes, {&copies, 300, underPointer, finishing});
        return out;
    }

    void commit(const Stroke& s)
    {
        state.dicOfCurrentStroke = s;
        state.commit();
        state.dicOfCurrentStroke.reset();
    }

    QImage frozen = screen();
    mosaic::FilteredCopies copies{mosaic::workImageOf(frozen, 1.0)};
    StrokeState state;
};

TEST_F(MosaicLayer, ASettledPatchIsMadeOfHardBlocksAndOnlyItsPlaceChanges)
{
    // 120 by 80 points, 100 up from the bottom: top-left rows 120 to 200.
    commit(patch(1, QRectF(40, 100, 120, 80), 10));
    const QImage out = paint(state);
    // Size 10: blocks of 10 work pixels, 20 points; the patch starts 10
    // work pixels off the block grid, so a block holds one colour.
    const QRgb first = out.pixel(45, 125);
    for (int y = 120; y < 140; ++y)
        for (int x = 40; x < 60; ++x)
            ASSERT_EQ(out.pixel(x, y), first) << x << "," << y;
    EXPECT_NE(out.pixel(60, 125), first);
    int changed = 0;
    for (int y = 0; y < 300; ++y)
        for (int x = 0; x < 400; ++x) {
            const bool inside = x >= 40 && x < 160 && y >= 120 && y < 200;
            if (out.pixel(x, y) != frozen.pixel(x, y)) {
                ++changed;
                EXPECT_TRUE(inside) << x << "," << y;
            }
        }
    EXPECT_GT(changed, 120 * 80 * 9 / 10);
    // No frame unless the pointer is on it, and then a grey one.
    EXPECT_EQ(qRed(paint(state, QStringLiteral("51")).pixel(40, 150)), 128);
}

TEST_F(MosaicLayer, AnOlderPatchLiesOverANewerOneAndABlurIsSmooth)
{
    commit(patch(1, QRectF(40, 100, 100, 100), 3));
    commit(patch(2, QRectF(100, 100, 100, 100), 8, false));
    const QImage out = paint(state);
    // Where they overlap, the older (block) patch shows: its size-3 blocks
    // repeat each colour over 6 points.
    EXPECT_EQ(out.pixel(126, 150), out.pixel(127, 150));
    const QImage alone = [&] {
        StrokeState second;
        second.dicOfCurrentStroke = patch(2, QRectF(100, 100, 100, 100), 8, false);
        second.commit();
        second.dicOfCurrentStroke.reset();
        return paint(second);
    }();
    EXPECT_NE(out.pixel(126, 150), alone.pixel(126, 150));
    // The blur leaves neighbours close: no pixel jumps by more than a few
    // levels, where the screen jumps by 37 every pixel.
    for (int x = 150; x < 190; ++x)
        EXPECT_LE(std::abs(qRed(out.pixel(x, 150)) - qRed(out.pixel(x + 1, 150))), 8) << x;
}

TEST_F(MosaicLayer, TheActivePatchHasItsFrameAndHandlesButNotInTheFinishedPicture)
{
    state.dicOfCurrentStroke = patch(1, QRectF(140, 60, -100, 80), 6); // dragged leftwards
    const QImage live = paint(state);
    // The bottom-left handle's white centre (at 95%) at (40, 240).
    const QColor centre = live.pixelColor(40, 240);
    EXPECT_GE(std::min({centre.red(), centre.green(), centre.blue()}), 240);
    const QImage finished = paint(state, {}, true);
    EXPECT_NE(finished.pixel(40, 240), live.pixel(40, 240));
    EXPECT_NE(finished.pixel(80, 200), frozen.pixel(80, 200)); // the patch itself
    // A patch of no width paints nothing, not even handles.
    state.dicOfCurrentStroke = patch(1, QRectF(140, 60, 0, 80), 6);
    EXPECT_EQ(paint(state), frozen);
    // Before the copies exist, nothing but the frame.
    const mosaic::FilteredCopies none;
    QImage out = frozen.copy();
    QPainter painter(&out);
    state.dicOfCurrentStroke = patch(1, QRectF(40, 60, 100, 80), 6);
    paintMosaicLayer(painter, state, {&none, 300, {}, true});
    painter.end();
    EXPECT_EQ(out, frozen);
}

} // namespace
} // namespace annotation
