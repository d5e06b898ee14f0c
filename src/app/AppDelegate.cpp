// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/AppDelegate.h"

#include "app/KelvoBus.h"
#include "app/StatusItem.h"
#include "app/hotkeys/CaptureActions.h"
#include "app/hotkeys/HotKeyController.h"
#include "app/prefs/PreferencesWindow.h"
#include "capture/ui/QNClipScreenManager.h"
#include "core/Localized.h"
#include "platform/AudioDevices.h"
#include "platform/Autostart.h"
#include "platform/HotKeyCenter.h"
#include "platform/PointerControl.h"
#include "platform/SoundPlayer.h"
#include "platform/Speaker.h"
#include "platform/WindowServer.h"
#include "settings/Defaults.h"
#include "settings/Keys.h"
#include "settings/Migrations.h"
#include "settings/SettingsStore.h"
#include "settings/Startup.h"

#include <QApplication>
#include <QDBusConnection>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QMessageBox>
#include <QProcess>
#include <QTextStream>

namespace app {

AppDelegate::AppDelegate(Services services, QObject* parent)
    : QObject(parent)
    , m_services(std::move(services))
    , m_defaults(std::make_unique<settings::Defaults>(*m_services.store))
    , m_clipManager(
          std::make_unique<capture::QNClipScreenManager>(capture::QNClipScreenManager::Services{
              m_captureState, *m_services.windowServer, *m_services.pointer, *m_services.sound,
              m_messages, *m_defaults, m_readoutState, [this] { return m_shortcutOfButton; }}))
    , m_captureActions(std::make_unique<hotkeys::CaptureActions>(
          *m_defaults, m_captureState, *m_services.windowServer, *m_services.pointer,
          *m_services.sound, *m_services.speaker))
{
    auto& hooks = m_captureActions->hooks();
    hooks.mapImageToScreen = [this](const QImage& picture) { Q_EMIT pinRequested(picture); };
    hooks.isScreenRecordingEnable = [this] { return isScreenRecordingEnable(); };
    hooks.isValidToVisitMicroPhone = [this] { return isValidToVisitMicroPhone(); };
}

AppDelegate::~AppDelegate() = default;

bool AppDelegate::registerOnBus()
{
    m_bus = new KelvoBus(this);
    connect(m_bus, &KelvoBus::regionalScreenshotsRequested, this,
            &AppDelegate::regionalScreenshots);
    return m_bus->registerOnBus();
}

void AppDelegate::applicationDidFinishLaunching()
{
    m_captureState.arrOfAllSelectedScreenshots.clear();
    m_captureState.arrOfPreAllSelectedScreenshots.clear();
    m_captureState.imageAllWindowArray.clear();

    m_statusItem = new StatusItem(this);
    connect(m_statusItem, &StatusItem::screenShotRequested, this,
            &AppDelegate::regionalScreenshots);
    connect(m_statusItem, &StatusItem::preferencesRequested, this, &AppDelegate::OpenPreferences);
    connect(m_statusItem, &StatusItem::quitRequested, this, &AppDelegate::Quit);
    setStatusItemVisible(!m_defaults->boolForKey(settings::keys::hideMenuBarIcon));

    applicationDidStart();

    if (settings::takeRestartRequest(*m_defaults))
        OpenPreferences();
    showScreenRecordingPrompt();
}

void AppDelegate::applicationDidStart()
{
    m_shortcutOfButton = settings::shortcutOfButton(*m_defaults);
    registerAllHotKey();
    // The first-run values follow the hot keys' own first-run check, which
    // asks the same question before they are written.
    if (settings::installFirstRunValues(*m_defaults, settings::StartContext::current()))
        m_services.autostart->removeFromLoginItems();
    settings::installEveryStartValues(*m_defaults, settings::StartContext::current());
    settings::migrate(*m_defaults);
    m_defaults->synchronize();
    settings::removeRetiredKeys(*m_defaults);
}

void AppDelegate::registerAllHotKey()
{
    using hotkeys::HotKeyAction;
    m_hotKeys = std::make_unique<hotkeys::HotKeyController>(*m_defaults, *m_services.hotKeys);
    m_hotKeys->setAction(HotKeyAction::RegionalScreenshots, [this] { regionalScreenshots(); });
    m_hotKeys->setAction(HotKeyAction::DelayScreenShot, [this] { delayScreenShot(); });
    m_hotKeys->setAction(HotKeyAction::ScreenshotWindowUnderCursor,
                         [this] { screenshotWindowUnderCursor(); });
    m_hotKeys->setAction(HotKeyAction::ScreenshotPreviousArea,
                         [this] { screenshotPreviousArea(); });
    m_hotKeys->setAction(HotKeyAction::MapFromPaste, [this] { mapFromPaste(); });
    m_hotKeys->setAction(HotKeyAction::RecordScreenClicked, [this] { recordScreenClicked(); });
    m_hotKeys->setAction(HotKeyAction::StopRecorder, [this] { m_captureActions->stopRecorder(); });
    m_hotKeys->registerAllHotKey();
}

void AppDelegate::setStatusItemVisible(bool visible)
{
    if (m_statusItem != nullptr)
        m_statusItem->setVisible(visible);
}

bool AppDelegate::isScreenRecordingEnable()
{
    return m_services.windowServer->canSeeOtherClients();
}

bool AppDelegate::isValidToVisitMicroPhone()
{
    return m_services.audio->microphoneAvailable();
}

void AppDelegate::showScreenRecordingPrompt()
{
    // There is no permission prompt to provoke on X11; a tiny grab tells
    // early (on stderr) whether pictures of the desktop can be had at all.
    if (!isScreenRecordingEnable())
        QTextStream(stderr) << "kelvo: cannot take pictures of this desktop\n";
}

void AppDelegate::regionalScreenshots()
{
    if (!isScreenRecordingEnable()) {
        QMessageBox box(
            QMessageBox::Warning, QStringLiteral("Kelvo"),
            core::localized("Screenshot needs to obtain the permission of <Screen Recording>. "
                            "Please <tick> or <retick> the option of Kelvo in <Screen Recording>."),
            QMessageBox::Ok);
        box.setTextFormat(Qt::PlainText);
        box.exec();
        return;
    }
    m_clipManager->startCapture();
}

void AppDelegate::delayScreenShot()
{
    m_captureActions->delayScreenShot();
}

void AppDelegate::screenshotWindowUnderCursor()
{
    m_captureActions->screenshotWindowUnderCursor();
}

void AppDelegate::screenshotPreviousArea()
{
    m_captureActions->screenshotPreviousArea();
}

void AppDelegate::mapFromPaste()
{
    m_captureActions->mapFromPaste();
}

void AppDelegate::recordScreenClicked()
{
    m_captureActions->recordScreenClicked();
}

void AppDelegate::openURLs(const QStringList& paths)
{
    for (const QString& path : paths) {
        QFileInfo info(path);
        if (!info.isFile())
            continue;
        QImageReader reader(path);
        // Pictures from files are bounded: a hostile header cannot make us
        // allocate gigabytes.
        reader.setAllocationLimit(512);
        const QImage image = reader.read();
        if (!image.isNull())
            Q_EMIT pinRequested(image);
    }
}

void AppDelegate::OpenPreferences()
{
    if (!m_preferences) {
        m_preferences = std::make_unique<PreferencesWindow>(*m_defaults, *m_services.autostart);
        connect(m_preferences.get(), &PreferencesWindow::hideMenuBarIconChanged, this,
                [this](bool hidden) { setStatusItemVisible(!hidden); });
        if (m_hotKeys) {
            m_preferences->setShortcutEditing(m_hotKeys.get());
            connect(m_hotKeys.get(), &hotkeys::HotKeyController::shortcutsLoaded,
                    m_preferences.get(), &PreferencesWindow::showShortcuts);
        }
    }
    m_preferences->show();
    m_preferences->raise();
    m_preferences->activateWindow();
}

void AppDelegate::reset()
{
    settings::markForRestart(*m_defaults);
    // Let go of the bus name first, or the new process would hand its start
    // back to us and end.
    QDBusConnection::sessionBus().unregisterService(QString::fromLatin1(kBusService));
    QProcess::startDetached(QCoreApplication::applicationFilePath(), {});
    std::exit(0);
}

void AppDelegate::Quit()
{
    QCoreApplication::quit();
}

} // namespace app
