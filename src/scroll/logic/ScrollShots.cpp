// SPDX-License-Identifier: GPL-3.0-or-later
#include "scroll/logic/ScrollShots.h"

#include "scroll/logic/RowMatcher.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

namespace scroll {

namespace {

// The repeat counters only count frames, but a state handed in from
// outside must not make them overflow.
std::int32_t nextTimes(std::int32_t times, bool sameCount)
{
    if (!sameCount)
        return 0;
    return times < std::numeric_limits<std::int32_t>::max() ? times + 1 : times;
}

int clampToRows(std::int64_t value)
{
    return int(std::clamp<std::int64_t>(value, 0, Frame::kMaxSide + 1));
}

// Once header and footer are settled they are left out of every frame,
// which makes frames smaller and every later comparison faster.
void rejustCaptureArea(ScrollState& s, int scale)
{
    if (!(s.headSameRowFinished && s.tailSameRowFinished) || s.headRejustedOfRectOfScreenShots)
        return;
    s.headRejustedOfRectOfScreenShots = true;
    const double head = s.headSameRow / scale;
    const double tail = s.tailSameRow / scale;
    const QRectF& r = s.rectOfScreenShots;
    s.newRectOfScreenShots = QRectF(r.x(), r.y() + head, r.width(), r.height() - head - tail);
}

// Side bars are learnt against the first frame. The first frame that
// differs anywhere settles both sides at once; a side already settled is
// counted again while the other is not.
void learnSideBars(ScrollState& s, const ColumnList& columns, const RowMatcher& m)
{
    const ColumnList& first = s.firstArrOfColumn;
    const int count = columns.count();
    int left = 0;
    while (left < count && m.sameArrColumn(first.column(left), columns.column(left)))
        ++left;
    int right = 0;
    while (right < count &&
           m.sameArrColumn(first.column(count - 1 - right), columns.column(count - 1 - right)))
        ++right;
    s.leftSameColumn = left;
    s.rightSameColumn = right;
    if (left != count)
        s.leftSameColumnFinished = true;
    if (right != count)
        s.rightSameColumnFinished = true;
}

// The header is settled when its count has come out the same five times
// running, or at once when there is none.
void learnHeader(ScrollState& s, const Frame& frame, const RowMatcher& m)
{
    if (!s.headSameRowFinished) {
        const Frame& first = s.firstScrollScreenshotsArray;
        const int rowCount = frame.rowCount();
        int c = 0;
        while (c < rowCount - 1 && m.sameArr(frame.row(c), first.row(c)))
            ++c;
        s.headSameRowTimes = nextTimes(s.headSameRowTimes, c == s.headSameRow);
        s.headSameRow = c;
        if (c == 0)
            s.headSameRowFinished = true;
    }
    if (s.headSameRowTimes >= 4 && !s.headSameRowFinished)
        s.headSameRowFinished = true;
}

// The same from the bottom; row 0 is never compared. Once settled, the
// footer's picture is cut from the previous frame to be shown once under
// the stitched picture.
void learnFooter(ScrollState& s, const Frame& frame, const RowMatcher& m)
{
    if (!s.tailSameRowFinished) {
        const Frame& first = s.firstScrollScreenshotsArray;
        int t = 0;
        for (int y = frame.rowCount() - 1; y >= 1; --y) {
            if (!m.sameArr(frame.row(y), first.row(y)))
                break;
            ++t;
        }
        s.tailSameRowTimes = nextTimes(s.tailSameRowTimes, t == s.tailSameRow);
        s.tailSameRow = t;
        if (t == 0)
            s.tailSameRowFinished = true;
    }
    if (s.tailSameRowTimes >= 4 && !s.tailSameRowFinished) {
        s.tailSameRowFinished = true;
        const Frame& old = s.oldScrollImageTotal;
        s.tailImageView = old.cut(0, old.height() - s.tailSameRow, old.width(), s.tailSameRow);
        s.tailImageViewOrder = s.imageArr.size();
    }
}

// The anchor is the first row that differs from both its neighbours: the
// first edge of real content, not a stretch of flat background.
int findAnchor(const Frame& frame, std::int64_t start, const RowMatcher& m)
{
    const int rowCount = frame.rowCount();
    // Rows of one frame are all as long, so sameArr is symmetric here and
    // the test of rows (i+2, i+1) is the next step's test of (i+1, i+2).
    int i = clampToRows(start);
    if (i >= rowCount - 3)
        return -1;
    bool sameAsNext = m.sameArr(frame.row(i), frame.row(i + 1));
    for (; i < rowCount - 3; ++i) {
        const bool nextSame = m.sameArr(frame.row(i + 2), frame.row(i + 1));
        if (!sameAsNext && !nextSame && m.notOnlyWhiteColorInQQOrWeChat(frame.row(i + 1)))
            return i + 1;
        sameAsNext = nextSame;
    }
    return -1;
}

// Text lines and table rows look alike, so an anchor that repeats further
// down cannot fix the shift alone: find a second row at a fixed distance
// below it that tells the repeats apart. Returns that distance, 0 for none.
int findCheckGap(const Frame& frame, int anchorIndex, const std::vector<int>& repeats,
                 const RowMatcher& m)
{
    const int rowCount = frame.rowCount();
    for (int k = 1; k < rowCount; ++k) {
        if (anchorIndex + k >= rowCount)
            return 0;
        const Row candidate = frame.row(anchorIndex + k);
        bool separates = true;
        for (const int repeat : repeats) {
            if (repeat + k >= rowCount)
                break; // the repeat's partner lies outside: accept at once
            if (m.sameArr(frame.row(repeat + k), candidate)) {
                separates = false;
                break;
            }
        }
        if (separates)
            return k;
    }
    return 0;
}

} // namespace

FrameJudgement screenShotsAtScrollScreenshots(ScrollState& s, const FrameSource& takeFrame,
                                              const FrameContext& context)
{
    const int scale = std::max(1, context.scale);
    FrameJudgement judgement;

    rejustCaptureArea(s, scale);
    const QRectF area =
        s.headRejustedOfRectOfScreenShots ? s.newRectOfScreenShots : s.rectOfScreenShots;
    std::optional<Frame> taken = takeFrame ? takeFrame(area) : std::nullopt;
    if (!taken || taken->isNull())
        return judgement;
    const Frame frame = std::move(*taken);
    const int h = frame.height();
    const bool learningSides = !(s.leftSameColumnFinished && s.rightSameColumnFinished);
    const ColumnList columns = learningSides ? ColumnList::of(frame) : ColumnList{};

    if (!s.startScrollScreenshots) {
        s.scrollImageTotal = frame;
        s.oldScrollImageTotal = frame;
        s.lastScrollScreenshotsArray = frame;
        s.firstScrollScreenshotsArray = frame;
        s.firstArrOfColumn = columns;
        judgement.verdict = FrameVerdict::First;
        return judgement;
    }

    judgement.verdict = FrameVerdict::Empty;
    if (frame.rowCount() == 0)
        return judgement;
    judgement.verdict = FrameVerdict::SameAsFirst;
    if (learningSides && columns == s.firstArrOfColumn)
        return judgement;

    if (learningSides)
        learnSideBars(s, columns, RowMatcher(context.appIDUnderMouse, 0, 0));
    // Built after the side bars moved: every row comparison leaves them out.
    const RowMatcher m(context.appIDUnderMouse, s.leftSameColumn, s.rightSameColumn);
    learnHeader(s, frame, m);
    learnFooter(s, frame, m);

    // headSameRow is already in pixel rows, so on a double-density screen
    // this starts twice as deep as the header. That is how it has always
    // searched; the anchor it finds is just as good.
    const std::int64_t start =
        s.headSameRowFinished ? scale : std::int64_t(s.headSameRow) * scale + scale;
    const int rowCount = frame.rowCount();
    const int anchorIndex = findAnchor(frame, start, m);
    judgement.anchorIndex = anchorIndex;
    const Row anchor = frame.row(anchorIndex);

    std::vector<int> repeats;
    if (anchorIndex >= 0) {
        for (int y = anchorIndex + 3; y < rowCount; ++y) {
            if (m.sameArr(frame.row(y), anchor))
                repeats.push_back(y);
        }
    }
    const int gap = repeats.empty() ? 0 : findCheckGap(frame, anchorIndex, repeats, m);
    judgement.gap = gap;
    const Row checkRow = gap != 0 ? frame.row(anchorIndex + gap) : Row{};

    // Only the first occurrence of the anchor in the previous frame counts:
    // when its check row fails, the frame is lost rather than tried again
    // with a later occurrence.
    const Frame& last = s.lastScrollScreenshotsArray;
    const int lastCount = last.rowCount();
    int p = -1;
    if (anchorIndex >= 0) {
        const std::int64_t from = s.headSameRowFinished ? 0 : std::int64_t(s.headSameRow) * scale;
        for (int q = clampToRows(from); q < lastCount; ++q) {
            if (m.sameArr(last.row(q), anchor)) {
                p = q;
                break;
            }
        }
    }
    if (p >= 0 && gap != 0) {
        if (std::int64_t(p) + gap >= std::int64_t(lastCount) - 1 ||
            !m.sameArr(last.row(p + gap), checkRow))
            p = -1;
    }
    judgement.p = p;
    const int shift = p - anchorIndex;
    judgement.shift = shift;

    // An anchor at the very top of the previous frame says nothing of what
    // lay above it; a wheel that went up on balance takes no frame.
    const bool accepted = shift < h && p != -1 && p != 0 && shift > 0 && s.totalDeltay < 0;
    judgement.verdict = FrameVerdict::Dropped;
    if (!accepted)
        return judgement;

    s.lastTotalDeltay = s.totalDeltay;
    s.totalDeltay = 0;
    s.scrollImageTotal = frame;
    const float used = s.imageUsedHeightArr.empty() ? 0.0f : s.imageUsedHeightArr.back();
    const Frame& old = s.oldScrollImageTotal;
    if (s.imageArr.empty()) {
        // The first picture leaves out the footer rows as counted now,
        // settled or not.
        s.imageArr.push_back(old.cut(0, 0, old.width(), old.height() - s.tailSameRow));
        s.imageUsedHeightArr.push_back(float(shift));
    } else if (float(h) > used + float(shift)) {
        // The stored picture still overlaps the new frame: small shifts only
        // advance its count, so about one frame per frame height is kept.
        s.imageUsedHeightArr.back() = used + float(shift);
    } else {
        s.imageArr.push_back(old);
        s.imageUsedHeightArr.push_back(float(shift));
    }
    s.oldScrollImageTotal = s.scrollImageTotal;
    s.lastScrollScreenshotsArray = frame;
    judgement.verdict = FrameVerdict::Accepted;
    return judgement;
}

Frame frameInArea(const Frame& capture, const QRectF& captureRect, const QRectF& area, int scale)
{
    scale = std::max(1, scale);
    const QRectF r = area.translated(-captureRect.topLeft());
    const auto px = [scale](double points) {
        if (!(points == points))
            return 0;
        const double v =
            std::clamp(points * scale, -double(Frame::kMaxSide) * 4, double(Frame::kMaxSide) * 4);
        return int(std::lround(v));
    };
    return capture.cut(px(r.x()), px(r.y()), px(r.width()), px(r.height()));
}

} // namespace scroll
