// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "capture/logic/FinishRequest.h"
#include "capture/logic/PickMode.h"
#include "capture/logic/PointerRole.h"
#include "capture/logic/WindowPicture.h"
#include "core/Picture.h"
#include "platform/WindowRecord.h"

#include <QPointF>
#include <QRectF>
#include <QString>

#include <cstdint>
#include <vector>

namespace capture {

// What the manager, the per-screen controllers and their views share during
// one capture. It is one object owned by the capture context rather than
// loose globals, but the fields keep their established names so that every
// rule reads the same everywhere. Main thread only: there are no locks.
// Whether the selection is a window (onlyClipCurrentWindow) is not here:
// each screen's state machine keeps it, and the finish asks that machine.
struct CaptureState
{
    // Windows a hover may hit, front to back, with corrected bounds. Rebuilt
    // by every start of a capture.
    std::vector<platform::WindowRecord> arrayRect;
    // Frozen pictures of the windows of arrayRect that are larger than 5x5
    // points and could be pictured, front to back.
    std::vector<WindowPicture> imageAllWindowArray;

    // Multi-window pick: in window order and in click order.
    std::vector<PickedWindow> arrOfAllSelectedScreenshots;
    std::vector<PickedWindow> arrOfPreAllSelectedScreenshots;
    PickMode stateOfMultiWindowScreenshots = PickMode::None;

    // The window under the mouse as the last hover pass or press saw it.
    std::uint32_t currentWindowID = 0;
    QRectF currentWindowRect; // overlay-local
    QString currentWindowName;
    std::int32_t currentWindowLayer = 0;
    QString currentWindowAppId; // set only when a window was hit
    QString appIDUnderMouse;    // set at every hover pass

    // Index of the screen the picture is made on; -1 before any was chosen.
    int screenOfScreenShot = -1;
    // Frame of the crop border: the selection grown by 6 points, whole
    // numbers, overlay-local.
    QRectF currentRectOfAnnotatedImageView;

    bool startScreenShot = false; // a finish was asked for: stop tracking
    bool screenShotIsFinished = false;
    // Where the finish goes, as the annotation window's buttons asked.
    FinishRequest finish;
    bool doubleClickModifierkey = false; // the save came from the modifier's double tap: open it
    bool annotatedOnMap = false;         // marking up an existing pin
    bool annotatedOnMapFromRightMouse = false;
    bool clipToolbarWindowOpened = false; // the annotation window is open
    bool toolbarViewOpend = false;        // a recording region has its tool bar
    bool buttonBoxHiddened = false;
    bool resizeByKeyBoard = false;

    int mouseDraggedTimes = 0; // drags since the last press on the capture view
    int mouseMovedTimes = 0;   // stops counting at 10
    // Hot spot of the pointer role last seen by a move; -1,-1 after a
    // release so that the next move tests the tips again.
    QPointF lastHotSpot;
    // The current role of the pointer, which stands in for reading the
    // cursor's hot spot back.
    PointerRole pointerRole = PointerRole::Arrow;

    QRectF oldRect;  // last non-empty frame of the screen under the mouse
    QRectF lastRect; // magnifier throttle
    double lastTimeOfMoving = 0.0;

    bool GKCropBorderViewCanMove = false; // the press started a move of the selection
    bool isRecordScreen = false;          // the overlay serves a recording

    // Written by the window pass; kept although nothing reads them.
    std::uint32_t menuBarWindowID = 0;
    core::Picture dockImage;
};

} // namespace capture
