// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FileManager.h"

#include <QDBusConnection>
#include <QObject>
#include <QUrl>

#include <functional>

namespace platform::freedesktop {

// Shows files through org.freedesktop.FileManager1 (the file is selected
// in its folder); where no file manager offers that, the folder is opened
// with the desktop's handler. Opens files with a chosen application by its
// desktop entry, started directly with an argument list (no shell).
class FreedesktopFileManager final : public QObject, public FileManager
{
    Q_OBJECT
public:
    // How a URL is opened by the desktop; QDesktopServices unless given.
    using UrlOpener = std::function<bool(const QUrl&)>;
    // How a program is started; a detached QProcess unless given.
    using Starter = std::function<bool(const QString& program, const QStringList& arguments)>;

    explicit FreedesktopFileManager(QDBusConnection bus, QObject* parent = nullptr);
    void setUrlOpener(UrlOpener opener) { m_openUrl = std::move(opener); }
    void setStarter(Starter starter) { m_start = std::move(starter); }

    void showItem(const QString& path) override;
    void openWith(const QString& path, const QString& desktopId) override;

    // The desktop entry file of `desktopId` in the XDG application folders,
    // empty when there is none.
    [[nodiscard]] static QString locateDesktopEntry(const QString& desktopId);

private:
    QDBusConnection m_bus;
    UrlOpener m_openUrl;
    Starter m_start;
};

} // namespace platform::freedesktop
