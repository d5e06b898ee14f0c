// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>

namespace capture {

// Where the picture of a finished capture goes.
enum class FinishDestination
{
    Clipboard, // the copy button or its key
    File,      // the save button: the save folder, or the save panel
    Pin,       // the pin button: a new pin of the picture
};

// What the finishing buttons of the annotation window asked for. A finish
// can be refused (the pointer is on another screen than the selection) and
// then asked again by another button, so the rules look back: a pin, once
// asked, stays the destination until the window opens again; and whether
// the save button was among the asks decides the shutter of a pin.
class FinishRequest
{
public:
    void save();
    void copy();
    void pin();
    // A new annotation window: nothing asked yet.
    void clear();
    // The window has closed and its finish is over: a pin is forgotten.
    void forgetPin();

    // The last button's destination, or a pin asked before it; nothing
    // when no button was pressed since the window opened.
    [[nodiscard]] std::optional<FinishDestination> asked() const { return m_asked; }
    // Where the picture goes: a file when nothing was asked.
    [[nodiscard]] FinishDestination destination() const
    {
        return m_asked.value_or(FinishDestination::File);
    }
    [[nodiscard]] bool isPin() const { return m_asked == FinishDestination::Pin; }
    // A pin, and the mark-up of an existing pin (`annotatedOnMap`), finish
    // in silence unless the save button asked.
    [[nodiscard]] bool shutterSounds(bool annotatedOnMap) const;

private:
    std::optional<FinishDestination> m_asked;
    bool m_bySaveButton = false;
};

} // namespace capture
