// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "capture/logic/CaptureComposer.h"
#include "capture/logic/ClipEvents.h"
#include "capture/logic/HoverTracker.h"
#include "capture/ui/OverlayPainter.h"
#include "capture/ui/QNClipViewDelegate.h"
#include "colour/ui/ColorPickerImageView.h"
#include "core/Picture.h"

#include <QWidget>

#include <memory>

namespace annotation {
class GKCropBorderView;
}
namespace capture {

class ClipKeyHandler;
class ClipStateMachine;
class QNClipViewHost;
class QNClipWindow;

// The view of one screen's overlay: it holds the frozen picture of its
// screen, runs the selection's state machine and paints what the machine
// shows (dim surround, outline, size label, magnifier, tips) with the crop
// border as a child. Pointer and key events reach it through the manager's
// event filter, never through Qt's own delivery, so that exactly one screen
// acts on each.
class QNClipView : public QWidget
{
    Q_OBJECT
public:
    QNClipView(QNClipWindow* window, const QNClipViewServices& services, int screenIndex);
    ~QNClipView() override;

    // Freezes this screen: one picture of it, shown as the window's
    // background and read by the magnifier. Called once before showing.
    void CaptureFullScreen();
    void showClipViewWithFrame(const QRectF& frame, bool withToolbar, bool isRecordScreen);

    void mousedown(const ClipMouseEvent& event);
    void mousedragged(const ClipMouseEvent& event);
    void mouseup(const ClipMouseEvent& event);
    void mouseMoved(QPointF local);
    // A key while this screen is under the pointer; true when consumed.
    bool keyDown(const ClipKeyEvent& event);
    void fullScreenCapture();
    void startAnnotation();
    // The pointer went to another screen: no outline, no magnifier here.
    void clearMarks();
    // A modifier key went down or up while this screen is under the
    // pointer; `held` is what is held now, `timestamp` in seconds.
    void flagsChanged(Qt::KeyboardModifiers held, double timestamp);
    // The picks changed: the view shows them again.
    void picksChanged();
    // What the finished picture is made of, as the capture stands now.
    [[nodiscard]] CompositionInput compositionInput() const;

    [[nodiscard]] const core::Picture& fullImage() const { return m_fullImage; }
    void clearFullImage() { m_fullImage = {}; }
    [[nodiscard]] int screenIndex() const { return m_screenIndex; }
    [[nodiscard]] ClipStateMachine& machine() { return *m_machine; }
    [[nodiscard]] annotation::GKCropBorderView* cropBorder() const { return m_cropBorder; }
    [[nodiscard]] QNClipWindow* clipWindow() const { return m_window; }
    [[nodiscard]] HoverTracker& hover() { return m_hover; }
    [[nodiscard]] QPointF bottomLeftOf(QPointF local) const;
    bool haveSetClearColor = false;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void paintPicks(QPainter& painter);
    // Brings the crop border child in line with the machine's look.
    void syncCropBorder();
    [[nodiscard]] OverlayFrame frameToPaint() const;

    [[nodiscard]] CaptureState& captureState() const { return m_services.context.capture(); }

    QNClipWindow* m_window;
    QNClipViewServices m_services;
    int m_screenIndex;
    core::Picture m_fullImage;
    std::unique_ptr<QNClipViewHost> m_host;
    std::unique_ptr<ClipStateMachine> m_machine;
    std::unique_ptr<ClipKeyHandler> m_keys;
    HoverTracker m_hover;
    colour::ColorPickerImageView m_readout;
    OverlayPainter m_painter;
    annotation::GKCropBorderView* m_cropBorder = nullptr; // child, made with the first selection
    QPointF m_pointer;                                    // overlay-local
    bool m_pointerHere = false;
    bool m_magnifierShown = false;
    // The fixed picks as the finish will draw them, shown in the selection.
    core::Picture m_picksPreview;
};

} // namespace capture
