// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/CaptureRequest.h"
#include "app/output/ImageOutput.h"
#include "core/Clock.h"
#include "core/Picture.h"

#include <QObject>
#include <QString>

#include <functional>
#include <optional>

namespace app {

// The captures asked for on the bus (`kelvo gui` with options, the Capture
// method), one at a time. A request is refused at once or accepted; an
// accepted one starts after its delay, always later than the call that
// brought it, so that the caller holds its id before any end is told. It
// then ends exactly once: done (with the file written, if any), cancelled,
// or failed (with why). The overlay, the output and the bus are reached
// through the services, and time through the clock, so that the whole
// course can be stepped by hand.
class RequestedCaptures : public QObject
{
    Q_OBJECT
public:
    struct Services
    {
        core::Clock* clock = nullptr;
        // The interactive capture: whether one is up, and starting one (a
        // start may be refused, e.g. while a modal dialog is open).
        std::function<bool()> captureRunning;
        std::function<void()> startCapture;
        // Whether pictures of the desktop can be had at all.
        std::function<bool()> canSeeDesktop;
        // Whether the preferences ask where to save each picture.
        std::function<bool()> asksForSavePath;
        // The stored previous area's picture; null with the reason in
        // `error` when there is none.
        std::function<core::Picture(QString* error)> pictureOfPreviousArea;
        // Where a picture goes: the clipboard (with its notice), a folder or
        // file name, the save folder.
        std::function<void(const core::Picture&)> copy;
        std::function<output::SaveResult(const core::Picture&, const QString& target)> saveTo;
        std::function<output::SaveResult(const core::Picture&)> saveToFile;
        // The ends, as broadcast on the bus.
        std::function<void(uint id, const QString& path)> done;
        std::function<void(uint id)> cancelled;
        std::function<void(uint id, const QString& error)> failed;
        // A line for stderr.
        std::function<void(const QString&)> report;
    };

    explicit RequestedCaptures(Services services, QObject* parent = nullptr);

    // A capture asked for with `id`; an error's text when it is refused.
    [[nodiscard]] QString start(uint id, const CaptureRequest& request);

    // The overlay ended; with `finished` its picture follows.
    void captureEnded(bool finished);
    // A finished capture's picture: when a request started that capture,
    // it goes where the request says (with neither a path nor the
    // clipboard asked for, `finish` sends it where the finish asked) and
    // true is answered; else false, and the picture is the caller's.
    [[nodiscard]] bool takeFinishedCapture(const core::Picture& picture,
                                           const std::function<output::SaveResult()>& finish);

private:
    // A capture request under way: its id and what was asked.
    struct PendingRequest
    {
        uint id = 0;
        CaptureRequest request;
        bool started = false; // its overlay is up
    };
    void runRequest();
    // Sends a request's picture where the request says; with neither a
    // path nor the clipboard asked for, where `fallback` says.
    void deliverRequest(const core::Picture& picture,
                        const std::function<output::SaveResult()>& fallback);
    void endRequest(const output::SaveResult* saved, const QString& error);

    Services m_services;
    core::SystemClock m_systemClock; // the clock unless another is given
    std::optional<PendingRequest> m_request;
};

} // namespace app
