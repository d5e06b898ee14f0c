// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QPoint>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace platform {
class DesktopNotifier;
class WindowServer;
} // namespace platform
namespace settings {
class Defaults;
}

namespace app::output {

// `kelvo full` and `kelvo screen`: a picture of the whole desktop or of one
// monitor, taken at once (or after a delay) without the overlay, written
// to a file, the clipboard or stdout.
struct ShotRequest
{
    enum class Area
    {
        Desktop,
        Screen,
    };
    Area area = Area::Desktop;
    std::optional<int> screen; // -n; the monitor under the pointer when absent
    QString path;              // -p: a folder, or a file whose extension picks the type
    bool clipboard = false;    // -c
    bool raw = false;          // -r: PNG on stdout
    int delayMs = 0;           // -d

    // Taken at once and kept to the command itself: no wait, and no copy
    // handed to the clipboard's keeper.
    [[nodiscard]] bool isImmediate() const { return delayMs == 0 && !clipboard; }

    // Options after the verb; an error's text when they do not parse.
    [[nodiscard]] static std::optional<ShotRequest> parse(Area area, const QStringList& arguments,
                                                          QString* error);
    [[nodiscard]] static QString usage();
};

// Longest delay -d accepts: an hour.
inline constexpr int kMaxShotDelayMs = 3600 * 1000;

// Where a picture of the desktop comes from and where its notices go; the
// command has them, and so has the tray instance that runs it for a client.
struct ShotSources
{
    platform::WindowServer* windows = nullptr;
    settings::Defaults* defaults = nullptr;
    platform::DesktopNotifier* notifier = nullptr;
    // Where the pointer is, in global top-left points.
    std::function<QPointF()> pointer;
};

class ShotCommand
{
public:
    struct Services : ShotSources
    {
        // Hands PNG data to whoever keeps the clipboard; an error's text.
        std::function<QString(const QByteArray&)> clipboard;
        std::function<void(const QByteArray&)> writeOut; // stdout
        std::function<void(const QString&)> report;      // stderr lines
        std::function<void(int ms)> sleep;
    };

    explicit ShotCommand(Services services);

    // The exit code: 0 done, 1 error (a picture that could not go where it
    // was asked to is kept elsewhere and the place named).
    [[nodiscard]] int run(const ShotRequest& request);

private:
    Services m_services;
};

} // namespace app::output
