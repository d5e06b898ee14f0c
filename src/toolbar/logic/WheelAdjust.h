// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "overlay/logic/AnnotationInput.h"
#include "overlay/logic/PointerRole.h"

#include <QString>

#include <functional>
#include <optional>

namespace toolbar {

// One tick of a wheel as the mark-up needs it.
struct WheelTick
{
    double deltaX = 0;
    double deltaY = 0;
    // A touch pad's tick: it belongs to a gesture (a scroll phase or
    // momentum). A notched mouse wheel has neither.
    bool inGesture = false;
    bool gestureBegan = false; // the first tick of a new gesture
};

// The tick of a wheel event. `gestureGoesOn`: a tick came less than the
// gesture's 0.1 s ago. A touch pad that reports no phases (X11 gives its
// ticks none) begins a new gesture after such a pause.
[[nodiscard]] WheelTick wheelTickOf(const overlay::ClipWheelEvent& event, bool gestureGoesOn);

// What the wheel is over at the tick, asked of the mark-up.
struct WheelScene
{
    QString selectFunction;     // the chosen tool, "" for none
    int strokeType = 0;         // the active stroke's type, 0 for none
    bool onCycleOfNote = false; // the pointer rests on the active note's circle
    overlay::PointerRole pointerRole = overlay::PointerRole::Arrow;
    std::function<bool()> strokeUnderPointer; // asked only when the answer matters
    int size = 0;                             // the active stroke's size, else the tool's
    std::optional<double> colorAlpha;         // the active stroke's opacity, if it has one
    int serialNumber = 1;                     // the active note's number
};

// What a tick changes.
enum class WheelChange
{
    None,
    Size,         // a drawing tool's size
    TextSize,     // a text tool's point size
    SerialNumber, // the active note's number
    Opacity,      // the active stroke's opacity
};

struct WheelOutcome
{
    // A tool is chosen: the tick belongs to the mark-up, whatever it changes.
    bool accepted = false;
    // The opacity box opens with this figure (it was closed).
    std::optional<QString> openAlphaBox;
    WheelChange change = WheelChange::None;
    int size = 0;           // Size, TextSize
    int serialNumber = 0;   // SerialNumber
    double colorAlpha = 1;  // Opacity: the new value
    QString colorAlphaText; // Opacity: as the stroke keeps it, two decimals
    QString alphaPercent;   // Opacity: the box's new figure
};

// The wheel over the picture: it changes the size of the tool in hand, a
// note's number or, over a stroke, the opacity of the active stroke. It
// tells a touch pad's gesture from a mouse wheel's notches and keeps a
// gesture to the direction it started in.
class WheelAdjust
{
public:
    [[nodiscard]] WheelOutcome scrollWheel(const WheelTick& tick, const WheelScene& scene);
    // The pointer moved or a button went down: the opacity box closes, and
    // the next tick asks afresh whether it is over a stroke. True when the
    // box was open.
    bool pointerMovedOrPressed();
    // A capture ended.
    void reset() { *this = WheelAdjust{}; }

    [[nodiscard]] bool boxOfColorAlphaShown() const { return m_boxOfColorAlphaShown; }
    [[nodiscard]] const QString& scrollWheelType() const { return m_scrollWheelType; }
    [[nodiscard]] bool scrollCanAdjustColorAlph() const { return m_scrollCanAdjustColorAlph; }

private:
    void stepOpacity(double delta, const WheelScene& scene, WheelOutcome& outcome) const;
    void stepText(double delta, bool noteMode, const WheelScene& scene,
                  WheelOutcome& outcome) const;

    QString m_scrollWheelType; // "", "upDownScroll" or "leftRightScroll"
    bool m_scrollCanAdjustColorAlph = false;
    bool m_boxOfColorAlphaShown = false;
};

} // namespace toolbar
