// SPDX-License-Identifier: GPL-3.0-or-later
// Time from a drag event to the repainted frame while a stroke is drawn
// over a full-screen selection that already holds 200 strokes of every
// tool: the event goes through the stroke input, and the overlay's frame
// is repainted where the stroke layer lies, the frozen screen under the
// layer as in a capture. At 1920x1080 pixels and at 3840x2160 pixels (two
// pixels per point). Drawing keeps up with a 120 Hz pointer when a frame
// takes at most 4 ms at 1080p and 8 ms at 4K. Prints the medians, the ratio
// to the target, the processor time (the wall-clock time of a busy machine
// holds other processes too) and, for scale, the frame of a layer that
// paints the whole history on every drag; exits 1 when a target is missed.
#include "annotation/logic/StrokeInput.h"
#include "annotation/logic/StrokeState.h"
#include "annotation/render/StrokePainter.h"
#include "annotation/ui/AnnotatedImageView.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QPainter>
#include <QWidget>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <random>
#include <time.h>
#include <vector>

namespace {

using namespace annotation;
namespace st = stroketype;

constexpr QSizeF kScreen(1920, 1080); // points, at both scales
constexpr int kHistory = 200;

struct Config
{
    const char* name;
    double scale;
    double targetMs;
};

const Config kConfigs[] = {{"1080p", 1, 4}, {"4K", 2, 8}};

// A frozen desktop: soft gradients with some noise, as photos and windows.
QImage frozenScreen(double scale)
{
    QImage image((kScreen * scale).toSize(), QImage::Format_RGB32);
    std::mt19937 random(3);
    for (int y = 0; y < image.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const int n = static_cast<int>(random() % 24);
            row[x] = qRgb((x / 8 + n) % 256, (y / 6 + n) % 256, (x + y) / 16 % 256);
        }
    }
    image.setDevicePixelRatio(scale);
    return image;
}

// The overlay's stand-in: the frozen screen under the stroke layer.
class Overlay final : public QWidget
{
public:
    explicit Overlay(double scale)
        : m_frozen(frozenScreen(scale))
    {
        resize(kScreen.toSize());
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.drawImage(QPointF(0, 0), m_frozen);
    }

private:
    QImage m_frozen;
};

NewStrokeSettings settingsFor(int type, int i)
{
    static const QColor colours[] = {QColor(255, 38, 0), QColor(20, 90, 230), QColor(0, 160, 60),
                                     QColor(250, 200, 0)};
    NewStrokeSettings settings;
    settings.color = colours[i % 4];
    settings.size = 2 + i % 4 * 2;
    settings.normalTypeOfArrow = i % 2 == 0;
    settings.enableRoundOfSquare = type == st::Square && i % 3 == 0;
    settings.filledOfSquare = type == st::Square && i % 5 == 0;
    settings.filledOfEllipse = type == st::Ellipse && i % 5 == 0;
    return settings;
}

// One gesture of `type` from `from`, through the stroke input as the
// overlay hands it on: a press, `drags` drag events along a curve, each
// handed to `drag`, and a release.
template <typename Drag>
void gesture(StrokeInput& input, int type, int i, QPointF from, int drags, Drag drag)
{
    input.mouseDown(from, overlay::PointerRole::ToolCrosshair, type, settingsFor(type, i),
                    [](QPointF) { return false; });
    QPointF p = from;
    for (int k = 1; k <= drags; ++k) {
        p = from + QPointF(k * 4.0, 40 * std::sin(k / 7.0) + k * 1.5);
        drag(p);
    }
    input.mouseUp(p);
}

// 200 strokes of the five drawing tools spread over the screen.
void fillHistory(StrokeState& state)
{
    StrokeInput input(state);
    std::mt19937 random(11);
    std::uniform_real_distribution<double> x(0, kScreen.width() - 360);
    std::uniform_real_distribution<double> y(0, kScreen.height() - 180);
    for (int i = 0; i < kHistory; ++i) {
        const int type = i % 5; // square, ellipse, line, arrow, pencil
        gesture(input, type, i, QPointF(x(random), y(random)), 12 + i % 60,
                [&input](QPointF p) { input.mouseDragged(p); });
    }
    state.dicOfCurrentStroke.reset();
    state.strokeState = StrokeGesture::Idle;
}

// The layer as it was painted before the view kept its settled strokes:
// the whole history on every paint. Measured beside the view, to show
// what keeping them saves.
class WholeHistoryView final : public QWidget
{
public:
    WholeHistoryView(const StrokeState& state, const StrokeInput& input, QWidget* parent)
        : QWidget(parent)
        , m_state(state)
        , m_input(input)
    {
        setAttribute(Qt::WA_NoSystemBackground);
        resize(kScreen.toSize());
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        StrokePainter::yUp(painter, height());
        StrokePainter(painter, QPointF(0, 0)).paintLayer(m_state, m_input.currentFunction());
    }

private:
    const StrokeState& m_state;
    const StrokeInput& m_input;
};

enum class Layer
{
    View,         // the real stroke view
    WholeHistory, // the whole history painted on every drag
};

// This thread's processor time in milliseconds: on a busy machine the
// wall-clock time also holds the time other processes had the processor.
double threadMs()
{
    timespec t{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return static_cast<double>(t.tv_sec) * 1e3 + static_cast<double>(t.tv_nsec) / 1e6;
}

double median(std::vector<double> samples)
{
    std::sort(samples.begin(), samples.end());
    return samples[samples.size() / 2];
}

struct Result
{
    double medianMs = 0;    // wall-clock
    double medianCpuMs = 0; // this thread's processor time
    int frames = 0;
};

// `rounds` of one gesture of each tool, `drags` drag events each, each
// drag timed from the event to the repainted frame.
Result measure(const Config& config, Layer kind, int rounds, int drags)
{
    Overlay overlay(config.scale);
    StrokeState state;
    fillHistory(state);
    StrokeInput input(state);
    AnnotatedImageView view(state, &overlay);
    view.setFrameInOverlay(QRectF(QPointF(0, 0), kScreen));
    view.setCurrentFunction([&input] { return input.currentFunction(); });
    WholeHistoryView whole(state, input, &overlay);
    (kind == Layer::View ? static_cast<QWidget&>(whole) : view).hide();

    QImage frame((kScreen * config.scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    frame.setDevicePixelRatio(config.scale);
    // What an update of the layer repaints: the overlay under it, then it.
    const QRegion layer(view.geometry());
    const auto repaint = [&] { overlay.render(&frame, QPoint(), layer, QWidget::DrawChildren); };
    repaint();

    std::vector<double> samples;
    std::vector<double> cpuSamples;
    QElapsedTimer timer;
    for (int round = 0; round < rounds; ++round) {
        for (int type = st::Square; type <= st::PencilPen; ++type) {
            gesture(input, type, round + type, QPointF(200 + round * 300, 300), drags,
                    [&](QPointF p) {
                        const double cpu = threadMs();
                        timer.start();
                        if (input.mouseDragged(p).redraw)
                            repaint();
                        samples.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
                        cpuSamples.push_back(threadMs() - cpu);
                    });
            // Back to the 200 strokes of the start.
            state.undoDraw();
            repaint();
        }
    }
    return {median(samples), median(cpuSamples), static_cast<int>(samples.size())};
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    int missed = 0;
    for (const Config& config : kConfigs) {
        const Result result = measure(config, Layer::View, 3, 80);
        // Slow: a few drags are enough to see it.
        const Result whole = measure(config, Layer::WholeHistory, 1, 8);
        const double ratio = result.medianMs / config.targetMs;
        std::printf("stroke-render %s (%dx%d pixels, scale %g), %d strokes: median %.3f ms "
                    "from a drag event to the repainted frame over %d drags; target %g ms: "
                    "%.2f of it (%s), %.3f ms of processor time; the whole history painted on "
                    "each drag: %.3f ms (%.2f of the target)\n",
                    config.name, static_cast<int>(kScreen.width() * config.scale),
                    static_cast<int>(kScreen.height() * config.scale), config.scale, kHistory,
                    result.medianMs, result.frames, config.targetMs, ratio,
                    ratio <= 1 ? "met" : "MISSED", result.medianCpuMs, whole.medianMs,
                    whole.medianMs / config.targetMs);
        std::fflush(stdout);
        if (ratio > 1)
            ++missed;
    }
    return missed == 0 ? 0 : 1;
}
