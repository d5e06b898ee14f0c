// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/output/PngEncoder.h"

#include <libdeflate.h>
#include <zlib.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <thread>

namespace app::output {

namespace {

constexpr std::size_t kWindow = 32768;       // deflate's window: the dictionary's size
constexpr std::size_t kIdatChunk = 1u << 20; // bytes of the zlib stream per IDAT chunk

// One z_stream, ended on every path out.
class Deflater
{
public:
    Deflater(int level, int strategy)
    {
        // Raw deflate: the zlib header and checksum are written once around
        // the joined strips.
        m_ok = deflateInit2(&m_stream, level, Z_DEFLATED, -15, 8, strategy) == Z_OK;
    }
    ~Deflater()
    {
        if (m_ok)
            deflateEnd(&m_stream);
    }
    Deflater(const Deflater&) = delete;
    Deflater& operator=(const Deflater&) = delete;

    [[nodiscard]] bool ok() const { return m_ok; }
    z_stream* operator->() { return &m_stream; }
    z_stream* get() { return &m_stream; }

private:
    z_stream m_stream{};
    bool m_ok = false;
};

[[nodiscard]] int paeth(int a, int b, int c)
{
    const int p = a + b - c;
    const int pa = std::abs(p - a);
    const int pb = std::abs(p - b);
    const int pc = std::abs(p - c);
    if (pa <= pb && pa <= pc)
        return a;
    return pb <= pc ? b : c;
}

// Rows of the picture as PNG wants them (R, G, B[, A]), filtered.
class RowFilter
{
public:
    RowFilter(const core::ImageView& image, const PngOptions& options)
        : m_image(image)
        , m_filter(options.filter)
        , m_bpp(options.alpha == PngAlpha::Straight ? 4 : 3)
        , m_rowBytes(static_cast<std::size_t>(image.width) * static_cast<std::size_t>(m_bpp))
        , m_prev(m_rowBytes, 0)
        , m_cur(m_rowBytes, 0)
    {
        if (m_filter == PngFilter::Adaptive) {
            for (auto& trial : m_trials)
                trial.resize(m_rowBytes + 1);
        }
    }

    [[nodiscard]] std::size_t filteredRowBytes() const { return m_rowBytes + 1; }

    // Makes row y-1 the previous row (zeros above the first row).
    void startAt(int y)
    {
        if (y == 0)
            std::fill(m_prev.begin(), m_prev.end(), 0);
        else
            convert(y - 1, m_prev.data());
    }

    // Writes the filtered row y (filter byte first) to out; rows must come
    // in order after startAt().
    void filterRow(int y, std::uint8_t* out)
    {
        convert(y, m_cur.data());
        if (m_filter == PngFilter::Adaptive) {
            filterAdaptive(out);
        } else {
            apply(m_filter, out);
        }
        m_prev.swap(m_cur);
    }

private:
    void convert(int y, std::uint8_t* dst) const
    {
        const std::uint8_t* src = m_image.row(y);
        const int w = m_image.width;
        if (m_bpp == 3) {
            for (int x = 0; x < w; ++x, src += 4, dst += 3) {
                dst[0] = src[2];
                dst[1] = src[1];
                dst[2] = src[0];
            }
        } else {
            for (int x = 0; x < w; ++x, src += 4, dst += 4) {
                dst[0] = src[2];
                dst[1] = src[1];
                dst[2] = src[0];
                dst[3] = src[3];
            }
        }
    }

    void apply(PngFilter filter, std::uint8_t* out) const
    {
        const std::uint8_t* c = m_cur.data();
        const std::uint8_t* p = m_prev.data();
        const std::size_t n = m_rowBytes;
        const std::size_t bpp = static_cast<std::size_t>(m_bpp);
        std::uint8_t* o = out + 1;
        switch (filter) {
        case PngFilter::None:
        case PngFilter::Adaptive:
            out[0] = 0;
            std::memcpy(o, c, n);
            break;
        case PngFilter::Sub:
            out[0] = 1;
            std::memcpy(o, c, bpp);
            for (std::size_t i = bpp; i < n; ++i)
                o[i] = static_cast<std::uint8_t>(c[i] - c[i - bpp]);
            break;
        case PngFilter::Up:
            out[0] = 2;
            for (std::size_t i = 0; i < n; ++i)
                o[i] = static_cast<std::uint8_t>(c[i] - p[i]);
            break;
        case PngFilter::Average:
            out[0] = 3;
            for (std::size_t i = 0; i < bpp; ++i)
                o[i] = static_cast<std::uint8_t>(c[i] - p[i] / 2);
            for (std::size_t i = bpp; i < n; ++i)
                o[i] = static_cast<std::uint8_t>(c[i] - (c[i - bpp] + p[i]) / 2);
            break;
        case PngFilter::Paeth:
            out[0] = 4;
            for (std::size_t i = 0; i < bpp; ++i)
                o[i] = static_cast<std::uint8_t>(c[i] - p[i]);
            for (std::size_t i = bpp; i < n; ++i)
                o[i] = static_cast<std::uint8_t>(c[i] - paeth(c[i - bpp], p[i], p[i - bpp]));
            break;
        }
    }

    // The smallest sum of the bytes' absolute values as signed numbers; the
    // first of equal candidates wins.
    void filterAdaptive(std::uint8_t* out)
    {
        static constexpr std::array<PngFilter, 5> kCandidates{
            PngFilter::None, PngFilter::Sub, PngFilter::Up, PngFilter::Average, PngFilter::Paeth};
        std::uint64_t best = ~std::uint64_t{0};
        std::size_t bestIndex = 0;
        for (std::size_t k = 0; k < kCandidates.size(); ++k) {
            std::uint8_t* trial = m_trials[k].data();
            apply(kCandidates[k], trial);
            const std::uint64_t sum = absoluteSum(trial + 1, m_rowBytes);
            if (sum < best) {
                best = sum;
                bestIndex = k;
            }
        }
        std::memcpy(out, m_trials[bestIndex].data(), m_rowBytes + 1);
    }

    [[nodiscard]] static std::uint64_t absoluteSum(const std::uint8_t* bytes, std::size_t n)
    {
        std::uint64_t sum = 0;
        // 32-bit partial sums of at most 2^16 bytes cannot overflow and let
        // the compiler keep the inner loop in vector registers.
        for (std::size_t at = 0; at < n; at += 65536) {
            const std::size_t end = std::min(n, at + 65536);
            std::uint32_t part = 0;
            for (std::size_t i = at; i < end; ++i) {
                const int v = static_cast<std::int8_t>(bytes[i]);
                part += static_cast<std::uint32_t>(v < 0 ? -v : v);
            }
            sum += part;
        }
        return sum;
    }

    const core::ImageView& m_image;
    PngFilter m_filter;
    int m_bpp;
    std::size_t m_rowBytes;
    std::vector<std::uint8_t> m_prev;
    std::vector<std::uint8_t> m_cur;
    std::array<std::vector<std::uint8_t>, 5> m_trials; // one row per candidate filter
};

// One horizontal band of the picture, compressed on its own.
struct Strip
{
    int firstRow = 0;
    int endRow = 0;
    bool last = false;
    std::vector<std::uint8_t> deflated;
    uLong adler = 1;
    std::size_t filteredLength = 0;
    bool failed = false;
};

// Runs deflate over `input` (all of it) with `flush`, growing `out` as it fills.
[[nodiscard]] bool deflateInto(z_stream* z, const std::uint8_t* input, std::size_t length,
                               int flush, std::vector<std::uint8_t>& out, std::size_t& used)
{
    z->next_in = const_cast<Bytef*>(input);
    z->avail_in = static_cast<uInt>(length);
    while (true) {
        if (out.size() - used < 4096)
            out.resize(std::max<std::size_t>(out.size() * 2, 65536));
        z->next_out = out.data() + used;
        z->avail_out = static_cast<uInt>(out.size() - used);
        const int result = deflate(z, flush);
        used = out.size() - z->avail_out;
        if (result == Z_STREAM_END)
            return true;
        if (result != Z_OK && result != Z_BUF_ERROR)
            return false;
        // Done once deflate took everything and had room left to spare.
        if (z->avail_in == 0 && z->avail_out != 0)
            return flush != Z_FINISH;
    }
}

void compressStrip(const core::ImageView& image, const PngOptions& options, Strip& strip)
{
    RowFilter filter(image, options);
    const std::size_t rowBytes = filter.filteredRowBytes();
    // Rows go to deflate a batch at a time through one small buffer that
    // stays in cache; a buffer for the whole strip would cost more in fresh
    // pages than deflate spends on it.
    const int batchRows = std::max(1, static_cast<int>((256 * 1024) / rowBytes));
    std::vector<std::uint8_t> batch(static_cast<std::size_t>(batchRows) * rowBytes);

    const int strategy = options.strategy == PngStrategy::Rle ? Z_RLE : Z_DEFAULT_STRATEGY;
    Deflater z(options.compressionLevel, strategy);
    if (!z.ok()) {
        strip.failed = true;
        return;
    }
    if (strip.firstRow > 0) {
        // The rows just above the strip, filtered exactly as the strip above
        // filters them, become the dictionary, so matches may reach back
        // across the seam.
        const int rows =
            std::min(strip.firstRow, static_cast<int>((kWindow + rowBytes - 1) / rowBytes));
        const int from = strip.firstRow - rows;
        std::vector<std::uint8_t> dictionary(static_cast<std::size_t>(rows) * rowBytes);
        filter.startAt(from);
        for (int y = from; y < strip.firstRow; ++y)
            filter.filterRow(y, dictionary.data() + static_cast<std::size_t>(y - from) * rowBytes);
        const std::size_t n = std::min(dictionary.size(), kWindow);
        if (deflateSetDictionary(z.get(), dictionary.data() + dictionary.size() - n,
                                 static_cast<uInt>(n)) != Z_OK) {
            strip.failed = true;
            return;
        }
    } else {
        filter.startAt(0);
    }

    std::size_t used = 0;
    strip.deflated.clear();
    uLong adler = adler32_z(0, nullptr, 0);
    for (int y = strip.firstRow; y < strip.endRow; y += batchRows) {
        const int end = std::min(strip.endRow, y + batchRows);
        for (int row = y; row < end; ++row)
            filter.filterRow(row, batch.data() + static_cast<std::size_t>(row - y) * rowBytes);
        const std::size_t length = static_cast<std::size_t>(end - y) * rowBytes;
        adler = adler32_z(adler, batch.data(), length);
        if (!deflateInto(z.get(), batch.data(), length, Z_NO_FLUSH, strip.deflated, used)) {
            strip.failed = true;
            return;
        }
    }
    // A strip before the last ends with a sync flush: byte-aligned, no final
    // block, so the next strip's blocks can follow directly.
    if (!deflateInto(z.get(), nullptr, 0, strip.last ? Z_FINISH : Z_SYNC_FLUSH, strip.deflated,
                     used)) {
        strip.failed = true;
        return;
    }
    strip.deflated.resize(used);
    strip.adler = adler;
    strip.filteredLength = static_cast<std::size_t>(strip.endRow - strip.firstRow) * rowBytes;
}

void put32(std::vector<std::uint8_t>& out, std::uint32_t v)
{
    out.push_back(static_cast<std::uint8_t>(v >> 24));
    out.push_back(static_cast<std::uint8_t>(v >> 16));
    out.push_back(static_cast<std::uint8_t>(v >> 8));
    out.push_back(static_cast<std::uint8_t>(v));
}

void putChunk(std::vector<std::uint8_t>& out, const char type[4], const std::uint8_t* data,
              std::size_t length)
{
    put32(out, static_cast<std::uint32_t>(length));
    const std::size_t start = out.size();
    out.insert(out.end(), type, type + 4);
    if (length > 0)
        out.insert(out.end(), data, data + length);
    const uLong crc =
        crc32_z(crc32_z(0, nullptr, 0), out.data() + start, static_cast<z_size_t>(length + 4));
    put32(out, static_cast<std::uint32_t>(crc));
}

[[nodiscard]] int threadCount(const PngOptions& options, int height)
{
    int n = options.threads > 0 ? options.threads
                                : static_cast<int>(std::thread::hardware_concurrency());
    // Strips of fewer than 64 rows lose more to the restarts than they gain.
    return std::clamp(n, 1, std::max(1, height / 64));
}

// Strips of rows, one per core, in order from the top.
[[nodiscard]] std::vector<Strip> stripsOf(const core::ImageView& image, const PngOptions& options)
{
    const int n = threadCount(options, image.height);
    std::vector<Strip> strips(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i) {
        Strip& s = strips[static_cast<std::size_t>(i)];
        s.firstRow = static_cast<int>(static_cast<std::int64_t>(image.height) * i / n);
        s.endRow = static_cast<int>(static_cast<std::int64_t>(image.height) * (i + 1) / n);
        s.last = i == n - 1;
    }
    return strips;
}

// Runs work(strip) for every strip, the first on this thread.
template <typename Work>
void forEachStrip(std::vector<Strip>& strips, const Work& work)
{
    std::vector<std::jthread> workers;
    workers.reserve(strips.size() - 1);
    for (std::size_t i = 1; i < strips.size(); ++i)
        workers.emplace_back([&, i] { work(strips[i]); });
    work(strips.front());
}

// A zlib stream: the strips deflated on their cores and joined.
[[nodiscard]] bool zlibByStrips(const core::ImageView& image, const PngOptions& options,
                                std::vector<std::uint8_t>& zlib)
{
    std::vector<Strip> strips = stripsOf(image, options);
    forEachStrip(strips, [&](Strip& strip) { compressStrip(image, options, strip); });

    uLong adler = strips.front().adler;
    std::size_t deflatedLength = 0;
    for (std::size_t i = 0; i < strips.size(); ++i) {
        if (strips[i].failed)
            return false;
        if (i > 0)
            adler = adler32_combine(adler, strips[i].adler,
                                    static_cast<z_off_t>(strips[i].filteredLength));
        deflatedLength += strips[i].deflated.size();
    }

    zlib.reserve(deflatedLength + 6);
    // CMF: deflate with a 32 KiB window; FLG: the level class, check bits.
    const std::uint8_t cmf = 0x78;
    const int levelClass = options.compressionLevel <= 1   ? 0
                           : options.compressionLevel <= 5 ? 1
                           : options.compressionLevel == 6 ? 2
                                                           : 3;
    std::uint8_t flg = static_cast<std::uint8_t>(levelClass << 6);
    flg = static_cast<std::uint8_t>(flg + (31 - ((cmf << 8) | flg) % 31) % 31);
    zlib.push_back(cmf);
    zlib.push_back(flg);
    for (const Strip& s : strips)
        zlib.insert(zlib.end(), s.deflated.begin(), s.deflated.end());
    put32(zlib, static_cast<std::uint32_t>(adler));
    return true;
}

struct CompressorFree
{
    void operator()(libdeflate_compressor* c) const { libdeflate_free_compressor(c); }
};

// A zlib stream: the strips filtered on their cores into one buffer, which
// libdeflate compresses whole. Buffers are left uninitialised: every byte
// is written before it is read, and zeroing megabytes costs more than the
// filtering.
[[nodiscard]] bool zlibWithLibdeflate(const core::ImageView& image, const PngOptions& options,
                                      std::unique_ptr<std::uint8_t[]>& zlib, std::size_t& length)
{
    const std::size_t rowBytes =
        1 + static_cast<std::size_t>(image.width) * (options.alpha == PngAlpha::Straight ? 4 : 3);
    const std::size_t filteredLength = rowBytes * static_cast<std::size_t>(image.height);
    std::unique_ptr<std::uint8_t[]> filtered(new std::uint8_t[filteredLength]);
    std::vector<Strip> strips = stripsOf(image, options);
    forEachStrip(strips, [&](Strip& strip) {
        RowFilter filter(image, options);
        filter.startAt(strip.firstRow);
        for (int y = strip.firstRow; y < strip.endRow; ++y)
            filter.filterRow(y, filtered.get() + static_cast<std::size_t>(y) * rowBytes);
    });

    const std::unique_ptr<libdeflate_compressor, CompressorFree> compressor(
        libdeflate_alloc_compressor(std::clamp(options.compressionLevel, 1, 12)));
    if (!compressor)
        return false;
    const std::size_t bound = libdeflate_zlib_compress_bound(compressor.get(), filteredLength);
    zlib.reset(new std::uint8_t[bound]);
    length = libdeflate_zlib_compress(compressor.get(), filtered.get(), filteredLength, zlib.get(),
                                      bound);
    return length > 0;
}

} // namespace

PngResult encodePng(const core::ImageView& image, const PngOptions& options)
{
    PngResult result;
    if (!image.isValid()) {
        result.error = PngError::InvalidImage;
        return result;
    }
    if (image.width > kMaxPngSide || image.height > kMaxPngSide) {
        result.error = PngError::TooLarge;
        return result;
    }

    std::vector<std::uint8_t> zlibVector;
    std::unique_ptr<std::uint8_t[]> zlibBuffer;
    const std::uint8_t* zlib = nullptr;
    std::size_t zlibLength = 0;
    if (options.deflater == PngDeflater::Libdeflate) {
        if (!zlibWithLibdeflate(image, options, zlibBuffer, zlibLength)) {
            result.error = PngError::Compression;
            return result;
        }
        zlib = zlibBuffer.get();
    } else {
        if (!zlibByStrips(image, options, zlibVector)) {
            result.error = PngError::Compression;
            return result;
        }
        zlib = zlibVector.data();
        zlibLength = zlibVector.size();
    }

    std::vector<std::uint8_t>& out = result.bytes;
    out.reserve(zlibLength + zlibLength / kIdatChunk * 12 + 128);
    static constexpr std::array<std::uint8_t, 8> kSignature{0x89, 'P',  'N',  'G',
                                                            '\r', '\n', 0x1a, '\n'};
    out.insert(out.end(), kSignature.begin(), kSignature.end());

    std::vector<std::uint8_t> ihdr;
    put32(ihdr, static_cast<std::uint32_t>(image.width));
    put32(ihdr, static_cast<std::uint32_t>(image.height));
    ihdr.push_back(8);                                           // bit depth
    ihdr.push_back(options.alpha == PngAlpha::Straight ? 6 : 2); // RGBA or RGB
    ihdr.push_back(0);                                           // deflate
    ihdr.push_back(0);                                           // adaptive filtering
    ihdr.push_back(0);                                           // not interlaced
    putChunk(out, "IHDR", ihdr.data(), ihdr.size());

    if (options.pixelsPerMetre > 0) {
        std::vector<std::uint8_t> phys;
        put32(phys, options.pixelsPerMetre);
        put32(phys, options.pixelsPerMetre);
        phys.push_back(1); // unit: metre
        putChunk(out, "pHYs", phys.data(), phys.size());
    }
    for (std::size_t at = 0; at < zlibLength; at += kIdatChunk)
        putChunk(out, "IDAT", zlib + at, std::min(kIdatChunk, zlibLength - at));
    putChunk(out, "IEND", nullptr, 0);
    return result;
}

} // namespace app::output
