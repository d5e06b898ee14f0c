// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "scroll/logic/ColumnList.h"
#include "scroll/logic/Frame.h"

#include <QRectF>

#include <cstdint>
#include <vector>

namespace scroll {

// The state of one scrolling capture. There is one capture at a time, but
// the object outlives a session: the learnt counts are carried into the
// next one (see resetForSession). Row and column counts are image pixels,
// never points.
struct ScrollState
{
    // False while the first frame of a session is taken.
    bool startScrollScreenshots = false;
    // The captured area in points, global, origin at the top left.
    QRectF rectOfScreenShots;
    // rectOfScreenShots less the fixed header and footer.
    QRectF newRectOfScreenShots;
    // newRectOfScreenShots has been worked out and is now the capture area.
    bool headRejustedOfRectOfScreenShots = false;

    // Row lists are frames: rows are views into the shared pixels.
    Frame firstScrollScreenshotsArray;
    ColumnList firstArrOfColumn;
    Frame lastScrollScreenshotsArray;
    // The newest accepted frame, and the accepted frame before the one being
    // judged; sized in pixels.
    Frame scrollImageTotal;
    Frame oldScrollImageTotal;

    std::int32_t headSameRow = 0;
    std::int32_t headSameRowTimes = 0;
    bool headSameRowFinished = false;
    std::int32_t tailSameRow = 0;
    std::int32_t tailSameRowTimes = 0;
    bool tailSameRowFinished = false;
    std::int32_t leftSameColumn = 0;
    std::int32_t rightSameColumn = 0;
    bool leftSameColumnFinished = false;
    bool rightSameColumnFinished = false;

    // Wheel balance since the last accepted frame; below zero means the
    // content went down the page.
    float totalDeltay = 0;
    // Kept for the record of the last accepted frame; nothing reads it.
    float lastTotalDeltay = 0;

    // The stitched picture, oldest first; the newest frame is not in it.
    std::vector<Frame> imageArr;
    // For each entry of imageArr, the pixel rows from its top to the top of
    // the next picture. Single precision, as small shifts accumulate here.
    std::vector<float> imageUsedHeightArr;
    // The fixed footer, shown once under the picture; null when none.
    Frame tailImageView;
    // How many entries of imageArr lay in the stack when the footer joined
    // it: the footer is drawn over those and under the later ones.
    std::size_t tailImageViewOrder = 0;

    // A session starts: the balance, the settled flags and the picture go.
    // The four counts and the two repeat counters stay on purpose, until the
    // first comparison overwrites them, so that a second session settles its
    // header sooner.
    void resetForSession();
    // The capture ends: every frame is let go, the learnt counts stay.
    void releaseFrames();
};

} // namespace scroll
