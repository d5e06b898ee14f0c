// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointF>
#include <QString>
#include <Qt>

namespace overlay {

// A left-button event as the overlay's state machine sees it, and as it
// hands it on to the mark-up.
struct ClipMouseEvent
{
    QPointF location; // overlay-local of the view that gets it: y up, points
    Qt::KeyboardModifiers modifiers;
    int clickCount = 1;
    double timestamp = 0.0; // seconds, any fixed origin
};

// A key press as the overlay's state machine sees it.
struct ClipKeyEvent
{
    int key = 0; // a Qt::Key
    Qt::KeyboardModifiers modifiers;
    QString text;          // what the key types, as Qt gives it
    QPointF mouseLocation; // the pointer now, overlay-local
    double timestamp = 0.0;
};

// The modifiers the capture's key tables look at: Shift, Control (Meta),
// Option (Alt) and Command (Ctrl). Keypad and group flags are ignored.
[[nodiscard]] inline Qt::KeyboardModifiers significantModifiers(Qt::KeyboardModifiers m)
{
    return m & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
}

} // namespace overlay
