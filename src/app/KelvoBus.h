// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>

namespace app {

inline constexpr char kBusService[] = "org.kelvo.Kelvo";
inline constexpr char kBusPath[] = "/org/kelvo/Kelvo";
inline constexpr char kBusInterface[] = "org.kelvo.Kelvo";

// Kelvo on the session bus. The running instance owns the service name and
// answers the methods; any program may also broadcast the signals of the
// same names, which start the same actions (one delivery each).
class KelvoBus : public QObject
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

public Q_SLOTS:
    void ScreenShotsByTessikGroup();
    void PinFromPasteboardByGorvane();
    // The instance's version; also a cheap "are you there".
    QString Version();

Q_SIGNALS:
    void regionalScreenshotsRequested();
    void pinFromDragPasteboardRequested();

private Q_SLOTS:
    void onBroadcastScreenShots();
    void onBroadcastPin();
};

} // namespace app
