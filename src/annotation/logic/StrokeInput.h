// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "annotation/logic/StrokeState.h"
#include "overlay/logic/PointerRole.h"

#include <QColor>
#include <QPointF>
#include <QRectF>

#include <functional>
#include <optional>
#include <vector>

namespace annotation {

// What a new stroke takes from its tool's remembered settings and from the
// preferences of the tool bar's option boxes; a stroke freezes them.
struct NewStrokeSettings
{
    QColor color;
    double size = 0;
    std::optional<double> colorAlpha; // the tool's own, when it has one
    bool normalTypeOfArrow = true;
    bool enableRoundOfSquare = false;
    bool filledOfSquare = false;
    bool filledOfEllipse = false;
    bool selectedGaussianBlured = false;
    bool ellipseOfHighlight = false;
};

// What a press means, read from the role the hover logic gave the pointer.
enum class PressKind
{
    None,       // nothing of the mark-up under the pointer
    GrabStroke, // the open hand: a stroke lies under the pointer
    Handle,     // a handle of the active stroke
    Draw,       // the tool's cross hair: free space in the region
};
[[nodiscard]] PressKind pressKindOf(overlay::PointerRole role);

// What the mark-up's host must do after an event.
struct StrokeReaction
{
    bool redraw = false;              // the stroke layer repaints
    bool updateTrackingAreas = false; // the layer's areas follow the strokes
    bool enableUndoButton = false;
    bool disableScrollButton = false;
    bool refreshMosaic = false;    // the overlay's mosaic layer repaints
    bool refreshHighlight = false; // the crop border's veil repaints
    bool disableTextView = false;
    std::optional<int> adjustTool; // grabbing a stroke chose its tool

    bool operator==(const StrokeReaction&) const = default;
};

// Turns the pointer into strokes: the press decides between drawing,
// moving and resizing; drags shape, move or resize the stroke; the release
// keeps the gesture only after six drag events, however short, and the
// stroke then stays active.
// Points are overlay-local, y up.
class StrokeInput
{
public:
    // A gesture with fewer drag events than this did not take place.
    static constexpr int kDragsForAStroke = 6;
    // The pencil takes a drag's point only when it is farther than this
    // from the last one taken.
    static constexpr double kPencilStep = 2.0;

    explicit StrokeInput(StrokeState& state);

    // `selectFunction` is the chosen tool's number, -1 for none.
    // `grabStrokeUnderMouse` makes the stroke under the point active and
    // answers whether there was one.
    StrokeReaction mouseDown(QPointF p, overlay::PointerRole role, int selectFunction,
                             const NewStrokeSettings& settings,
                             const std::function<bool(QPointF)>& grabStrokeUnderMouse);
    StrokeReaction mouseDragged(QPointF p);
    StrokeReaction mouseUp(QPointF p);

    // Fills the active stroke for a new one of `type` pressed at `origin`.
    void setupNewStroke(int type, QPointF origin, const NewStrokeSettings& settings);

    // The selection grown by its band, which a mosaic stays inside.
    void setCurrentRectOfAnnotatedImageView(const QRectF& rect) { m_bounds = rect; }

    [[nodiscard]] int mouseDraggedTimes() const { return m_mouseDraggedTimes; }
    // The tool of the stroke being drawn; none between a press that drew
    // nothing and the next.
    [[nodiscard]] std::optional<int> currentFunction() const { return m_currentFunction; }

private:
    StrokeReaction tail(StrokeReaction reaction);

    StrokeState& m_state;
    int m_mouseDraggedTimes = 0;
    std::optional<int> m_currentFunction;
    std::vector<QPointF> m_arrayOfPoints; // the pencil path under construction
    QRectF m_bounds;
};

} // namespace annotation
