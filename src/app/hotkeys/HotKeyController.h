// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/hotkeys/HotKeyTable.h"
#include "app/hotkeys/ShortcutEditing.h"

#include <QObject>
#include <QStringList>
#include <QTimer>
#include <QVariantMap>

#include <chrono>
#include <functional>
#include <map>

namespace settings {
class Defaults;
}
namespace platform {
class DesktopNotifier;
}

namespace app::hotkeys {

// The six global hot keys: keeps the `shortcut` preference, the grabs of
// the hot key centre and the editors of the Preferences window in step, and
// turns a press into its action.
class HotKeyController final : public QObject, public ShortcutEditing
{
    Q_OBJECT
public:
    using Action = std::function<void()>;

    HotKeyController(settings::Defaults& defaults, platform::HotKeyCenter& center,
                     QObject* parent = nullptr);
    ~HotKeyController() override;

    // What each press runs; an action without a handler does nothing.
    void setAction(HotKeyAction action, Action handler);
    // Whether a recording or the choice of its region is under way; until
    // set, none ever is.
    void setRecordingScreen(std::function<bool()> recordingScreen);
    // Where a key held by another program is reported besides stderr.
    void setNotifier(platform::DesktopNotifier* notifier);
    // How often a key another program holds is tried again. X tells no one
    // when a grab ends, so asking again is the only way to take the key
    // once that program lets it go.
    void setRetryInterval(std::chrono::milliseconds interval);
    // Tries the held keys again now; each one taken works from then on.
    void retryHeldHotKeys();

    // Installs the default table on a first run (before the first-run values
    // mark the run as done), then registers every stored entry.
    void registerAllHotKey();
    void unregisterAllHotKey();
    void hotKeyAction(const QString& identifier);
    // A key typed while one of Kelvo's own windows holds the whole keyboard
    // (a capture's overlay): the X server gives it to that window, never to
    // the hot key grabs, so the window asks here. When `combo` is one of the
    // registered hot keys, its action runs from the event loop, as a grabbed
    // key's would, and the answer is true.
    bool hotKeyTypedWhileKeyboardIsHeld(const platform::KeyCombo& combo);

    platform::HotKeyStatus
    shortcutRecorderDidEndRecording(const QString& identifier,
                                    const std::optional<platform::KeyCombo>& combo) override;
    void setRecording(bool recording) override;

    // The stored combination of a hot key, nothing when it has none.
    [[nodiscard]] std::optional<platform::KeyCombo> shortcutFor(const QString& identifier) const;
    // How each stored hot key fared at its last grab: "registered", "held"
    // (another program has it), "unknown key" or "no window system". Empty
    // until the keys have been taken at start, so it also tells that they
    // have.
    [[nodiscard]] QVariantMap hotKeyReport() const;

Q_SIGNALS:
    // The stored table was read anew; editors show it.
    void shortcutsLoaded();
    // A short cut was set: the status menu shows the new key. (Clearing one
    // does not ask for this; the menu keeps the old key until it is rebuilt
    // for another reason.)
    void freshStatusItemMenu();

private:
    // Registers every entry of the stored table; answers the glyphs of the
    // keys another program holds.
    QStringList registerStored();
    void reportHeld(const QStringList& keys);
    // Keeps the retry timer running exactly while some key is held.
    void updateRetry();

    settings::Defaults& m_defaults;
    platform::HotKeyCenter& m_center;
    platform::DesktopNotifier* m_notifier = nullptr;
    std::map<HotKeyAction, Action> m_actions;
    std::map<QString, platform::HotKeyStatus> m_statuses;
    std::function<bool()> m_recordingScreen;
    bool m_recording = false;
    QTimer m_retry;
};

} // namespace app::hotkeys
