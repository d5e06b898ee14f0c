// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/Defaults.h"

namespace settings {

// Typed reads of the preferences that several parts of Kelvo use, each with
// the reader and fallback its users rely on, so that no caller reads a
// stored string with the wrong rule.
class Preferences
{
public:
    explicit Preferences(const Defaults& defaults)
        : m_defaults(defaults)
    {}

    // "jpg", "png", "tiff" or anything stored; "jpg" when absent (not the
    // first-run "png": a removed key saves JPEG).
    [[nodiscard]] QString formatOfSavePhoto() const;
    // The folder to save into, or "Not Specified" to ask at each save.
    [[nodiscard]] QString pathofSaveScreenShotsPhoto() const;
    [[nodiscard]] bool asksForSavePath() const;
    [[nodiscard]] bool nomalQualityImage() const;
    [[nodiscard]] bool playSoundWhenScreenShots() const;
    [[nodiscard]] bool playSoundWhenDelayScreenShots() const;
    [[nodiscard]] bool notifyWhenComplete() const;
    [[nodiscard]] bool hideMenuBarIcon() const;
    [[nodiscard]] bool autoStartAtLogin() const;
    [[nodiscard]] bool doubleClickToSavePaste() const;
    [[nodiscard]] bool needShadowOfnotSingleWindow() const;
    [[nodiscard]] bool needFilletOfnotSingleWindow() const;
    [[nodiscard]] int timeOfDelayScreenshots() const;
    [[nodiscard]] int sizeOfShadow() const;
    [[nodiscard]] double delayTimeOfPopupToolbar() const;
    // The recording preset index; 1 when absent.
    [[nodiscard]] int qualityOfVideo() const;
    [[nodiscard]] int framesOfVideo() const;

private:
    const Defaults& m_defaults;
};

} // namespace settings
