// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "capture/logic/ClipViewHost.h"
#include "capture/ui/QNClipViewDelegate.h"

namespace capture {

class QNClipView;

// What the selection's state machine asks of the world, answered by the real
// overlay: repaints, the pointer, preferences, the crop border, messages.
// The mark-up is the capture's annotation controller; the recorder, the tips
// box, save panels and the scrolling capture are not part of the overlay yet,
// so the host answers for them that they are idle.
class QNClipViewHost final : public ClipViewHost, private RecorderInput
{
public:
    QNClipViewHost(QNClipView& view, const QNClipViewServices& services);

    AnnotationInput& markup() override;
    const RecorderInput& recorder() const override { return *this; }
    bool tipsBoxIsOpening() const override { return false; }
    bool savePanelOpened() const override { return false; }
    bool scrollScreenShot() const override { return false; }
    ClipPreferences preferences() const override;
    CropBorderStatus cropBorder() const override;
    int screenUnderMouse() const override;
    void postMessage(core::Message message) override;
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
    void openAnnotationWindow() override;
    void cropBorderMouseDown(const ClipMouseEvent& event) override;
    void setCropBorderIsCanMove(bool) override {}
    void updateTrackingAreas() override;
    void changFullImageToMosaicImage() override;
    bool handleColorKey(const ClipKeyEvent& event) override;
    bool globalHotKey(const ClipKeyEvent& event) override;
    void saveAndOpen() override;
    void makeClipViewFirstResponder() override {}

private:
    // The recorder, as far as the overlay knows it: whether it serves a
    // recording region and whether that has its tool bar.
    bool isRecordingOverlay() const override;
    bool toolbarViewOpend() const override;
    bool mouseInButtonOfRecordScreen() const override { return false; }
    bool realStartRecordingScreen() const override { return false; }

    [[nodiscard]] CaptureState& captureState() const { return m_services.context.capture(); }

    QNClipView& m_view;
    QNClipViewServices m_services;
};

} // namespace capture
