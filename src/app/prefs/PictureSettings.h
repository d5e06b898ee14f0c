// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FileManager.h"

#include <QColor>
#include <QObject>

#include <functional>
#include <vector>

class QCheckBox;
class QFormLayout;
class QPushButton;
class QSpinBox;
class QWidget;

namespace settings {
class Defaults;
}

namespace app {

class PopUpButton;

// The Preferences window's rows for how captured pictures look (shadow,
// rounded corners) and what happens to them after (double-click copy, the
// save-and-open modifier, the application that opens them). Each control
// writes its preference the moment it changes.
class PictureSettings final : public QObject
{
    Q_OBJECT
public:
    // Asks for a colour, starting at `current`; an invalid answer means the
    // user cancelled. Replaceable so that tests need no dialog.
    using ColourChooser = std::function<QColor(QWidget* parent, const QColor& current)>;

    PictureSettings(settings::Defaults& defaults, QWidget* window);

    // Makes the rows, controls owned by the window, at the end of `form`.
    void addRows(QFormLayout* form);
    // Shows the stored values.
    void reload();
    // Puts the controls in the tab order after `previous`; answers the last.
    QWidget* chainTabOrder(QWidget* previous);
    void setColourChooser(ColourChooser chooser);
    // The applications offered for opening saved captures, besides the
    // desktop's default and the file manager.
    void setImageApplications(std::vector<platform::Application> applications);

private:
    void connectControls();
    void showShadowColour(const QColor& colour);
    void chooseShadowColour();
    void showAppToOpen();
    void appToOpenChosen(int index);

    settings::Defaults& m_defaults;
    QWidget* m_window;
    ColourChooser m_chooseColour;
    std::vector<platform::Application> m_applications;
    QCheckBox* m_needShadow = nullptr;
    QSpinBox* m_shadowSize = nullptr;
    QPushButton* m_shadowColour = nullptr;
    QCheckBox* m_needFillet = nullptr;
    QCheckBox* m_doubleClickCopies = nullptr;
    PopUpButton* m_saveAndOpenModifier = nullptr;
    PopUpButton* m_appToOpen = nullptr;
};

} // namespace app
