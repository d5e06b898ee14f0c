// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/hotkeys/HotKeyController.h"

#include "app/hotkeys/KeyComboCodec.h"
#include "core/Localized.h"
#include "platform/DesktopNotifier.h"
#include "settings/Defaults.h"
#include "settings/Keys.h"

#include <QTextStream>

#include <algorithm>

namespace app::hotkeys {

namespace keys = settings::keys;

HotKeyController::HotKeyController(settings::Defaults& defaults, platform::HotKeyCenter& center,
                                   QObject* parent)
    : QObject(parent)
    , m_defaults(defaults)
    , m_center(center)
{
    m_center.setHandler([this](const QString& identifier) { hotKeyAction(identifier); });
    m_retry.setInterval(std::chrono::seconds(2));
    connect(&m_retry, &QTimer::timeout, this, &HotKeyController::retryHeldHotKeys);
}

HotKeyController::~HotKeyController()
{
    m_center.setHandler({});
}

void HotKeyController::setAction(HotKeyAction action, Action handler)
{
    m_actions[action] = std::move(handler);
}

void HotKeyController::setRecordingScreen(std::function<bool()> recordingScreen)
{
    m_recordingScreen = std::move(recordingScreen);
}

void HotKeyController::setNotifier(platform::DesktopNotifier* notifier)
{
    m_notifier = notifier;
}

void HotKeyController::setRetryInterval(std::chrono::milliseconds interval)
{
    m_retry.setInterval(interval);
}

void HotKeyController::retryHeldHotKeys()
{
    if (m_recording)
        return;
    QStringList taken;
    for (auto& [identifier, status] : m_statuses) {
        if (status != platform::HotKeyStatus::HeldByAnotherProgram)
            continue;
        const auto combo = shortcutFor(identifier);
        if (!combo)
            continue;
        status = m_center.registerHotKey(identifier, *combo);
        if (status == platform::HotKeyStatus::Registered)
            taken << glyphString(*combo);
    }
    if (!taken.isEmpty())
        QTextStream(stderr) << "kelvo: "
                            << core::localized("%1 is free again and works as Kelvo's hot key.")
                                   .arg(taken.join(QStringLiteral(", ")))
                            << '\n';
    updateRetry();
}

void HotKeyController::updateRetry()
{
    const bool anyHeld =
        !m_recording && std::any_of(m_statuses.cbegin(), m_statuses.cend(), [](const auto& entry) {
            return entry.second == platform::HotKeyStatus::HeldByAnotherProgram;
        });
    if (!anyHeld)
        m_retry.stop();
    else if (!m_retry.isActive())
        m_retry.start();
}

void HotKeyController::registerAllHotKey()
{
    unregisterAllHotKey();
    // installTime is written by the first-run values right after this, so
    // its absence (or a value that reads as 0) is the first run.
    if (m_defaults.integerForKey(keys::installTime) == 0) {
        m_defaults.setObject(keys::shortcut, defaultShortcut());
        m_defaults.synchronize();
    }
    Q_EMIT shortcutsLoaded();
    reportHeld(registerStored());
    updateRetry();
}

QStringList HotKeyController::registerStored()
{
    QStringList held;
    const QVariantMap table = m_defaults.dictionaryForKey(keys::shortcut);
    for (auto it = table.cbegin(); it != table.cend(); ++it) {
        const auto combo = fromStoredForm(it.value());
        if (!combo)
            continue;
        const platform::HotKeyStatus status = m_center.registerHotKey(it.key(), *combo);
        m_statuses[it.key()] = status;
        if (status == platform::HotKeyStatus::HeldByAnotherProgram)
            held << glyphString(*combo);
    }
    return held;
}

void HotKeyController::unregisterAllHotKey()
{
    const QVariantMap table = m_defaults.dictionaryForKey(keys::shortcut);
    for (auto it = table.cbegin(); it != table.cend(); ++it)
        m_center.unregisterHotKey(it.key());
}

void HotKeyController::hotKeyAction(const QString& identifier)
{
    const bool recordingScreen = m_recordingScreen && m_recordingScreen();
    const auto action = actionForHotKey(identifier, recordingScreen);
    if (!action)
        return;
    const auto it = m_actions.find(*action);
    if (it != m_actions.end() && it->second)
        it->second();
}

bool HotKeyController::hotKeyTypedWhileKeyboardIsHeld(const platform::KeyCombo& combo)
{
    if (m_recording || !combo.isValid())
        return false;
    for (const auto& [identifier, status] : m_statuses) {
        if (status != platform::HotKeyStatus::Registered || shortcutFor(identifier) != combo)
            continue;
        // Not inside the key handling of the window that holds the keyboard:
        // the action may end what that window belongs to.
        QTimer::singleShot(0, this, [this, id = identifier] { hotKeyAction(id); });
        return true;
    }
    return false;
}

platform::HotKeyStatus
HotKeyController::shortcutRecorderDidEndRecording(const QString& identifier,
                                                  const std::optional<platform::KeyCombo>& combo)
{
    if (hotKeyDefinition(identifier) == nullptr)
        return platform::HotKeyStatus::Registered;
    setRecording(false);
    QVariantMap table = m_defaults.dictionaryForKey(keys::shortcut);
    m_center.unregisterHotKey(identifier);
    m_statuses.erase(identifier);
    if (!combo || !combo->isValid()) {
        table.remove(identifier);
        m_defaults.setObject(keys::shortcut, table);
        m_defaults.synchronize();
        updateRetry();
        return platform::HotKeyStatus::Registered;
    }
    // The key is kept even when another program holds it now: it is tried
    // again until that program lets go.
    const platform::HotKeyStatus status = m_center.registerHotKey(identifier, *combo);
    m_statuses[identifier] = status;
    table.insert(identifier, toStoredForm(*combo));
    m_defaults.setObject(keys::shortcut, table);
    m_defaults.synchronize();
    Q_EMIT freshStatusItemMenu();
    if (status == platform::HotKeyStatus::HeldByAnotherProgram)
        reportHeld({glyphString(*combo)});
    updateRetry();
    return status;
}

void HotKeyController::setRecording(bool recording)
{
    if (recording == m_recording)
        return;
    m_recording = recording;
    // The grabs take keys before any window sees them, the editor's too.
    // A key another program holds was told about when it was set.
    if (recording)
        unregisterAllHotKey();
    else
        registerStored();
    updateRetry();
}

std::optional<platform::KeyCombo> HotKeyController::shortcutFor(const QString& identifier) const
{
    return fromStoredForm(m_defaults.dictionaryForKey(keys::shortcut).value(identifier));
}

QVariantMap HotKeyController::hotKeyReport() const
{
    QVariantMap report;
    for (const auto& [identifier, status] : m_statuses) {
        switch (status) {
        case platform::HotKeyStatus::Registered:
            report.insert(identifier, QStringLiteral("registered"));
            break;
        case platform::HotKeyStatus::HeldByAnotherProgram:
            report.insert(identifier, QStringLiteral("held"));
            break;
        case platform::HotKeyStatus::UnknownKey:
            report.insert(identifier, QStringLiteral("unknown key"));
            break;
        case platform::HotKeyStatus::NoWindowSystem:
            report.insert(identifier, QStringLiteral("no window system"));
            break;
        }
    }
    return report;
}

void HotKeyController::reportHeld(const QStringList& keys)
{
    if (keys.isEmpty())
        return;
    const QString text =
        core::localized("Another program already uses %1, so Kelvo cannot take it as a hot key "
                        "for now. Kelvo takes it as soon as that program lets it go; or choose "
                        "another key in Preferences.")
            .arg(keys.join(QStringLiteral(", ")));
    QTextStream(stderr) << "kelvo: " << text << '\n';
    if (m_notifier != nullptr)
        m_notifier->notify({QStringLiteral("Kelvo"), text, QString()});
}

} // namespace app::hotkeys
