// SPDX-License-Identifier: GPL-3.0-or-later
#include "toolbar/logic/WheelAdjust.h"

#include "toolbar/logic/WheelSteps.h"

namespace toolbar {

namespace {

constexpr int kMosaic = 5;
constexpr int kText = 6;
constexpr int kNote = 7;

bool isTextTool(const QString& tool)
{
    return tool == u"text" || tool == u"note";
}

} // namespace

WheelTick wheelTickOf(const overlay::ClipWheelEvent& event, bool gestureGoesOn)
{
    WheelTick tick;
    tick.inGesture = event.phase != Qt::NoScrollPhase || !event.pixelDelta.isNull();
    tick.gestureBegan = event.phase == Qt::ScrollBegin ||
                        (tick.inGesture && event.phase == Qt::NoScrollPhase && !gestureGoesOn);
    // A touch pad's distance when it gives one; a wheel's angle otherwise.
    const QPointF delta = event.pixelDelta.isNull() ? event.angleDelta : event.pixelDelta;
    tick.deltaX = delta.x();
    tick.deltaY = delta.y();
    return tick;
}

WheelOutcome WheelAdjust::scrollWheel(const WheelTick& tick, const WheelScene& scene)
{
    WheelOutcome outcome;
    // No tool, no wheel: a scrolling capture's wheel is not ours either.
    if (scene.selectFunction.isEmpty())
        return outcome;
    outcome.accepted = true;

    // Over a stroke the pointer shows the open hand; over free space in the
    // selection, the tool's cross hair. Anything else is not the picture.
    const int t = scene.strokeType;
    bool noteMode = false;
    if (t != kMosaic && t != kText && t != kNote &&
        scene.pointerRole == overlay::PointerRole::OverStroke) {
        // An open box keeps the answer of the tick that opened it.
        if (!m_boxOfColorAlphaShown)
            m_scrollCanAdjustColorAlph = scene.strokeUnderPointer && scene.strokeUnderPointer();
    } else {
        m_scrollCanAdjustColorAlph = false;
        noteMode = t == kNote && scene.onCycleOfNote;
        if (!noteMode && scene.pointerRole != overlay::PointerRole::ToolCrosshair)
            return outcome;
    }

    if (tick.gestureBegan)
        m_scrollWheelType.clear();
    if (tick.inGesture) {
        // A gesture keeps the direction of its first tick that has one.
        if (m_scrollWheelType.isEmpty()) {
            if (tick.deltaX == 0 && tick.deltaY != 0)
                m_scrollWheelType = QStringLiteral("upDownScroll");
            else if (tick.deltaX != 0)
                m_scrollWheelType = QStringLiteral("leftRightScroll");
        }
        if (m_scrollWheelType != u"upDownScroll")
            return outcome;
    }

    const double delta = tick.deltaY;
    if (delta == 0)
        return outcome;
    if (isTextTool(scene.selectFunction)) {
        stepText(delta, noteMode, scene, outcome);
        return outcome;
    }
    if (m_scrollCanAdjustColorAlph) {
        if (!m_boxOfColorAlphaShown) {
            m_boxOfColorAlphaShown = true;
            outcome.openAlphaBox =
                scene.colorAlpha ? wheel::alphaPercent(*scene.colorAlpha) : QStringLiteral("100");
        }
        stepOpacity(delta, scene, outcome);
        return outcome;
    }
    if (const std::optional<int> size =
            wheel::steppedSize(scene.selectFunction, scene.size, delta)) {
        outcome.change = WheelChange::Size;
        outcome.size = *size;
    }
    return outcome;
}

void WheelAdjust::stepOpacity(double delta, const WheelScene& scene, WheelOutcome& outcome) const
{
    // A mosaic has no opacity.
    if (scene.strokeType == kMosaic)
        return;
    const std::optional<double> alpha = wheel::steppedAlpha(scene.colorAlpha.value_or(1.0), delta);
    if (!alpha)
        return;
    outcome.change = WheelChange::Opacity;
    outcome.colorAlpha = *alpha;
    outcome.colorAlphaText = wheel::alphaText(*alpha);
    outcome.alphaPercent = wheel::alphaPercent(*alpha);
}

void WheelAdjust::stepText(double delta, bool noteMode, const WheelScene& scene,
                           WheelOutcome& outcome) const
{
    if (noteMode) {
        outcome.change = WheelChange::SerialNumber;
        outcome.serialNumber = wheel::steppedSerialNumber(scene.serialNumber, delta);
        return;
    }
    if (const std::optional<int> size = wheel::steppedTextSize(scene.size, delta)) {
        outcome.change = WheelChange::TextSize;
        outcome.size = *size;
    }
}

bool WheelAdjust::pointerMovedOrPressed()
{
    const bool wasShown = m_boxOfColorAlphaShown;
    m_boxOfColorAlphaShown = false;
    m_scrollCanAdjustColorAlph = false;
    return wasShown;
}

} // namespace toolbar
