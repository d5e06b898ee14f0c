// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/prefs/ShortcutRecorder.h"

#include "app/hotkeys/KeyComboCodec.h"
#include "core/Localized.h"

#include <QApplication>
#include <QFocusEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QKeySequenceEdit>
#include <QLineEdit>
#include <QToolButton>

namespace app {

using hotkeys::kHotKeyModifiers;

namespace {

bool isModifierKey(int key)
{
    switch (key) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Meta:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
    case Qt::Key_Hyper_L:
    case Qt::Key_Hyper_R:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
    case Qt::Key_unknown:
    case 0:
        return true;
    default:
        return false;
    }
}

} // namespace

// Qt's key sequence editor, held to one combination: the recorder decides
// what each key means, the editor only shows the result.
class ShortcutRecorder::KeyEdit final : public QKeySequenceEdit
{
public:
    explicit KeyEdit(ShortcutRecorder& owner)
        : QKeySequenceEdit(&owner)
        , m_owner(owner)
    {}

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        const auto modifiers = event->modifiers() & kHotKeyModifiers;
        if (modifiers == Qt::NoModifier &&
            (event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab)) {
            focusNextPrevChild(event->key() == Qt::Key_Tab);
            return;
        }
        event->accept();
        if (!m_owner.keyPressed(event->key(), modifiers))
            QApplication::beep();
    }
    void keyReleaseEvent(QKeyEvent* event) override { event->accept(); }
    void focusInEvent(QFocusEvent* event) override
    {
        QKeySequenceEdit::focusInEvent(event);
        m_owner.focusChanged(true);
    }
    void focusOutEvent(QFocusEvent* event) override
    {
        QKeySequenceEdit::focusOutEvent(event);
        m_owner.focusChanged(false);
    }

private:
    ShortcutRecorder& m_owner;
};

ShortcutRecorder::ShortcutRecorder(QWidget* parent)
    : QWidget(parent)
    , m_edit(new KeyEdit(*this))
    , m_clear(new QToolButton(this))
    , m_allowed(kHotKeyModifiers)
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);
    m_edit->setObjectName(QStringLiteral("keys"));
    if (auto* line = m_edit->findChild<QLineEdit*>())
        line->setPlaceholderText(core::localized("Type a short cut"));
    row->addWidget(m_edit, 1);
    m_clear->setObjectName(QStringLiteral("clear"));
    m_clear->setText(QStringLiteral("×"));
    m_clear->setToolTip(core::localized("Remove the short cut"));
    m_clear->setFocusPolicy(Qt::NoFocus);
    row->addWidget(m_clear);
    connect(m_clear, &QToolButton::clicked, this, [this] { finish(std::nullopt); });
    setFocusProxy(m_edit);
    setMinimumWidth(160);
    display(std::nullopt);
}

ShortcutRecorder::~ShortcutRecorder() = default;

void ShortcutRecorder::setObjectValue(const std::optional<platform::KeyCombo>& value)
{
    m_value = value && value->isValid() ? value : std::nullopt;
    display(m_value);
}

QString ShortcutRecorder::stringValue() const
{
    return m_value ? hotkeys::glyphString(*m_value) : QString();
}

bool ShortcutRecorder::keyPressed(int key, Qt::KeyboardModifiers modifiers)
{
    if (isModifierKey(key))
        return true; // wait for the key that goes with them
    if (modifiers == Qt::NoModifier && key == Qt::Key_Escape) {
        display(m_value);
        m_edit->clearFocus();
        return true;
    }
    if (modifiers == Qt::NoModifier && (key == Qt::Key_Backspace || key == Qt::Key_Delete)) {
        finish(std::nullopt);
        return true;
    }
    const bool usual = (modifiers & m_required) == m_required &&
                       (modifiers & ~m_allowed) == Qt::KeyboardModifiers() &&
                       modifiers != Qt::NoModifier;
    if (!usual &&
        !hotkeys::shouldUnconditionallyAllowModifierFlags(modifiers, key, m_required, m_allowed))
        return false;
    finish(platform::KeyCombo{key, modifiers});
    return true;
}

void ShortcutRecorder::finish(const std::optional<platform::KeyCombo>& value)
{
    m_value = value;
    display(m_value);
    // The hot keys come back before the new one is taken.
    setRecording(false);
    m_edit->clearFocus();
    Q_EMIT didEndRecording();
}

void ShortcutRecorder::focusChanged(bool in)
{
    setRecording(in);
}

void ShortcutRecorder::setRecording(bool recording)
{
    if (recording == m_recording)
        return;
    m_recording = recording;
    Q_EMIT recordingChanged(recording);
}

void ShortcutRecorder::display(const std::optional<platform::KeyCombo>& value)
{
    m_edit->setKeySequence(value ? hotkeys::keySequenceOf(*value) : QKeySequence());
    m_edit->setToolTip(value ? hotkeys::glyphString(*value) : QString());
    m_clear->setEnabled(value.has_value());
}

} // namespace app
