// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/ui/OverlayPainter.h"
#include "capture/logic/HoverMagnifier.h"
#include "capture/logic/SizeLabelPlacement.h"
#include "capture/logic/SurroundBands.h"
#include "colour/logic/ColorReadoutState.h"
#include "colour/ui/ColorPickerImageView.h"
#include "core/Geometry.h"

#include <QPainter>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

namespace capture {
namespace {

const QSizeF kScreen(400, 300);

// A frozen screen whose every device pixel differs from its neighbours, so a
// shifted or blurred pixel cannot pass for the right one.
QImage frozenScreen(double scale)
{
    QImage image(static_cast<int>(kScreen.width() * scale),
                 static_cast<int>(kScreen.height() * scale), QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < image.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x)
            row[x] = qRgb((x * 7) % 256, (y * 5) % 256, (x + y * 3) % 256);
    }
    image.setDevicePixelRatio(scale);
    return image;
}

struct Rendered
{
    QImage frozen;
    QImage out;
    double scale;

    // The device pixel at overlay-local point `p` (y up).
    [[nodiscard]] QPoint pixelAt(QPointF p) const
    {
        const QPointF topLeft = core::flipped(p, kScreen.height());
        return {static_cast<int>(std::floor(topLeft.x() * scale)),
                static_cast<int>(std::floor(topLeft.y() * scale))};
    }
    [[nodiscard]] QRgb outAt(QPoint px) const { return out.pixel(px); }
    [[nodiscard]] QRgb frozenAt(QPoint px) const { return frozen.pixel(px); }
    [[nodiscard]] bool isDimmed(QPoint px) const
    {
        const QRgb a = frozenAt(px);
        const QRgb b = outAt(px);
        const auto half = [](int v, int w) { return std::abs(v / 2 - w) <= 1; };
        return half(qRed(a), qRed(b)) && half(qGreen(a), qGreen(b)) && half(qBlue(a), qBlue(b));
    }
};

Rendered render(const OverlayFrame& frame, double scale,
                colour::ColorPickerImageView* magnifier = nullptr)
{
    Rendered r{frozenScreen(scale), QImage(), scale};
    r.out = QImage(r.frozen.size(), QImage::Format_ARGB32_Premultiplied);
    r.out.setDevicePixelRatio(scale);
    QPainter painter(&r.out);
    painter.drawImage(QPointF(0, 0), r.frozen);
    OverlayPainter(magnifier).paint(painter, frame);
    painter.end();
    return r;
}

class OverlayPainterTest : public ::testing::TestWithParam<double>
{};

INSTANTIATE_TEST_SUITE_P(Scales, OverlayPainterTest, ::testing::Values(1.0, 2.0));

// Every device pixel of an overlay-local rectangle.
template <typename F>
void forEachPixel(const Rendered& r, const QRectF& local, F&& f)
{
    const QRectF topLeft = core::flipped(local, kScreen.height());
    const QRect px(QPoint(static_cast<int>(std::lround(topLeft.left() * r.scale)),
                          static_cast<int>(std::lround(topLeft.top() * r.scale))),
                   QPoint(static_cast<int>(std::lround(topLeft.right() * r.scale)) - 1,
                          static_cast<int>(std::lround(topLeft.bottom() * r.scale)) - 1));
    for (int y = px.top(); y <= px.bottom(); ++y)
        for (int x = px.left(); x <= px.right(); ++x)
            f(QPoint(x, y));
}

TEST_P(OverlayPainterTest, HoleShowsTheFrozenScreenAndTheOutlineCoversItsSeam)
{
    const QRectF region(100, 80, 200, 120);
    for (const SurroundBands& bands :
         {SurroundBands::forRegion(region), SurroundBands::forHoveredWindow(region)}) {
        OverlayFrame frame;
        frame.screenSize = kScreen;
        frame.dimHole = bands.hole;
        frame.outlineBox = bands.outlineBox;
        const Rendered r = render(frame, GetParam());
        const QRgb outline = OverlayPainter::outlineColor().rgb();

        const QRectF inside = bands.outlineBox.adjusted(2, 2, -2, -2);
        int wrong = 0;
        forEachPixel(r, inside, [&](QPoint px) { wrong += r.outAt(px) != r.frozenAt(px); });
        EXPECT_EQ(wrong, 0) << "pixels inside the outline differ from the frozen screen";

        // The band: exactly the outline colour, 2 points on every side.
        int offBand = 0;
        const QRectF& box = bands.outlineBox;
        // QRectF's top is the lower edge here, as y goes up.
        for (const QRectF& strip : {QRectF(box.left(), box.top(), box.width(), 2),
                                    QRectF(box.left(), box.bottom() - 2, box.width(), 2),
                                    QRectF(box.left(), box.top() + 2, 2, box.height() - 4),
                                    QRectF(box.right() - 2, box.top() + 2, 2, box.height() - 4)}) {
            forEachPixel(r, strip, [&](QPoint px) { offBand += r.outAt(px) != outline; });
        }
        EXPECT_EQ(offBand, 0);

        // Outside the outline everything is dimmed to half.
        int undimmed = 0;
        forEachPixel(r, QRectF(0, 0, kScreen.width(), box.top()),
                     [&](QPoint px) { undimmed += !r.isDimmed(px); });
        forEachPixel(r, QRectF(box.right(), box.top(), kScreen.width() - box.right(), 4),
                     [&](QPoint px) { undimmed += !r.isDimmed(px); });
        forEachPixel(r, QRectF(0, box.bottom(), kScreen.width(), 3),
                     [&](QPoint px) { undimmed += !r.isDimmed(px); });
        EXPECT_EQ(undimmed, 0);
    }
}

TEST_P(OverlayPainterTest, WithoutAHoleTheScreenIsEitherPlainOrWhollyDimmed)
{
    OverlayFrame plain;
    plain.screenSize = kScreen;
    const Rendered clear = render(plain, GetParam());
    EXPECT_EQ(clear.out.convertToFormat(QImage::Format_RGB32),
              clear.frozen.convertToFormat(QImage::Format_RGB32));

    OverlayFrame dark = plain;
    dark.dimHole = QRectF();
    const Rendered dimmed = render(dark, GetParam());
    for (QPointF p : {QPointF(0.5, 0.5), QPointF(200, 150), QPointF(399.5, 299.5)})
        EXPECT_TRUE(dimmed.isDimmed(dimmed.pixelAt(p)));
}

TEST_P(OverlayPainterTest, SizeLabelIsDrawnWhollyOnTheScreenNearEveryEdge)
{
    const QRgb labelColor = OverlayPainter::sizeLabelColor().rgb();
    for (const QRectF& selection :
         {QRectF(150, 100, 100, 50), QRectF(0, 0, 60, 40), QRectF(340, 0, 60, 40),
          QRectF(340, 260, 60, 40), QRectF(0, 260, 60, 40), QRectF(0, 0, 400, 300)}) {
        OverlayFrame frame;
        frame.screenSize = kScreen;
        frame.sizeLabelFor = selection;
        const Rendered r = render(frame, GetParam());
        const std::optional<SizeLabel> label = placeSizeLabel(selection, kScreen);
        ASSERT_TRUE(label);
        const QRectF f = label->frame;
        ASSERT_TRUE(QRectF(QPointF(0, 0), kScreen).contains(f));
        // Inside the rounded corners, away from the text.
        for (QPointF p :
             {QPointF(f.left() + 3, f.top() + 3), QPointF(f.right() - 3, f.top() + 3),
              QPointF(f.left() + 3, f.bottom() - 3), QPointF(f.right() - 3, f.bottom() - 3)}) {
            EXPECT_EQ(r.outAt(r.pixelAt(p)), labelColor)
                << "selection at " << selection.x() << "," << selection.y();
        }
        int white = 0;
        forEachPixel(r, f, [&](QPoint px) {
            white += qRed(r.outAt(px)) > 240 && qGreen(r.outAt(px)) > 240;
        });
        EXPECT_GT(white, 10) << "the numbers are missing";
    }
}

TEST_P(OverlayPainterTest, MagnifierSquareSitsWherePlacedWithItsFrame)
{
    const double scale = GetParam();
    colour::ColorReadoutState state;
    colour::ColorPickerImageView readout(state);
    readout.setFrozenScreen(frozenScreen(scale), scale);
    OverlayFrame frame;
    frame.screenSize = kScreen;
    frame.pointer = QPointF(200, 150);
    frame.magnifier = HoverMagnifier::square(frame.pointer, kScreen);
    frame.cross = HoverMagnifier::cross(frame.pointer);
    state.mouseMoved(frame.pointer, kScreen.height());
    const Rendered r = render(frame, scale, &readout);

    const QRgb branding = OverlayPainter::outlineColor().rgb();
    const QRectF& sq = *frame.magnifier;
    EXPECT_EQ(r.outAt(r.pixelAt(QPointF(sq.left() + 1, sq.center().y() + 20))), branding);
    EXPECT_EQ(r.outAt(r.pixelAt(QPointF(sq.right() - 1, sq.center().y() + 20))), branding);
    EXPECT_NE(r.outAt(r.pixelAt(QPointF(sq.left() - 5, sq.center().y()))), branding);
    // The readout named the colour it read.
    ASSERT_TRUE(state.hexOfColor);
    EXPECT_TRUE(state.hexOfColor->startsWith(QLatin1Char('#')));
    // The cross is dark on the pointer's row, right of the gap.
    const QRgb arm = r.outAt(r.pixelAt(QPointF(208, 149.5)));
    EXPECT_LT(qGray(arm), 40);
}

TEST_P(OverlayPainterTest, TipBoxSitsInTheLowerLeftCorner)
{
    OverlayFrame frame;
    frame.screenSize = kScreen;
    frame.tip = QStringLiteral("Click F to select FullScreen\nsecond line");
    const Rendered r = render(frame, GetParam());
    const QRectF box = OverlayPainter::tipBox(frame.tip);
    EXPECT_EQ(box.topLeft(), QPointF(10, 10));
    EXPECT_GT(box.height(), 2 * 12 + 20 - 1);
    EXPECT_EQ(r.outAt(r.pixelAt(QPointF(13, 13))), qRgb(0, 0, 0));
    EXPECT_EQ(r.outAt(r.pixelAt(QPointF(box.right() - 3, box.bottom() - 3))), qRgb(0, 0, 0));
    EXPECT_EQ(r.outAt(r.pixelAt(QPointF(5, 5))), r.frozenAt(r.pixelAt(QPointF(5, 5))));
    int white = 0;
    forEachPixel(r, box, [&](QPoint px) { white += qGray(r.outAt(px)) > 200; });
    EXPECT_GT(white, 30);
}

} // namespace
} // namespace capture
