// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/WarmInstance.h"

#include "app/KelvoBus.h"
#include "platform/x11/X11WindowServer.h"

#include <QCursor>
#include <QTimer>

#include <cstdint>

namespace app {

WarmInstance::WarmInstance(platform::x11::X11WindowServer& windows,
                           platform::DesktopNotifier& notifier, KelvoBus* bus, QObject* parent)
    : QObject(parent)
    , m_windows(windows)
    , m_shots({{&windows, &m_defaults, &notifier, [] { return QPointF(QCursor::pos()); }},
               [&windows] { return !windows.frozenRoot().isNull(); },
               {}})
{
    if (bus != nullptr) {
        bus->setShotHandler([this](const QStringList& arguments, const QString& directory,
                                   const QStringList& environment,
                                   QString* why) -> std::optional<KelvoBus::ShotAnswer> {
            auto answer = m_shots.take(arguments, directory, environment, why);
            if (!answer)
                return std::nullopt;
            return KelvoBus::ShotAnswer{answer->exitCode, std::move(answer->out),
                                        std::move(answer->errors)};
        });
    }
    // After the start's own work, so that the tray shows first.
    QTimer::singleShot(0, this, &WarmInstance::warmUp);
}

void WarmInstance::warmUp()
{
    // A grab of the whole desktop makes the shared segment every later
    // grab reuses. The server fills its pages, but this process maps each
    // one only when it first reads it, which on the first capture's paint
    // costs several times the paint: a byte of every page is read now.
    const core::ScreenLayout layout = m_windows.screens();
    QRectF desktop;
    for (const core::ScreenInfo& s : layout.screens())
        desktop = desktop.united(s.frame);
    if (desktop.isEmpty() || !m_windows.frozenRoot().isNull())
        return;
    const QImage picture = m_windows.pictureOfRect(desktop);
    constexpr qsizetype kPage = 4096;
    std::uint8_t sum = 0;
    for (qsizetype i = 0; i < picture.sizeInBytes(); i += kPage)
        sum ^= picture.constBits()[i];
    // A volatile store keeps the reads from being left out.
    volatile std::uint8_t read = sum;
    (void)read;
}

} // namespace app
