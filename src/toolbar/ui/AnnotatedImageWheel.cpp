// SPDX-License-Identifier: GPL-3.0-or-later
// The annotation window's wheel: sizes, opacity and the opacity box.
#include "annotation/logic/StrokeCoverage.h"
#include "annotation/logic/StrokeEdit.h"
#include "annotation/logic/StrokeHitTest.h"
#include "annotation/render/StrokePainter.h"
#include "annotation/ui/AnnotatedImageView.h"
#include "annotation/ui/GKCropBorderView.h"
#include "capture/logic/CaptureContext.h"
#include "core/Clock.h"
#include "core/Geometry.h"
#include "core/Localized.h"
#include "core/MessageBus.h"
#include "platform/DesktopNotifier.h"
#include "settings/Defaults.h"
#include "settings/Keys.h"
#include "settings/PreferenceActions.h"
#include "toolbar/logic/ButtonBox.h"
#include "toolbar/logic/SettingsBox.h"
#include "toolbar/logic/ToolCursor.h"
#include "toolbar/logic/ToolRegistry.h"
#include "toolbar/logic/ToolTraits.h"
#include "toolbar/ui/AnnotatedImageController.h"
#include "toolbar/ui/ClipToolBar.h"
#include "toolbar/ui/ColorAlphaBox.h"
#include "toolbar/ui/SettingsBoxView.h"
#include <QPixmap>
#include <QWidget>
#include <algorithm>
#include <chrono>

namespace toolbar {

namespace keys = settings::keys;

// The wheel.

QWidget* AnnotatedImageController::openOverlay() const
{
    if (!m_state.clipToolbarWindowOpened || m_imageView == nullptr)
        return nullptr;
    return m_imageView->parentWidget();
}

WheelScene AnnotatedImageController::wheelScene(QPointF location) const
{
    WheelScene scene;
    scene.selectFunction = m_toolBar.selectFunction;
    const std::optional<annotation::Stroke>& active = m_strokes.dicOfCurrentStroke;
    scene.strokeType = active ? active->type : 0;
    // Over the bar or its settings box the pointer is the arrow.
    scene.pointerRole = m_toolBar.mouseOnButton ? overlay::PointerRole::Arrow : m_state.pointerRole;
    scene.strokeUnderPointer = [this, location] {
        return annotation::hittest::isOnActiveStroke(m_strokes, location);
    };
    scene.size = active ? static_cast<int>(active->size) : m_dataOfUsers.size(scene.selectFunction);
    if (active)
        scene.colorAlpha = active->colorAlpha;
    // Notes come with their views: until then no note is active, so the
    // wheel never steps a note's number.
    return scene;
}

void AnnotatedImageController::scrollWheel(const overlay::ClipWheelEvent& event)
{
    if (!m_state.clipToolbarWindowOpened)
        return;
    const WheelOutcome outcome =
        m_wheel.scrollWheel(wheelTickOf(event, scrollAccepted), wheelScene(event.location));
    if (!outcome.accepted)
        return;
    // The gesture goes on until no tick has come for 0.1 s.
    scrollAccepted = true;
    const unsigned timer = ++timerScroll;
    m_clock.singleShot(std::chrono::milliseconds(100), this, [this, timer] {
        if (timer == timerScroll)
            scrollFinished();
    });
    // A text view under the pointer takes the tick 50 ms later unless this
    // took it (scrollWheelFromTextView); it comes with the text views.
    if (outcome.openAlphaBox)
        openColorAlphaBox(event.location, *outcome.openAlphaBox);
    switch (outcome.change) {
    case WheelChange::Size:
        applyWheelSize(outcome.size);
        break;
    case WheelChange::TextSize:
        applyWheelTextSize(outcome.size);
        break;
    case WheelChange::Opacity:
        leftAndRightScrollWheel(outcome);
        break;
    case WheelChange::SerialNumber: // no note is active yet (see wheelScene)
    case WheelChange::None:
        break;
    }
}

void AnnotatedImageController::applyWheelSize(int size)
{
    const QString name = m_toolBar.selectFunction;
    // No undo step of its own; with no active stroke, an empty one.
    m_strokes.amendCurrent([size](annotation::Stroke& s) { s.size = size; });
    m_dataOfUsers.setValue(name, QStringLiteral("size"), size);
    if (name == tool(ToolId::Mosaic).name || name == tool(ToolId::Highlight).name) {
        m_bus.post(core::Message::RefreshHighlightDrawRect);
        m_bus.post(core::Message::RefreshMosaicDrawRect);
    } else if (m_imageView != nullptr) {
        m_imageView->update();
    }
    // The size in words and the dot of the new size.
    refreshBar();
    resetCursor();
}

void AnnotatedImageController::applyWheelTextSize(int size)
{
    m_strokes.amendCurrent([size](annotation::Stroke& s) { s.size = size; });
    // What the size menu keeps: its title. The text view's font follows
    // once text views exist.
    m_dataOfUsers.setValue(m_toolBar.selectFunction, QStringLiteral("size"), QString::number(size));
    refreshBar();
    resetCursor();
}

void AnnotatedImageController::leftAndRightScrollWheel(const WheelOutcome& outcome)
{
    const double kept = outcome.colorAlphaText.toDouble();
    m_strokes.amendCurrent([kept](annotation::Stroke& s) { s.colorAlpha = kept; });
    if (m_boxOfColorAlpha != nullptr)
        m_boxOfColorAlpha->setPercent(outcome.alphaPercent);
    // The tool's next strokes start from this opacity.
    m_dataOfUsers.setValue(m_toolBar.selectFunction, QStringLiteral("colorAlpha"),
                           static_cast<float>(outcome.colorAlpha));
    const int type = m_strokes.dicOfCurrentStroke ? m_strokes.dicOfCurrentStroke->type : 0;
    if (type == annotation::stroketype::Highlight)
        m_bus.post(core::Message::RefreshHighlightDrawRect);
    else if (m_imageView != nullptr)
        m_imageView->update();
}

void AnnotatedImageController::openColorAlphaBox(QPointF location, const QString& percent)
{
    QWidget* overlay = openOverlay();
    if (overlay == nullptr)
        return;
    if (m_boxOfColorAlpha == nullptr)
        m_boxOfColorAlpha = new ColorAlphaBox(overlay);
    else if (m_boxOfColorAlpha->parentWidget() != overlay)
        m_boxOfColorAlpha->setParent(overlay);
    m_boxOfColorAlpha->openAt(core::flipped(location, overlay->height()), percent);
}

void AnnotatedImageController::hideColorAlphaBox()
{
    if (m_wheel.pointerMovedOrPressed() && m_boxOfColorAlpha != nullptr)
        m_boxOfColorAlpha->hide();
}

} // namespace toolbar
