// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/PrivateBus.h"

#include <atomic>

namespace e2e {
namespace {

QString freshName()
{
    static std::atomic<int> serial = 0;
    return QStringLiteral("e2e-bus-%1").arg(++serial);
}

} // namespace

PrivateBus::PrivateBus()
    : PrivateBus(freshName())
{}

PrivateBus::PrivateBus(const QString& name)
    : QDBusConnection(connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), name))
    , m_name(name)
{}

PrivateBus::~PrivateBus()
{
    disconnectFromBus(m_name);
}

} // namespace e2e
