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
#include <QRadioButton>

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
    choose(child<PopUpButton>(window, "formatOfSavePhoto"), 0);
    EXPECT_EQ(stored(keys::formatOfSavePhoto), QStringLiteral("jpg"));
    auto* delay = child<PopUpButton>(window, "delaySeconds");
    choose(delay, 19);
    EXPECT_EQ(stored(keys::timeOfDelayScreenshots), QStringLiteral("20"));
    EXPECT_EQ(delay->title(), QStringLiteral("20"));
}

TEST_F(PrefsWindow, QualityButtonsLeaveExactlyOneOn)
{
    PreferencesWindow window(defaults, autostart);
    auto* normal = child<QRadioButton>(window, "normalImageButton");
    auto* retina = child<QRadioButton>(window, "retinaImageButton");
    ASSERT_TRUE(retina->isChecked());

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

TEST_F(PrefsWindow, SwitchesWriteTheirPreferences)
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

    choose(savePath, 1);
    EXPECT_EQ(stored(keys::pathofSaveScreenShotsPhoto), QStringLiteral("Not Specified"));
    EXPECT_EQ(stored(keys::oldPathofSaveScreenShotsPhoto), QStringLiteral("/home/ada/Downloads"));
    EXPECT_EQ(savePath->selectedIndex(), 1);

    // A cancelled dialog leaves everything as it was, the selection too.
    choose(savePath, 2);
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(stored(keys::pathofSaveScreenShotsPhoto), QStringLiteral("Not Specified"));
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
