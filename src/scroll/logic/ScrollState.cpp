// SPDX-License-Identifier: GPL-3.0-or-later
#include "scroll/logic/ScrollState.h"

namespace scroll {

void ScrollState::resetForSession()
{
    totalDeltay = 0;
    headSameRowFinished = false;
    tailSameRowFinished = false;
    leftSameColumnFinished = false;
    rightSameColumnFinished = false;
    headRejustedOfRectOfScreenShots = false;
    imageArr.clear();
    imageUsedHeightArr.clear();
    // A new session builds a new stack of views; a footer of an earlier
    // session is not part of it.
    tailImageView = {};
    tailImageViewOrder = 0;
    startScrollScreenshots = false;
}

void ScrollState::releaseFrames()
{
    firstArrOfColumn = {};
    scrollImageTotal = {};
    oldScrollImageTotal = {};
    tailImageView = {};
    tailImageViewOrder = 0;
    firstScrollScreenshotsArray = {};
    lastScrollScreenshotsArray = {};
    imageArr.clear();
    imageUsedHeightArr.clear();
}

} // namespace scroll
