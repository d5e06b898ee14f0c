// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/prefs/PictureSettings.h"
#include "settings/PreferenceActions.h"
#include "settings/SavePathMenu.h"

#include "platform/FileManager.h"

#include <QColor>
#include <QWidget>

#include <functional>
#include <vector>

class QCheckBox;
class QFormLayout;
class QLabel;
class QPushButton;
class QRadioButton;
class QSpinBox;

namespace platform {
class Autostart;
}

namespace settings {
class Defaults;
}

namespace app {

namespace hotkeys {
class ShortcutEditing;
}

class PopUpButton;
class ShortcutRecorder;

// The Preferences window. Every control writes its preference the moment it
// changes; there is nothing to apply or save. The controls show the stored
// values when the window is made and after reloadFromDefaults().
class PreferencesWindow final : public QWidget
{
    Q_OBJECT
public:
    // Asks for a folder, starting in startFolder; an empty answer means
    // the user cancelled. Replaceable so that tests need no dialog.
    using FolderChooser = std::function<QString(QWidget* parent, const QString& startFolder)>;
    using ColourChooser = PictureSettings::ColourChooser;

    PreferencesWindow(settings::Defaults& defaults, platform::Autostart& autostart,
                      QWidget* parent = nullptr);
    ~PreferencesWindow() override;

    void setFolderChooser(FolderChooser chooser);
    void setColourChooser(ColourChooser chooser);
    // The applications offered for opening saved captures, besides the
    // desktop's default and the file manager.
    void setImageApplications(std::vector<platform::Application> applications);
    void reloadFromDefaults();

    // Where the hot key editors send what the user records; without it they
    // change nothing.
    void setShortcutEditing(hotkeys::ShortcutEditing* editing);
    // Shows the stored hot keys in their editors.
    void showShortcuts();

Q_SIGNALS:
    // The tray icon is to be hidden (true) or shown again (false).
    void hideMenuBarIconChanged(bool hidden);

protected:
    void mousePressEvent(QMouseEvent* event) override;

private:
    void buildControls();
    void connectControls();
    void showSavePathMenu();
    void savePathChosen(int index);
    void showQuality(const settings::QualityButtons& buttons);
    void startAtLoginClicked(bool on);
    void buildShortcutRecorders(QFormLayout* form);
    void shortcutRecorded(ShortcutRecorder* recorder);

    settings::Defaults& m_defaults;
    platform::Autostart& m_autostart;
    settings::SavePathMenu m_savePathMenu;
    FolderChooser m_chooseFolder;
    PictureSettings* m_pictures; // child of this window

    QLabel* m_version = nullptr;
    QCheckBox* m_startAtLogin = nullptr;
    QLabel* m_loginItemError = nullptr;
    QCheckBox* m_hideMenuBarIcon = nullptr;
    QCheckBox* m_playSound = nullptr;
    QCheckBox* m_notify = nullptr;
    PopUpButton* m_savePath = nullptr;
    PopUpButton* m_format = nullptr;
    QRadioButton* m_normalQuality = nullptr;
    QRadioButton* m_retinaQuality = nullptr;
    PopUpButton* m_delay = nullptr;
    QCheckBox* m_speakDelay = nullptr;
    std::vector<ShortcutRecorder*> m_shortcutRecorders; // in the order of the hot key table
    QLabel* m_hotKeyError = nullptr;
    hotkeys::ShortcutEditing* m_shortcutEditing = nullptr;
};

} // namespace app
