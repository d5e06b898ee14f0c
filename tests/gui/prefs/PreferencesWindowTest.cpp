// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/prefs/PreferencesWindow.h"
#include "app/prefs/PopUpButton.h"
#include "platform/null/NullServices.h"
#include "settings/Defaults.h"
#include "settings/Keys.h"
#include "settings/MemoryStore.h"
#include "settings/Startup.h"

#include <QApplication>
#include <QCheckBox>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>

#include <gtest/gtest.h>

using app::PopUpButton;
using app::PreferencesWindow;
namespace keys = settings::keys;

namespace {

// An autostart whose folder cannot be written.
class BrokenAutostart final : public platform::Autostart
{
public:
    bool isLoginItem() override { return false; }
    bool addToLoginItems() override { return false; }
    bool removeFromLoginItems() override { return false; }
};

struct PrefsWindow : ::testing::Test
{
    settings::MemoryStore store;
    settings::Defaults defaults{store};
    platform::null::MemoryAutostart autostart;

    PrefsWindow()
    {
        QCoreApplication::setApplicationVersion(QStringLiteral("1.2.3"));
        settings::StartContext context;
        context.secondsSince1970 = 1700000000;
        context.downloadsFolder = QStringLiteral("/home/ada/Downloads");
        settings::installFirstRunValues(defaults, context);
        settings::installEveryStartValues(defaults, context);
    }

    template <typename T>
    static T* child(const QWidget& w, const char* name)
    {
        T* found = w.findChild<T*>(QString::fromLatin1(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }

    static void choose(PopUpButton* popup, int index)
    {
        popup->popupMenu()->actions().at(index)->trigger();
    }

    QString stored(QLatin1StringView key) const { return defaults.stringForKey(key); }
};

} // namespace

TEST_F(PrefsWindow, ShowsTheStoredValuesWhenOpened)
{
    defaults.setObject(keys::formatOfSavePhoto, QStringLiteral("tiff"));
    defaults.setObject(keys::timeOfDelayScreenshots, QStringLiteral("7"));
    defaults.setBool(keys::nomalQualityImage, true);
    defaults.setObject(keys::hideMenuBarIcon, QStringLiteral("YES"));
    defaults.setBool(keys::playSoundWhenScreenShots, false);
    defaults.setObject(keys::pathofSaveScreenShotsPhoto, QStringLiteral("/srv/Shots"));
    defaults.setObject(keys::needShadowOfnotSingleWindow, QStringLiteral("NO"));
    defaults.setObject(keys::sizeOfShadow, QStringLiteral("42"));
    defaults.setObject(keys::colorOfShadow, QStringLiteral("#80ff0000"));
    defaults.setObject(keys::needFilletOfnotSingleWindow, QStringLiteral("NO"));
    defaults.setObject(keys::doubleClickToSavePaste, QStringLiteral("NO"));
    defaults.setObject(keys::doubleClickModifierKey, QStringLiteral("Control"));
    defaults.setObject(keys::playSoundWhenDelayScreenShots, QStringLiteral("NO"));
    PreferencesWindow window(defaults, autostart);
    EXPECT_EQ(window.windowTitle(), QStringLiteral("Kelvo"));
    EXPECT_EQ(child<QLabel>(window, "version")->text(), QStringLiteral("Version: 1.2.3"));

    auto* format = child<PopUpButton>(window, "formatOfSavePhoto");
    EXPECT_EQ(format->items(), (QStringList{"jpg", "png", "tiff"}));
    EXPECT_EQ(format->title(), QStringLiteral("tiff"));
    EXPECT_EQ(format->selectedIndex(), 2);

    auto* delay = child<PopUpButton>(window, "delaySeconds");
    EXPECT_EQ(delay->items().size(), 20);
    EXPECT_EQ(delay->title(), QStringLiteral("7"));
    EXPECT_EQ(delay->selectedIndex(), 6);

    auto* savePath = child<PopUpButton>(window, "buttonOfSavePath");
    EXPECT_EQ(savePath->items(), (QStringList{"Shots", "Select path when save", "Other..."}));
    EXPECT_EQ(savePath->selectedIndex(), 0);

    EXPECT_TRUE(child<QRadioButton>(window, "normalImageButton")->isChecked());
    EXPECT_FALSE(child<QRadioButton>(window, "retinaImageButton")->isChecked());
    EXPECT_TRUE(child<QCheckBox>(window, "hideMenuBarIcon")->isChecked());
    EXPECT_FALSE(child<QCheckBox>(window, "autoStartAtLogin")->isChecked());
    EXPECT_FALSE(child<QCheckBox>(window, "playSoundWhenScreenShots")->isChecked());
    EXPECT_TRUE(child<QCheckBox>(window, "notifyWhenComplete")->isChecked());

    EXPECT_FALSE(child<QCheckBox>(window, "needShadowOfnotSingleWindow")->isChecked());
    auto* size = child<QSpinBox>(window, "sizeOfShadow");
    EXPECT_EQ(size->value(), 42);
    // Without a shadow its size and colour mean nothing.
    EXPECT_FALSE(size->isEnabled());
    auto* colour = child<QPushButton>(window, "colorOfShadow");
    EXPECT_FALSE(colour->isEnabled());
    EXPECT_EQ(colour->text(), QStringLiteral("#80FF0000"));
    EXPECT_FALSE(child<QCheckBox>(window, "needFilletOfnotSingleWindow")->isChecked());
    EXPECT_FALSE(child<QCheckBox>(window, "doubleClickToSavePaste")->isChecked());
    auto* modifier = child<PopUpButton>(window, "doubleClickModifierKey");
    EXPECT_EQ(modifier->title(), QStringLiteral("Super"));
    EXPECT_EQ(modifier->selectedIndex(), 1);
    EXPECT_FALSE(child<QCheckBox>(window, "playSoundWhenDelayScreenShots")->isChecked());
    // Showing the values wrote none of them.
    EXPECT_EQ(stored(keys::sizeOfShadow), QStringLiteral("42"));

    // The first-run values, shown in a fresh window.
    settings::MemoryStore freshStore;
    settings::Defaults fresh{freshStore};
    settings::StartContext context;
    context.secondsSince1970 = 1700000000;
    settings::installFirstRunValues(fresh, context);
    PreferencesWindow first(fresh, autostart);
    EXPECT_TRUE(child<QCheckBox>(first, "needShadowOfnotSingleWindow")->isChecked());
    EXPECT_EQ(child<QSpinBox>(first, "sizeOfShadow")->value(), 18);
    EXPECT_EQ(child<QPushButton>(first, "colorOfShadow")->text(), QStringLiteral("#66000000"));
    EXPECT_EQ(child<PopUpButton>(first, "doubleClickModifierKey")->title(), QStringLiteral("Alt"));
    EXPECT_TRUE(child<QCheckBox>(first, "playSoundWhenDelayScreenShots")->isChecked());
}

TEST_F(PrefsWindow, OddStoredValuesAreShownNotRejected)
{
    defaults.setObject(keys::timeOfDelayScreenshots, QStringLiteral("25"));
    defaults.setObject(keys::formatOfSavePhoto, QStringLiteral("webp"));
    defaults.setObject(keys::hideMenuBarIcon, QStringLiteral("maybe"));
    defaults.setObject(keys::nomalQualityImage, QStringLiteral("??"));
    defaults.setObject(keys::pathofSaveScreenShotsPhoto, QStringLiteral("Not Specified"));

    PreferencesWindow window(defaults, autostart);
    auto* delay = child<PopUpButton>(window, "delaySeconds");
    EXPECT_EQ(delay->title(), QStringLiteral("25"));
    EXPECT_EQ(delay->selectedIndex(), -1);
    EXPECT_EQ(child<PopUpButton>(window, "formatOfSavePhoto")->title(), QStringLiteral("webp"));
    EXPECT_FALSE(child<QCheckBox>(window, "hideMenuBarIcon")->isChecked());
    EXPECT_TRUE(child<QRadioButton>(window, "retinaImageButton")->isChecked());
    auto* savePath = child<PopUpButton>(window, "buttonOfSavePath");
    EXPECT_EQ(savePath->selectedIndex(), 1);
    EXPECT_EQ(savePath->items().at(0), QStringLiteral("Downloads"));
}

TEST_F(PrefsWindow, PopUpsStoreTheChosenTitle)
{
    PreferencesWindow window(defaults, autostart);
    const int syncs = store.syncCount();
    choose(child<PopUpButton>(window, "formatOfSavePhoto"), 0);
    EXPECT_EQ(stored(keys::formatOfSavePhoto), QStringLiteral("jpg"));
    auto* delay = child<PopUpButton>(window, "delaySeconds");
    choose(delay, 19);
    EXPECT_EQ(stored(keys::timeOfDelayScreenshots), QStringLiteral("20"));
    EXPECT_EQ(delay->title(), QStringLiteral("20"));
    EXPECT_EQ(store.value(keys::formatOfSavePhoto).typeId(), QMetaType::QString);
    EXPECT_EQ(store.syncCount(), syncs + 2);
}

TEST_F(PrefsWindow, QualityButtonsLeaveExactlyOneOn)
{
    PreferencesWindow window(defaults, autostart);
    auto* normal = child<QRadioButton>(window, "normalImageButton");
    auto* retina = child<QRadioButton>(window, "retinaImageButton");
    ASSERT_TRUE(retina->isChecked());
    const int syncs = store.syncCount();

    normal->click();
    EXPECT_TRUE(defaults.boolForKey(keys::nomalQualityImage));
    EXPECT_TRUE(normal->isChecked());
    EXPECT_FALSE(retina->isChecked());
    normal->click();
    EXPECT_TRUE(normal->isChecked());
    EXPECT_FALSE(retina->isChecked());
    retina->click();
    EXPECT_FALSE(defaults.boolForKey(keys::nomalQualityImage));
    EXPECT_FALSE(normal->isChecked());
    EXPECT_TRUE(retina->isChecked());
    // Each change is written out at once; the click on the button already on is none.
    EXPECT_EQ(store.syncCount(), syncs + 2);
}

TEST_F(PrefsWindow, HidingTheTrayIconIsStoredAndAnnounced)
{
    PreferencesWindow window(defaults, autostart);
    std::vector<bool> announced;
    QObject::connect(&window, &PreferencesWindow::hideMenuBarIconChanged,
                     [&](bool hidden) { announced.push_back(hidden); });
    auto* box = child<QCheckBox>(window, "hideMenuBarIcon");
    box->click();
    EXPECT_EQ(stored(keys::hideMenuBarIcon), QStringLiteral("YES"));
    box->click();
    EXPECT_EQ(stored(keys::hideMenuBarIcon), QStringLiteral("NO"));
    EXPECT_EQ(announced, (std::vector<bool>{true, false}));
}

TEST_F(PrefsWindow, AFailedLoginItemIsReportedAndNotPretended)
{
    BrokenAutostart broken;
    PreferencesWindow window(defaults, broken);
    auto* login = child<QCheckBox>(window, "autoStartAtLogin");
    auto* error = child<QLabel>(window, "loginItemError");
    EXPECT_FALSE(error->isVisibleTo(&window));
    login->click();
    EXPECT_FALSE(login->isChecked());
    EXPECT_EQ(stored(keys::autoStartAtLogin), QStringLiteral("NO"));
    EXPECT_TRUE(error->isVisibleTo(&window));
    EXPECT_FALSE(error->text().isEmpty());
}

TEST_F(PrefsWindow, SavePathChoicesFollowTheMenu)
{
    PreferencesWindow window(defaults, autostart);
    QString answer;
    int asked = 0;
    window.setFolderChooser([&](QWidget* parent, const QString&) {
        EXPECT_EQ(parent, &window);
        ++asked;
        return answer;
    });
    auto* savePath = child<PopUpButton>(window, "buttonOfSavePath");
    ASSERT_EQ(savePath->selectedIndex(), 0);

    // The menu's rules are the save path menu's own; here the window
    // follows them. A cancelled dialog leaves everything as it was.
    choose(savePath, 1);
    EXPECT_EQ(stored(keys::pathofSaveScreenShotsPhoto), QStringLiteral("Not Specified"));
    choose(savePath, 2);
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(savePath->selectedIndex(), 1);

    answer = QStringLiteral("/srv/Team Shots");
    choose(savePath, 2);
    EXPECT_EQ(stored(keys::pathofSaveScreenShotsPhoto), QStringLiteral("/srv/Team Shots"));
    EXPECT_EQ(savePath->items().at(0), QStringLiteral("Team Shots"));
    EXPECT_EQ(savePath->selectedIndex(), 0);
    EXPECT_EQ(savePath->title(), QStringLiteral("Team Shots"));

    // The first item resumes to the old path while it still names the new.
    choose(savePath, 0);
    EXPECT_EQ(stored(keys::pathofSaveScreenShotsPhoto), QStringLiteral("/home/ada/Downloads"));
    EXPECT_EQ(savePath->title(), QStringLiteral("Team Shots"));
}

TEST_F(PrefsWindow, PopUpsOpenFromTheKeyboard)
{
    PreferencesWindow window(defaults, autostart);
    window.show();
    auto* format = child<PopUpButton>(window, "formatOfSavePhoto");
    QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QCoreApplication::sendEvent(format, &enter);
    EXPECT_TRUE(format->popupMenu()->isVisible());
    format->popupMenu()->hide();
    QKeyEvent space(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier);
    QKeyEvent spaceUp(QEvent::KeyRelease, Qt::Key_Space, Qt::NoModifier);
    QCoreApplication::sendEvent(format, &space);
    QCoreApplication::sendEvent(format, &spaceUp);
    EXPECT_TRUE(format->popupMenu()->isVisible());
    format->popupMenu()->hide();
    // Opening the menu chooses nothing by itself.
    EXPECT_EQ(stored(keys::formatOfSavePhoto), QStringLiteral("png"));
}

TEST_F(PrefsWindow, EveryControlFitsInsideTheWindow)
{
    defaults.setObject(
        keys::pathofSaveScreenShotsPhoto,
        QStringLiteral("/home/ada/A folder with a rather long name for screenshots"));
    PreferencesWindow window(defaults, autostart);
    window.adjustSize();
    window.show();
    const QRect inside = window.rect();
    for (QWidget* w : window.findChildren<QWidget*>()) {
        if (!w->isVisibleTo(&window) || w->isWindow())
            continue;
        const QRect r(w->mapTo(&window, QPoint(0, 0)), w->size());
        EXPECT_TRUE(inside.contains(r)) << w->objectName().toStdString();
        EXPECT_GE(w->width(), w->minimumSizeHint().width())
            << w->metaObject()->className() << " " << w->objectName().toStdString();
    }
    const QImage shot = window.grab().toImage();
    ASSERT_FALSE(shot.isNull());
    if (const QByteArray dir = qgetenv("KELVO_GRAB_DIR"); !dir.isEmpty())
        shot.save(QString::fromLocal8Bit(dir) + QStringLiteral("/preferences.png"));
}

TEST_F(PrefsWindow, SwitchesWriteTheirPreferencesInTheStoredForms)
{
    PreferencesWindow window(defaults, autostart);
    child<QCheckBox>(window, "playSoundWhenScreenShots")->click();
    EXPECT_FALSE(defaults.boolForKey(keys::playSoundWhenScreenShots));
    child<QCheckBox>(window, "notifyWhenComplete")->click();
    EXPECT_FALSE(defaults.boolForKey(keys::notifyWhenComplete));

    auto* login = child<QCheckBox>(window, "autoStartAtLogin");
    login->click();
    EXPECT_EQ(stored(keys::autoStartAtLogin), QStringLiteral("YES"));
    EXPECT_TRUE(autostart.enabled);
    login->click();
    EXPECT_EQ(stored(keys::autoStartAtLogin), QStringLiteral("NO"));
    EXPECT_FALSE(autostart.enabled);

    auto* shadow = child<QCheckBox>(window, "needShadowOfnotSingleWindow");
    auto* size = child<QSpinBox>(window, "sizeOfShadow");
    shadow->click();
    EXPECT_EQ(stored(keys::needShadowOfnotSingleWindow), QStringLiteral("NO"));
    EXPECT_FALSE(size->isEnabled());
    shadow->click();
    EXPECT_EQ(stored(keys::needShadowOfnotSingleWindow), QStringLiteral("YES"));
    EXPECT_TRUE(size->isEnabled());

    size->setValue(30);
    EXPECT_EQ(stored(keys::sizeOfShadow), QStringLiteral("30"));
    // The range the start-up check accepts: no more than 100, no less than 0.
    size->setValue(5000);
    EXPECT_EQ(stored(keys::sizeOfShadow), QStringLiteral("100"));
    size->setValue(-3);
    EXPECT_EQ(stored(keys::sizeOfShadow), QStringLiteral("0"));

    child<QCheckBox>(window, "needFilletOfnotSingleWindow")->click();
    EXPECT_EQ(stored(keys::needFilletOfnotSingleWindow), QStringLiteral("NO"));
    child<QCheckBox>(window, "doubleClickToSavePaste")->click();
    EXPECT_EQ(stored(keys::doubleClickToSavePaste), QStringLiteral("NO"));
    EXPECT_FALSE(defaults.boolForKey(keys::doubleClickToSavePaste));
    child<QCheckBox>(window, "playSoundWhenDelayScreenShots")->click();
    EXPECT_EQ(stored(keys::playSoundWhenDelayScreenShots), QStringLiteral("NO"));

    auto* modifier = child<PopUpButton>(window, "doubleClickModifierKey");
    ASSERT_EQ(modifier->items(), (QStringList{QStringLiteral("Ctrl"), QStringLiteral("Super"),
                                              QStringLiteral("Alt")}));
    choose(modifier, 0);
    EXPECT_EQ(stored(keys::doubleClickModifierKey), QStringLiteral("Command"));
    choose(modifier, 1);
    EXPECT_EQ(stored(keys::doubleClickModifierKey), QStringLiteral("Control"));
    choose(modifier, 2);
    EXPECT_EQ(stored(keys::doubleClickModifierKey), QStringLiteral("Option"));
}

TEST_F(PrefsWindow, ShadowColourComesFromTheChooserAndACancelKeepsIt)
{
    PreferencesWindow window(defaults, autostart);
    std::vector<QColor> offered;
    QColor answer(0x12, 0x34, 0x56, 0x80);
    window.setColourChooser([&](QWidget*, const QColor& current) {
        offered.push_back(current);
        return answer;
    });
    auto* button = child<QPushButton>(window, "colorOfShadow");
    button->click();
    EXPECT_EQ(stored(keys::colorOfShadow), QStringLiteral("#80123456"));
    EXPECT_EQ(button->text(), QStringLiteral("#80123456"));
    ASSERT_EQ(offered.size(), 1u);
    EXPECT_EQ(offered[0], QColor(0, 0, 0, 0x66)); // the first-run colour

    answer = QColor(); // cancelled
    button->click();
    EXPECT_EQ(stored(keys::colorOfShadow), QStringLiteral("#80123456"));
    ASSERT_EQ(offered.size(), 2u);
    EXPECT_EQ(offered[1], QColor(0x12, 0x34, 0x56, 0x80));
}

TEST_F(PrefsWindow, TheApplicationThatOpensCapturesIsChosenFromTheDesktopsList)
{
    PreferencesWindow window(defaults, autostart);
    window.setImageApplications(
        {{QStringLiteral("eog.desktop"), QStringLiteral("Image Viewer"), QStringLiteral("eog")},
         {QStringLiteral("gimp.desktop"), QStringLiteral("GIMP"), QStringLiteral("gimp-2.10")}});
    auto* apps = child<PopUpButton>(window, "selectedAppName");
    ASSERT_EQ(apps->items().size(), 4);
    EXPECT_EQ(apps->items().at(2), QStringLiteral("Image Viewer"));
    EXPECT_EQ(apps->selectedIndex(), 0); // none chosen: the desktop's default

    choose(apps, 3);
    QVariantMap chosen = defaults.dictionaryForKey(keys::appOfUserSpecified);
    EXPECT_EQ(chosen.value(QStringLiteral("bundleIdentifier")), QStringLiteral("gimp.desktop"));
    EXPECT_EQ(chosen.value(QStringLiteral("executableName")), QStringLiteral("gimp-2.10"));

    choose(apps, 1);
    chosen = defaults.dictionaryForKey(keys::appOfUserSpecified);
    EXPECT_EQ(chosen.value(QStringLiteral("bundleIdentifier")),
              QString::fromLatin1(platform::kFileManagerChoice));

    choose(apps, 0);
    EXPECT_FALSE(defaults.contains(keys::appOfUserSpecified));
}

TEST_F(PrefsWindow, AStoredApplicationIsShownAlsoWhenItIsGone)
{
    defaults.setObject(
        keys::appOfUserSpecified,
        QVariantMap{{QStringLiteral("bundleIdentifier"), QStringLiteral("eog.desktop")},
                    {QStringLiteral("executableName"), QStringLiteral("eog")}});
    PreferencesWindow window(defaults, autostart);
    auto* apps = child<PopUpButton>(window, "selectedAppName");
    window.setImageApplications({});
    EXPECT_EQ(apps->selectedIndex(), -1);
    EXPECT_EQ(apps->title(), QStringLiteral("eog"));
    EXPECT_TRUE(defaults.contains(keys::appOfUserSpecified));

    window.setImageApplications(
        {{QStringLiteral("eog.desktop"), QStringLiteral("Image Viewer"), QStringLiteral("eog")}});
    EXPECT_EQ(apps->selectedIndex(), 2);
    EXPECT_EQ(apps->title(), QStringLiteral("Image Viewer"));
}
