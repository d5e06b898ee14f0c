// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <Qt>

#include <optional>

namespace capture {

// The modifiers held once a modifier key `key` (a Qt::Key) went down
// (`pressed`) or up: X reports the state from before the key, so the key
// itself says whether its modifier is held now.
[[nodiscard]] Qt::KeyboardModifiers heldAfter(int key, bool pressed,
                                              Qt::KeyboardModifiers reported);

// Two taps of one modifier key alone save the picture and open the file:
// the modifier the preference doubleClickModifierKey names ("Command" is
// Ctrl, "Option" Alt, "Control" Meta), the second release within half a
// second of the first. Another modifier held with it, or a key typed while
// it is down, spoils that tap.
class ModifierDoubleTap
{
public:
    static constexpr double kWindowMs = 500.0;

    // A modifier went down or up; `held` is what is held once it has.
    // `milliseconds` is the event's time. True when this release completes
    // a double tap of the chosen modifier.
    bool flagsChanged(Qt::KeyboardModifiers held, const QString& chosen, double milliseconds);
    // A key that is no modifier.
    void keyDown();

private:
    struct Tap
    {
        bool down = false; // went down alone
        std::optional<double> lastRelease;
    };
    [[nodiscard]] Tap* tapFor(const QString& chosen, Qt::KeyboardModifier* flag);

    Tap m_cmd;
    Tap m_opt;
    Tap m_ctr;
};

} // namespace capture
