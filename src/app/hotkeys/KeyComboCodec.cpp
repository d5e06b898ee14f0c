// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/hotkeys/KeyComboCodec.h"

#include <utility>

namespace app::hotkeys {

namespace {

const QString kKeyCode = QStringLiteral("keyCode");
const QString kModifierFlags = QStringLiteral("modifierFlags");

// Keys with a glyph of their own on the editors.
const std::pair<int, const char16_t*> kKeyGlyphs[] = {
    {Qt::Key_Return, u"↩"},  {Qt::Key_Enter, u"⌤"},  {Qt::Key_Tab, u"⇥"},
    {Qt::Key_Backtab, u"⇤"}, {Qt::Key_Escape, u"⎋"}, {Qt::Key_Backspace, u"⌫"},
    {Qt::Key_Delete, u"⌦"},  {Qt::Key_Left, u"←"},   {Qt::Key_Right, u"→"},
    {Qt::Key_Up, u"↑"},      {Qt::Key_Down, u"↓"},   {Qt::Key_Home, u"↖"},
    {Qt::Key_End, u"↘"},     {Qt::Key_PageUp, u"⇞"}, {Qt::Key_PageDown, u"⇟"},
    {Qt::Key_Clear, u"⌧"},
};

qint64 numberOf(const QVariantMap& map, const QString& key)
{
    bool ok = false;
    const QVariant value = map.value(key);
    const qint64 whole = value.toLongLong(&ok);
    if (ok)
        return whole;
    const double real = value.toDouble(&ok);
    return ok ? static_cast<qint64>(real) : 0;
}

} // namespace

QVariantMap toStoredForm(const platform::KeyCombo& combo)
{
    return {{kKeyCode, combo.keyCode},
            {kModifierFlags, static_cast<int>((combo.modifierFlags & kHotKeyModifiers).toInt())}};
}

std::optional<platform::KeyCombo> fromStoredForm(const QVariant& stored)
{
    if (stored.typeId() != QMetaType::QVariantMap)
        return std::nullopt;
    const QVariantMap map = stored.toMap();
    const qint64 key = numberOf(map, kKeyCode);
    if (key <= 0 || key > 0x7fffffff)
        return std::nullopt;
    const auto modifiers = Qt::KeyboardModifiers::fromInt(
        static_cast<int>(numberOf(map, kModifierFlags) & kHotKeyModifiers.toInt()));
    return platform::KeyCombo{static_cast<int>(key), modifiers};
}

QString keyGlyph(int key)
{
    for (const auto& [glyphKey, glyph] : kKeyGlyphs) {
        if (glyphKey == key)
            return QString::fromUtf16(glyph);
    }
    if (key == Qt::Key_Space)
        return QStringLiteral("Space");
    if (key >= Qt::Key_F1 && key <= Qt::Key_F35)
        return QStringLiteral("F%1").arg(key - Qt::Key_F1 + 1);
    return QKeySequence(key).toString(QKeySequence::PortableText).toUpper();
}

QString glyphString(const platform::KeyCombo& combo)
{
    QString text;
    const Qt::KeyboardModifiers flags = combo.modifierFlags;
    if (flags & Qt::MetaModifier)
        text += QChar(0x2303); // ⌃
    if (flags & Qt::AltModifier)
        text += QChar(0x2325); // ⌥
    if (flags & Qt::ShiftModifier)
        text += QChar(0x21e7); // ⇧
    if (flags & Qt::ControlModifier)
        text += QChar(0x2318); // ⌘
    return text + keyGlyph(combo.keyCode);
}

QKeySequence keySequenceOf(const platform::KeyCombo& combo)
{
    return QKeySequence(QKeyCombination(combo.modifierFlags & kHotKeyModifiers,
                                        static_cast<Qt::Key>(combo.keyCode)));
}

bool shouldUnconditionallyAllowModifierFlags(Qt::KeyboardModifiers flags, int key,
                                             Qt::KeyboardModifiers required,
                                             Qt::KeyboardModifiers allowed)
{
    return (flags & required) == required && (flags & ~allowed) == Qt::KeyboardModifiers() &&
           key >= Qt::Key_F1 && key <= Qt::Key_F20;
}

} // namespace app::hotkeys
