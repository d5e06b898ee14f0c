// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDBusConnection>
#include <QString>

namespace e2e {

// A session-bus connection of the test's own, closed when it goes. Each test
// has a desktop and so a bus of its own: a fresh name makes a fresh
// connection, and the address is given because libdbus reads the variable
// only once per process.
class PrivateBus : public QDBusConnection
{
public:
    PrivateBus();
    ~PrivateBus();
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

private:
    explicit PrivateBus(const QString& name);

    QString m_name;
};

} // namespace e2e
