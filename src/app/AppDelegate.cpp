// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/AppDelegate.h"

#include "app/KelvoBus.h"
#include "app/StatusItem.h"
#include "app/hotkeys/CaptureActions.h"
#include "app/hotkeys/HotKeyController.h"
#include "app/output/ImageDecoration.h"
#include "app/output/ImageOutput.h"
#include "app/prefs/PreferencesWindow.h"
#include "capture/logic/WindowUnderMouse.h"
#include "capture/ui/QNClipScreenManager.h"
#include "core/Localized.h"
#include "platform/AudioDevices.h"
#include "platform/Autostart.h"
#include "platform/HotKeyCenter.h"
#include "platform/PointerControl.h"
#include "platform/SoundPlayer.h"
#include "platform/Speaker.h"
#include "platform/WindowServer.h"
#include "platform/freedesktop/DesktopEntry.h"
#include "platform/freedesktop/FreedesktopFileManager.h"
#include "platform/freedesktop/FreedesktopNotifier.h"
#include "settings/Defaults.h"
#include "settings/Keys.h"
#include "settings/Migrations.h"
#include "settings/Preferences.h"
#include "settings/SettingsStore.h"
#include "settings/Startup.h"
#include "settings/ValueChecks.h"

#include <QApplication>
#include <QClipboard>
#include <QDBusConnection>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QMessageBox>
#include <QMimeData>
#include <QProcess>
#include <QTextStream>
#include <QTimer>

namespace app {

namespace {

void report(const QString& line)
{
    QTextStream(stderr) << "kelvo: " << line << '\n' << Qt::flush;
}

} // namespace

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
    hooks.saveFullImageToFile = [this] { saveFullImageToFile(); };
    hooks.saveWindowUnderCursor = [this](int shadowSize) { saveWindowUnderCursor(shadowSize); };
    hooks.savePreviousArea = [this](const QRectF& rect, double cornerRadius, int shadowSize) {
        savePreviousArea(rect, cornerRadius, shadowSize);
    };
    // On xcb this rings the X server's bell.
    m_captureActions->setBeep([] { QApplication::beep(); });
    connectImageOutput();
}

void AppDelegate::connectImageOutput()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    m_notifier = std::make_unique<platform::freedesktop::FreedesktopNotifier>(bus);
    m_files = std::make_unique<platform::freedesktop::FreedesktopFileManager>(bus);
    output::ImageOutput::Services services;
    services.defaults = m_defaults.get();
    services.notifier = m_notifier.get();
    services.files = m_files.get();
    services.clipboard = [](const QByteArray& png) {
        auto* mime = new QMimeData;
        mime->setData(QStringLiteral("image/png"), png);
        QGuiApplication::clipboard()->setMimeData(mime);
    };
    services.clock = [] { return QDateTime::currentDateTime(); };
    services.report = report;
    m_output = std::make_unique<output::ImageOutput>(std::move(services));
    m_notifier->setActivatedHandler(
        [this](const platform::Notification& n) { m_output->didActivateNotification(n); });
    m_captureActions->setNotifier(m_notifier.get());

    connect(m_clipManager.get(), &capture::QNClipScreenManager::captureEnded, this,
            &AppDelegate::onCaptureEnded);
    connect(m_clipManager.get(), &capture::QNClipScreenManager::captureFinished, this,
            &AppDelegate::onCaptureFinished);
}

double AppDelegate::scaleOfScreen(int screen)
{
    const core::ScreenLayout layout = m_services.windowServer->screens();
    if (layout.isEmpty())
        return 1.0;
    return layout.screen(screen >= 0 && screen < layout.count() ? screen : 0).scale;
}

void AppDelegate::saveFullImageToFile()
{
    const core::ScreenLayout layout = m_services.windowServer->screens();
    if (layout.isEmpty()) {
        report(QStringLiteral("no screen to take a picture of"));
        return;
    }
    const int index = m_captureState.screenOfScreenShot;
    const core::ScreenInfo& screen =
        layout.screen(index >= 0 && index < layout.count() ? index : 0);
    const QImage image = m_services.windowServer->pictureOfRect(screen.frame);
    if (image.isNull()) {
        report(QStringLiteral("the X server gave no picture of the screen"));
        return;
    }
    const core::Picture picture = core::Picture::withScale(image, screen.scale);
    (void)m_output->saveImageToFile(picture);
}

void AppDelegate::saveWindowUnderCursor(int shadowSize)
{
    // A capture's overlay covers every screen: the window under the pointer
    // would be our own, and a new window pass would spoil its frozen desktop.
    if (m_clipManager->isWorking()) {
        report(QStringLiteral("no picture of the window under the pointer while a capture runs"));
        QApplication::beep();
        return;
    }
    platform::WindowServer& windows = *m_services.windowServer;
    const core::ScreenLayout layout = windows.screens();
    const capture::WindowUnderMouseChoice choice = capture::chooseWindowUnderMouse(
        windows.windowList(), m_services.pointer->position(), layout);
    const double scale = scaleOfScreen(m_captureState.screenOfScreenShot);
    QImage image;
    switch (choice.kind) {
    case capture::WindowUnderMouseChoice::Kind::Window:
        image = windows.pictureOfWindow(choice.number, QRectF());
        break;
    case capture::WindowUnderMouseChoice::Kind::WholeScreen:
        image = windows.pictureOfRect(choice.screenRect);
        break;
    case capture::WindowUnderMouseChoice::Kind::Nothing:
        break;
    }
    // The pictures share the frozen desktop's pixels until copied.
    image = image.copy();
    windows.thaw();
    if (image.isNull()) {
        report(QStringLiteral("there is no window under the pointer to take a picture of"));
        return;
    }
    core::Picture picture = core::Picture::withScale(image, scale);
    if (shadowSize > 0)
        picture = output::addShadow(
            picture, shadowSize,
            output::shadowColourFrom(m_defaults->stringForKey(settings::keys::colorOfShadow)));
    (void)m_output->saveImageToFile(picture);
}

core::Picture AppDelegate::pictureOfPreviousArea(const QRectF& rect, double cornerRadius,
                                                 int shadowSize)
{
    const double scale = scaleOfScreen(m_captureState.screenOfScreenShot);
    const QImage image = m_services.windowServer->pictureOfRect(rect).copy();
    if (image.isNull())
        return {};
    core::Picture picture = core::Picture::withScale(image, scale);
    if (cornerRadius > 0)
        picture = output::addRoundImgae(picture, cornerRadius);
    if (shadowSize > 0)
        picture = output::addShadow(
            picture, shadowSize,
            output::shadowColourFrom(m_defaults->stringForKey(settings::keys::colorOfShadow)));
    return picture;
}

void AppDelegate::savePreviousArea(const QRectF& rect, double cornerRadius, int shadowSize)
{
    const core::Picture picture = pictureOfPreviousArea(rect, cornerRadius, shadowSize);
    if (picture.isNull()) {
        report(QStringLiteral("the X server gave no picture of the previous area"));
        return;
    }
    (void)m_output->saveImageToFile(picture);
}

void AppDelegate::onCaptureEnded(bool finished)
{
    if (!m_request || !m_request->started)
        return;
    if (!finished) {
        const uint id = m_request->id;
        m_request.reset();
        KelvoBus::captureCancelled(id);
        return;
    }
    // The picture follows at once; should it not, the caller must not wait
    // for ever.
    const uint id = m_request->id;
    QTimer::singleShot(0, this, [this, id] {
        if (m_request && m_request->id == id) {
            m_request.reset();
            KelvoBus::captureFailed(id, QStringLiteral("the capture ended without a picture"));
        }
    });
}

void AppDelegate::onCaptureFinished(const capture::FinishedCapture& result)
{
    const core::Picture& picture = result.picture;
    if (picture.isNull()) {
        report(QStringLiteral("the capture ended without a picture"));
        return;
    }
    auto finish = [this, &result]() -> output::SaveResult {
        switch (result.destination) {
        case capture::FinishDestination::Clipboard:
            return m_output->outputCapture(result.picture, true, false);
        case capture::FinishDestination::File:
            return m_output->outputCapture(result.picture, false, result.openAfterSave);
        case capture::FinishDestination::Pin:
            // Until pins float on the screen the picture is kept on the
            // clipboard rather than dropped.
            report(QStringLiteral("pins are not part of this build yet; the picture is on the "
                                  "clipboard"));
            m_output->saveImageToPaste(result.picture);
            Q_EMIT pinRequested(result.picture.pixels);
            return {};
        }
        return {};
    };
    if (m_request && m_request->started) {
        deliverRequest(picture, finish);
        return;
    }
    (void)finish();
}

QString AppDelegate::startRequestedCapture(uint id, const CaptureRequest& request)
{
    if (m_request)
        return QStringLiteral("another requested capture is under way");
    if (!request.lastRegion && m_clipManager->isWorking())
        return QStringLiteral("a capture is already running");
    if (request.path.isEmpty() && !request.clipboard &&
        settings::Preferences(*m_defaults).asksForSavePath())
        return QStringLiteral("Kelvo is set to ask where to save each picture; give a folder "
                              "or file with -p PATH, or copy with -c");
    m_request = PendingRequest{id, request, false};
    // Always later, never inside the call: the caller has its id before the
    // end is told.
    QTimer::singleShot(request.delayMs, this, &AppDelegate::runRequest);
    return {};
}

void AppDelegate::runRequest()
{
    if (!m_request)
        return;
    if (m_request->request.lastRegion) {
        const auto area = m_captureActions->previousArea();
        if (!area) {
            endRequest(nullptr, QStringLiteral("there is no previous area: capture a region "
                                               "first (or its centre lies on no screen now)"));
            return;
        }
        m_captureState.screenOfScreenShot = area->screen;
        const core::Picture picture =
            pictureOfPreviousArea(area->rect, area->cornerRadius, area->shadowSize);
        if (picture.isNull()) {
            endRequest(nullptr, QStringLiteral("the X server gave no picture of the area"));
            return;
        }
        deliverRequest(picture, [this, &picture] { return m_output->saveImageToFile(picture); });
        return;
    }
    if (m_clipManager->isWorking()) {
        endRequest(nullptr, QStringLiteral("a capture is already running"));
        return;
    }
    if (!isScreenRecordingEnable()) {
        endRequest(nullptr, QStringLiteral("cannot take pictures of this desktop"));
        return;
    }
    m_request->started = true;
    m_clipManager->startCapture();
    if (!m_clipManager->isWorking() && m_request && m_request->started)
        endRequest(nullptr, QStringLiteral("the capture could not start"));
}

void AppDelegate::deliverRequest(const core::Picture& picture,
                                 const std::function<output::SaveResult()>& fallback)
{
    const CaptureRequest request = m_request->request;
    if (request.clipboard)
        (void)m_output->outputCapture(picture, true, false);
    if (!request.path.isEmpty()) {
        const output::SaveResult saved = m_output->saveImageTo(picture, request.path);
        endRequest(&saved, {});
        return;
    }
    if (request.clipboard) {
        endRequest(nullptr, {});
        return;
    }
    const output::SaveResult saved = fallback();
    endRequest(&saved, {});
}

void AppDelegate::endRequest(const output::SaveResult* saved, const QString& error)
{
    if (!m_request)
        return;
    const uint id = m_request->id;
    m_request.reset();
    if (!error.isEmpty()) {
        report(error);
        KelvoBus::captureFailed(id, error);
    } else if (saved != nullptr && !saved->saved()) {
        KelvoBus::captureFailed(id, saved->keptAt.isEmpty()
                                        ? saved->error
                                        : QStringLiteral("%1 The picture was saved to %2 instead.")
                                              .arg(saved->error, saved->keptAt));
    } else {
        KelvoBus::captureDone(id, saved != nullptr ? saved->path : QString());
    }
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
    m_hotKeys->setNotifier(m_notifier.get());
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
