// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QString>

// Pictures compared with the ones kept in tests/data/golden/NAME.png. A
// failure says how much differed, and the actual picture is written to the
// working directory for a look. With KELVO_UPDATE_GOLDENS=1 the golden is
// written instead.
namespace golden {

// How far a picture may stray from its golden: by more than `channel` in
// any colour channel in at most `pixelShare` of its pixels.
struct Tolerance
{
    int channel = 0;
    double pixelShare = 0;
};

// Screenshots of the real desktop: a few pixels may differ a little
// (antialiased text edges).
inline constexpr Tolerance kScreenshot{24, 0.005};
// Pictures painted offscreen without text: only a rounding step of the
// blending, which may differ between the processor's SIMD paths.
inline constexpr Tolerance kPainted{3, 0};

struct Result
{
    bool matches = false;
    QString message;
};

[[nodiscard]] Result compare(const QImage& actual, const QString& name, Tolerance tolerance);

// True when goldens are being recorded rather than compared.
[[nodiscard]] bool recording();

} // namespace golden
