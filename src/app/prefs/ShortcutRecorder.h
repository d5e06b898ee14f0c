// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/HotKeyCenter.h"

#include <QWidget>

#include <optional>

class QToolButton;

namespace app {

// Edits one key combination: a key and its modifiers. Click it (or tab to
// it) and press the combination; Escape gives up, Backspace or Delete or
// the clear button remove the combination. A key needs some allowed
// modifier, but F1 to F20 may stand alone.
class ShortcutRecorder final : public QWidget
{
    Q_OBJECT
public:
    explicit ShortcutRecorder(QWidget* parent = nullptr);
    ~ShortcutRecorder() override;

    // The combination shown, nothing when the editor is empty. Setting it
    // does not count as recording.
    [[nodiscard]] std::optional<platform::KeyCombo> objectValue() const { return m_value; }
    void setObjectValue(const std::optional<platform::KeyCombo>& value);
    // The combination in menu glyphs ("⌥A"), empty when there is none.
    [[nodiscard]] QString stringValue() const;

    void setRequiredModifierFlags(Qt::KeyboardModifiers flags) { m_required = flags; }
    void setAllowedModifierFlags(Qt::KeyboardModifiers flags) { m_allowed = flags; }
    [[nodiscard]] bool isRecording() const { return m_recording; }

Q_SIGNALS:
    // The editor started or stopped taking keys.
    void recordingChanged(bool recording);
    // The user set or cleared the combination; objectValue() has it.
    void didEndRecording();

private:
    class KeyEdit;
    friend class KeyEdit;

    // The editor's answers to what it is typed; true when it took the key.
    bool keyPressed(int key, Qt::KeyboardModifiers modifiers);
    void focusChanged(bool in);
    void setRecording(bool recording);
    void finish(const std::optional<platform::KeyCombo>& value);
    void display(const std::optional<platform::KeyCombo>& value);

    KeyEdit* m_edit = nullptr;
    QToolButton* m_clear = nullptr;
    std::optional<platform::KeyCombo> m_value;
    Qt::KeyboardModifiers m_required;
    Qt::KeyboardModifiers m_allowed;
    bool m_recording = false;
};

} // namespace app
