// SPDX-License-Identifier: GPL-3.0-or-later
// Every tool's strokes as the stroke layer paints them, kept as pictures at
// one and two pixels per point. The layer is laid over a fixed chequer, so
// that colour, alpha and the edges' antialiasing all show. Record with
// KELVO_UPDATE_GOLDENS=1 and look at each picture before keeping it.
// And the stroke view's picture of its settled strokes, which must follow
// every change of the history.
#include "annotation/render/StrokePainter.h"
#include "annotation/ui/AnnotatedImageView.h"
#include "support/GoldenImage.h"

#include <QPainter>
#include <QWidget>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <vector>

namespace annotation {
namespace {

namespace st = stroketype;

// The layer lies away from the overlay's corner, so that each stroke is
// painted at its stored place less the layer's origin.
constexpr QPointF kOrigin(300, 200);
constexpr double kCell = 10; // chequer cells, in points

void paintChequer(QPainter& painter, QSizeF size)
{
    for (int row = 0; row * kCell < size.height(); ++row)
        for (int column = 0; column * kCell < size.width(); ++column)
            painter.fillRect(QRectF(column * kCell, row * kCell, kCell, kCell),
                             (row + column) % 2 == 0 ? QColor(236, 236, 236)
                                                     : QColor(176, 188, 204));
}

// A stroke of `type` from a to b, given in points of the layer.
Stroke stroke(int type, QPointF a, QPointF b, double size, QColor color)
{
    Stroke s;
    s.type = type;
    s.color = color;
    s.colorAlpha = color.alphaF();
    s.color.setAlphaF(1.0f);
    s.size = size;
    s.X1 = kOrigin.x() + a.x();
    s.Y1 = kOrigin.y() + a.y();
    s.X2 = kOrigin.x() + b.x();
    s.Y2 = kOrigin.y() + b.y();
    return s;
}

Stroke arrow(QPointF a, QPointF b, double size, QColor color, bool strokedHead)
{
    Stroke s = stroke(st::Arrow, a, b, size, color);
    s.normalTypeOfArrow = strokedHead ? QStringLiteral("1") : QStringLiteral("0");
    return s;
}

// A wavy path as the pencil samples it, a point every few points.
Stroke pencil(QPointF from, double length, double amplitude, double size, QColor color)
{
    Stroke s = stroke(st::PencilPen, {}, {}, size, color);
    s.X1 = s.Y1 = s.X2 = s.Y2 = std::nullopt;
    for (double x = 0; x <= length; x += 3)
        s.allPoints.emplace_back(kOrigin.x() + from.x() + x,
                                 kOrigin.y() + from.y() + amplitude * std::sin(x / 9.0));
    return s;
}

// The strokes moved by `delta`, as a move of each would leave them.
std::vector<Stroke> shifted(std::vector<Stroke> strokes, QPointF delta)
{
    for (Stroke& s : strokes) {
        for (auto* value : {&s.X1, &s.X2})
            if (*value)
                **value += delta.x();
        for (auto* value : {&s.Y1, &s.Y2})
            if (*value)
                **value += delta.y();
        for (QPointF& p : s.allPoints)
            p += delta;
    }
    return strokes;
}

// The history of the strokes, in order, none of them active.
StrokeState history(std::vector<Stroke> strokes)
{
    StrokeState state;
    std::vector<int> lists(9, 0);
    for (Stroke& s : strokes) {
        s.list = ++lists[static_cast<std::size_t>(s.type)];
        state.dicOfCurrentStroke = s;
        state.commit();
    }
    state.dicOfCurrentStroke.reset();
    return state;
}

struct ToolCase
{
    const char* name;
    std::function<std::vector<Stroke>()> strokes;
};

const QColor kRed(255, 38, 0);
const QColor kBlue(20, 90, 230);

const ToolCase kToolCases[] = {
    {"rectangle",
     [] {
         return std::vector{stroke(st::Square, {15, 15}, {105, 75}, 3, kRed)};
     }},
    {"rounded-rectangle",
     [] {
         Stroke wide = stroke(st::Square, {10, 15}, {85, 75}, 5, kBlue);
         wide.enableRoundOfSquare = true;
         // Narrower than 20 points: half its width becomes the radius.
         Stroke narrow = stroke(st::Square, {95, 12}, {111, 78}, 3, kRed);
         narrow.enableRoundOfSquare = true;
         return std::vector{wide, narrow};
     }},
    {"filled-rectangle",
     [] {
         Stroke plain = stroke(st::Square, {10, 10}, {70, 60}, 3, QColor(0, 160, 60, 153));
         plain.filledOfSquare = true;
         Stroke round = stroke(st::Square, {50, 30}, {110, 80}, 3, kRed);
         round.filledOfSquare = true;
         round.enableRoundOfSquare = true;
         return std::vector{plain, round};
     }},
    {"ellipse",
     [] {
         return std::vector{stroke(st::Ellipse, {15, 15}, {105, 75}, 4, kRed)};
     }},
    {"filled-ellipse",
     [] {
         Stroke s = stroke(st::Ellipse, {15, 15}, {105, 75}, 4, QColor(140, 40, 200, 178));
         s.filledOfEllipse = true;
         return std::vector{s};
     }},
    {"line",
     [] {
         return std::vector{stroke(st::Line, {15, 20}, {100, 70}, 9, kRed),
                            stroke(st::Line, {20, 75}, {105, 15}, 2, kBlue)};
     }},
    {"arrow-stroked-head",
     [] {
         return std::vector{arrow({12, 15}, {105, 70}, 3, kRed, true),
                            arrow({105, 20}, {30, 78}, 6, kBlue, true)};
     }},
    {"arrow-tapered",
     [] {
         return std::vector{arrow({12, 15}, {105, 70}, 2, kRed, false),
                            arrow({105, 20}, {30, 78}, 4, kBlue, false)};
     }},
    {"pencil",
     [] {
         return std::vector{pencil({10, 25}, 100, 12, 3, kRed),
                            pencil({10, 62}, 100, 8, 10, QColor(20, 90, 230, 200))};
     }},
};

constexpr QSizeF kTile(120, 90);

// The layer as the finished picture gets it, laid over the chequer.
QImage paintedTile(const StrokeState& state, double scale)
{
    QImage picture((kTile * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    picture.setDevicePixelRatio(scale);
    QPainter painter(&picture);
    paintChequer(painter, kTile);
    painter.drawImage(QPointF(0, 0),
                      StrokePainter::renderLayer(state, QRectF(kOrigin, kTile), scale));
    painter.end();
    return picture;
}

QString goldenName(const char* name, double scale)
{
    return QStringLiteral("stroke-%1-x%2").arg(QLatin1String(name)).arg(scale);
}

class ToolGolden : public ::testing::TestWithParam<ToolCase>
{};

INSTANTIATE_TEST_SUITE_P(Tools, ToolGolden, ::testing::ValuesIn(kToolCases), [](const auto& tool) {
    std::string name = tool.param.name;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
});

TEST_P(ToolGolden, PaintsAsRecordedAtBothScales)
{
    const StrokeState state = history(GetParam().strokes());
    for (const double scale : {1.0, 2.0}) {
        const golden::Result result = golden::compare(
            paintedTile(state, scale), goldenName(GetParam().name, scale), golden::kPainted);
        EXPECT_TRUE(result.matches) << qPrintable(result.message);
    }
}

// The overlay's stand-in: a chequer under the stroke layer, which is a
// child of it as in a capture.
class Backdrop final : public QWidget
{
public:
    Backdrop() { resize(kSize.toSize()); }
    static constexpr QSizeF kSize{220, 160};

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        paintChequer(painter, kSize);
    }
};

// A selection of 180 by 120 points, 20 points in from the overlay's
// bottom-left corner.
constexpr QRectF kSelection(20, 20, 180, 120);

// The stroke view of `state` in a capture's overlay.
class CaptureView
{
public:
    explicit CaptureView(const StrokeState& state)
        : m_view(state, &m_overlay)
    {
        m_view.setFrameInOverlay(kSelection);
        m_overlay.show();
        m_view.setCurrentFunction([&state]() -> std::optional<int> {
            if (!state.dicOfCurrentStroke)
                return std::nullopt;
            return state.dicOfCurrentStroke->type;
        });
    }

    AnnotatedImageView& view() { return m_view; }

    [[nodiscard]] QImage picture(double scale)
    {
        QImage picture((Backdrop::kSize * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
        picture.setDevicePixelRatio(scale);
        m_overlay.render(&picture, QPoint(), QRegion(), QWidget::DrawChildren);
        return picture;
    }

private:
    Backdrop m_overlay;
    AnnotatedImageView m_view;
};

// The view with the history settled and the latest stroke active, as it is
// after its release.
QImage viewOf(std::vector<Stroke> settled, Stroke active, double scale)
{
    settled.push_back(std::move(active));
    StrokeState state = history(shifted(std::move(settled), kSelection.topLeft() - kOrigin));
    state.dicOfCurrentStroke = state.arrayOfStrokes().back();
    state.strokeState = StrokeGesture::Draw;
    return CaptureView(state).picture(scale);
}

std::vector<Stroke> someOfEach()
{
    Stroke round = stroke(st::Square, {5, 60}, {60, 95}, 3, kBlue);
    round.enableRoundOfSquare = true;
    Stroke filled = stroke(st::Ellipse, {100, 50}, {150, 90}, 3, QColor(0, 160, 60, 153));
    filled.filledOfEllipse = true;
    return {round,
            filled,
            stroke(st::Line, {5, 5}, {60, 40}, 5, kRed),
            arrow({70, 10}, {130, 30}, 3, kRed, true),
            arrow({120, 0}, {155, 40}, 3, kBlue, false),
            pencil({-10, 80}, 150, 6, 2, kRed)};
}

TEST(ActiveStrokeGolden, ARectangleShowsItsEightHandlesOverTheHistory)
{
    for (const double scale : {1.0, 2.0}) {
        const QImage picture =
            viewOf(someOfEach(), stroke(st::Square, {40, 20}, {120, 70}, 3, kRed), scale);
        const golden::Result result =
            golden::compare(picture, goldenName("active-rectangle", scale), golden::kPainted);
        EXPECT_TRUE(result.matches) << qPrintable(result.message);
    }
}

TEST(ActiveStrokeGolden, PencilAndArrowShowAHandleAtEachEnd)
{
    for (const double scale : {1.0, 2.0}) {
        const QImage pencilPicture =
            viewOf(someOfEach(), pencil({20, 30}, 110, 15, 4, kBlue), scale);
        golden::Result result =
            golden::compare(pencilPicture, goldenName("active-pencil", scale), golden::kPainted);
        EXPECT_TRUE(result.matches) << qPrintable(result.message);

        const QImage arrowPicture =
            viewOf(someOfEach(), arrow({30, 100}, {140, 60}, 4, kRed, true), scale);
        result = golden::compare(arrowPicture, goldenName("active-arrow", scale), golden::kPainted);
        EXPECT_TRUE(result.matches) << qPrintable(result.message);
    }
}

// The view keeps its settled strokes as a picture between paints. After
// each change of the history, what it shows must be what a view that
// never painted before shows for the same strokes.
TEST(StrokeViewPicture, FollowsEveryChangeOfTheHistory)
{
    StrokeState state = history(shifted(someOfEach(), kSelection.topLeft() - kOrigin));
    // One view per scale, so that neither repaints its picture for a
    // change of scale.
    CaptureView kept(state);
    CaptureView keptAt2(state);
    const auto check = [&](const char* step) {
        const QImage shown = kept.picture(1);
        EXPECT_EQ(shown, CaptureView(state).picture(1)) << step;
        EXPECT_EQ(keptAt2.picture(2), CaptureView(state).picture(2)) << step << " at scale 2";
        return shown;
    };
    const auto draw = [&](Stroke s) {
        s = shifted({s}, kSelection.topLeft() - kOrigin).front();
        s.list = state.getListNumberFromArrayOfStrokes(s.type) + 1;
        state.dicOfCurrentStroke = s;
        state.strokeState = StrokeGesture::Draw;
    };

    const QImage start = check("the history");
    draw(stroke(st::Square, {40, 20}, {120, 70}, 3, kRed));
    const QImage drawing = check("a stroke being drawn");
    EXPECT_NE(drawing, start);
    state.commit();
    EXPECT_EQ(check("its commit"), drawing);
    state.dicOfCurrentStroke->Y2 = *state.dicOfCurrentStroke->Y2 + 10;
    check("the active stroke changed in place");

    state.undoDraw();
    EXPECT_EQ(check("an undo"), start);
    ASSERT_TRUE(state.redoDraw());
    const QImage redone = check("a redo");
    EXPECT_NE(redone, start);

    // A move: a new snapshot of the oldest stroke, which now lies on top.
    Stroke moved = state.currentStrokes(false).back();
    *moved.X1 += 30;
    *moved.X2 += 30;
    state.dicOfCurrentStroke = moved;
    state.commit();
    state.dicOfCurrentStroke.reset();
    EXPECT_NE(check("a move"), redone);
    state.dicOfCurrentStroke = moved;
    check("the moved stroke active");

    ASSERT_TRUE(state.deleteCurrentStroke());
    check("a delete");

    kept.view().hide();
    kept.view().show();
    keptAt2.view().hide();
    keptAt2.view().show();
    check("a hide and a show");
    state.clear();
    check("the end of the capture");
}

} // namespace
} // namespace annotation
