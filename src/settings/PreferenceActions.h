// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/Defaults.h"

namespace settings {

// The Preferences window's actions that only touch preferences, so that
// the window is a thin view over them.

// The two image quality buttons. Exactly one is on.
struct QualityButtons
{
    bool normalOn = false;
    bool retinaOn = true;

    bool operator==(const QualityButtons&) const = default;
};

// The buttons as the stored nomalQualityImage shows them.
[[nodiscard]] QualityButtons qualityButtons(const Defaults& defaults);
// A click on the normal quality button: switches to normal quality unless
// it is already on, in which case nothing is written. Answers the states the
// buttons must show afterwards.
QualityButtons normalImageButtonClick(Defaults& defaults);
// The same for the high density (retina) button.
QualityButtons retinaImageButtonClick(Defaults& defaults);

// The titles of the format and delay pop-ups.
[[nodiscard]] QStringList formatMenuTitles(); // "jpg", "png", "tiff"
[[nodiscard]] QStringList delayMenuTitles();  // "1" to "20"

// The pop-ups store their shown title as it is.
void selectFormatOfSavePhoto(Defaults& defaults, const QString& title);
void selectDelayTimesOfScreenShots(Defaults& defaults, const QString& title);

// The switches kept as the strings "YES" and "NO".
void setYesNo(Defaults& defaults, const QString& key, bool on);

// The tool bar's two exclusive pairs, made sane as it loads: one of each
// pair is on. With neither on, the mosaic style is the blur and the
// highlight a rectangle; with both on, the blur and the ellipse win.
void makeExclusivePairsSane(Defaults& defaults);

// "Version: 1.2.0", with "Version" translated.
[[nodiscard]] QString versionCaption(const QString& version);

} // namespace settings
