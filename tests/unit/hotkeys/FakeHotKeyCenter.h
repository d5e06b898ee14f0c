// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/HotKeyCenter.h"

#include <QList>

#include <map>

// A hot key centre without a window system: it keeps what is registered,
// refuses the combinations a test says another program holds, and presses
// keys on request.
class FakeHotKeyCenter final : public platform::HotKeyCenter
{
public:
    std::map<QString, platform::KeyCombo> registered;
    QList<platform::KeyCombo> heldElsewhere;
    int unregisterCalls = 0;

    void setHandler(Handler handler) override { m_handler = std::move(handler); }
    platform::HotKeyStatus registerHotKey(const QString& identifier,
                                          const platform::KeyCombo& combo) override
    {
        registered.erase(identifier);
        if (heldElsewhere.contains(combo))
            return platform::HotKeyStatus::HeldByAnotherProgram;
        registered[identifier] = combo;
        return platform::HotKeyStatus::Registered;
    }
    bool unregisterHotKey(const QString& identifier) override
    {
        ++unregisterCalls;
        return registered.erase(identifier) != 0;
    }
    bool isRegistered(const QString& identifier) const override
    {
        return registered.count(identifier) != 0;
    }

    // A press of whatever is registered under `identifier`.
    void press(const QString& identifier)
    {
        if (m_handler && isRegistered(identifier))
            m_handler(identifier);
    }

private:
    Handler m_handler;
};
