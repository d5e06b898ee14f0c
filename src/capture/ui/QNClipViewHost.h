// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "capture/logic/ClipViewHost.h"

namespace capture {

class QNClipView;

// What the selection's state machine asks of the world, answered by the real
// overlay: repaints, the pointer, preferences, the crop border, messages.
// Text views, strokes and the mosaic are not part of the overlay yet; their
// calls are accepted and do nothing.
class QNClipViewHost final : public ClipViewHost
{
public:
    explicit QNClipViewHost(QNClipView& view);

    ClipGates gates() const override;
    ClipPreferences preferences() const override;
    CropBorderStatus cropBorder() const override;
    int screenUnderMouse() const override;
    void postMessage(const QString& name) override;
    void runLater(int milliseconds, std::function<void()> task) override;
    void needsDisplay() override;
    void cropBorderNeedsDisplay() override;
    void magnifierNeedsDisplay() override;
    void setCursor(ClipCursor cursor) override;
    void setCursorRectsEnabled(bool enabled) override;
    void warpPointer(QPointF local) override;
    void activateApplication() override;
    void makeKeyAndOrderFront() override;
    void setWindowBackgroundClear() override;
    void writePreference(const QString& key, const QVariant& value) override;
    void synchronizePreferences() override;
    void clipViewMouseDown(const ClipMouseEvent& event) override;
    void enterMultiWindowPick(const ClipMouseEvent& event) override;
    void toggleMultiWindowPick(const ClipMouseEvent& event) override;
    void handleMouseEvent(const ClipMouseEvent&, MouseEventPhase) override {}
    void endTextEdit() override {}
    void openTextView() override {}
    void setKeyDownCode(int) override {}
    void cropBorderMouseDown(const ClipMouseEvent& event) override;
    void setCropBorderIsCanMove(bool) override {}
    void updateTrackingAreas() override;
    void changFullImageToMosaicImage() override;
    void annotation(AnnotationCommand command) override;
    bool handleColorKey(const ClipKeyEvent& event) override;
    void makeClipViewFirstResponder() override {}
    void forwardKeyToAnnotation(const ClipKeyEvent&) override {}

private:
    QNClipView& m_view;
};

} // namespace capture
