// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/TestDesktop.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QFile>
#include <QProcess>
#include <QThread>

#include <algorithm>
#include <cstdlib>

namespace e2e {

QString sourceDir()
{
    return QStringLiteral(KELVO_SOURCE_DIR);
}

QString kelvoBinary()
{
    return QStringLiteral(KELVO_BINARY);
}

namespace {

// Sanitized builds start and paint several times slower; a wait for
// something that must happen gets that much longer there. Short waits
// that prove something does not happen are left as they are, so that
// they stay short.
std::chrono::milliseconds scaledForThisBuild(std::chrono::milliseconds timeout)
{
    static const int scale = std::max(1, qEnvironmentVariableIntValue("KELVO_TEST_TIME_SCALE"));
    return timeout >= std::chrono::seconds(3) ? timeout * scale : timeout;
}

} // namespace

bool waitFor(const std::function<bool()>& condition, std::chrono::milliseconds timeout)
{
    const auto deadline = std::chrono::steady_clock::now() + scaledForThisBuild(timeout);
    while (true) {
        if (condition())
            return true;
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        QThread::msleep(20);
    }
}

TestDesktop::TestDesktop(Options options)
{
    QStringList args{QStringLiteral("start"), m_dir.path()};
    if (!options.twoMonitors)
        args << QStringLiteral("--single");
    if (options.compositor)
        args << QStringLiteral("--compositor");
    if (options.notifications)
        args << QStringLiteral("--notifications");
    // Should this process be killed at its time limit, the desktop goes too.
    args << QStringLiteral("--owner") << QString::number(QCoreApplication::applicationPid());
    QProcess start;
    start.setProcessChannelMode(QProcess::MergedChannels);
    start.start(sourceDir() + QStringLiteral("/scripts/desktop"), args);
    if (!start.waitForFinished(60000) || start.exitCode() != 0) {
        m_error = QString::fromLocal8Bit(start.readAll());
        return;
    }
    QFile env(m_dir.path() + QStringLiteral("/env"));
    if (!env.open(QIODevice::ReadOnly)) {
        m_error = QStringLiteral("no env file");
        return;
    }
    for (const QByteArray& line : env.readAll().split('\n')) {
        const int eq = line.indexOf('=');
        if (eq <= 0)
            continue;
        const QByteArray name = line.left(eq);
        const QByteArray value = line.mid(eq + 1);
        qputenv(name.constData(), value);
        if (name == "DISPLAY")
            m_display = QString::fromLatin1(value);
    }
    qputenv("XDG_CONFIG_HOME", configHome().toLocal8Bit());
    qputenv("XDG_DATA_HOME", path(QStringLiteral("data")).toLocal8Bit());
    qputenv("XDG_RUNTIME_DIR", m_dir.path().toLocal8Bit());
    qunsetenv("WAYLAND_DISPLAY");
    qunsetenv("QT_SCALE_FACTOR");
    qunsetenv("QT_SCREEN_SCALE_FACTORS");
    qputenv("QT_QPA_PLATFORM", "xcb");
    m_running = true;
}

TestDesktop::~TestDesktop()
{
    QProcess::execute(sourceDir() + QStringLiteral("/scripts/desktop"),
                      {QStringLiteral("stop"), m_dir.path()});
}

QList<QVariantMap> kelvoNotificationHistory()
{
    const QString service = QStringLiteral("org.freedesktop.Notifications");
    const QString path = QStringLiteral("/org/freedesktop/Notifications");
    const QString dunst = QStringLiteral("org.dunstproject.cmd0");
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.call(QDBusMessage::createMethodCall(service, path, dunst,
                                            QStringLiteral("NotificationCloseAll")));
    const QDBusMessage reply = bus.call(QDBusMessage::createMethodCall(
        service, path, dunst, QStringLiteral("NotificationListHistory")));
    QList<QVariantMap> kelvo;
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return kelvo;
    QList<QVariantMap> history;
    reply.arguments().constFirst().value<QDBusArgument>() >> history;
    for (const QVariantMap& n : history) {
        if (n.value(QStringLiteral("appname")).toString() == QLatin1String("Kelvo"))
            kelvo << n;
    }
    return kelvo;
}

} // namespace e2e
