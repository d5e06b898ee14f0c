// SPDX-License-Identifier: GPL-3.0-or-later
// What a mosaic or blur costs on a 3840x2160 screen: the twenty filtered
// copies made once per selection (target: ready within 150 ms), and one
// patch cut and stretched into the overlay during a drag (target: 4 ms).
#include "annotation/logic/MosaicFilters.h"

#include <QPainter>

#include <benchmark/benchmark.h>

namespace {

using namespace annotation::mosaic;

// A screen with detail everywhere, as text and photos give.
QImage busyScreen(int w, int h)
{
    QImage image(w, h, QImage::Format_RGB32);
    for (int y = 0; y < h; ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < w; ++x)
            line[x] = qRgb((x * 7) ^ (y * 3), (x + y) & 0xff, (x * y) >> 4);
    }
    return image;
}

void twentyCopiesOf4k(benchmark::State& bench)
{
    const QImage screen = busyScreen(3840, 2160);
    for (auto _ : bench) {
        const FilteredCopies copies(workImageOf(screen, 1.0));
        benchmark::DoNotOptimize(copies.ready());
    }
}
BENCHMARK(twentyCopiesOf4k)->Unit(benchmark::kMillisecond)->UseRealTime();

// A mosaic patch and a blur patch, one after the other.
void patchDuringADragAt4k(benchmark::State& bench)
{
    const QImage screen = busyScreen(3840, 2160);
    const FilteredCopies copies(workImageOf(screen, 1.0));
    QImage overlay(3840, 2160, QImage::Format_ARGB32_Premultiplied);
    const QRectF patch(600, 400, 1600, 900);
    for (auto _ : bench) {
        const QImage cut =
            cutPatch(*copies.forStroke(6, true), patchSourceRect(patch, 6, 2160, true));
        QPainter p(&overlay);
        p.drawImage(patch, cut);
    }
}
BENCHMARK(patchDuringADragAt4k)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
