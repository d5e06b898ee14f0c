// SPDX-License-Identifier: GPL-3.0-or-later
#include "annotation/render/HighlightVeil.h"
#include "annotation/render/StrokePainter.h"

#include <QPainter>

#include <gtest/gtest.h>

namespace annotation {
namespace {

namespace st = stroketype;

// The crop border of a 200 by 150 selection at (100, 50), y up.
const QRectF kR(94, 44, 212, 162);

Stroke hole(int list, QRectF box, bool square = true)
{
    Stroke s;
    s.type = st::Highlight;
    s.list = list;
    s.X1 = box.left();
    s.Y1 = box.top();
    s.X2 = box.right();
    s.Y2 = box.bottom();
    s.squareOfHighlight = square ? 1 : 0;
    return s;
}

void commit(StrokeState& state, const Stroke& s)
{
    state.dicOfCurrentStroke = s;
    state.commit();
    state.dicOfCurrentStroke.reset();
}

// The veil painted into the crop border's plane; pixel rows run down, so
// a y-up point (x, y) of the plane is pixel (x, 161 - y).
QImage veiled(const StrokeState& state, VeilScene scene = {kR, 20, {}, false, false})
{
    QImage image(212, 162, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    StrokePainter::yUp(painter, kR.height());
    EXPECT_EQ(paintHighlightVeil(painter, state, scene), true);
    return image;
}

int alphaAt(const QImage& image, int x, int yUp)
{
    return qAlpha(image.pixel(x, 161 - yUp));
}

TEST(HighlightVeil, TheSelectionIsDarkenedByTheLevelBesideClearHolesOfBothShapes)
{
    StrokeState state;
    // Nothing to veil without a highlight.
    QImage none(10, 10, QImage::Format_ARGB32_Premultiplied);
    QPainter p(&none);
    EXPECT_FALSE(paintHighlightVeil(p, state, {kR, 20, {}, false, false}));
    p.end();

    commit(state, hole(1, QRectF(120, 70, 40, 30)));
    commit(state, hole(2, QRectF(200, 100, 60, 60), false));
    const QImage image = veiled(state);
    // Level 20: half black, over the selection only (6 points in from R).
    EXPECT_EQ(alphaAt(image, 100, 20), 128);
    EXPECT_EQ(alphaAt(image, 3, 20), 0);
    EXPECT_EQ(alphaAt(image, 100, 158), 0);
    // The rectangle's hole is clear to its corners (R's origin taken off).
    EXPECT_EQ(alphaAt(image, 27, 27), 0);
    EXPECT_EQ(alphaAt(image, 64, 54), 0);
    // The ellipse's centre is clear, its box's corner is not.
    EXPECT_EQ(alphaAt(image, 136, 86), 0);
    EXPECT_EQ(alphaAt(image, 108, 58), 128);

    // An undone highlight leaves no veil at all.
    StrokeState undone = state;
    (void)undone.undoDraw();
    (void)undone.undoDraw();
    QPainter q(&none);
    EXPECT_FALSE(paintHighlightVeil(q, undone, {kR, 20, {}, false, false}));
}

TEST(HighlightVeil, AWindowSelectionIsVeiledOnceAndTheActiveHoleKeepsItsHandles)
{
    StrokeState state;
    Stroke active = hole(1, QRectF(0, 0, 0, 0));
    active.Rect = QRectF(180, 150, -60, -50); // dragged up and to the left
    state.dicOfCurrentStroke = active;
    // Two overlapping windows: the overlap is as dark as the rest.
    const QImage image =
        veiled(state, {kR, 40, {QRectF(100, 50, 120, 80), QRectF(150, 100, 120, 80)}, true, true});
    EXPECT_EQ(alphaAt(image, 20, 20), 255);
    EXPECT_EQ(alphaAt(image, 106, 76), 255);
    EXPECT_EQ(alphaAt(image, 150, 20), 0); // outside both windows
    // The hole spans (120, 100) to (180, 150) in the overlay: clear inside,
    // with a handle's white centre on its corner.
    EXPECT_EQ(alphaAt(image, 56, 80), 0);
    EXPECT_EQ(image.pixel(26, 161 - 56), qRgba(255, 255, 255, 255));
}

} // namespace
} // namespace annotation
