// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/InstanceShots.h"
#include "settings/Defaults.h"
#include "settings/QSettingsStore.h"

#include <QObject>

namespace platform {
class DesktopNotifier;
}
namespace platform::x11 {
class X11WindowServer;
}

namespace app {

class KelvoBus;

// Readies the tray instance, once it has started, for the first request
// to cost what the tenth does: the desktop grab's shared memory is mapped
// and its pages touched before anyone waits for it. It also takes `kelvo
// full` and `kelvo screen` for clients on the bus (InstanceShots), with the
// same warm memory.
class WarmInstance : public QObject
{
public:
    WarmInstance(platform::x11::X11WindowServer& windows, platform::DesktopNotifier& notifier,
                 KelvoBus* bus, QObject* parent = nullptr);

private:
    void warmUp();

    platform::x11::X11WindowServer& m_windows;
    settings::QSettingsStore m_store;
    settings::Defaults m_defaults{m_store};
    InstanceShots m_shots;
};

} // namespace app
