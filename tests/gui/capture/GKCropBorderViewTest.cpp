// SPDX-License-Identifier: GPL-3.0-or-later
#include "annotation/ui/GKCropBorderView.h"

#include <QImage>

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace annotation {
namespace {

using overlay::PointerRole;

// A 100 by 50 selection: the border is 112 by 62 points.
constexpr int kWidth = 112;
constexpr int kHeight = 62;

struct Picture
{
    QImage image;
    double scale;

    // The device pixel at a point of the border (y up).
    [[nodiscard]] QRgb at(double x, double y) const
    {
        return image.pixel(static_cast<int>(std::floor(x * scale)),
                           static_cast<int>(std::floor((kHeight - y) * scale)));
    }
};

Picture render(GKCropBorderView& view, double scale)
{
    view.resize(kWidth, kHeight);
    Picture p{QImage(static_cast<int>(kWidth * scale), static_cast<int>(kHeight * scale),
                     QImage::Format_ARGB32_Premultiplied),
              scale};
    p.image.setDevicePixelRatio(scale);
    p.image.fill(Qt::transparent);
    view.render(&p.image, QPoint(), QRegion(), QWidget::DrawChildren);
    return p;
}

class GKCropBorderViewPaint : public ::testing::TestWithParam<double>
{};

INSTANTIATE_TEST_SUITE_P(Scales, GKCropBorderViewPaint, ::testing::Values(1.0, 2.0));

TEST_P(GKCropBorderViewPaint, OutlineLiesJustOutsideTheSelectionWithHandlesOnIt)
{
    GKCropBorderView view;
    const Picture p = render(view, GetParam());
    const QRgb outline = GKCropBorderView::outlineColor().rgb();
    const double step = 1.0 / GetParam();
    // The 2-point band from 4 to 6 points inside the border, on all sides,
    // away from the handles.
    for (double d = 4.0; d < 6.0; d += step) {
        // Rows are sampled at their middles: y runs up, pixel rows down.
        EXPECT_EQ(p.at(30, d + step / 2), outline) << d;
        EXPECT_EQ(p.at(30, kHeight - d - step / 2), outline) << d;
        EXPECT_EQ(p.at(d, 20), outline) << d;
        EXPECT_EQ(p.at(kWidth - d - step, 20), outline) << d;
    }
    // The selection itself and the margin outside the band are left clear.
    EXPECT_EQ(qAlpha(p.at(6.0, 20)), 0);
    EXPECT_EQ(qAlpha(p.at(56, 31)), 0);
    EXPECT_EQ(qAlpha(p.at(30, 4.0 - step / 2)), 0);
    EXPECT_EQ(qAlpha(p.at(30, 6.0 + step / 2)), 0);
    EXPECT_EQ(qAlpha(p.at(30, 0)), 0);

    // Eight handles: a coloured core in a white ring, on the corners and
    // edge middles of the band.
    for (QPointF c : {QPointF(5, 5), QPointF(56, 5), QPointF(107, 5), QPointF(107, 31),
                      QPointF(107, 57), QPointF(56, 57), QPointF(5, 57), QPointF(5, 31)}) {
        EXPECT_EQ(p.at(c.x(), c.y()), outline);
        EXPECT_EQ(p.at(c.x() - 3.5, c.y()), qRgb(255, 255, 255)) << c.x() << "," << c.y();
    }
}

TEST_P(GKCropBorderViewPaint, HandlesGoWhenHiddenOrForAWindowSelection)
{
    const QRgb outline = GKCropBorderView::outlineColor().rgb();
    GKCropBorderView hidden;
    hidden.setHideHandleRect(true);
    GKCropBorderView window;
    window.setOnlyClipCurrentWindow(true);
    for (GKCropBorderView* view : {&hidden, &window}) {
        const Picture p = render(*view, GetParam());
        EXPECT_EQ(qAlpha(p.at(1.5, 5)), 0); // where a handle's ring would be
        EXPECT_EQ(qAlpha(p.at(56, 1.5)), 0);
        EXPECT_EQ(p.at(5, 5), outline); // the outline stays
    }
}

TEST_P(GKCropBorderViewPaint, ScrollingCaptureShowsOnlyItsThinFrame)
{
    GKCropBorderView view;
    view.setContextProvider([] {
        CropBorderContext context;
        context.scrollScreenShot = true;
        return context;
    });
    view.setBorderColor(QColor(255, 0, 0));
    const Picture p = render(view, GetParam());
    EXPECT_EQ(p.at(5.2, 30), qRgb(255, 0, 0));
    EXPECT_EQ(p.at(50, kHeight - 5.8), qRgb(255, 0, 0));
    EXPECT_EQ(qAlpha(p.at(4.5, 5)), 0);
    EXPECT_EQ(qAlpha(p.at(30, 6.5)), 0);
}

TEST(GKCropBorderView, FollowsThePointerHandedOnByTheOverlay)
{
    QWidget overlay;
    overlay.resize(400, 300);
    GKCropBorderView view(&overlay);
    view.setContextProvider([] {
        CropBorderContext context;
        context.clipToolbarWindowOpened = true;
        return context;
    });
    const QRectF frame(94, 44, kWidth, kHeight); // the selection (100, 50, 100, 50) grown by 6
    view.setFrameInOverlay(frame);
    EXPECT_EQ(view.geometry(), QRect(94, 300 - 44 - kHeight, kWidth, kHeight));

    std::vector<PointerRole> roles;
    std::vector<Qt::CursorShape> shapes;
    QObject::connect(&view, &GKCropBorderView::cursorChanged,
                     [&](PointerRole role, Qt::CursorShape shape) {
                         roles.push_back(role);
                         shapes.push_back(shape);
                     });

    view.mouseMovedInOverlay(QPointF(150, 75)); // the body
    EXPECT_TRUE(view.isCanMove());
    view.mouseMovedInOverlay(QPointF(200, 100)); // top-right handle
    EXPECT_TRUE(view.isInResizeRect());
    EXPECT_EQ(view.whichInResizeRect(), 5);
    view.mouseMovedInOverlay(QPointF(150, 46)); // bottom edge
    EXPECT_EQ(view.whichInResizeRect(), 2);

    ASSERT_EQ(roles.size(), 3u);
    EXPECT_EQ(roles[0], PointerRole::OverStroke);
    EXPECT_EQ(shapes[0], Qt::OpenHandCursor);
    EXPECT_EQ(roles[1], PointerRole::ResizeAlternate);
    EXPECT_EQ(shapes[1], Qt::SizeBDiagCursor);
    EXPECT_EQ(roles[2], PointerRole::Resize);
    EXPECT_EQ(shapes[2], Qt::SizeVerCursor);
    EXPECT_EQ(view.cursor().shape(), Qt::SizeVerCursor);
    EXPECT_EQ(view.pointerRole(), PointerRole::Resize);

    // A drag out of the handle: the release restores that handle's cursor.
    bool rectsEnabled = false;
    QObject::connect(&view, &GKCropBorderView::cursorRectsEnabledChanged,
                     [&](bool enabled) { rectsEnabled = enabled; });
    view.mouseDown(1);
    view.mouseDragged();
    view.mouseMovedInOverlay(QPointF(380, 280));
    view.mouseUp(1);
    EXPECT_TRUE(rectsEnabled);
    EXPECT_EQ(shapes.back(), Qt::SizeVerCursor);
}

} // namespace
} // namespace annotation
