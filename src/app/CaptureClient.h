// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/CaptureRequest.h"

#include <QHash>
#include <QObject>
#include <QString>

#include <functional>

namespace app {

// `kelvo gui` with options: hands the request to the running instance
// (starting one when none runs), then waits for that capture's end.
class CaptureClient : public QObject
{
    Q_OBJECT
public:
    struct Output
    {
        std::function<void(const QString&)> path;   // stdout: the saved file
        std::function<void(const QString&)> report; // stderr lines
    };

    explicit CaptureClient(Output output, QObject* parent = nullptr);

    // Needs a QCoreApplication. The exit code: 0 done (a written file's
    // path printed), 1 error, 2 cancelled.
    [[nodiscard]] int run(const CaptureRequest& request);

Q_SIGNALS:
    void endingArrived();

private Q_SLOTS:
    void onDone(uint id, const QString& path);
    void onCancelled(uint id);
    void onFailed(uint id, const QString& error);

private:
    struct Ending
    {
        int code = 0;
        QString text; // the path, or the error
    };
    [[nodiscard]] bool ensureInstance();

    Output m_output;
    // Ends seen so far by id; one may arrive before the call's answer.
    QHash<uint, Ending> m_endings;
};

} // namespace app
