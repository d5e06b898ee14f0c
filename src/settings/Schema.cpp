// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/Schema.h"

// Header-only and constexpr: the short-cut defaults come from the tool
// table without the settings linking the tool bar.
#include "toolbar/logic/ToolRegistry.h"

namespace settings {

namespace {

using namespace keys;

KeySpec firstRun(Key key, ValueType type, QVariant value)
{
    return {key, type, Initial::FirstRun, Source::Literal, std::move(value), {}};
}

KeySpec firstRun(Key key, ValueType type, Source source)
{
    return {key, type, Initial::FirstRun, source, {}, {}};
}

KeySpec removedAtFirstRun(Key key, ValueType type)
{
    return {key, type, Initial::FirstRunRemove, Source::Literal, {}, {}};
}

KeySpec everyStart(Key key, ValueType type, QVariant value, Key decidedBy = {})
{
    return {key, type, Initial::EveryStart, Source::Literal, std::move(value), decidedBy};
}

KeySpec plain(Key key, ValueType type)
{
    return {key, type, Initial::None, Source::Literal, {}, {}};
}

QVariant text(const char* s)
{
    return QVariant(QString::fromUtf8(s));
}

std::vector<KeySpec> buildSchema()
{
    std::vector<KeySpec> t;
    t.push_back(firstRun(installTime, ValueType::String, Source::SecondsSince1970));
    t.push_back(firstRun(helpTimesOfPin, ValueType::Integer, QVariant(0)));
    // The shadow colour of the desktop, black, at alpha 0.4.
    t.push_back(firstRun(colorOfShadow, ValueType::Colour, text("#66000000")));
    t.push_back(firstRun(pathofSaveScreenShotsPhoto, ValueType::String, Source::DownloadsFolder));
    for (const ToolShortcut& s : toolShortcuts())
        t.push_back(firstRun(s.key, ValueType::String, QVariant(s.value)));
    t.push_back(firstRun(doubleClickModifierKey, ValueType::String, text("Option")));
    t.push_back(firstRun(playSoundWhenScreenShots, ValueType::Boolean, QVariant(true)));
    t.push_back(firstRun(formatOfSavePhoto, ValueType::String, text("png")));
    t.push_back(firstRun(sizeOfShadow, ValueType::String, text("18")));
    t.push_back(firstRun(nomalQualityImage, ValueType::Boolean, QVariant(false)));
    t.push_back(firstRun(timeOfDelayScreenshots, ValueType::String, text("3")));
    t.push_back(firstRun(delayTimeOfPopupToolbar, ValueType::String, text("0.5")));
    t.push_back(firstRun(doubleClickToSavePaste, ValueType::String, text("YES")));
    t.push_back(firstRun(hideMenuBarIcon, ValueType::String, text("NO")));
    t.push_back(firstRun(needShadowOfnotSingleWindow, ValueType::String, text("YES")));
    t.push_back(firstRun(needFilletOfnotSingleWindow, ValueType::String, text("YES")));
    t.push_back(firstRun(autoStartAtLogin, ValueType::String, text("NO")));
    t.push_back(removedAtFirstRun(kDefaultMicIdKey, ValueType::String));
    t.push_back(firstRun(playSoundWhenDelayScreenShots, ValueType::String, text("YES")));
    t.push_back(removedAtFirstRun(appOfUserSpecified, ValueType::Dictionary));
    t.push_back(firstRun(noPopupAlertOfScrollToColorAlph, ValueType::Boolean, QVariant(false)));
    t.push_back(firstRun(noPopUpHelp2OfDraggedRect, ValueType::Boolean, QVariant(false)));
    t.push_back(firstRun(noPopupAlertOfClosePinWindow, ValueType::Boolean, QVariant(false)));
    t.push_back(firstRun(KAutoOpenWhenEndKey, ValueType::Boolean, QVariant(false)));

    // Only the presence of videoFormat is ever looked at: it marks that the
    // recording format has been set up once.
    t.push_back(everyStart(videoFormat, ValueType::String, text("mov")));
    t.push_back(everyStart(kVideoFormatKey, ValueType::String, text("mov"), videoFormat));
    t.push_back(everyStart(qualityOfVideo, ValueType::Number, QVariant(1)));
    t.push_back(everyStart(framesOfVideo, ValueType::String, text("30")));
    t.push_back(everyStart(kShowCursorKey, ValueType::String, text("1")));
    t.push_back(everyStart(notifyWhenComplete, ValueType::Boolean, QVariant(true)));
    KeySpec oldPath = everyStart(oldPathofSaveScreenShotsPhoto, ValueType::String, {});
    oldPath.source = Source::DownloadsFolder;
    t.push_back(oldPath);

    for (Key k : {restart, preRectOfScreenShots, temporaryPathOfSaveVideo, customizeColorString})
        t.push_back(plain(k, ValueType::String));
    for (Key k : {shortcut, shortcutOfButton, DataOfUsers})
        t.push_back(plain(k, ValueType::Dictionary));
    for (Key k : {timesOfSavedtoPasteboardNotification, popUpTimesOsSaveImageToFile, tipTimes,
                  colorIndexOutlineOfText, colorIndexOutlineOfNote, schemaVersion})
        t.push_back(plain(k, ValueType::Integer));
    for (Key k : {kShowMouseClicksKey, kStartDelayKey, kRecordSystemSoundsKey, mapWindowCloseed})
        t.push_back(plain(k, ValueType::Any));
    t.push_back(plain(userColor, ValueType::Colour));
    for (Key k : {selectedMosaic, selectedGaussianBlured, squareOfHighlight, ellipseOfHighlight,
                  filledOfSquare, filledOfEllipse, enableRoundOfSquare, normalTypeOfArrow,
                  enableOutlineOfText, enableOutlineOfNote})
        t.push_back(plain(k, ValueType::Boolean));
    return t;
}

} // namespace

const std::vector<ToolShortcut>& toolShortcuts()
{
    // The tool table owns each tool's short cut and its default.
    static const std::vector<ToolShortcut> table = [] {
        std::vector<ToolShortcut> list;
        for (const toolbar::ToolEntry& entry : toolbar::kTools) {
            if (!entry.shortcutKey.isEmpty())
                list.push_back({entry.shortcutKey, entry.defaultShortcutText()});
        }
        return list;
    }();
    return table;
}

const std::vector<KeySpec>& schema()
{
    static const std::vector<KeySpec> table = buildSchema();
    return table;
}

const KeySpec* findKey(const QString& key)
{
    for (const KeySpec& spec : schema())
        if (spec.key == key)
            return &spec;
    return nullptr;
}

} // namespace settings
