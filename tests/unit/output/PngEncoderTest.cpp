// SPDX-License-Identifier: GPL-3.0-or-later
// The encoder must write PNGs that independent decoders read back pixel for
// pixel, whatever the filter, the deflater, the number of strips and the
// seams between them.
#include "app/output/PngEncoder.h"

#include <QImage>

#include <gtest/gtest.h>
#include <spng.h>
#include <zlib.h>

#include <algorithm>
#include <memory>
#include <random>
#include <string>

using namespace app::output;

namespace {

// A picture like a screen: flat areas, repeated rows, and noisy patches
// whose bytes differ from row to row.
QImage screenLike(int w, int h, bool alpha, unsigned seed = 7)
{
    QImage image(w, h, alpha ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    std::mt19937 rng(seed);
    for (int y = 0; y < h; ++y) {
        auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < w; ++x) {
            const bool noisy = (x / 16 + y / 16) % 3 == 0;
            const unsigned v =
                noisy ? rng() : (0x203040u + static_cast<unsigned>(y / 8) * 0x010101u);
            const int a = alpha ? static_cast<int>((x * 7 + y * 3) % 256) : 255;
            row[x] = qRgba(qRed(v), qGreen(v), qBlue(v), a);
        }
    }
    return image;
}

struct Decoded
{
    int width = 0;
    int height = 0;
    int colourType = -1;
    std::vector<std::uint8_t> rgba;
    int error = 0;
};

struct CtxFree
{
    void operator()(spng_ctx* c) const { spng_ctx_free(c); }
};

Decoded decodeWithSpng(const std::vector<std::uint8_t>& png)
{
    Decoded d;
    std::unique_ptr<spng_ctx, CtxFree> ctx(spng_ctx_new(0));
    spng_set_crc_action(ctx.get(), SPNG_CRC_ERROR, SPNG_CRC_ERROR);
    spng_set_png_buffer(ctx.get(), png.data(), png.size());
    spng_ihdr ihdr{};
    if ((d.error = spng_get_ihdr(ctx.get(), &ihdr)) != 0)
        return d;
    d.width = static_cast<int>(ihdr.width);
    d.height = static_cast<int>(ihdr.height);
    d.colourType = ihdr.color_type;
    std::size_t size = 0;
    spng_decoded_image_size(ctx.get(), SPNG_FMT_RGBA8, &size);
    d.rgba.resize(size);
    d.error = spng_decode_image(ctx.get(), d.rgba.data(), size, SPNG_FMT_RGBA8, 0);
    return d;
}

// Every IDAT joined and inflated by zlib itself, which checks the
// combined Adler-32 that the strips' sums were merged into.
int inflateIdat(const std::vector<std::uint8_t>& png, std::size_t expectedLength,
                std::vector<std::uint8_t>* inflated = nullptr)
{
    std::vector<std::uint8_t> stream;
    std::size_t at = 8;
    while (at + 12 <= png.size()) {
        const std::uint32_t length =
            (std::uint32_t{png[at]} << 24) | (png[at + 1] << 16) | (png[at + 2] << 8) | png[at + 3];
        if (std::equal(png.begin() + static_cast<std::ptrdiff_t>(at + 4),
                       png.begin() + static_cast<std::ptrdiff_t>(at + 8), "IDAT"))
            stream.insert(stream.end(), png.begin() + static_cast<std::ptrdiff_t>(at + 8),
                          png.begin() + static_cast<std::ptrdiff_t>(at + 8 + length));
        at += 12 + length;
    }
    std::vector<std::uint8_t> out(expectedLength + 16);
    uLongf outLength = static_cast<uLongf>(out.size());
    const int result =
        uncompress(out.data(), &outLength, stream.data(), static_cast<uLong>(stream.size()));
    if (result == Z_OK && outLength != expectedLength)
        return Z_DATA_ERROR;
    if (inflated != nullptr)
        *inflated = std::vector<std::uint8_t>(out.begin(),
                                              out.begin() + static_cast<std::ptrdiff_t>(outLength));
    return result;
}

struct Chunk
{
    std::string type;
    std::vector<std::uint8_t> data;
};

std::vector<Chunk> chunksOf(const std::vector<std::uint8_t>& png)
{
    std::vector<Chunk> chunks;
    std::size_t at = 8;
    while (at + 12 <= png.size()) {
        const std::uint32_t length =
            (std::uint32_t{png[at]} << 24) | (png[at + 1] << 16) | (png[at + 2] << 8) | png[at + 3];
        Chunk c;
        c.type.assign(png.begin() + static_cast<std::ptrdiff_t>(at + 4),
                      png.begin() + static_cast<std::ptrdiff_t>(at + 8));
        c.data.assign(png.begin() + static_cast<std::ptrdiff_t>(at + 8),
                      png.begin() + static_cast<std::ptrdiff_t>(at + 8 + length));
        chunks.push_back(std::move(c));
        at += 12 + length;
    }
    return chunks;
}

void expectSamePixels(const QImage& image, const Decoded& d, bool alpha)
{
    ASSERT_EQ(d.error, 0) << spng_strerror(d.error);
    ASSERT_EQ(d.width, image.width());
    ASSERT_EQ(d.height, image.height());
    EXPECT_EQ(d.colourType, alpha ? SPNG_COLOR_TYPE_TRUECOLOR_ALPHA : SPNG_COLOR_TYPE_TRUECOLOR);
    for (int y = 0; y < image.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const std::uint8_t* p = d.rgba.data() + (static_cast<std::size_t>(y) * d.width + x) * 4;
            const QRgb want = row[x];
            const QRgb got = qRgba(p[0], p[1], p[2], alpha ? p[3] : 255);
            if (got != (alpha ? want : (want | 0xff000000u))) {
                FAIL() << "pixel " << x << "," << y << " differs";
            }
        }
    }
}

struct Case
{
    PngFilter filter;
    int threads;
    bool alpha;
    PngDeflater deflater = PngDeflater::Zlib;
};

constexpr PngFilter kEveryFilter[] = {PngFilter::None,    PngFilter::Sub,   PngFilter::Up,
                                      PngFilter::Average, PngFilter::Paeth, PngFilter::Adaptive};

// Every filter, with and without alpha. One core is enough: with this
// deflater several cores write the same bytes (see below).
std::vector<Case> libdeflateCases()
{
    std::vector<Case> cases;
    for (PngFilter f : kEveryFilter)
        for (bool alpha : {false, true})
            cases.push_back({f, 1, alpha, PngDeflater::Libdeflate});
    return cases;
}

class PngRoundTrip : public ::testing::TestWithParam<Case>
{};

} // namespace

TEST_P(PngRoundTrip, DecodesToTheSamePixelsWithAValidChecksum)
{
    const Case c = GetParam();
    const QImage image = screenLike(301, 517, c.alpha);
    PngOptions options;
    options.filter = c.filter;
    options.threads = c.threads;
    options.alpha = c.alpha ? PngAlpha::Straight : PngAlpha::Opaque;
    options.deflater = c.deflater;
    const PngResult png = encodePng(core::ImageView::of(image), options);
    ASSERT_TRUE(png.ok());
    expectSamePixels(image, decodeWithSpng(png.bytes), c.alpha);
    const std::size_t rowBytes = 1 + static_cast<std::size_t>(image.width()) * (c.alpha ? 4 : 3);
    EXPECT_EQ(inflateIdat(png.bytes, rowBytes * static_cast<std::size_t>(image.height())), Z_OK);
    // And Qt's own reader agrees.
    const QImage back =
        QImage::fromData(png.bytes.data(), static_cast<int>(png.bytes.size()), "PNG");
    ASSERT_FALSE(back.isNull());
    EXPECT_EQ(back.convertToFormat(c.alpha ? QImage::Format_ARGB32 : QImage::Format_RGB32),
              c.alpha ? image : image.convertToFormat(QImage::Format_RGB32));
}

INSTANTIATE_TEST_SUITE_P(
    FiltersStripsAndAlpha, PngRoundTrip,
    ::testing::Values(Case{PngFilter::None, 1, false}, Case{PngFilter::Sub, 2, false},
                      Case{PngFilter::Up, 3, false}, Case{PngFilter::Average, 4, true},
                      Case{PngFilter::Paeth, 5, true}, Case{PngFilter::Adaptive, 2, true},
                      Case{PngFilter::Up, 8, true}));

INSTANTIATE_TEST_SUITE_P(Libdeflate, PngRoundTrip, ::testing::ValuesIn(libdeflateCases()));

TEST(PngEncoder, OutputDoesNotDependOnTheNumberOfCores)
{
    // Odd sizes, so strips end mid-way and rows are not a multiple of any
    // word; the file must be byte for byte the one a single core writes.
    for (QSize size : {QSize(301, 517), QSize(1, 130), QSize(999, 67)}) {
        for (bool alpha : {false, true}) {
            const QImage image = screenLike(size.width(), size.height(), alpha, 11);
            for (PngFilter f : kEveryFilter) {
                PngOptions one;
                one.filter = f;
                one.alpha = alpha ? PngAlpha::Straight : PngAlpha::Opaque;
                one.deflater = PngDeflater::Libdeflate;
                one.threads = 1;
                const PngResult reference = encodePng(core::ImageView::of(image), one);
                ASSERT_TRUE(reference.ok());
                for (int threads : {2, 5, 16}) {
                    PngOptions many = one;
                    many.threads = threads;
                    EXPECT_EQ(encodePng(core::ImageView::of(image), many).bytes, reference.bytes)
                        << size.width() << "x" << size.height() << " filter " << static_cast<int>(f)
                        << " alpha " << alpha << " threads " << threads;
                }
            }
        }
    }
}

TEST(PngEncoder, AdaptivePicksTheRowFilterWithTheSmallestSum)
{
    // Row 1 repeats row 0: Up and Paeth both leave zeros, and the tie goes
    // to Up, the earlier. Row 2 is a ramp under a noisy row: Sub leaves a
    // constant step. Row 3 is row 2 one brighter: Up leaves ones (Average
    // twos, Sub the step).
    const int w = 64;
    QImage image(w, 4, QImage::Format_RGB32);
    std::mt19937 rng(5);
    for (int x = 0; x < w; ++x) {
        const QRgb noise = rng() | 0xff000000u;
        image.setPixel(x, 0, noise);
        image.setPixel(x, 1, noise);
        image.setPixel(x, 2, qRgb(x * 3, x * 3, x * 3));
        image.setPixel(x, 3, qRgb(x * 3 + 1, x * 3 + 1, x * 3 + 1));
    }
    PngOptions options;
    options.filter = PngFilter::Adaptive;
    for (PngDeflater deflater : {PngDeflater::Zlib, PngDeflater::Libdeflate}) {
        options.deflater = deflater;
        const PngResult png = encodePng(core::ImageView::of(image), options);
        ASSERT_TRUE(png.ok());
        const std::size_t rowBytes = 1 + static_cast<std::size_t>(w) * 3;
        std::vector<std::uint8_t> rows;
        ASSERT_EQ(inflateIdat(png.bytes, rowBytes * 4, &rows), Z_OK);
        EXPECT_EQ(rows[1 * rowBytes], 2) << "repeated row: Up";
        EXPECT_EQ(rows[2 * rowBytes], 1) << "ramp: Sub";
        EXPECT_EQ(rows[3 * rowBytes], 2) << "row one brighter than the last: Up";
        expectSamePixels(image, decodeWithSpng(png.bytes), false);
    }
}

TEST(PngEncoder, BothDeflatersWriteTheSameHeaderAndDensity)
{
    const QImage image = screenLike(123, 45, true);
    PngOptions zlib;
    zlib.alpha = PngAlpha::Straight;
    zlib.pixelsPerMetre = 3780;
    zlib.deflater = PngDeflater::Zlib;
    PngOptions libdeflate = zlib;
    libdeflate.deflater = PngDeflater::Libdeflate;
    auto withoutData = [](std::vector<Chunk> chunks) {
        for (Chunk& c : chunks)
            if (c.type == "IDAT")
                c.data.clear();
        return chunks;
    };
    const auto a = withoutData(chunksOf(encodePng(core::ImageView::of(image), zlib).bytes));
    const auto b = withoutData(chunksOf(encodePng(core::ImageView::of(image), libdeflate).bytes));
    ASSERT_EQ(a.size(), b.size());
    ASSERT_GE(a.size(), 4u);
    for (std::size_t i = 0; i < a.size(); ++i) {
        EXPECT_EQ(a[i].type, b[i].type);
        EXPECT_EQ(a[i].data, b[i].data) << a[i].type;
    }
    EXPECT_EQ(b.front().type, "IHDR");
    EXPECT_EQ(b[1].type, "pHYs");
    EXPECT_EQ(b.back().type, "IEND");
}

TEST(PngEncoder, AStreamOfSeveralIdatChunksDecodes)
{
    // Noise does not compress, so 1.5 MiB of pixels need more than one
    // IDAT chunk with either deflater.
    QImage image(1024, 384, QImage::Format_ARGB32);
    std::mt19937 rng(3);
    for (int y = 0; y < image.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x)
            row[x] = rng();
    }
    for (PngDeflater deflater : {PngDeflater::Zlib, PngDeflater::Libdeflate}) {
        PngOptions options;
        options.alpha = PngAlpha::Straight;
        options.deflater = deflater;
        const PngResult png = encodePng(core::ImageView::of(image), options);
        ASSERT_TRUE(png.ok());
        const auto chunks = chunksOf(png.bytes);
        EXPECT_GT(std::count_if(chunks.begin(), chunks.end(),
                                [](const Chunk& c) { return c.type == "IDAT"; }),
                  1);
        expectSamePixels(image, decodeWithSpng(png.bytes), true);
    }
}

TEST(PngEncoder, TinyPicturesAndMoreCoresThanRowsStillDecode)
{
    for (QSize size : {QSize(1, 1), QSize(1, 300), QSize(300, 1), QSize(7, 70)}) {
        for (PngDeflater deflater : {PngDeflater::Zlib, PngDeflater::Libdeflate}) {
            for (bool alpha : {false, true}) {
                const QImage image = screenLike(size.width(), size.height(), alpha, 3);
                PngOptions options;
                options.threads = 16;
                options.deflater = deflater;
                options.filter = PngFilter::Adaptive;
                options.alpha = alpha ? PngAlpha::Straight : PngAlpha::Opaque;
                const PngResult png = encodePng(core::ImageView::of(image), options);
                ASSERT_TRUE(png.ok());
                expectSamePixels(image, decodeWithSpng(png.bytes), alpha);
            }
        }
    }
}

TEST(PngEncoder, StripsCostLittleSizeOverOneStream)
{
    const QImage image = screenLike(640, 960, false);
    PngOptions one;
    one.deflater = PngDeflater::Zlib;
    one.threads = 1;
    PngOptions four = one;
    four.threads = 4;
    const auto a = encodePng(core::ImageView::of(image), one).bytes.size();
    const auto b = encodePng(core::ImageView::of(image), four).bytes.size();
    // The seams restart deflate's statistics but keep its window, so the
    // cost is a few blocks' headers, not a restart from nothing.
    EXPECT_LT(static_cast<double>(b), static_cast<double>(a) * 1.01);
}

TEST(PngEncoder, RefusesBrokenAndOversizedViews)
{
    std::vector<std::uint8_t> pixels(16 * 4);
    core::ImageView view{pixels.data(), 4, 4, 16, pixels.size()};
    view.strideBytes = 8; // a row does not fit its stride
    EXPECT_EQ(encodePng(view).error, PngError::InvalidImage);
    EXPECT_EQ(encodePng(core::ImageView{}).error, PngError::InvalidImage);

    core::ImageView wide{pixels.data(), kMaxPngSide + 1, 1, (kMaxPngSide + 1) * 4,
                         std::size_t{1} << 30};
    EXPECT_EQ(encodePng(wide).error, PngError::TooLarge);
}
