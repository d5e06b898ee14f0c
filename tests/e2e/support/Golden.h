// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/GoldenImage.h"

#include <QImage>
#include <QString>

#include <functional>

namespace e2e {

using GoldenResult = golden::Result;

// Compares a screenshot with its golden, with the screenshot's tolerance.
[[nodiscard]] inline GoldenResult compareWithGolden(const QImage& actual, const QString& name)
{
    return golden::compare(actual, name, golden::kScreenshot);
}

// Waits until `grab()` matches the golden (the screen settles after the
// last event: repaints, a magnifier that hides 30 ms after a release), up to
// a time-out; the result of the last comparison. When recording goldens it
// lets the screen settle for a moment and writes what it shows.
[[nodiscard]] GoldenResult waitForGolden(const std::function<QImage()>& grab, const QString& name);

} // namespace e2e
