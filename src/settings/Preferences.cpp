// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/Preferences.h"

#include "settings/Keys.h"
#include "settings/StringValues.h"

namespace settings {

QString Preferences::formatOfSavePhoto() const
{
    const QString format = m_defaults.stringForKey(keys::formatOfSavePhoto);
    return format.isNull() ? QStringLiteral("jpg") : format;
}

QString Preferences::pathofSaveScreenShotsPhoto() const
{
    return m_defaults.stringForKey(keys::pathofSaveScreenShotsPhoto);
}

bool Preferences::asksForSavePath() const
{
    return pathofSaveScreenShotsPhoto() == keys::notSpecified;
}

bool Preferences::nomalQualityImage() const
{
    return m_defaults.boolForKey(keys::nomalQualityImage);
}

bool Preferences::playSoundWhenScreenShots() const
{
    return m_defaults.boolForKey(keys::playSoundWhenScreenShots);
}

bool Preferences::playSoundWhenDelayScreenShots() const
{
    return m_defaults.boolForKey(keys::playSoundWhenDelayScreenShots);
}

bool Preferences::notifyWhenComplete() const
{
    return m_defaults.boolForKey(keys::notifyWhenComplete);
}

bool Preferences::hideMenuBarIcon() const
{
    return m_defaults.boolForKey(keys::hideMenuBarIcon);
}

bool Preferences::autoStartAtLogin() const
{
    return m_defaults.boolForKey(keys::autoStartAtLogin);
}

bool Preferences::doubleClickToSavePaste() const
{
    return m_defaults.boolForKey(keys::doubleClickToSavePaste);
}

bool Preferences::needShadowOfnotSingleWindow() const
{
    return m_defaults.boolForKey(keys::needShadowOfnotSingleWindow);
}

bool Preferences::needFilletOfnotSingleWindow() const
{
    return m_defaults.boolForKey(keys::needFilletOfnotSingleWindow);
}

int Preferences::timeOfDelayScreenshots() const
{
    return intValue(m_defaults.stringForKey(keys::timeOfDelayScreenshots));
}

int Preferences::sizeOfShadow() const
{
    return intValue(m_defaults.stringForKey(keys::sizeOfShadow));
}

double Preferences::delayTimeOfPopupToolbar() const
{
    return doubleValue(m_defaults.stringForKey(keys::delayTimeOfPopupToolbar));
}

int Preferences::qualityOfVideo() const
{
    const QString quality = m_defaults.stringForKey(keys::qualityOfVideo);
    return quality.isNull() ? 1 : intValue(quality);
}

int Preferences::framesOfVideo() const
{
    return intValue(m_defaults.stringForKey(keys::framesOfVideo));
}

} // namespace settings
