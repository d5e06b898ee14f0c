// SPDX-License-Identifier: GPL-3.0-or-later
#include "toolbar/logic/ScrollHotKeys.h"

#include "platform/HotKeyCenter.h"
#include "settings/Keys.h"
#include "settings/Startup.h"
#include "toolbar/logic/KeyNames.h"

#include <QDebug>

namespace toolbar {

namespace {

// The four letters of Kelvo's hot key signature, which keep these apart
// from any other identifier of the centre.
constexpr QLatin1StringView kSignature("Kelv/");

} // namespace

ScrollHotKeys::ScrollHotKeys(platform::HotKeyCenter& center, const settings::Defaults& defaults,
                             Handler handler)
    : m_center(center)
    , m_defaults(defaults)
    , m_handler(std::move(handler))
{}

ScrollHotKeys::~ScrollHotKeys()
{
    unregisterAllHotKey();
}

QString ScrollHotKeys::identifierOf(int number)
{
    return kSignature + QString::number(number);
}

void ScrollHotKeys::costomHotKey(bool scrollScreenShot)
{
    if (scrollScreenShot) {
        releaseKeys();
        const QVariantMap shortcuts = settings::shortcutOfButton(m_defaults);
        const QString save(settings::keys::saveShortcut);
        const QString copy(settings::keys::copyToPasteShortcut);
        if (shortcuts.contains(save))
            m_saveHotKeyRef = registerShortcut(shortcuts.value(save).toString(), 1);
        if (shortcuts.contains(copy))
            m_copyToPasteHotKeyRef = registerShortcut(shortcuts.value(copy).toString(), 2);
    }
    // The centre may hand on a press after the capture has let go of its
    // keys (it queues them): such a press must find nothing to act on.
    m_handlerToken = std::make_shared<int>(0);
    m_center.setHandler(
        [this, token = std::weak_ptr<int>(m_handlerToken)](const QString& identifier) {
            if (!token.expired())
                hotKeyHandler(identifier);
        });
}

bool ScrollHotKeys::registerShortcut(const QString& shortcut, int number)
{
    const int key = keyCodeFormKeyString(shortcut);
    const auto keypad = static_cast<int>(Qt::KeypadModifier);
    platform::KeyCombo combo;
    combo.keyCode = key & ~keypad;
    combo.modifierFlags = Qt::KeyboardModifiers::fromInt(key & keypad);
    platform::HotKeyStatus status = platform::HotKeyStatus::UnknownKey;
    if (combo.isValid())
        status = m_center.registerHotKey(identifierOf(number), combo);
    switch (status) {
    case platform::HotKeyStatus::Registered:
        return true;
    case platform::HotKeyStatus::HeldByAnotherProgram:
        qWarning().noquote() << "kelvo: the key" << shortcut
                             << "is held by another program and does nothing during a "
                                "scrolling capture";
        break;
    case platform::HotKeyStatus::UnknownKey:
        qWarning().noquote() << "kelvo: the short cut" << shortcut
                             << "names no key that works during a scrolling capture";
        break;
    case platform::HotKeyStatus::NoWindowSystem:
        qWarning() << "kelvo: no window system to take the scrolling capture's keys from";
        break;
    }
    return false;
}

void ScrollHotKeys::releaseKeys()
{
    if (m_saveHotKeyRef) {
        m_center.unregisterHotKey(identifierOf(1));
        m_saveHotKeyRef = false;
    }
    if (m_copyToPasteHotKeyRef) {
        m_center.unregisterHotKey(identifierOf(2));
        m_copyToPasteHotKeyRef = false;
    }
}

void ScrollHotKeys::unregisterAllHotKey()
{
    releaseKeys();
    if (m_handlerToken) {
        m_center.setHandler({});
        m_handlerToken.reset();
    }
}

void ScrollHotKeys::hotKeyHandler(const QString& identifier) const
{
    if (!identifier.startsWith(kSignature) || !m_handler)
        return;
    bool ok = false;
    const int number = QStringView(identifier).mid(kSignature.size()).toInt(&ok);
    if (!ok || number < 0 || number > 2)
        return;
    m_handler(static_cast<Action>(number));
}

} // namespace toolbar
