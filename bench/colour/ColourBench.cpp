// SPDX-License-Identifier: GPL-3.0-or-later
// Look-ups per second of the colour namer against the cheapest possible
// nearest search over the same table (flat arrays, no texts): the ceiling a
// linear-pass design can reach. And what one redraw of the readout costs
// after a mouse move, at scale 1 and 2.
#include "colour/logic/ColorNamer.h"
#include "colour/ui/ColorPickerImageView.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <vector>

namespace {

using colour::Color;
using colour::ColorNamer;

// A fixed spread of colours, the same for both searches.
std::vector<Color> probeColours()
{
    std::vector<Color> colours;
    std::uint32_t seed = 12345U;
    for (int i = 0; i < 4096; ++i) {
        seed = seed * 1664525U + 1013904223U;
        colours.push_back(Color::fromBytes((seed >> 8) & 0xFF, (seed >> 16) & 0xFF, seed >> 24));
    }
    return colours;
}

// The same distance over structure-of-arrays floats, answering an index.
class BruteForceNearest
{
public:
    explicit BruteForceNearest(const ColorNamer& namer)
    {
        for (const auto& row : namer.rows())
            for (std::size_t k = 0; k < 6; ++k)
                m_columns[k].push_back(row.values[k]);
    }

    [[nodiscard]] std::size_t nearest(const Color& c) const
    {
        const float r = static_cast<float>(c.red * 255);
        const float g = static_cast<float>(c.green * 255);
        const float b = static_cast<float>(c.blue * 255);
        float h = 0.0f;
        float s = 0.0f;
        float l = 0.0f;
        colour::RGB2HSL(&h, &s, &l, r, g, b);
        const float q[6] = {r, g, b, h, s, l};
        std::size_t best = 0;
        float bestDistance = -1.0f;
        const std::size_t n = m_columns[0].size();
        for (std::size_t i = 0; i < n; ++i) {
            float rgb = 0.0f;
            float hsl = 0.0f;
            for (std::size_t k = 0; k < 3; ++k) {
                const float d = q[k] - m_columns[k][i];
                rgb += d * d;
                const float e = q[k + 3] - m_columns[k + 3][i];
                hsl += e * e;
            }
            const float distance = hsl * 2.0f + rgb;
            if (bestDistance < 0.0f || bestDistance > distance) {
                bestDistance = distance;
                best = i;
            }
        }
        return best;
    }

private:
    std::vector<float> m_columns[6];
};

const ColorNamer& namer()
{
    static const ColorNamer instance;
    return instance;
}

void BM_ColorNamerLookup(benchmark::State& state)
{
    const auto colours = probeColours();
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(namer().findNameForColor(colours[i++ % colours.size()]));
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_ColorNamerLookup);

void BM_BruteForceNearest(benchmark::State& state)
{
    const auto colours = probeColours();
    const BruteForceNearest brute(namer());
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(brute.nearest(colours[i++ % colours.size()]));
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_BruteForceNearest);

// A frozen 1080p screen at `scale` and the magnifier's square to paint into.
struct ReadoutBench
{
    explicit ReadoutBench(double scale)
        : target(QSize(120, 120) * scale, QImage::Format_ARGB32_Premultiplied)
        , view(readout)
    {
        QImage frozen(QSize(1920, 1080) * scale, QImage::Format_RGB32);
        frozen.fill(qRgb(40, 90, 160));
        target.setDevicePixelRatio(scale);
        view.setFrozenScreen(frozen, scale);
    }

    QImage target;
    colour::ColorReadoutState readout;
    colour::ColorPickerImageView view;
};

// One redraw after a move: sample, name, grid, frame, cross hair, texts.
void BM_ReadoutRedrawAfterMove(benchmark::State& state)
{
    ReadoutBench bench(static_cast<double>(state.range(0)));
    colour::ColorPickerImageView& view = bench.view;
    QImage& target = bench.target;
    double x = 100.0;
    for (auto _ : state) {
        x = x > 1800.0 ? 100.0 : x + 1.0;
        view.mouseMoved({x, 500.0}, 1080.0);
        QPainter painter(&target);
        view.paint(painter, {x, 500.0});
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_ReadoutRedrawAfterMove)->Arg(1)->Arg(2)->Unit(benchmark::kMicrosecond);

// A redraw without a move: pixels, grid, frame and cross hair only.
void BM_ReadoutRedrawStill(benchmark::State& state)
{
    ReadoutBench bench(static_cast<double>(state.range(0)));
    colour::ColorPickerImageView& view = bench.view;
    QImage& target = bench.target;
    for (auto _ : state) {
        QPainter painter(&target);
        view.paint(painter, {500.0, 500.0});
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_ReadoutRedrawStill)->Arg(1)->Arg(2)->Unit(benchmark::kMicrosecond);

// Items per second of the two searches, measured back to back in this run.
double lookupsPerSecond(bool bruteForce)
{
    const auto colours = probeColours();
    const BruteForceNearest brute(namer());
    const auto start = std::chrono::steady_clock::now();
    std::size_t n = 0;
    std::size_t sink = 0;
    while (std::chrono::steady_clock::now() - start < std::chrono::milliseconds(500)) {
        for (int k = 0; k < 256; ++k, ++n) {
            const Color& c = colours[n % colours.size()];
            if (bruteForce)
                sink += brute.nearest(c);
            else
                sink += static_cast<std::size_t>(namer().findNameForColor(c).colorName.size());
        }
    }
    benchmark::DoNotOptimize(sink);
    const double seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    return static_cast<double>(n) / seconds;
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();

    const double namerRate = lookupsPerSecond(false);
    const double bruteRate = lookupsPerSecond(true);
    std::printf("colour look-ups: ColorNamer %.0f/s, brute-force nearest %.0f/s, "
                "ColorNamer at %.2f of the brute-force rate (%.1fx slower)\n",
                namerRate, bruteRate, namerRate / bruteRate, bruteRate / namerRate);
    return 0;
}
