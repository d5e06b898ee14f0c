// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/CaptureFixture.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QFileInfo>
#include <QSettings>

namespace e2e {

void CaptureFixture::SetUp()
{
    ASSERT_TRUE(desktop.isRunning()) << desktop.error().toStdString();
    x = std::make_unique<XSession>();
    ASSERT_TRUE(x->isConnected());
    if (m_rootColor.isValid())
        x->setRootColor(m_rootColor);
}

void CaptureFixture::startKelvo(QProcessEnvironment env)
{
    kelvo = std::make_unique<KelvoProcess>(QStringList{}, env);
    ASSERT_TRUE(waitFor([] { return kelvoOnBus(); })) << kelvo->errors().toStdString();
    // Its start-up is over once the hot keys are taken.
    ASSERT_TRUE(waitFor([] { return !kelvoHotKeys().isEmpty(); })) << kelvo->errors().toStdString();
}

QString CaptureFixture::confPath() const
{
    return desktop.configHome() + QStringLiteral("/kelvo/kelvo.conf");
}

void CaptureFixture::startKelvoWith(const QMap<QString, QString>& preferences,
                                    QProcessEnvironment env)
{
    if (!QFileInfo::exists(confPath())) {
        startKelvo();
        ASSERT_TRUE(waitFor([&] {
            return QSettings(confPath(), QSettings::IniFormat)
                .contains(QStringLiteral("installTime"));
        })) << kelvo->errors().toStdString();
        kelvo.reset();
        ASSERT_TRUE(waitFor([] { return !kelvoOnBus(); }));
    }
    {
        QSettings conf(confPath(), QSettings::IniFormat);
        for (auto it = preferences.constBegin(); it != preferences.constEnd(); ++it)
            conf.setValue(it.key(), it.value());
        conf.sync();
        ASSERT_EQ(conf.status(), QSettings::NoError);
    }
    startKelvo(std::move(env));
}

void CaptureFixture::triggerCapture()
{
    const auto result = KelvoProcess::run({QStringLiteral("gui")});
    ASSERT_EQ(result.exitCode, 0) << result.err.toStdString();
}

bool CaptureFixture::overlaysUp()
{
    const auto windows = x->overlaysOf(kelvo->pid());
    return windows.size() == 2 && windows[0].geometry == kPrimary &&
           windows[1].geometry == kSecond && x->keyboardGrabbedByOther();
}

bool CaptureFixture::overlaysGone()
{
    return x->overlaysOf(kelvo->pid()).empty();
}

void CaptureFixture::barrier()
{
    x->sync();
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.kelvo.Kelvo"), QStringLiteral("/org/kelvo/Kelvo"),
        QStringLiteral("org.kelvo.Kelvo"), QStringLiteral("Version"));
    const QDBusMessage reply = QDBusConnection::sessionBus().call(call, QDBus::Block, 10000);
    EXPECT_NE(reply.type(), QDBusMessage::ErrorMessage) << reply.errorMessage().toStdString();
}

bool CaptureFixture::pumpUntil(const std::function<bool()>& condition,
                               std::chrono::milliseconds timeout)
{
    return waitFor(
        [&] {
            QCoreApplication::processEvents();
            return condition();
        },
        timeout);
}

void CaptureFixture::drag(QPoint from, QPoint to, int steps,
                          const std::function<bool(QPoint)>& reached)
{
    x->movePointer(from.x(), from.y());
    x->pressButton(1);
    for (int i = 1; i <= steps; ++i) {
        const QPoint p(from.x() + (to.x() - from.x()) * i / steps,
                       from.y() + (to.y() - from.y()) * i / steps);
        x->movePointer(p.x(), p.y());
        barrier();
        if (reached) {
            EXPECT_TRUE(waitFor([&] { return reached(p); }))
                << "the screen did not follow to " << p.x() << "," << p.y();
        }
    }
    x->releaseButton(1);
    barrier();
}

} // namespace e2e
