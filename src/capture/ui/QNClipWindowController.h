// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "capture/ui/OverlayPart.h"
#include "capture/ui/QNClipViewDelegate.h"
#include "core/Geometry.h"

#include <QObject>
#include <QPointer>
#include <QRectF>

#include <cstdint>

class QScreen;

namespace settings {
class Defaults;
}

namespace capture {

class QNClipScreenManager;
class QNClipView;
class QNClipWindow;

// One screen of a running capture: its overlay window and view, built by
// startCaptureWithScreen() and torn down by endCapture().
class QNClipWindowController : public QObject, public OverlayPart
{
    Q_OBJECT
public:
    // `services` are what its view works with; their layout is the
    // capture's, fixed for the capture.
    QNClipWindowController(QNClipScreenManager* delegate, const QNClipViewServices& services);
    ~QNClipWindowController() override;

    // `window` is the overlay to use for this screen; it is lent, not given.
    void startCaptureWithScreen(int screenIndex, QNClipWindow* window, const QRectF& frame);
    void endCapture();
    // Ends this screen and, through the manager, every other one.
    void cancel();
    void startAnnotation(bool underMouse);
    // "StartScreenShots" reached this screen: finish the capture here.
    void startScreenShots();
    // Makes the final picture and sends it on; does nothing when the
    // selection is on another screen.
    void clipScreen();

    [[nodiscard]] int screen() const override { return m_screenIndex; }
    [[nodiscard]] QWidget* overlayWindow() const override;
    // The capture has ended: no more calls to the manager, and the overlay
    // is given back.
    void retire() override;
    [[nodiscard]] QNClipWindow* window() const { return m_window; }
    [[nodiscard]] QNClipView* clipView() const { return m_clipView; }
    void clearDelegate() { m_delegate = nullptr; }

    std::uint32_t lastWindowNumber = 0;
    std::uint32_t currentWindowNumber = 0;
    QRectF lastWindowRect;

private:
    QNClipScreenManager* m_delegate;
    QNClipViewServices m_services;
    CaptureState& m_state;
    const settings::Defaults& m_defaults;
    const core::ScreenLayout& m_layout;
    int m_screenIndex = -1;
    QNClipWindow* m_window = nullptr; // lent by the manager for one capture
    QNClipView* m_clipView = nullptr; // child of m_window
    QPointer<QNClipView> m_endedView; // hidden since the end, deleted with this
};

} // namespace capture
