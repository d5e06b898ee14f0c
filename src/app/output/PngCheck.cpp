// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/output/PngCheck.h"

#include "core/Localized.h"

#include <spng.h>

#include <memory>
#include <vector>

namespace app::output {

namespace {
struct ContextFree
{
    void operator()(spng_ctx* c) const { spng_ctx_free(c); }
};
} // namespace

QString checkPng(const QByteArray& png)
{
    if (png.isEmpty() || png.size() > kMaxForeignBytes)
        return core::localized("The picture is empty or too large.");
    std::unique_ptr<spng_ctx, ContextFree> ctx(spng_ctx_new(0));
    if (!ctx)
        return core::localized("Out of memory.");
    spng_set_image_limits(ctx.get(), kMaxForeignSide, kMaxForeignSide);
    spng_set_chunk_limits(ctx.get(), 1u << 24, 1u << 26);
    spng_set_crc_action(ctx.get(), SPNG_CRC_ERROR, SPNG_CRC_ERROR);
    if (spng_set_png_buffer(ctx.get(), png.constData(), static_cast<std::size_t>(png.size())) != 0)
        return core::localized("The picture is not a PNG.");
    std::size_t size = 0;
    int error = spng_decoded_image_size(ctx.get(), SPNG_FMT_RGBA8, &size);
    if (error != 0)
        return core::localized("The picture is not a PNG Kelvo can read: %1")
            .arg(QString::fromUtf8(spng_strerror(error)));
    std::vector<unsigned char> pixels(size);
    error = spng_decode_image(ctx.get(), pixels.data(), size, SPNG_FMT_RGBA8, 0);
    if (error != 0)
        return core::localized("The picture is damaged: %1")
            .arg(QString::fromUtf8(spng_strerror(error)));
    return {};
}

} // namespace app::output
