// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QImage>
#include <QPoint>
#include <QStringView>

#include <optional>

namespace toolbar {

// The drawing tool's own cursor: a cross in the tool's colour with its
// size written in the bottom-right quadrant, so the hand shows what a
// press will draw before it draws.

// What the cursor shows.
struct ToolCursorLook
{
    QColor color;
    int number = 0;

    friend bool operator==(const ToolCursorLook&, const ToolCursorLook&) = default;
};

// The active stroke, whose colour and size the cursor follows while it is
// active.
struct ActiveStrokeLook
{
    QColor color;
    double size = 0;
};

// The look for `tool`: the active stroke's colour, else the tool's
// remembered one (red when none can be read, as a new stroke gets). The
// number is the size as the settings box shows it: the per cent for
// "highlight", the size menu's entry for "text" and "note", and for the
// others the stroke's size, or the tool's when the stroke has none.
[[nodiscard]] ToolCursorLook toolCursorLook(QStringView tool,
                                            const std::optional<ActiveStrokeLook>& stroke,
                                            const QColor& toolColor, int toolSize);

// The cursor is kToolCursorSide points square with its hot spot in the
// middle of the cross.
inline constexpr int kToolCursorSide = 32;
inline constexpr QPoint kToolCursorHotSpot{16, 16};

// The cursor's picture at `devicePixelRatio` pixels per point, so that it
// stays sharp on a scaled screen.
[[nodiscard]] QImage toolCursorImage(const ToolCursorLook& look, double devicePixelRatio);

} // namespace toolbar
