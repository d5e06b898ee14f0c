// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "colour/logic/ColorNamer.h"
#include "colour/logic/ColorReadoutState.h"
#include "colour/logic/ColorSample.h"

#include <QFont>
#include <QImage>
#include <QPointF>
#include <QSizeF>

#include <optional>

class QPainter;

namespace colour {

// The magnifier's square: the pixels around the pointer enlarged ten times
// (twelve points across), a grid every 5 points, a frame, a cross hair, and,
// after a move, the colour's name, its hex form and the pointer's position.
//
// It is a painter, not a widget, so the overlay can draw it inside its own
// paint pass. How the overlay hosts it:
//  - once per capture and screen: setFrozenScreen() with the frozen picture
//    of that screen (device pixels) and its devicePixelRatio. The readout
//    samples that picture, never what the overlay shows;
//  - on every mouse move: mouseMoved() with the pointer in overlay-local
//    points (y up) and the screen's height in points, then update();
//  - in paintEvent: translate the painter so that (0, 0) is the square's
//    top-left corner (placed as the overlay places its magnifier) and call
//    paint() with the pointer, again in overlay-local points;
//  - keys: handleColorKey() (ColorKeyHandler.h) with the same state.
// The state is the application's, shared by every screen's readout, so the
// copy keys see the last colour wherever it was read.
class ColorPickerImageView
{
public:
    static constexpr QSizeF kSize{120.0, 120.0};

    explicit ColorPickerImageView(ColorReadoutState& state);

    void setFrozenScreen(QImage pixels, double devicePixelRatio);
    [[nodiscard]] double screenHeightPoints() const;

    void mouseMoved(QPointF locationInWindow, double screenHeight);

    // Paints the 120 by 120 point square at the painter's origin. A redraw
    // after a move also names the colour, updates the state's hexOfColor and
    // rgbOfColor and draws the texts; other redraws show pixels, grid, frame
    // and cross hair only.
    void paint(QPainter& painter, QPointF pointerInOverlay);

    // The system font at a pixel size, as the readout draws its texts.
    [[nodiscard]] static QFont readoutFont(int pixelSize);
    // The size the name is drawn at, shrunk until it fits the square.
    [[nodiscard]] static int nameFontSizeFor(const QString& name);

private:
    void drawTexts(QPainter& painter, const ColorInfo& info, ReadoutTextStyle style);

    ColorReadoutState& m_state;
    QImage m_frozenScreen;
    double m_devicePixelRatio = 1.0;
};

} // namespace colour
