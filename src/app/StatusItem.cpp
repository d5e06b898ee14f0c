// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/StatusItem.h"

#include "core/Localized.h"

#include <QCoreApplication>
#include <QIcon>
#include <QMenu>
#include <QSystemTrayIcon>

namespace app {

StatusItem::StatusItem(QObject* parent)
    : QObject(parent)
    , m_icon(new QSystemTrayIcon(QIcon(QStringLiteral(":/icons/kelvo.svg")), this))
    , m_menu(new QMenu())
{
    m_menu->addAction(core::localized("ScreenShot"), this, &StatusItem::screenShotRequested);
    m_menu->addSeparator();
    m_menu->addAction(core::localized("Preferences"), this, &StatusItem::preferencesRequested);
    m_menu->addAction(core::localized("Quit"), this, &StatusItem::quitRequested);
    m_icon->setContextMenu(m_menu);
    m_icon->setToolTip(QStringLiteral("Kelvo"));
    connect(m_icon, &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason r) {
        if (r == QSystemTrayIcon::Trigger)
            Q_EMIT screenShotRequested();
    });
}

StatusItem::~StatusItem()
{
    delete m_menu;
}

void StatusItem::setVisible(bool visible)
{
    m_icon->setVisible(visible);
}

bool StatusItem::isVisible() const
{
    return m_icon->isVisible();
}

} // namespace app
