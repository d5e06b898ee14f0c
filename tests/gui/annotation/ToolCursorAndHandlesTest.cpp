// SPDX-License-Identifier: GPL-3.0-or-later
// The tool's own cursor, drawn for one and two pixels per point, and the
// active ellipse and line with their handles, kept as pictures (record
// with KELVO_UPDATE_GOLDENS=1 and look at each before keeping it).
#include "annotation/render/StrokePainter.h"
#include "annotation/ui/GKCropBorderView.h"
#include "support/GoldenImage.h"
#include "toolbar/logic/ToolCursor.h"

#include <QPainter>
#include <QPixmap>

#include <gtest/gtest.h>

namespace {

using namespace toolbar;

const QColor kBlue(20, 90, 230);
const QColor kBackdrop(128, 128, 128);

// The cursor over a plain grey, as it shows on a picture, at its own
// pixel size.
QImage onBackdrop(const QImage& cursor)
{
    QImage shown(cursor.size(), QImage::Format_ARGB32_Premultiplied);
    shown.fill(kBackdrop);
    QImage pixels = cursor;
    pixels.setDevicePixelRatio(1); // pixel for pixel
    QPainter painter(&shown);
    painter.drawImage(QPoint(0, 0), pixels);
    painter.end();
    return shown;
}

bool isWhite(QRgb p)
{
    return qRed(p) > 230 && qGreen(p) > 230 && qBlue(p) > 230;
}

// The leftmost column with a white pixel below the cross's rim and away
// from its arm, where the number is written; -1 when there is none.
int firstDigitColumn(const QImage& image)
{
    const int ratio = qRound(image.devicePixelRatio());
    const int centre = image.width() / 2;
    for (int x = 0; x < image.width(); ++x)
        for (int y = centre + 2 * ratio; y < image.height(); ++y)
            if (isWhite(image.pixel(x, y)) && qAlpha(image.pixel(x, y)) == 255 &&
                std::abs(x - centre) > 2 * ratio)
                return x;
    return -1;
}

TEST(ToolCursor, ACrossInTheToolsColourWithTheSizeInTheBottomRightQuadrant)
{
    const QImage one = toolCursorImage({kBlue, 8}, 1);
    ASSERT_EQ(one.size(), QSize(32, 32));
    EXPECT_EQ(kToolCursorHotSpot, QPoint(16, 16));
    // The ring leaves the hot spot itself clear, so the pixel under it shows.
    EXPECT_EQ(qAlpha(one.pixel(16, 16)), 0);
    // Two-point arms in the colour, on a white rim.
    for (const QPoint p : {QPoint(6, 15), QPoint(6, 16), QPoint(25, 16), QPoint(15, 6),
                           QPoint(16, 8), QPoint(16, 25)})
        EXPECT_EQ(one.pixelColor(p), kBlue) << p.x() << "," << p.y();
    EXPECT_TRUE(isWhite(one.pixel(6, 14)) || qAlpha(one.pixel(6, 14)) < 255);
    EXPECT_EQ(qAlpha(one.pixel(0, 0)), 0);
    EXPECT_EQ(qAlpha(one.pixel(8, 8)), 0);

    // The digits are white with a black rim, only below and right of the cross.
    int white = 0;
    for (int y = 0; y < 32; ++y)
        for (int x = 0; x < 32; ++x)
            if (isWhite(one.pixel(x, y)) && std::abs(x - 16) > 2 && std::abs(y - 16) > 2) {
                ++white;
                EXPECT_TRUE(x > 16 && y > 16) << "a white pixel at " << x << "," << y;
            }
    EXPECT_GT(white, 3);

    // A three-digit number begins further left than a one-digit one.
    const QImage three = toolCursorImage({kBlue, 100}, 1);
    ASSERT_GE(firstDigitColumn(one), 18);
    EXPECT_LT(firstDigitColumn(three), firstDigitColumn(one));
    EXPECT_NE(toolCursorImage({Qt::red, 8}, 1), one);
}

TEST(ToolCursor, IsDrawnAtTheScreensPixelRatioSoItStaysSharp)
{
    const QImage two = toolCursorImage({kBlue, 8}, 2);
    ASSERT_EQ(two.size(), QSize(64, 64));
    EXPECT_EQ(two.devicePixelRatio(), 2.0);
    // The two-point arm is four whole pixels, none of them blended.
    for (int y = 30; y < 34; ++y)
        EXPECT_EQ(two.pixelColor(12, y), kBlue) << y;
    EXPECT_FALSE(two.pixelColor(12, 29) == kBlue);
    EXPECT_GE(firstDigitColumn(two), 36);
}

TEST(ToolCursorGolden, OneAndThreeDigitNumbersAtBothScales)
{
    const struct
    {
        const char* name;
        ToolCursorLook look;
    } cases[] = {{"cursor-square-8", {kBlue, 8}}, {"cursor-highlight-100", {Qt::red, 100}}};
    for (const auto& c : cases) {
        for (const double scale : {1.0, 2.0}) {
            const QString name = QStringLiteral("%1-x%2").arg(QLatin1String(c.name)).arg(scale);
            const golden::Result result =
                golden::compare(onBackdrop(toolCursorImage(c.look, scale)), name, golden::kPainted);
            EXPECT_TRUE(result.matches) << qPrintable(result.message);
        }
    }
}

// The crop border shows the tool's cursor where a chosen tool draws, and
// the standard ones elsewhere; a cursor made again while the pointer is
// over free space shows at once.
TEST(ToolCursor, TheCropBorderShowsItWhereTheChosenToolDraws)
{
    QWidget overlay;
    overlay.resize(400, 300);
    annotation::GKCropBorderView border(&overlay);
    bool toolSelected = true;
    border.setContextProvider([&toolSelected] {
        annotation::CropBorderContext context;
        context.clipToolbarWindowOpened = true;
        context.toolSelected = toolSelected;
        return context;
    });
    border.setFrameInOverlay(QRectF(94, 44, 212, 112)); // a selection at (100, 50), 200 by 100
    struct Shown
    {
        overlay::PointerRole role;
        QCursor cursor;
    };
    std::vector<Shown> shown;
    QObject::connect(&border, &annotation::GKCropBorderView::cursorChanged,
                     [&](overlay::PointerRole role, Qt::CursorShape, const QCursor& cursor) {
                         shown.push_back({role, cursor});
                     });
    const auto cursorOf = [](const ToolCursorLook& look) {
        return QCursor(QPixmap::fromImage(toolCursorImage(look, 1)), 16, 16);
    };
    const QCursor blue = cursorOf({kBlue, 3});
    border.setToolCursor(blue);

    border.mouseMovedInOverlay(QPointF(200, 100)); // the body
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].role, overlay::PointerRole::ToolCrosshair);
    EXPECT_EQ(shown[0].cursor.shape(), Qt::BitmapCursor);
    EXPECT_EQ(shown[0].cursor.pixmap().cacheKey(), blue.pixmap().cacheKey());
    EXPECT_EQ(shown[0].cursor.hotSpot(), QPoint(16, 16));

    const QCursor red = cursorOf({Qt::red, 16});
    border.setToolCursor(red);
    EXPECT_EQ(border.cursor().pixmap().cacheKey(), red.pixmap().cacheKey());

    border.mouseMovedInOverlay(QPointF(300, 150)); // the top-right handle
    ASSERT_EQ(shown.size(), 2u);
    EXPECT_EQ(shown[1].cursor.shape(), Qt::SizeBDiagCursor);
    // Made again away from free space, it waits for the pointer's return.
    border.setToolCursor(blue);
    EXPECT_EQ(border.cursor().shape(), Qt::SizeBDiagCursor);
    border.mouseMovedInOverlay(QPointF(200, 100));
    ASSERT_EQ(shown.size(), 3u);
    EXPECT_EQ(shown[2].cursor.pixmap().cacheKey(), blue.pixmap().cacheKey());

    // Without a drawing tool the body moves the selection.
    toolSelected = false;
    border.mouseMovedInOverlay(QPointF(300, 150));
    border.mouseMovedInOverlay(QPointF(200, 100));
    ASSERT_EQ(shown.size(), 5u);
    EXPECT_EQ(shown[4].cursor.shape(), Qt::OpenHandCursor);
}

// The active stroke of the two families the stroke layer's own goldens
// leave out, over a chequer so that the handles' white shows.
QImage activeStroke(const annotation::Stroke& stroke, double scale)
{
    const QSizeF tile(120, 90);
    QImage picture((tile * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    picture.setDevicePixelRatio(scale);
    QPainter painter(&picture);
    for (int row = 0; row * 10 < tile.height(); ++row)
        for (int column = 0; column * 10 < tile.width(); ++column)
            painter.fillRect(QRectF(column * 10, row * 10, 10, 10), (row + column) % 2 == 0
                                                                        ? QColor(236, 236, 236)
                                                                        : QColor(176, 188, 204));
    annotation::StrokeState state;
    state.dicOfCurrentStroke = stroke;
    state.commit();
    state.strokeState = annotation::StrokeGesture::Draw;
    painter.drawImage(QPointF(0, 0), annotation::StrokePainter::renderLayer(
                                         state, QRectF(QPointF(0, 0), tile), scale));
    painter.end();
    return picture;
}

annotation::Stroke stroke(int type, QPointF a, QPointF b, double size)
{
    annotation::Stroke s;
    s.type = type;
    s.list = 1;
    s.color = kBlue;
    s.size = size;
    s.X1 = a.x();
    s.Y1 = a.y();
    s.X2 = b.x();
    s.Y2 = b.y();
    return s;
}

TEST(ActiveStrokeGolden, AnEllipseShowsEightHandlesAndALineOneAtEachEnd)
{
    namespace st = annotation::stroketype;
    for (const double scale : {1.0, 2.0}) {
        const QString suffix = QStringLiteral("-x%1").arg(scale);
        golden::Result result =
            golden::compare(activeStroke(stroke(st::Ellipse, {20, 15}, {100, 75}, 4), scale),
                            QStringLiteral("active-ellipse") + suffix, golden::kPainted);
        EXPECT_TRUE(result.matches) << qPrintable(result.message);
        result = golden::compare(activeStroke(stroke(st::Line, {15, 70}, {105, 20}, 6), scale),
                                 QStringLiteral("active-line") + suffix, golden::kPainted);
        EXPECT_TRUE(result.matches) << qPrintable(result.message);
    }
}

} // namespace
