// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "overlay/logic/ClipEvents.h"

#include <QPointF>
#include <QVariantMap>

#include <optional>

namespace overlay {

// How the overlay treats the stroke being drawn or edited. The mark-up
// answers from what the stroke's tool can do, so the overlay needs no
// stroke types.
struct StrokeTraits
{
    // A text box or a note: a press elsewhere in the selection ends its
    // editing, and a new one opens its text view.
    bool holdsText = false;
    // Costly to paint: a drag repaints the overlay on every third event.
    bool paintsSparingly = false;
    // The release renews the crop border's tracking areas and repaints.
    bool repaintsOnRelease = false;

    bool operator==(const StrokeTraits&) const = default;
};

// The keys the overlay hands to an open text view as it sees them first.
enum class TextKey
{
    Delete,
    Return,
};

// What of the mark-up the crop border's hover finds under the pointer.
enum class StrokeUnderPointer
{
    None,
    Stroke,       // a stroke that is not the active one
    ActiveStroke, // the stroke being edited
    NoteLine,     // the line of a note, which keeps the cursor it has
};

// What a short cut typed on the overlay is chosen under.
struct ShortcutContext
{
    QVariantMap shortcutOfButton; // the live table: key name to the text it holds
    bool scrolling = false;       // a scrolling capture runs
    bool windowSelection = false; // the selection is a window, not a region
};

// A wheel tick over the annotation window's screen, as Qt reports it.
struct ClipWheelEvent
{
    QPointF location;   // the pointer, overlay-local: y up, points
    QPointF angleDelta; // eighths of a degree; a mouse wheel's notch is 120
    QPointF pixelDelta; // a touch pad's scrolled distance; null for a mouse wheel
    Qt::ScrollPhase phase = Qt::NoScrollPhase; // a touch pad's gesture, momentum included
};

// What the overlay asks of the mark-up on it and the commands it gives it:
// the one way the capture reaches strokes, tools and text views. The mark-up
// (the annotation window's controller, and the stroke engine after it)
// implements it; the capture knows no tool name and no stroke type.
class AnnotationInput
{
public:
    virtual ~AnnotationInput() = default;

    // Questions, asked as each event arrives.
    // A drawing tool is chosen: a press in the open selection draws with it.
    [[nodiscard]] virtual bool hasDrawingTool() const = 0;
    // The stroke being drawn or edited; none when there is none.
    [[nodiscard]] virtual std::optional<StrokeTraits> currentStroke() const = 0;
    // Whether the history holds any stroke, and whether every one is undone.
    [[nodiscard]] virtual bool hasStrokes() const = 0;
    [[nodiscard]] virtual bool everythingUndone() const = 0;
    // A text view is open, and its caret is within its first two places.
    [[nodiscard]] virtual bool textViewOpened() const = 0;
    [[nodiscard]] virtual bool caretNearTextStart() const = 0;

    // Hover, in overlay-local points. A mark-up without strokes has nothing
    // under the pointer. The stroke layer has painted pixels (or a handle)
    // under the point: there it takes the pointer from the overlay below.
    [[nodiscard]] virtual bool pointerOnMarkup(QPointF) const { return false; }
    // The stroke the crop border's hover test finds under the point.
    [[nodiscard]] virtual StrokeUnderPointer strokeUnderPointer(QPointF) const
    {
        return StrokeUnderPointer::None;
    }
    // A handle of the active stroke has the pointer, and its cursor stands.
    [[nodiscard]] virtual bool handleHasPointer() const { return false; }
    // The pointer moved over the selection's overlay, after the crop border
    // saw the move: a handle entered then has the last word on the cursor.
    virtual void pointerMoved(QPointF) {}

    // The pointer, while the chosen tool draws.
    virtual void pointerPressed(const ClipMouseEvent& event) = 0;
    virtual void pointerDragged(const ClipMouseEvent& event) = 0;
    virtual void pointerReleased(const ClipMouseEvent& event) = 0;
    // Text views.
    virtual void endTextEdit() = 0;
    virtual void openTextView() = 0;
    virtual void textKey(TextKey key) = 0;
    // Every key the overlay does not keep for itself.
    virtual void keyPressed(const ClipKeyEvent& event) = 0;
    // The wheel over the annotation window's screen: the size of the tool,
    // a note's number or a stroke's opacity. A mark-up without tools
    // ignores it.
    virtual void scrollWheel(const ClipWheelEvent&) {}

    // A short cut with no modifier while the selection stands. True when the
    // choice ends a pending move of the selection (a drawing tool was chosen).
    virtual bool shortcutTyped(const ClipKeyEvent& event, const ShortcutContext& context) = 0;

    // Commands.
    virtual void clearTool() = 0;          // no tool is chosen
    virtual void hideSelectionBoxes() = 0; // while the selection is changed
    virtual void disableScrollCapture() = 0;
    virtual void undo() = 0;
    virtual void redo() = 0;
    virtual void disableUndo() = 0;
    virtual void deleteCurrentStroke() = 0;
    virtual void copyToPaste() = 0; // a double click in the selection
};

} // namespace overlay
