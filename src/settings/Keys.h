// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLatin1StringView>

// The names of the preferences. They are stored as written here, odd
// spellings included (nomalQualityImage, mapWindowCloseed): an installed
// preferences file depends on them, so they are never corrected.
namespace settings::keys {

using Key = QLatin1StringView;

// Written at the first run.
inline constexpr Key installTime{"installTime"};
inline constexpr Key helpTimesOfPin{"helpTimesOfPin"};
inline constexpr Key colorOfShadow{"colorOfShadow"};
inline constexpr Key pathofSaveScreenShotsPhoto{"pathofSaveScreenShotsPhoto"};
inline constexpr Key squareShortcut{"squareShortcut"};
inline constexpr Key ellipseShortcut{"ellipseShortcut"};
inline constexpr Key lineShortcut{"lineShortcut"};
inline constexpr Key arrowShortcut{"arrowShortcut"};
inline constexpr Key pencilShortcut{"pencilShortcut"};
inline constexpr Key mosaicShortcut{"mosaicShortcut"};
inline constexpr Key textShortcut{"textShortcut"};
inline constexpr Key noteShortcut{"noteShortcut"};
inline constexpr Key highlightShortcut{"highlightShortcut"};
inline constexpr Key mapShortcut{"mapShortcut"};
inline constexpr Key scrollScreenshotShortcut{"scrollScreenshotShortcut"};
inline constexpr Key saveShortcut{"saveShortcut"};
inline constexpr Key copyToPasteShortcut{"copyToPasteShortcut"};
inline constexpr Key doubleClickModifierKey{"doubleClickModifierKey"};
inline constexpr Key playSoundWhenScreenShots{"playSoundWhenScreenShots"};
inline constexpr Key formatOfSavePhoto{"formatOfSavePhoto"};
inline constexpr Key sizeOfShadow{"sizeOfShadow"};
inline constexpr Key nomalQualityImage{"nomalQualityImage"};
inline constexpr Key timeOfDelayScreenshots{"timeOfDelayScreenshots"};
inline constexpr Key delayTimeOfPopupToolbar{"delayTimeOfPopupToolbar"};
inline constexpr Key doubleClickToSavePaste{"doubleClickToSavePaste"};
inline constexpr Key hideMenuBarIcon{"hideMenuBarIcon"};
inline constexpr Key needShadowOfnotSingleWindow{"needShadowOfnotSingleWindow"};
inline constexpr Key needFilletOfnotSingleWindow{"needFilletOfnotSingleWindow"};
inline constexpr Key autoStartAtLogin{"autoStartAtLogin"};
inline constexpr Key kDefaultMicIdKey{"kDefaultMicIdKey"};
inline constexpr Key playSoundWhenDelayScreenShots{"playSoundWhenDelayScreenShots"};
inline constexpr Key appOfUserSpecified{"appOfUserSpecified"};
inline constexpr Key noPopupAlertOfScrollToColorAlph{"noPopupAlertOfScrollToColorAlph"};
inline constexpr Key noPopUpHelp2OfDraggedRect{"noPopUpHelp2OfDraggedRect"};
inline constexpr Key noPopupAlertOfClosePinWindow{"noPopupAlertOfClosePinWindow"};
inline constexpr Key KAutoOpenWhenEndKey{"KAutoOpenWhenEndKey"};

// Written at every start when absent.
inline constexpr Key videoFormat{"videoFormat"};
inline constexpr Key kVideoFormatKey{"kVideoFormatKey"};
inline constexpr Key qualityOfVideo{"qualityOfVideo"};
inline constexpr Key framesOfVideo{"framesOfVideo"};
inline constexpr Key kShowCursorKey{"kShowCursorKey"};
inline constexpr Key notifyWhenComplete{"notifyWhenComplete"};
inline constexpr Key oldPathofSaveScreenShotsPhoto{"oldPathofSaveScreenShotsPhoto"};

// No first value.
inline constexpr Key restart{"restart"};
inline constexpr Key shortcut{"shortcut"};
inline constexpr Key shortcutOfButton{"shortcutOfButton"};
inline constexpr Key preRectOfScreenShots{"preRectOfScreenShots"};
inline constexpr Key timesOfSavedtoPasteboardNotification{"timesOfSavedtoPasteboardNotification"};
inline constexpr Key popUpTimesOsSaveImageToFile{"popUpTimesOsSaveImageToFile"};
inline constexpr Key temporaryPathOfSaveVideo{"temporaryPathOfSaveVideo"};
inline constexpr Key kShowMouseClicksKey{"kShowMouseClicksKey"};
inline constexpr Key kStartDelayKey{"kStartDelayKey"};
inline constexpr Key kRecordSystemSoundsKey{"kRecordSystemSoundsKey"};
inline constexpr Key mapWindowCloseed{"mapWindowCloseed"};
inline constexpr Key DataOfUsers{"DataOfUsers"};
inline constexpr Key userColor{"userColor"};
inline constexpr Key customizeColorString{"customizeColorString"};
inline constexpr Key tipTimes{"tipTimes"};
inline constexpr Key selectedMosaic{"selectedMosaic"};
inline constexpr Key selectedGaussianBlured{"selectedGaussianBlured"};
inline constexpr Key squareOfHighlight{"squareOfHighlight"};
inline constexpr Key ellipseOfHighlight{"ellipseOfHighlight"};
inline constexpr Key filledOfSquare{"filledOfSquare"};
inline constexpr Key filledOfEllipse{"filledOfEllipse"};
inline constexpr Key enableRoundOfSquare{"enableRoundOfSquare"};
inline constexpr Key normalTypeOfArrow{"normalTypeOfArrow"};
inline constexpr Key enableOutlineOfText{"enableOutlineOfText"};
inline constexpr Key enableOutlineOfNote{"enableOutlineOfNote"};
inline constexpr Key colorIndexOutlineOfText{"colorIndexOutlineOfText"};
inline constexpr Key colorIndexOutlineOfNote{"colorIndexOutlineOfNote"};

// Version of the layout of the preferences file, for migrations.
inline constexpr Key schemaVersion{"schemaVersion"};

// The value of pathofSaveScreenShotsPhoto that means "ask when saving".
inline constexpr QLatin1StringView notSpecified{"Not Specified"};

} // namespace settings::keys
