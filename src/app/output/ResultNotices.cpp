// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/output/ResultNotices.h"

#include "core/Localized.h"
#include "settings/Defaults.h"
#include "settings/Keys.h"

namespace app::output {

namespace keys = settings::keys;

platform::Notification ResultNotices::savedImage(const QString& path, bool fromRecorder)
{
    platform::Notification n;
    n.withSound = fromRecorder;
    const qint64 reminders = m_defaults.integerForKey(keys::timesOfSavedtoPasteboardNotification);
    if (!path.isEmpty()) {
        const qint64 clicks = m_defaults.integerForKey(keys::popUpTimesOsSaveImageToFile);
        n.title = clicks < 6 ? core::localized("The file saved ( click to open the save path )")
                             : core::localized("The file saved...");
        n.body = path;
        n.filePath = path;
    } else if (reminders < 6) {
        n.title = core::localized("Kelvo");
        n.body = QStringLiteral("%1 %2 %3")
                     .arg(core::localized("Screenshot saved to pasteboard, and"))
                     .arg(5 - reminders)
                     .arg(core::localized("more reminders"));
        m_defaults.setInteger(keys::timesOfSavedtoPasteboardNotification, reminders + 1);
    }
    return n;
}

platform::Notification ResultNotices::content(const QString& text, const QString& title)
{
    platform::Notification n;
    n.title = title;
    n.body = text;
    n.withSound = true;
    return n;
}

std::optional<QString> ResultNotices::activated(const platform::Notification& notice)
{
    if (!notice.title.startsWith(core::localized("The file saved")))
        return std::nullopt;
    m_defaults.setInteger(keys::popUpTimesOsSaveImageToFile,
                          m_defaults.integerForKey(keys::popUpTimesOsSaveImageToFile) + 1);
    return notice.body;
}

platform::Notification ResultNotices::saveFailed(const QString& reason, const QString& keptAt)
{
    platform::Notification n;
    n.title = core::localized("The picture could not be saved");
    n.body =
        keptAt.isEmpty()
            ? reason
            : QStringLiteral("%1\n%2 %3").arg(reason, core::localized("It was saved to"), keptAt);
    n.filePath = keptAt;
    return n;
}

} // namespace app::output
