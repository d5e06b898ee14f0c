// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "annotation/logic/Stroke.h"

#include <functional>
#include <optional>
#include <vector>

namespace annotation {

// What the latest press began; kept after the release, since the active
// stroke is painted by the way of its last gesture.
enum class StrokeGesture
{
    Idle = -1,
    Draw = 0,
    Move = 1,
    Resize = 2,
};

// What an undo did.
struct UndoOutcome
{
    bool undone = false;        // a snapshot was hidden
    bool disableButton = false; // nothing is left to undo
};

// The mark-up of one capture: the history of stroke snapshots, the active
// stroke's working copy, and the undo count. The history only grows at its
// end; undo hides its tail, and the newest visible snapshot of an identity
// is that stroke as it stands. A move or a recolour appends a snapshot
// rather than changing one, so undo simply uncovers the previous one.
class StrokeState
{
public:
    [[nodiscard]] const std::vector<Stroke>& arrayOfStrokes() const { return m_arrayOfStrokes; }
    [[nodiscard]] int undoTimes() const { return m_undoTimes; }
    [[nodiscard]] int visibleCount() const;
    // A delete can leave the undo count above what is left.
    [[nodiscard]] bool everythingUndone() const { return visibleCount() <= 0; }

    // The working copy of the active stroke, or none.
    std::optional<Stroke> dicOfCurrentStroke;
    StrokeGesture strokeState = StrokeGesture::Idle;
    int oldType = 0; // the active stroke's type before the latest press
    // Tracking of the active stroke's handles.
    int idx = 0;
    int whichTrackingAreaOfMouseDown = 0;
    bool mouseEnterSingleStrokeTrackRect = false;
    bool mouseIsOnActivedStroke = false;
    bool textViewOpened = false;

    // The identity of the active stroke, or the one no stroke has.
    [[nodiscard]] QString currentIdentity() const;
    // The largest "list" of `type` in the whole history, undone snapshots
    // included, so a serial is never reused after an undo; 0 for none.
    [[nodiscard]] int getListNumberFromArrayOfStrokes(int type) const;
    // Each stroke's newest visible snapshot, newest stroke first. With
    // `leaveOutActive` the active stroke is left out, for it is drawn by itself.
    [[nodiscard]] std::vector<Stroke> currentStrokes(bool leaveOutActive) const;

    // Drops the undone tail for good: a new commit ends the way back.
    void reSetUndo();
    // Appends a copy of the active stroke, which stays active.
    void commit();
    // Appends a copy of the active stroke but keeps the undone tail: what
    // a change of its settings does.
    void append();
    // Nothing stays active after an undo, even when nothing can be undone.
    UndoOutcome undoDraw();
    // False when nothing was undone.
    bool redoDraw();
    // Removes every snapshot of the active stroke, visible or undone, and
    // ends it; no undo brings it back. The removed type, or none.
    std::optional<int> deleteCurrentStroke();
    // The capture ended: nothing of it is kept.
    void clear();

    // Changes of the active stroke's settings by the wheel. They are no undo
    // step of their own: every snapshot equal to the working copy goes,
    // `change` is made to the working copy, and a copy of it is appended
    // (an undone tail stays). With no active stroke the change still makes
    // one undo step, which shows nothing: it lands on an empty step, a
    // snapshot that no reader of the strokes sees (currentStrokes() leaves
    // it out) and that never becomes the active stroke. Turns that follow
    // while that step is the newest visible snapshot change it again.
    void amendCurrent(const std::function<void(Stroke&)>& change);
    [[nodiscard]] static bool isEmptyStep(const Stroke& s) { return s.type == kEmptyStepType; }

private:
    // No tool has it, so no stroke either.
    static constexpr int kEmptyStepType = -1;
    void removeEqual(const Stroke& s);
    // The empty step that changes without an active stroke go on with, if any.
    [[nodiscard]] const Stroke* pendingEmptyStep() const;

    std::vector<Stroke> m_arrayOfStrokes;
    int m_undoTimes = 0;
};

} // namespace annotation
