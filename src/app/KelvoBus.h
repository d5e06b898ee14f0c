// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/CaptureRequest.h"

#include <QByteArray>
#include <QDBusContext>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <functional>
#include <memory>
#include <optional>

namespace app::output {
class ImageOutput;
}

namespace app {

inline constexpr char kBusService[] = "org.kelvo.Kelvo";
inline constexpr char kBusPath[] = "/org/kelvo/Kelvo";
inline constexpr char kBusInterface[] = "org.kelvo.Kelvo";

// Kelvo on the session bus. The running instance owns the service name and
// answers the methods; any program may also broadcast the signals of the
// same names, which start the same actions (one delivery each).
class KelvoBus : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kelvo.Kelvo")
public:
    using QObject::QObject;

    // Claims the service name and exports this object. False when another
    // instance owns the name (or there is no session bus).
    bool registerOnBus();
    [[nodiscard]] static bool sessionBusAvailable();
    // Calls a method of the running instance; an empty string when done,
    // else the error's text.
    [[nodiscard]] static QString callRunningInstance(const QString& method);
    // Hands a PNG to the running instance for the clipboard, starting
    // Kelvo first when it does not run (one-shot commands end, the
    // clipboard's owner must not). An empty string when done, else why not.
    [[nodiscard]] static QString copyImageToRunningInstance(const QByteArray& png);

    // The output CopyImage uses; without one the bus makes its own over the
    // user's preferences and the session's notification server.
    void setImageOutput(output::ImageOutput* output) { m_output = output; }

    // Who takes a Capture call: it answers an error's text when it refuses
    // the request, else starts it and later tells its end through
    // captureDone(), captureCancelled() or captureFailed() with the id.
    using CaptureHandler = std::function<QString(uint id, const CaptureRequest& request)>;
    void setCaptureHandler(CaptureHandler handler) { m_captureHandler = std::move(handler); }
    // Who takes a Shot call: the client's answer, or nothing (with the
    // reason) when the client should run the command itself.
    struct ShotAnswer
    {
        int exitCode = 0;
        QByteArray out;
        QString errors;
    };
    using ShotHandler = std::function<std::optional<ShotAnswer>(
        const QStringList& arguments, const QString& directory, const QStringList& environment,
        QString* why)>;
    void setShotHandler(ShotHandler handler) { m_shotHandler = std::move(handler); }
    // Who answers HotKeys.
    void setHotKeyReport(std::function<QVariantMap()> report)
    {
        m_hotKeyReport = std::move(report);
    }

    // The ends of a requested capture, broadcast on the bus as the signals
    // CaptureDone(u id, s path) ("" when nothing was written),
    // CaptureCancelled(u id) and CaptureFailed(u id, s error).
    static void captureDone(uint id, const QString& path);
    static void captureCancelled(uint id);
    static void captureFailed(uint id, const QString& error);

public Q_SLOTS:
    void ScreenShotsByTessikGroup();
    void PinFromPasteboardByGorvane();
    // The instance's version; also a cheap "are you there".
    QString Version();
    // A PNG for the clipboard (as "image/png", alone); checked and size
    // limited first. Empty when done, else why it was refused.
    QString CopyImage(const QByteArray& png);
    // Starts a capture whose end is broadcast with the id answered here.
    // Options: "path" (s, absolute: a folder or a file name), "clipboard"
    // (b), "delay" (milliseconds), "lastRegion" (b: the previous area at
    // once). A bad option or a refused request is a D-Bus error.
    uint Capture(const QVariantMap& options);
    // Each global hot key's identifier with how its grab went
    // ("registered", "held" by another program, …); empty until the keys
    // have been taken at start, which scripts can wait for.
    QVariantMap HotKeys();
    // Brings up the Preferences window: a second start of Kelvo, and the
    // only way in when the tray icon is hidden or there is no tray.
    void ShowPreferences();
    // `kelvo full` or `kelvo screen` taken by this instance for a client:
    // `arguments` from the verb on, the client's working directory and its
    // "NAME=value" variables that pick the display and the preferences.
    // Answers the exit code, stdout and stderr the client gives; the error
    // org.kelvo.Kelvo.Error.Declined when the client should run it itself.
    int Shot(const QStringList& arguments, const QString& directory, const QStringList& environment,
             QByteArray& out, QString& errors);

Q_SIGNALS:
    void regionalScreenshotsRequested();
    void preferencesRequested();
    void pinFromDragPasteboardRequested();

private Q_SLOTS:
    void onBroadcastScreenShots();
    void onBroadcastPin();

private:
    [[nodiscard]] output::ImageOutput& imageOutput();

    struct OwnOutput;
    output::ImageOutput* m_output = nullptr;
    std::shared_ptr<OwnOutput> m_ownOutput;
    CaptureHandler m_captureHandler;
    std::function<QVariantMap()> m_hotKeyReport;
    ShotHandler m_shotHandler;
    uint m_lastCaptureId = 0;
};

} // namespace app
