// SPDX-License-Identifier: GPL-3.0-or-later
// What the pointer costs over a heavily marked capture: 500 strokes of
// every drawn kind, a press that finds nothing (the whole history walked),
// the hover's test, and the painted-pixels test every pointer move runs;
// and the rebuild of the tool's cursor that every wheel tick makes. Each
// should stay well under a millisecond.
#include "annotation/logic/StrokeCoverage.h"
#include "annotation/logic/StrokeHitTest.h"
#include "toolbar/logic/ToolCursor.h"

#include <QCursor>
#include <QGuiApplication>
#include <QPixmap>

#include <benchmark/benchmark.h>

namespace {

using namespace annotation;

// 500 strokes spread over a 1600 by 900 selection, each moved once, so the
// walk also skips 500 covered snapshots.
StrokeState markedCapture()
{
    StrokeState state;
    std::uint32_t seed = 2026U;
    const auto next = [&seed](int range) {
        seed = seed * 1664525U + 1013904223U;
        return static_cast<double>((seed >> 8) % static_cast<std::uint32_t>(range));
    };
    for (int i = 0; i < 500; ++i) {
        Stroke s;
        s.type = i % 5;
        s.list = i / 5 + 1;
        s.color = Qt::red;
        s.size = 3 + i % 7;
        s.normalTypeOfArrow = i % 2 == 0 ? QStringLiteral("1") : QStringLiteral("0");
        const double x = next(1500);
        const double y = next(800);
        if (s.type == stroketype::PencilPen) {
            for (int k = 0; k < 40; ++k)
                s.allPoints.emplace_back(x + k * 2.5, y + next(30));
        } else {
            s.X1 = x;
            s.Y1 = y;
            s.X2 = x + 20 + next(80);
            s.Y2 = y + 20 + next(80);
        }
        state.dicOfCurrentStroke = s;
        state.commit();
        s.X1 = s.X1.value_or(0) + 1;
        state.dicOfCurrentStroke = s;
        state.commit();
    }
    state.dicOfCurrentStroke.reset();
    return state;
}

// A point no stroke reaches: every test runs to the end of the walk.
const QPointF kNowhere(-500, -500);

void pressMisses(benchmark::State& bench)
{
    const StrokeState state = markedCapture();
    for (auto _ : bench)
        benchmark::DoNotOptimize(hittest::strokeUnderMouse(state, kNowhere));
}
BENCHMARK(pressMisses)->Unit(benchmark::kMicrosecond);

void hoverMisses(benchmark::State& bench)
{
    const StrokeState state = markedCapture();
    for (auto _ : bench)
        benchmark::DoNotOptimize(
            hittest::strokeUnderMouse(state, kNowhere, hittest::HitTest::Hover));
}
BENCHMARK(hoverMisses)->Unit(benchmark::kMicrosecond);

void paintedPixelsUnderAMove(benchmark::State& bench)
{
    const StrokeState state = markedCapture();
    const QRectF layer(-1000, -1000, 4000, 4000);
    for (auto _ : bench)
        benchmark::DoNotOptimize(layerCoversPoint(state, kNowhere, layer));
}
BENCHMARK(paintedPixelsUnderAMove)->Unit(benchmark::kMicrosecond);

// The look, the picture and the cursor made of it, at `scale` pixels per
// point; the size changes every time, as it does under the wheel.
void toolCursorRebuild(benchmark::State& bench)
{
    const double scale = static_cast<double>(bench.range(0));
    int size = 1;
    for (auto _ : bench) {
        size = size % 120 + 1;
        const toolbar::ToolCursorLook look =
            toolbar::toolCursorLook(u"square", std::nullopt, QColor(20, 90, 230), size);
        const QCursor cursor(QPixmap::fromImage(toolbar::toolCursorImage(look, scale)),
                             toolbar::kToolCursorHotSpot.x(), toolbar::kToolCursorHotSpot.y());
        benchmark::DoNotOptimize(cursor.pixmap().cacheKey());
    }
}
BENCHMARK(toolCursorRebuild)->Arg(1)->Arg(2)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv)
{
    // Fonts and pixmaps need a GUI application; no display is needed.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
