// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "capture/logic/CaptureContext.h"
#include "core/MessageBus.h"
#include "settings/Defaults.h"
#include "settings/MemoryStore.h"
#include "support/BusRecorder.h"
#include "support/SteppedClock.h"
#include "toolbar/ui/AnnotatedImageController.h"

#include <QCoreApplication>
#include <QWidget>

namespace toolbar {

// An annotation window over a shown overlay, on a stepped clock, with the
// messages it posts recorded.
struct Bench
{
    settings::MemoryStore store;
    settings::Defaults defaults{store};
    core::MessageBus bus;
    capture::CaptureContext context;
    capture::CaptureState& state = context.capture();
    SteppedClock clock;
    AnnotatedImageController controller{context, defaults, bus, clock};
    BusRecorder posted{bus};
    QWidget overlay;

    Bench()
    {
        overlay.resize(1920, 1080);
        overlay.show();
    }
    void open(QRectF selection = QRectF(300, 200, 480, 360))
    {
        controller.openWindow(&overlay, [selection] { return selection; });
    }
    // The pointer over the overlay, `times` moves at a point in its
    // top-left points.
    void hover(QPointF local, int times = 5)
    {
        for (int i = 0; i < times; ++i)
            controller.mouseMoved(overlay.mapToGlobal(local));
    }
    // A rectangle dragged in the selection (overlay-local points, y up).
    void stroke(QPointF from, QPointF to)
    {
        state.pointerRole = overlay::PointerRole::ToolCrosshair;
        overlay::ClipMouseEvent e;
        e.location = from;
        controller.pointerPressed(e);
        for (int i = 1; i <= 8; ++i) {
            e.location = from + (to - from) * i / 8.0;
            controller.pointerDragged(e);
        }
        controller.pointerReleased(e);
    }
    // Posted messages arrive on the next turn of the loop.
    static void settle() { QCoreApplication::processEvents(); }
};

} // namespace toolbar
