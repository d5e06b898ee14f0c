// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/PreferenceActions.h"

#include "settings/Keys.h"

#include <QCoreApplication>

namespace settings {

QualityButtons qualityButtons(const Defaults& defaults)
{
    const bool normal = defaults.boolForKey(keys::nomalQualityImage);
    return {normal, !normal};
}

QualityButtons normalImageButtonClick(Defaults& defaults)
{
    if (!defaults.boolForKey(keys::nomalQualityImage)) {
        defaults.setBool(keys::nomalQualityImage, true);
        defaults.synchronize();
    }
    return qualityButtons(defaults);
}

QualityButtons retinaImageButtonClick(Defaults& defaults)
{
    if (defaults.boolForKey(keys::nomalQualityImage)) {
        defaults.setBool(keys::nomalQualityImage, false);
        defaults.synchronize();
    }
    return qualityButtons(defaults);
}

QStringList formatMenuTitles()
{
    return {QStringLiteral("jpg"), QStringLiteral("png"), QStringLiteral("tiff")};
}

QStringList delayMenuTitles()
{
    QStringList titles;
    for (int seconds = 1; seconds <= 20; ++seconds)
        titles << QString::asprintf("%d", seconds);
    return titles;
}

void selectFormatOfSavePhoto(Defaults& defaults, const QString& title)
{
    defaults.setObject(keys::formatOfSavePhoto, title);
    defaults.synchronize();
}

void selectDelayTimesOfScreenShots(Defaults& defaults, const QString& title)
{
    defaults.setObject(keys::timeOfDelayScreenshots, title);
    defaults.synchronize();
}

void setYesNo(Defaults& defaults, const QString& key, bool on)
{
    defaults.setObject(key, on ? QStringLiteral("YES") : QStringLiteral("NO"));
}

void makeExclusivePairsSane(Defaults& defaults)
{
    struct Pair
    {
        QLatin1StringView whenNeither; // turned on when neither is
        QLatin1StringView winner;      // stays on when both are
        QLatin1StringView loser;
    };
    const Pair pairs[] = {
        {keys::selectedGaussianBlured, keys::selectedGaussianBlured, keys::selectedMosaic},
        {keys::squareOfHighlight, keys::ellipseOfHighlight, keys::squareOfHighlight},
    };
    for (const Pair& pair : pairs) {
        if (!defaults.boolForKey(pair.winner) && !defaults.boolForKey(pair.loser))
            defaults.setBool(pair.whenNeither, true);
        if (defaults.boolForKey(pair.winner) && defaults.boolForKey(pair.loser))
            defaults.setBool(pair.loser, false);
    }
}

QString versionCaption(const QString& version)
{
    return QStringLiteral("%1: %2").arg(QCoreApplication::translate("Localizable", "Version"),
                                        version);
}

} // namespace settings
