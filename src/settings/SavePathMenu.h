// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/Defaults.h"

namespace settings {

// The save folder chooser of the Preferences window, without the widget:
//   0  the name of a folder      -> resumePathofSaveScreenShotsPhoto
//   1  "Select path when save"   -> cancelPathofSaveScreenShotsPhoto
//   2  "Other..."                -> selectPathofSaveScreenShotsPhoto
// The folder of item 0 is worked out when the menu is built (at start and
// after a folder is chosen), not after the other actions.
//
// Two behaviours look wrong and are kept because saved preferences depend
// on them: choosing item 1 twice stores "Not Specified" as the old path as
// well, so item 0 then resumes to that marker; and item 0 resumes to the old
// path even while it shows the name of the current one.
class SavePathMenu
{
public:
    enum class Item
    {
        Folder = 0,
        AskWhenSaving = 1,
        Other = 2
    };

    explicit SavePathMenu(Defaults& defaults);

    // Works out the folder of item 0 and the selected item from the
    // preferences.
    void rebuild();

    [[nodiscard]] QString folder() const { return m_folder; }
    [[nodiscard]] QStringList titles() const;
    [[nodiscard]] int selectedIndex() const { return m_selected; }

    // Item 0: the old path becomes the path again.
    void resumePathofSaveScreenShotsPhoto();
    // Item 1: remembers the path as the old one and asks at each save.
    void cancelPathofSaveScreenShotsPhoto();
    // Item 2, after the folder dialog: chosen is the folder, or empty when
    // the dialog was cancelled, in which case nothing changes (the item
    // shown before stays selected). Answers whether a folder was taken.
    bool selectPathofSaveScreenShotsPhoto(const QString& chosen);

    // The last path component of a folder as a menu shows it: "Pictures"
    // for "/home/me/Pictures/", "/" for the root.
    [[nodiscard]] static QString displayName(const QString& path);

private:
    Defaults& m_defaults;
    QString m_folder;
    int m_selected = 0;
};

} // namespace settings
