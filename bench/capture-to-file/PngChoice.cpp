// SPDX-License-Identifier: GPL-3.0-or-later
// Times Kelvo's PNG encoder at each setting on one frame (zlib strips and
// libdeflate), beside libspng at its default and fastest settings, and prints the median time and
// the size of each. The settings the encoder ships with are the ones chosen here: the fastest whose
// file is no larger than the reference's.
//
//   png_choice FRAME.png [RUNS] [REFERENCE.png]
//
// With a reference, the frame's pixels are first compared with it: a fast
// capture of the wrong pixels would be no result.
#include "app/output/PngEncoder.h"

#include <QImage>

#include <spng.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace {

using app::output::PngDeflater;
using app::output::PngFilter;
using app::output::PngOptions;
using app::output::PngStrategy;

struct Measured
{
    double ms = 0;
    std::size_t bytes = 0;
};

Measured measure(int runs, const std::function<std::size_t()>& encode)
{
    std::vector<double> times;
    std::size_t bytes = 0;
    for (int i = 0; i < runs; ++i) {
        const auto start = std::chrono::steady_clock::now();
        bytes = encode();
        times.push_back(
            std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
                .count());
    }
    std::sort(times.begin(), times.end());
    return {times[times.size() / 2], bytes};
}

struct SpngDeleter
{
    void operator()(spng_ctx* c) const { spng_ctx_free(c); }
};

std::size_t encodeSpng(const QImage& rgb, int level, int filters)
{
    std::unique_ptr<spng_ctx, SpngDeleter> ctx(spng_ctx_new(SPNG_CTX_ENCODER));
    spng_set_option(ctx.get(), SPNG_ENCODE_TO_BUFFER, 1);
    spng_set_option(ctx.get(), SPNG_IMG_COMPRESSION_LEVEL, level);
    spng_set_option(ctx.get(), SPNG_FILTER_CHOICE, filters);
    spng_ihdr ihdr{};
    ihdr.width = static_cast<std::uint32_t>(rgb.width());
    ihdr.height = static_cast<std::uint32_t>(rgb.height());
    ihdr.bit_depth = 8;
    ihdr.color_type = SPNG_COLOR_TYPE_TRUECOLOR;
    spng_set_ihdr(ctx.get(), &ihdr);
    if (spng_encode_image(ctx.get(), rgb.constBits(), static_cast<std::size_t>(rgb.sizeInBytes()),
                          SPNG_FMT_PNG, SPNG_ENCODE_FINALIZE) != 0)
        return 0;
    std::size_t length = 0;
    int error = 0;
    void* png = spng_get_png_buffer(ctx.get(), &length, &error);
    std::free(png);
    return length;
}

const char* filterName(PngFilter f)
{
    switch (f) {
    case PngFilter::None:
        return "none";
    case PngFilter::Sub:
        return "sub";
    case PngFilter::Up:
        return "up";
    case PngFilter::Average:
        return "average";
    case PngFilter::Paeth:
        return "paeth";
    case PngFilter::Adaptive:
        return "adaptive";
    }
    return "?";
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 2) {
        std::fprintf(stderr, "usage: png_choice FRAME.png [RUNS]\n");
        return 1;
    }
    const int runs = argc > 2 ? std::max(1, std::atoi(argv[2])) : 9;
    const QImage frame =
        QImage(QString::fromLocal8Bit(argv[1])).convertToFormat(QImage::Format_RGB32);
    if (frame.isNull()) {
        std::fprintf(stderr, "png_choice: cannot read %s\n", argv[1]);
        return 1;
    }
    if (argc > 3) {
        const QImage reference =
            QImage(QString::fromLocal8Bit(argv[3])).convertToFormat(QImage::Format_RGB32);
        if (reference != frame) {
            std::printf("the frame differs from %s\n", argv[3]);
            return 1;
        }
        std::printf("the frame equals %s pixel for pixel\n", argv[3]);
    }
    const QImage rgb = frame.convertToFormat(QImage::Format_RGB888);
    const core::ImageView view = core::ImageView::of(frame);
    std::printf("%dx%d, median of %d\n", frame.width(), frame.height(), runs);

    const auto spngDefault =
        measure(runs, [&] { return encodeSpng(rgb, 6, SPNG_FILTER_CHOICE_ALL); });
    std::printf("%-34s %8.1f ms %9zu bytes\n", "libspng level 6, adaptive", spngDefault.ms,
                spngDefault.bytes);
    const auto spngFast = measure(runs, [&] { return encodeSpng(rgb, 1, SPNG_FILTER_CHOICE_UP); });
    std::printf("%-34s %8.1f ms %9zu bytes\n", "libspng level 1, up", spngFast.ms, spngFast.bytes);

    for (int threads : {1, 0}) {
        for (int level : {1, 2, 3}) {
            for (PngFilter filter : {PngFilter::None, PngFilter::Sub, PngFilter::Up,
                                     PngFilter::Paeth, PngFilter::Adaptive}) {
                for (PngStrategy strategy : {PngStrategy::Default, PngStrategy::Rle}) {
                    if (strategy == PngStrategy::Rle && level > 1)
                        continue; // run-length ignores the level
                    PngOptions o;
                    o.deflater = PngDeflater::Zlib;
                    o.compressionLevel = level;
                    o.filter = filter;
                    o.strategy = strategy;
                    o.threads = threads;
                    const auto m = measure(runs, [&] { return encodePng(view, o).bytes.size(); });
                    const std::string name =
                        "zlib " + std::string(threads == 1 ? "1 core" : "all cores") +
                        (strategy == PngStrategy::Rle ? ", rle"
                                                      : ", level " + std::to_string(level)) +
                        ", " + filterName(filter);
                    std::printf("%-34s %8.1f ms %9zu bytes\n", name.c_str(), m.ms, m.bytes);
                }
            }
        }
    }
    for (int threads : {1, 0}) {
        for (int level : {1, 2, 3, 4, 6}) {
            for (PngFilter filter : {PngFilter::Up, PngFilter::Paeth, PngFilter::Adaptive}) {
                PngOptions o;
                o.deflater = PngDeflater::Libdeflate;
                o.compressionLevel = level;
                o.filter = filter;
                o.threads = threads;
                const auto m = measure(runs, [&] { return encodePng(view, o).bytes.size(); });
                const std::string name =
                    "libdeflate " + std::string(threads == 1 ? "1 core" : "all cores") +
                    ", level " + std::to_string(level) + ", " + filterName(filter);
                std::printf("%-34s %8.1f ms %9zu bytes\n", name.c_str(), m.ms, m.bytes);
            }
        }
    }
    return 0;
}
