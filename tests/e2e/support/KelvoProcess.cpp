// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/KelvoProcess.h"

#include "support/TestDesktop.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace e2e {

namespace {

// A sanitizer's report in what Kelvo wrote: a failure of whichever test ran
// it, with the report, even when Kelvo lived on (UBSan continues).
void failOnSanitizerReport(const QString& errors)
{
    static const char* const marks[] = {"ERROR: AddressSanitizer", "ERROR: LeakSanitizer",
                                        "runtime error:"};
    for (const char* mark : marks) {
        const qsizetype at = errors.indexOf(QLatin1String(mark));
        if (at >= 0) {
            ADD_FAILURE() << "sanitizer report from kelvo:\n"
                          << errors.mid(qMax<qsizetype>(0, at - 200), 4000).toStdString();
            return;
        }
    }
}

QProcessEnvironment environmentWith(const QProcessEnvironment& extra)
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    for (const QString& key : extra.keys())
        env.insert(key, extra.value(key));
    return env;
}
} // namespace

KelvoProcess::KelvoProcess(QStringList arguments, QProcessEnvironment extra, QString program)
    : m_process(std::make_unique<QProcess>())
{
    m_process->setProcessEnvironment(environmentWith(extra));
    // Its stderr goes to a file, so it can be read at any moment without an
    // event loop in the test.
    m_errorFile = QDir::temp().filePath(
        QStringLiteral("kelvo-e2e-%1.log").arg(QCoreApplication::applicationPid()));
    m_process->setStandardErrorFile(m_errorFile);
    m_process->start(program.isEmpty() ? kelvoBinary() : program, arguments);
    m_process->waitForStarted(10000);
}

KelvoProcess::~KelvoProcess()
{
    stop();
    failOnSanitizerReport(errors());
    QFile::remove(m_errorFile);
}

bool KelvoProcess::isRunning() const
{
    return m_process->state() == QProcess::Running;
}

qint64 KelvoProcess::pid() const
{
    return m_process->processId();
}

QString KelvoProcess::errors()
{
    QFile file(m_errorFile);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromLocal8Bit(file.readAll());
}

void KelvoProcess::stop()
{
    if (m_process->state() == QProcess::NotRunning)
        return;
    m_process->terminate();
    if (!m_process->waitForFinished(5000)) {
        m_process->kill();
        m_process->waitForFinished(5000);
    }
}

KelvoProcess::Result KelvoProcess::run(const QStringList& arguments, QProcessEnvironment extra,
                                       int timeoutMs)
{
    return KelvoCommand(arguments, extra).finish(std::chrono::milliseconds(timeoutMs));
}

KelvoCommand::KelvoCommand(const QStringList& arguments, const QProcessEnvironment& extra,
                           const QString& directory)
{
    if (!directory.isEmpty())
        m_process.setWorkingDirectory(directory);
    m_process.setProcessEnvironment(environmentWith(extra));
    m_process.start(kelvoBinary(), arguments);
}

KelvoProcess::Result KelvoCommand::finish(std::chrono::milliseconds timeout)
{
    KelvoProcess::Result r;
    if (!m_process.waitForStarted(10000)) {
        r.err = QStringLiteral("did not start");
        return r;
    }
    QByteArray err;
    const auto drain = [&] {
        r.raw += m_process.readAllStandardOutput();
        err += m_process.readAllStandardError();
    };
    const bool ended = waitFor(
        [&] {
            QCoreApplication::processEvents();
            drain();
            return m_process.state() == QProcess::NotRunning;
        },
        timeout);
    if (!ended) {
        m_process.kill();
        m_process.waitForFinished();
        err += "timed out";
    }
    drain();
    r.exitCode =
        ended && m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
    r.out = QString::fromLocal8Bit(r.raw);
    r.err = QString::fromLocal8Bit(err);
    failOnSanitizerReport(r.err);
    return r;
}

bool kelvoOnBus(const QDBusConnection& bus)
{
    auto* iface = bus.interface();
    return iface != nullptr &&
           iface->isServiceRegistered(QStringLiteral("org.kelvo.Kelvo")).value();
}

QVariantMap kelvoHotKeys(const QDBusConnection& bus)
{
    QDBusConnection connection = bus;
    const QDBusMessage reply = connection.call(QDBusMessage::createMethodCall(
        QStringLiteral("org.kelvo.Kelvo"), QStringLiteral("/org/kelvo/Kelvo"),
        QStringLiteral("org.kelvo.Kelvo"), QStringLiteral("HotKeys")));
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return {};
    return qdbus_cast<QVariantMap>(reply.arguments().constFirst());
}

} // namespace e2e
