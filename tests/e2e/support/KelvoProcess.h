// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <chrono>
#include <memory>

namespace e2e {

// The real kelvo binary running on the test desktop.
class KelvoProcess
{
public:
    // `program` is the kelvo under test unless given (a copy elsewhere).
    explicit KelvoProcess(QStringList arguments = {}, QProcessEnvironment extra = {},
                          QString program = {});
    ~KelvoProcess();

    [[nodiscard]] bool isRunning() const;
    [[nodiscard]] qint64 pid() const;
    // What it wrote to stderr so far.
    [[nodiscard]] QString errors();
    void stop();

    struct Result
    {
        int exitCode = -1;
        QString out;
        QString err;
        QByteArray raw; // stdout as bytes
    };
    // A one-shot command (`kelvo gui`, `kelvo --help`, ...) to its end.
    [[nodiscard]] static Result run(const QStringList& arguments, QProcessEnvironment extra = {},
                                    int timeoutMs = 30000);

private:
    std::unique_ptr<QProcess> m_process;
    QString m_errorFile;
};

// A one-shot command, started at once. finish() waits for its end while
// this process keeps answering the bus, where a test may stand in for a
// service the command talks to.
class KelvoCommand
{
public:
    // `directory` is its working directory, this process' when empty.
    explicit KelvoCommand(const QStringList& arguments, const QProcessEnvironment& extra = {},
                          const QString& directory = {});

    [[nodiscard]] bool isRunning() const { return m_process.state() != QProcess::NotRunning; }
    [[nodiscard]] KelvoProcess::Result
    finish(std::chrono::milliseconds timeout = std::chrono::seconds(30));

private:
    QProcess m_process;
};

// Whether the running Kelvo owns its name on `bus`.
[[nodiscard]] bool kelvoOnBus(const QDBusConnection& bus = QDBusConnection::sessionBus());
// Its hot keys and how each grab went ("registered", "held", ...); empty
// until it has taken them at start. Tests wait for this rather than probing
// the grabs themselves, which would race Kelvo's own grabs.
[[nodiscard]] QVariantMap kelvoHotKeys(const QDBusConnection& bus = QDBusConnection::sessionBus());

} // namespace e2e
