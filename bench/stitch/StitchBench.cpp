// SPDX-License-Identifier: GPL-3.0-or-later
// Frames judged per second on a window of a long text page, at 1920x1080
// and at 3840x2160 (double density), in the three phases of a session:
// the first frame, a frame that still learns the fixed parts, and a frame
// once header and footer are settled and cut away. Memory bandwidth is the
// limit a settled frame is held to: one memcmp of the same bytes, measured
// in the same run, and the judged frame should cost at most two of those.

#include "scroll/logic/ScrollShots.h"
#include "scroll/logic/ScrollState.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace {

using Bytes = std::vector<std::uint8_t>;

struct Bgr
{
    std::uint8_t b, g, r;
};

// A window: tool bar on top, status bar at the bottom, a navigation side bar
// on the left and a scroll bar on the right stay put; a page of text lines,
// paragraphs and the odd picture scrolls between them.
class PageWindow
{
public:
    PageWindow(int width, int height, int scale)
        : m_width(width)
        , m_height(height)
        , m_scale(scale)
        , m_header(64 * scale)
        , m_footer(28 * scale)
        , m_sideBar(200 * scale)
        , m_scrollBar(14 * scale)
    {
        m_page = makePage(height * 2 + 400 * scale);
    }

    int header() const { return m_header; }
    int contentRows() const { return m_height - m_header - m_footer; }

    // The first offset whose top and bottom content rows both carry ink:
    // blank rows there would match the first frame by chance and keep the
    // header and footer counts from settling.
    int inkedOffset() const
    {
        int offset = 0;
        while (!hasInk(offset) || !hasInk(offset + contentRows() - 1))
            ++offset;
        return offset;
    }
    int footer() const { return m_footer; }
    int scale() const { return m_scale; }

    // The window's pixels with the page scrolled down by offset rows.
    std::shared_ptr<Bytes> frame(int offset) const
    {
        auto bytes = std::make_shared<Bytes>(std::size_t(m_width) * m_height * 4);
        std::mt19937 chrome(7); // the fixed parts look the same in every frame
        for (int y = 0; y < m_height; ++y) {
            std::uint8_t* row = bytes->data() + std::size_t(y) * m_width * 4;
            const bool bar = y < m_header || y >= m_height - m_footer;
            for (int x = 0; x < m_width; ++x) {
                Bgr c;
                if (bar)
                    c = chromePixel(x, y, chrome);
                else if (x < m_sideBar)
                    c = sideBarPixel(x, y);
                else if (x >= m_width - m_scrollBar)
                    c = {230, 230, 230};
                else
                    c = pagePixel(x - m_sideBar, y - m_header + offset);
                row[x * 4] = c.b;
                row[x * 4 + 1] = c.g;
                row[x * 4 + 2] = c.r;
                row[x * 4 + 3] = 255;
            }
        }
        return bytes;
    }

    scroll::Frame wrap(const std::shared_ptr<Bytes>& bytes) const
    {
        return *scroll::Frame::wrap(
            {bytes->data(), m_width, m_height, std::ptrdiff_t(m_width) * 4, bytes->size()}, bytes);
    }

private:
    Bgr chromePixel(int x, int y, std::mt19937& random) const
    {
        // Icons: small dark squares on a gray bar, with soft edges.
        const int cell = 40 * m_scale;
        const int ix = x % cell;
        const int iy = y % (m_header / 2 + 1);
        const bool icon = ix > 8 * m_scale && ix < 30 * m_scale && iy > 6 * m_scale &&
                          iy < 26 * m_scale && (x / cell) % 3 != 2;
        const auto v = std::uint8_t(icon ? 60 + (ix * 7 + iy * 3) % 90 : 236 - (y % 5));
        (void)random;
        return {v, v, std::uint8_t(v - (icon ? 20 : 0))};
    }

    Bgr sideBarPixel(int x, int y) const
    {
        const int line = 28 * m_scale;
        const int iy = y % line;
        const bool text = iy > 8 * m_scale && iy < 20 * m_scale && x > 24 * m_scale &&
                          x < (90 + (y / line) * 13 % 80) * m_scale && ((x / (3 * m_scale)) % 3);
        const auto v = std::uint8_t(text ? 80 : 246);
        return {v, v, v};
    }

    bool hasInk(int pageRow) const
    {
        const std::uint8_t* p = m_page.data() + std::size_t(pageRow) * m_pageWidth * 3;
        for (int x = 0; x < m_pageWidth * 3; ++x) {
            if (p[x] < 200)
                return true;
        }
        return false;
    }

    Bgr pagePixel(int x, int y) const
    {
        const std::uint8_t* p = m_page.data() + (std::size_t(y) * m_pageWidth + x) * 3;
        return {p[0], p[1], p[2]};
    }

    // Text in a column with margins: lines of glyphs of varying height with
    // soft edges, paragraph gaps, and now and then a photo-like block.
    Bytes makePage(int rows)
    {
        m_pageWidth = m_width - m_sideBar - m_scrollBar;
        Bytes page(std::size_t(m_pageWidth) * rows * 3, 255);
        std::mt19937 random(42);
        const auto pick = [&random](int lo, int hi) {
            return std::uniform_int_distribution<int>(lo, hi)(random);
        };
        const int s = m_scale;
        const int left = 60 * s;
        const int right = m_pageWidth - 80 * s;
        int y = 20 * s;
        int linesLeft = pick(3, 8);
        while (y + 200 * s < rows) {
            if (pick(0, 40) == 0) {
                // A picture: a smooth field with noise.
                const int h = pick(120, 220) * s;
                const int w = (right - left) * pick(40, 80) / 100;
                for (int py = 0; py < h; ++py) {
                    for (int px = 0; px < w; ++px) {
                        std::uint8_t* d =
                            &page[(std::size_t(y + py) * m_pageWidth + left + px) * 3];
                        d[0] = std::uint8_t(px * 200 / w + pick(0, 20));
                        d[1] = std::uint8_t(py * 200 / h + pick(0, 20));
                        d[2] = std::uint8_t(120 + pick(0, 30));
                    }
                }
                y += h + 24 * s;
                continue;
            }
            // One line of glyphs: each a dark block from a random top to a
            // random bottom inside the line band, its edge rows half-tone.
            const int band = 14 * s;
            int x = left + pick(0, 20) * s;
            const int lineEnd = linesLeft == 1 ? left + (right - left) * pick(30, 90) / 100 : right;
            while (x < lineEnd) {
                const int word = pick(2, 9);
                for (int g = 0; g < word && x < lineEnd; ++g) {
                    const int gw = pick(4, 9) * s;
                    const int top = pick(0, 4) * s;
                    const int bottom = band - pick(0, 3) * s;
                    const auto ink = std::uint8_t(pick(20, 50));
                    for (int gy = top; gy < bottom; ++gy) {
                        const bool edge = gy == top || gy == bottom - 1;
                        for (int gx = 0; gx < gw && x + gx < right; ++gx) {
                            if ((gx + gy) % 5 == 0)
                                continue; // the counters of the letters
                            std::uint8_t* d =
                                &page[(std::size_t(y + gy) * m_pageWidth + x + gx) * 3];
                            const auto v = std::uint8_t(edge ? 160 : ink);
                            d[0] = d[1] = d[2] = v;
                        }
                    }
                    x += gw + pick(1, 3) * s;
                }
                x += 8 * s;
            }
            y += 24 * s;
            if (--linesLeft == 0) {
                y += 16 * s;
                linesLeft = pick(3, 8);
            }
        }
        return page;
    }

    int m_width;
    int m_height;
    int m_scale;
    int m_header;
    int m_footer;
    int m_sideBar;
    int m_scrollBar;
    int m_pageWidth = 0;
    Bytes m_page;
};

struct Resolution
{
    int width;
    int height;
    int scale;
    std::string name() const { return std::to_string(width) + "x" + std::to_string(height); }
};

const Resolution kResolutions[] = {{1920, 1080, 1}, {3840, 2160, 2}};

// Pages take a while to draw; each size is drawn once per run.
const PageWindow& windowFor(const Resolution& r)
{
    static std::map<int, std::unique_ptr<PageWindow>> windows;
    auto& window = windows[r.width];
    if (!window)
        window = std::make_unique<PageWindow>(r.width, r.height, r.scale);
    return *window;
}

// A session driven over the window as the wheel would drive it.
class Driver
{
public:
    explicit Driver(const Resolution& r)
        : m_window(windowFor(r))
        , m_scale(r.scale)
    {
        m_state.rectOfScreenShots =
            QRectF(0, 0, double(r.width) / r.scale, double(r.height) / r.scale);
    }

    const PageWindow& window() const { return m_window; }
    scroll::ScrollState& state() { return m_state; }

    scroll::FrameJudgement judge(const scroll::Frame& whole)
    {
        const scroll::FrameSource source = [&](const QRectF& area) -> std::optional<scroll::Frame> {
            scroll::Frame cut =
                scroll::frameInArea(whole, m_state.rectOfScreenShots, area, m_scale);
            if (cut.isNull())
                return std::nullopt;
            return cut;
        };
        return scroll::screenShotsAtScrollScreenshots(m_state, source, {m_scale, "org.example"});
    }

    void start(const scroll::Frame& first)
    {
        m_state.resetForSession();
        judge(first);
        m_state.startScrollScreenshots = true;
    }

private:
    const PageWindow& m_window;
    int m_scale;
    scroll::ScrollState m_state;
};

std::size_t frameBytes(const scroll::Frame& frame)
{
    return std::size_t(frame.width()) * std::size_t(frame.height()) * 4;
}

void firstFrame(benchmark::State& bench, const Resolution& r)
{
    Driver driver(r);
    auto bytes = driver.window().frame(0);
    const scroll::Frame frame = driver.window().wrap(bytes);
    for (auto _ : bench) {
        driver.state().resetForSession();
        driver.judge(frame);
    }
    bench.SetItemsProcessed(bench.iterations());
    bench.SetBytesProcessed(std::int64_t(bench.iterations() * frameBytes(frame)));
}

void learningFrame(benchmark::State& bench, const Resolution& r)
{
    Driver driver(r);
    const scroll::Frame first = driver.window().wrap(driver.window().frame(0));
    const scroll::Frame next = driver.window().wrap(driver.window().frame(24 * r.scale));
    driver.start(first);
    scroll::ScrollState& s = driver.state();
    for (auto _ : bench) {
        // Back to the second frame of a session: side bars, header and
        // footer all still to learn.
        s.leftSameColumnFinished = s.rightSameColumnFinished = false;
        s.headSameRowFinished = s.tailSameRowFinished = false;
        s.headSameRow = s.tailSameRow = s.headSameRowTimes = s.tailSameRowTimes = 0;
        s.lastScrollScreenshotsArray = first;
        s.oldScrollImageTotal = first;
        s.imageArr.clear();
        s.imageUsedHeightArr.clear();
        s.totalDeltay = -1;
        if (driver.judge(next).verdict != scroll::FrameVerdict::Accepted) {
            bench.SkipWithError("the learning frame was not accepted");
            return;
        }
    }
    bench.SetItemsProcessed(bench.iterations());
    bench.SetBytesProcessed(std::int64_t(bench.iterations() * frameBytes(next)));
}

// A session brought to the settled state; returns the last accepted frame
// and the settled frame that follows it.
struct Settled
{
    scroll::Frame previous;
    scroll::Frame next;
    std::vector<std::shared_ptr<Bytes>> keep;
};

Settled settle(Driver& driver, const Resolution& r)
{
    Settled out;
    const int step = 17 * r.scale;
    const int origin = driver.window().inkedOffset();
    auto take = [&](int offset) {
        out.keep.push_back(driver.window().frame(origin + offset));
        return driver.window().wrap(out.keep.back());
    };
    driver.start(take(0));
    for (int i = 1; i <= 7; ++i) {
        driver.state().totalDeltay = -1;
        driver.judge(take(i * step));
    }
    out.previous = driver.state().lastScrollScreenshotsArray;
    out.next = take(7 * step + 90 * r.scale);
    return out;
}

void settledFrame(benchmark::State& bench, const Resolution& r)
{
    Driver driver(r);
    const Settled settled = settle(driver, r);
    scroll::ScrollState& s = driver.state();
    if (!s.headRejustedOfRectOfScreenShots) {
        bench.SkipWithError("header and footer did not settle");
        return;
    }
    const auto used = s.imageUsedHeightArr;
    for (auto _ : bench) {
        s.lastScrollScreenshotsArray = settled.previous;
        s.oldScrollImageTotal = settled.previous;
        s.imageArr.resize(1);
        s.imageUsedHeightArr = used;
        s.totalDeltay = -1;
        if (driver.judge(settled.next).verdict != scroll::FrameVerdict::Accepted) {
            bench.SkipWithError("the settled frame was not accepted");
            return;
        }
    }
    const std::size_t bytes = frameBytes(s.scrollImageTotal);
    bench.SetItemsProcessed(bench.iterations());
    bench.SetBytesProcessed(std::int64_t(bench.iterations() * bytes));
    bench.counters["rows"] = double(s.scrollImageTotal.height());
}

// One memcmp pass over the bytes of a settled frame against an equal copy,
// so that it runs to the end.
void memcmpPass(benchmark::State& bench, const Resolution& r)
{
    Driver driver(r);
    const Settled settled = settle(driver, r);
    const scroll::Frame cut = driver.state().scrollImageTotal;
    const std::size_t bytes = frameBytes(cut);
    const std::uint8_t* begin = cut.row(0).data(); // full-width rows lie back to back
    const Bytes copy(begin, begin + bytes);
    for (auto _ : bench) {
        int result = std::memcmp(begin, copy.data(), bytes);
        benchmark::DoNotOptimize(result);
    }
    bench.SetItemsProcessed(bench.iterations());
    bench.SetBytesProcessed(std::int64_t(bench.iterations() * bytes));
}

// Keeps each run's time per iteration beside the usual console report.
class Collector : public benchmark::ConsoleReporter
{
public:
    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Iteration && !run.error_occurred)
                m_seconds[run.benchmark_name()] =
                    run.GetAdjustedRealTime() / benchmark::GetTimeUnitMultiplier(run.time_unit);
        }
        ConsoleReporter::ReportRuns(runs);
    }
    const std::map<std::string, double>& seconds() const { return m_seconds; }

private:
    std::map<std::string, double> m_seconds;
};

} // namespace

int main(int argc, char** argv)
{
    for (const Resolution& r : kResolutions) {
        benchmark::RegisterBenchmark(("judge/first/" + r.name()).c_str(), firstFrame, r)
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark(("judge/learning/" + r.name()).c_str(), learningFrame, r)
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark(("judge/settled/" + r.name()).c_str(), settledFrame, r)
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark(("memcmp/settled/" + r.name()).c_str(), memcmpPass, r)
            ->Unit(benchmark::kMillisecond);
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    Collector collector;
    benchmark::RunSpecifiedBenchmarks(&collector);
    benchmark::Shutdown();

    int missed = 0;
    for (const Resolution& r : kResolutions) {
        const auto judged = collector.seconds().find("judge/settled/" + r.name());
        const auto compared = collector.seconds().find("memcmp/settled/" + r.name());
        if (judged == collector.seconds().end() || compared == collector.seconds().end())
            continue;
        const double passes = judged->second / compared->second;
        std::printf("settled %s frame: judged in %.3f ms, one memcmp pass %.3f ms: %.2f passes%s\n",
                    r.name().c_str(), judged->second * 1e3, compared->second * 1e3, passes,
                    r.scale == 2 ? (passes <= 2 ? " (target <= 2: met)" : " (target <= 2: MISSED)")
                                 : "");
        if (r.scale == 2 && passes > 2)
            ++missed;
    }
    return missed == 0 ? 0 : 1;
}
