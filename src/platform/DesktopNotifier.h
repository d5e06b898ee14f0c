// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <functional>

namespace platform {

struct Notification
{
    QString title;
    QString body;
    QString filePath;       // a click shows this file, when set
    bool withSound = false; // the server's default notification sound
};

class DesktopNotifier
{
public:
    virtual ~DesktopNotifier() = default;
    // `delivered` runs once the notification server has accepted it.
    virtual void notify(const Notification& notification, std::function<void()> delivered = {}) = 0;
};

} // namespace platform
