// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/hotkeys/HotKeyController.h"

#include "app/hotkeys/KeyComboCodec.h"
#include "core/Localized.h"
#include "platform/DesktopNotifier.h"
#include "settings/Defaults.h"
#include "settings/Keys.h"

#include <QTextStream>

namespace app::hotkeys {

namespace keys = settings::keys;

HotKeyController::HotKeyController(settings::Defaults& defaults, platform::HotKeyCenter& center,
                                   QObject* parent)
    : QObject(parent)
    , m_defaults(defaults)
    , m_center(center)
{
    m_center.setHandler([this](const QString& identifier) { hotKeyAction(identifier); });
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
        return platform::HotKeyStatus::Registered;
    }
    // The key is kept even when another program holds it now: it works as
    // soon as that program lets go and Kelvo starts again.
    const platform::HotKeyStatus status = m_center.registerHotKey(identifier, *combo);
    m_statuses[identifier] = status;
    table.insert(identifier, toStoredForm(*combo));
    m_defaults.setObject(keys::shortcut, table);
    m_defaults.synchronize();
    Q_EMIT freshStatusItemMenu();
    if (status == platform::HotKeyStatus::HeldByAnotherProgram)
        reportHeld({glyphString(*combo)});
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
        core::localized("Another program already uses %1, so Kelvo cannot take it as a hot key. "
                        "Choose another key in Preferences or quit that program.")
            .arg(keys.join(QStringLiteral(", ")));
    QTextStream(stderr) << "kelvo: " << text << '\n';
    if (m_notifier != nullptr)
        m_notifier->notify({QStringLiteral("Kelvo"), text, QString()});
}

} // namespace app::hotkeys
