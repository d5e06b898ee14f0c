// SPDX-License-Identifier: GPL-3.0-or-later
#include "annotation/logic/StrokeState.h"

#include <QSet>

#include <algorithm>

namespace annotation {

int StrokeState::visibleCount() const
{
    return static_cast<int>(m_arrayOfStrokes.size()) - m_undoTimes;
}

QString StrokeState::currentIdentity() const
{
    return dicOfCurrentStroke ? dicOfCurrentStroke->identity() : noStrokeIdentity();
}

int StrokeState::getListNumberFromArrayOfStrokes(int type) const
{
    int largest = 0;
    for (const Stroke& s : m_arrayOfStrokes) {
        if (s.type == type)
            largest = std::max(largest, s.list);
    }
    return largest;
}

std::vector<Stroke> StrokeState::currentStrokes(bool leaveOutActive) const
{
    std::vector<Stroke> strokes;
    QSet<QString> seen;
    if (leaveOutActive)
        seen.insert(currentIdentity());
    for (int i = visibleCount() - 1; i >= 0; --i) {
        const Stroke& s = m_arrayOfStrokes[static_cast<std::size_t>(i)];
        const QString id = s.identity();
        if (isEmptyStep(s) || seen.contains(id))
            continue;
        seen.insert(id);
        strokes.push_back(s);
    }
    return strokes;
}

void StrokeState::reSetUndo()
{
    while (m_undoTimes > 0 && !m_arrayOfStrokes.empty()) {
        m_arrayOfStrokes.pop_back();
        --m_undoTimes;
    }
}

void StrokeState::commit()
{
    if (!dicOfCurrentStroke)
        return;
    reSetUndo();
    // A snapshot never holds a drag in progress.
    dicOfCurrentStroke->moveToX.reset();
    dicOfCurrentStroke->moveToY.reset();
    m_arrayOfStrokes.push_back(*dicOfCurrentStroke);
}

void StrokeState::append()
{
    if (dicOfCurrentStroke)
        m_arrayOfStrokes.push_back(*dicOfCurrentStroke);
}

UndoOutcome StrokeState::undoDraw()
{
    UndoOutcome outcome;
    dicOfCurrentStroke.reset();
    const int count = static_cast<int>(m_arrayOfStrokes.size());
    if (m_undoTimes >= count) {
        outcome.disableButton = m_undoTimes == count;
        return outcome;
    }
    ++m_undoTimes;
    outcome.undone = true;
    outcome.disableButton = m_undoTimes == count;
    return outcome;
}

bool StrokeState::redoDraw()
{
    if (m_undoTimes < 1)
        return false;
    --m_undoTimes;
    return true;
}

std::optional<int> StrokeState::deleteCurrentStroke()
{
    if (!dicOfCurrentStroke)
        return std::nullopt;
    const QString id = dicOfCurrentStroke->identity();
    const int type = dicOfCurrentStroke->type;
    // Undone snapshots go too, and the undo count stays as it was: it still
    // hides as many snapshots at the end, whichever they now are.
    std::erase_if(m_arrayOfStrokes, [&id](const Stroke& s) { return s.identity() == id; });
    dicOfCurrentStroke.reset();
    return type;
}

void StrokeState::clear()
{
    m_arrayOfStrokes.clear();
    m_undoTimes = 0;
    dicOfCurrentStroke.reset();
    strokeState = StrokeGesture::Idle;
    oldType = 0;
    idx = 0;
    whichTrackingAreaOfMouseDown = 0;
    mouseEnterSingleStrokeTrackRect = false;
    mouseIsOnActivedStroke = false;
    textViewOpened = false;
}

void StrokeState::removeEqual(const Stroke& s)
{
    std::erase(m_arrayOfStrokes, s);
}

void StrokeState::amendCurrent(const std::function<void(Stroke&)>& change)
{
    if (dicOfCurrentStroke) {
        removeEqual(*dicOfCurrentStroke);
        change(*dicOfCurrentStroke);
        m_arrayOfStrokes.push_back(*dicOfCurrentStroke);
        return;
    }
    Stroke step;
    if (const Stroke* pending = pendingEmptyStep()) {
        step = *pending;
        removeEqual(step);
    }
    step.type = kEmptyStepType;
    step.list = 0;
    change(step);
    m_arrayOfStrokes.push_back(step);
}

const Stroke* StrokeState::pendingEmptyStep() const
{
    if (m_undoTimes > 0 || m_arrayOfStrokes.empty() || !isEmptyStep(m_arrayOfStrokes.back()))
        return nullptr;
    return &m_arrayOfStrokes.back();
}

} // namespace annotation
