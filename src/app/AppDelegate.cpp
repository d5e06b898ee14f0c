// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/AppDelegate.h"

#include "app/ActionPictures.h"
#include "app/KelvoBus.h"
#include "app/RequestedCaptures.h"
#include "app/StatusItem.h"
#include "app/hotkeys/CaptureActions.h"
#include "app/hotkeys/HotKeyController.h"
#include "app/output/ImageOutput.h"
#include "app/prefs/PreferencesWindow.h"
#include "capture/ui/QNClipScreenManager.h"
#include "core/Clock.h"
#include "core/Localized.h"
#include "platform/AudioDevices.h"
#include "platform/Autostart.h"
#include "platform/DesktopNotifier.h"
#include "platform/FileManager.h"
#include "platform/HotKeyCenter.h"
#include "platform/PointerControl.h"
#include "platform/SoundPlayer.h"
#include "platform/Speaker.h"
#include "platform/WindowServer.h"
#include "platform/freedesktop/DesktopEntry.h"
#include "settings/Defaults.h"
#include "settings/Keys.h"
#include "settings/Migrations.h"
#include "settings/Preferences.h"
#include "settings/SettingsStore.h"
#include "settings/Startup.h"
#include "settings/ValueChecks.h"
#include "toolbar/ui/AnnotatedImageController.h"

#include <QApplication>
#include <QClipboard>
#include <QDBusConnection>
#include <QMessageBox>
#include <QMimeData>
#include <QProcess>
#include <QTextStream>

namespace app {

namespace {

void report(const QString& line)
{
    QTextStream(stderr) << "kelvo: " << line << '\n' << Qt::flush;
}

// The system's timers where none were given, before anything takes them.
AppDelegate::Services withClock(AppDelegate::Services services)
{
    if (!services.clock)
        services.clock = std::make_unique<core::SystemClock>();
    return services;
}

} // namespace

AppDelegate::AppDelegate(Services services, QObject* parent)
    : QObject(parent)
    , m_services(withClock(std::move(services)))
    , m_defaults(std::make_unique<settings::Defaults>(*m_services.store))
    , m_clipManager(
          std::make_unique<capture::QNClipScreenManager>(capture::QNClipScreenManager::Services{
              m_context, *m_services.windowServer, *m_services.pointer, *m_services.sound,
              m_messages, *m_defaults, m_readoutState,
              [this] { return m_shortcutOfButton.table(); }, m_services.clock.get()}))
    , m_captureActions(std::make_unique<hotkeys::CaptureActions>(
          *m_defaults, m_context, *m_services.windowServer, *m_services.pointer, *m_services.sound,
          *m_services.speaker))
{
    connectImageOutput();
    connectCaptureActions();
    connectRequests();
    m_clipManager->annotatedImageController().setNotifier(m_services.notifier.get());
}

void AppDelegate::connectImageOutput()
{
    output::ImageOutput::Services services;
    services.defaults = m_defaults.get();
    services.notifier = m_services.notifier.get();
    services.files = m_services.files.get();
    services.clipboard = [](const QByteArray& png) {
        auto* mime = new QMimeData;
        mime->setData(QStringLiteral("image/png"), png);
        QGuiApplication::clipboard()->setMimeData(mime);
    };
    services.clock = [] { return QDateTime::currentDateTime(); };
    services.timers = m_services.clock.get();
    services.report = report;
    m_output = std::make_unique<output::ImageOutput>(std::move(services));

    ActionPictures::Services pictures;
    pictures.windows = m_services.windowServer.get();
    pictures.pointer = m_services.pointer.get();
    pictures.defaults = m_defaults.get();
    pictures.context = &m_context;
    pictures.output = m_output.get();
    pictures.captureRunning = [this] { return m_clipManager->isWorking(); };
    pictures.beep = [] { QApplication::beep(); };
    pictures.report = report;
    m_pictures = std::make_unique<ActionPictures>(std::move(pictures));
    connect(m_pictures.get(), &ActionPictures::pinRequested, this, &AppDelegate::pinRequested);
    connect(m_clipManager.get(), &capture::QNClipScreenManager::captureFinished, this,
            &AppDelegate::onCaptureFinished);
}

void AppDelegate::connectCaptureActions()
{
    auto& hooks = m_captureActions->hooks();
    ActionPictures* pictures = m_pictures.get();
    hooks.mapImageToScreen = [pictures](const QImage& picture) {
        pictures->mapImageToScreen(picture);
    };
    hooks.isScreenRecordingEnable = [this] { return isScreenRecordingEnable(); };
    hooks.isValidToVisitMicroPhone = [this] { return isValidToVisitMicroPhone(); };
    hooks.saveFullImageToFile = [pictures] { pictures->saveFullImageToFile(); };
    hooks.saveWindowUnderCursor = [pictures](int shadowSize) {
        pictures->saveWindowUnderCursor(shadowSize);
    };
    hooks.savePreviousArea = [pictures](const QRectF& rect, double cornerRadius, int shadowSize) {
        pictures->savePreviousArea(rect, cornerRadius, shadowSize);
    };
    // On xcb this rings the X server's bell.
    m_captureActions->setBeep([] { QApplication::beep(); });
    m_captureActions->setNotifier(m_services.notifier.get());
}

void AppDelegate::connectRequests()
{
    RequestedCaptures::Services services;
    services.clock = m_services.clock.get();
    services.captureRunning = [this] { return m_clipManager->isWorking(); };
    services.startCapture = [this] { m_clipManager->startCapture(); };
    services.canSeeDesktop = [this] { return isScreenRecordingEnable(); };
    services.asksForSavePath = [this] {
        return settings::Preferences(*m_defaults).asksForSavePath();
    };
    services.pictureOfPreviousArea = [this](QString* error) {
        return m_pictures->pictureOfStoredArea(m_captureActions->previousArea(), error);
    };
    services.copy = [this](const core::Picture& picture) {
        (void)m_output->outputCapture(picture, true, false);
    };
    services.saveTo = [this](const core::Picture& picture, const QString& target) {
        return m_output->saveImageTo(picture, target);
    };
    services.saveToFile = [this](const core::Picture& picture) {
        return m_output->saveImageToFile(picture);
    };
    services.done = KelvoBus::captureDone;
    services.cancelled = KelvoBus::captureCancelled;
    services.failed = KelvoBus::captureFailed;
    services.report = report;
    m_requests = std::make_unique<RequestedCaptures>(std::move(services));
    connect(m_clipManager.get(), &capture::QNClipScreenManager::captureEnded, m_requests.get(),
            &RequestedCaptures::captureEnded);
}

void AppDelegate::onCaptureFinished(const capture::FinishedCapture& result)
{
    if (result.picture.isNull()) {
        report(QStringLiteral("the capture ended without a picture"));
        return;
    }
    const auto finish = [this, &result] { return m_pictures->sendFinishedCapture(result); };
    if (!m_requests->takeFinishedCapture(result.picture, finish))
        (void)finish();
}

QString AppDelegate::startRequestedCapture(uint id, const CaptureRequest& request)
{
    return m_requests->start(id, request);
}

AppDelegate::~AppDelegate() = default;

bool AppDelegate::registerOnBus()
{
    m_bus = new KelvoBus(this);
    m_bus->setImageOutput(m_output.get());
    m_bus->setCaptureHandler([this](uint id, const CaptureRequest& request) {
        return startRequestedCapture(id, request);
    });
    connect(m_bus, &KelvoBus::regionalScreenshotsRequested, this,
            &AppDelegate::regionalScreenshots);
    connect(m_bus, &KelvoBus::preferencesRequested, this, &AppDelegate::OpenPreferences);
    return m_bus->registerOnBus();
}

void AppDelegate::applicationDidFinishLaunching()
{
    capture::CaptureState& state = m_context.capture();
    state.arrOfAllSelectedScreenshots.clear();
    state.arrOfPreAllSelectedScreenshots.clear();
    state.imageAllWindowArray.clear();

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
    m_shortcutOfButton.load();
    registerAllHotKey();
    // The first-run values follow the hot keys' own first-run check, which
    // asks the same question before they are written.
    if (settings::installFirstRunValues(*m_defaults, settings::StartContext::current()))
        m_services.autostart->removeFromLoginItems();
    settings::installEveryStartValues(*m_defaults, settings::StartContext::current());
    settings::migrate(*m_defaults);
    m_defaults->synchronize();
    settings::removeRetiredKeys(*m_defaults);
    tellPreferenceRepairs();
}

void AppDelegate::tellPreferenceRepairs()
{
    QStringList notes = m_services.preferenceNotes;
    for (const settings::Repair& r :
         settings::repairBadValues(*m_defaults, settings::StartContext::current()))
        notes << r.message();
    if (notes.isEmpty())
        return;
    for (const QString& line : notes)
        report(line);
    // Started at login, Kelvo has no terminal to read stderr in.
    m_output->userNotificationContent(notes.join(QLatin1Char('\n')),
                                      core::localized("Kelvo reset some preferences"));
}

void AppDelegate::registerAllHotKey()
{
    using hotkeys::HotKeyAction;
    m_hotKeys = std::make_unique<hotkeys::HotKeyController>(*m_defaults, *m_services.hotKeys);
    // Started at login, Kelvo has no terminal: a key another program holds
    // must reach the user as a notification, not only on stderr.
    m_hotKeys->setNotifier(m_services.notifier.get());
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
    m_clipManager->setGlobalHotKeys([this](int key, Qt::KeyboardModifiers modifiers) {
        return m_hotKeys->hotKeyTypedWhileKeyboardIsHeld({key, modifiers});
    });
    if (m_bus != nullptr)
        m_bus->setHotKeyReport([this] { return m_hotKeys->hotKeyReport(); });
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
    m_pictures->openURLs(paths);
}

void AppDelegate::OpenPreferences()
{
    if (!m_preferences) {
        m_preferences = std::make_unique<PreferencesWindow>(*m_defaults, *m_services.autostart);
        m_preferences->setImageApplications(
            platform::freedesktop::imageApplications(platform::freedesktop::applicationFolders()));
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
