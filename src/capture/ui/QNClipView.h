// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "capture/logic/CaptureState.h"
#include "core/Picture.h"

#include <QWidget>

namespace platform {
class WindowServer;
}

namespace capture {

class QNClipWindow;

// The view of one screen's overlay. It holds the frozen picture of its
// screen and takes the selection; the pointer events reach it through the
// manager's event filter (mousedown / mousedragged / mouseup), never
// through Qt's own delivery, so that exactly one screen acts on each.
class QNClipView : public QWidget
{
    Q_OBJECT
public:
    QNClipView(QNClipWindow* window, CaptureState& state, platform::WindowServer& windowServer,
               int screenIndex, const QRectF& screenFrame, double scale);

    // Freezes this screen: one picture of it, shown as the window's
    // background. Called once before the overlay is shown.
    void CaptureFullScreen();
    void showClipViewWithFrame(const QRectF& frame, bool withToolbar, bool isRecordScreen);

    void mousedown(QPointF local);
    void mousedragged(QPointF local);
    void mouseup(QPointF local);
    void mouseMoved(QPointF local);

    [[nodiscard]] const core::Picture& fullImage() const { return m_fullImage; }
    void clearFullImage() { m_fullImage = {}; }
    [[nodiscard]] int screenIndex() const { return m_screenIndex; }
    bool haveSetClearColor = false;

private:
    QNClipWindow* m_window;
    CaptureState& m_state;
    platform::WindowServer& m_windowServer;
    int m_screenIndex;
    QRectF m_screenFrame; // global top-left points
    double m_scale;
    core::Picture m_fullImage;
    QRectF m_contentRect; // overlay-local
};

} // namespace capture
