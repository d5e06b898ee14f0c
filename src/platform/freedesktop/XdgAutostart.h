// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Autostart.h"

#include <QString>

namespace platform::freedesktop {

// Start at login through an XDG autostart entry,
// $XDG_CONFIG_HOME/autostart/kelvo.desktop. The entry counts as ours when it
// exists, is not hidden and runs our command; a desktop that disabled it
// (Hidden=true) therefore reads as "not a login item".
class XdgAutostart final : public Autostart
{
public:
    XdgAutostart();
    // For tests, and for installs whose command is not on PATH.
    explicit XdgAutostart(QString desktopFilePath, QString command = QStringLiteral("kelvo"));

    [[nodiscard]] static QString defaultPath();
    [[nodiscard]] QString path() const { return m_path; }
    // Why the last add or remove failed; empty after a success.
    [[nodiscard]] QString lastError() const { return m_lastError; }

    [[nodiscard]] bool isLoginItem() override;
    // Writes the entry atomically, making the folder if needed.
    bool addToLoginItems() override;
    // Deletes the entry; succeeds when there is none afterwards.
    bool removeFromLoginItems() override;

    [[nodiscard]] static QByteArray desktopEntry(const QString& command);

private:
    QString m_path;
    QString m_command;
    QString m_lastError;
};

} // namespace platform::freedesktop
