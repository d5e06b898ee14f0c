// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

class QMenu;
class QSystemTrayIcon;

namespace app {

// Kelvo's item in the system tray and its menu.
class StatusItem : public QObject
{
    Q_OBJECT
public:
    explicit StatusItem(QObject* parent = nullptr);
    ~StatusItem() override;

    void setVisible(bool visible);
    [[nodiscard]] bool isVisible() const;

Q_SIGNALS:
    void screenShotRequested();
    void preferencesRequested();
    void quitRequested();

private:
    QSystemTrayIcon* m_icon;
    QMenu* m_menu;
};

} // namespace app
