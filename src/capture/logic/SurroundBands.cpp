// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/logic/SurroundBands.h"

namespace capture {

namespace {

// The surround is drawn as a border this wide around a box grown from the
// selection; its hole is the box's inside.
constexpr double kSurroundBorder = 9999.0;

QRectF grown(const QRectF& r, double by)
{
    return r.adjusted(-by, -by, by, by);
}

QRectF holeOfBoxGrownBy(const QRectF& r, double growth)
{
    return grown(r, growth - kSurroundBorder);
}

} // namespace

SurroundBands SurroundBands::forHoveredWindow(const QRectF& windowRect)
{
    return {windowRect, holeOfBoxGrownBy(windowRect, 9997.0)};
}

SurroundBands SurroundBands::forRegion(const QRectF& region)
{
    return {grown(region, 2.0), holeOfBoxGrownBy(region, 10000.0)};
}

SurroundBands SurroundBands::forFixedSelection(const QRectF& borderFrame)
{
    return {grown(borderFrame, -4.0), holeOfBoxGrownBy(borderFrame, 9994.0)};
}

SurroundBands SurroundBands::forPickedWindows(const QRectF& borderFrame)
{
    return {grown(borderFrame, -4.0), holeOfBoxGrownBy(borderFrame, 9995.0)};
}

} // namespace capture
