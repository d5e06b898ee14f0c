// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QString>

#include <functional>

namespace e2e {

// Compares a screenshot with tests/data/golden/NAME.png. A few pixels may
// differ a little (antialiased text edges); anything more is a failure whose
// message says how much differed, and the actual picture is written beside
// the build for a look. With KELVO_UPDATE_GOLDENS=1 the golden is written.
struct GoldenResult
{
    bool matches = false;
    QString message;
};
[[nodiscard]] GoldenResult compareWithGolden(const QImage& actual, const QString& name);

// Waits until `grab()` matches the golden (the screen settles after the
// last event: repaints, a magnifier that hides 30 ms after a release), up to
// a time-out; the result of the last comparison. When recording goldens it
// lets the screen settle for a moment and writes what it shows.
[[nodiscard]] GoldenResult waitForGolden(const std::function<QImage()>& grab, const QString& name);

} // namespace e2e
