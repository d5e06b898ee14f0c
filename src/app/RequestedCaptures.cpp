// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/RequestedCaptures.h"

#include <QTextStream>

#include <chrono>

namespace app {

RequestedCaptures::RequestedCaptures(Services services, QObject* parent)
    : QObject(parent)
    , m_services(std::move(services))
{
    if (m_services.clock == nullptr)
        m_services.clock = &m_systemClock;
    if (!m_services.report)
        m_services.report = [](const QString& line) {
            QTextStream(stderr) << "kelvo: " << line << '\n' << Qt::flush;
        };
}

QString RequestedCaptures::start(uint id, const CaptureRequest& request)
{
    if (m_request)
        return QStringLiteral("another requested capture is under way");
    if (!request.lastRegion && m_services.captureRunning())
        return QStringLiteral("a capture is already running");
    if (request.path.isEmpty() && !request.clipboard && m_services.asksForSavePath())
        return QStringLiteral("Kelvo is set to ask where to save each picture; give a folder "
                              "or file with -p PATH, or copy with -c");
    m_request = PendingRequest{id, request, false};
    // Always later, never inside the call: the caller has its id before the
    // end is told.
    m_services.clock->singleShot(std::chrono::milliseconds(request.delayMs), this,
                                 [this] { runRequest(); });
    return {};
}

void RequestedCaptures::runRequest()
{
    if (!m_request)
        return;
    if (m_request->request.lastRegion) {
        QString error;
        const core::Picture picture = m_services.pictureOfPreviousArea(&error);
        if (picture.isNull()) {
            endRequest(nullptr, error);
            return;
        }
        deliverRequest(picture, [this, &picture] { return m_services.saveToFile(picture); });
        return;
    }
    if (m_services.captureRunning()) {
        endRequest(nullptr, QStringLiteral("a capture is already running"));
        return;
    }
    if (!m_services.canSeeDesktop()) {
        endRequest(nullptr, QStringLiteral("cannot take pictures of this desktop"));
        return;
    }
    m_request->started = true;
    m_services.startCapture();
    if (!m_services.captureRunning() && m_request && m_request->started)
        endRequest(nullptr, QStringLiteral("the capture could not start"));
}

void RequestedCaptures::captureEnded(bool finished)
{
    if (!m_request || !m_request->started)
        return;
    const uint id = m_request->id;
    if (!finished) {
        m_request.reset();
        m_services.cancelled(id);
        return;
    }
    // The picture follows at once; should it not, the caller must not wait
    // for ever.
    m_services.clock->singleShot(std::chrono::milliseconds(0), this, [this, id] {
        if (m_request && m_request->id == id) {
            m_request.reset();
            m_services.failed(id, QStringLiteral("the capture ended without a picture"));
        }
    });
}

bool RequestedCaptures::takeFinishedCapture(const core::Picture& picture,
                                            const std::function<output::SaveResult()>& finish)
{
    if (!m_request || !m_request->started)
        return false;
    deliverRequest(picture, finish);
    return true;
}

void RequestedCaptures::deliverRequest(const core::Picture& picture,
                                       const std::function<output::SaveResult()>& fallback)
{
    const CaptureRequest request = m_request->request;
    if (request.clipboard)
        m_services.copy(picture);
    if (!request.path.isEmpty()) {
        const output::SaveResult saved = m_services.saveTo(picture, request.path);
        endRequest(&saved, {});
        return;
    }
    if (request.clipboard) {
        endRequest(nullptr, {});
        return;
    }
    const output::SaveResult saved = fallback();
    endRequest(&saved, {});
}

void RequestedCaptures::endRequest(const output::SaveResult* saved, const QString& error)
{
    if (!m_request)
        return;
    const uint id = m_request->id;
    m_request.reset();
    if (!error.isEmpty()) {
        m_services.report(error);
        m_services.failed(id, error);
    } else if (saved != nullptr && !saved->saved()) {
        m_services.failed(id, saved->keptAt.isEmpty()
                                  ? saved->error
                                  : QStringLiteral("%1 The picture was saved to %2 instead.")
                                        .arg(saved->error, saved->keptAt));
    } else {
        m_services.done(id, saved != nullptr ? saved->path : QString());
    }
}

} // namespace app
