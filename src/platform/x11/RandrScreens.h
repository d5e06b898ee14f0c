// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/x11/NativeScreens.h"

#include <QPoint>
#include <QString>

#include <optional>

namespace platform::x11 {

// The monitors as RandR reports them, primary first, for tools that run
// without a QGuiApplication (a one-shot capture must not pay for one). The
// scale of each follows the variables Qt reads, QT_SCALE_FACTOR and
// QT_SCREEN_SCALE_FACTORS (by position or "NAME=factor"), so points mean
// the same here as in the tray instance.
class RandrScreens
{
public:
    // Reads $DISPLAY; nothing when the server cannot be reached.
    [[nodiscard]] static std::optional<RandrScreens> query();

    [[nodiscard]] const NativeScreens& screens() const { return m_screens; }
    // Where the pointer is, in root pixels.
    [[nodiscard]] QPoint pointer() const { return m_pointer; }

    // The scale of a monitor by the environment's rules (pure, for tests).
    [[nodiscard]] static double scaleFor(const QString& name, int index,
                                         const QString& screenFactors, const QString& factor);

private:
    NativeScreens m_screens;
    QPoint m_pointer;
};

} // namespace platform::x11
