// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/DesktopNotifier.h"

#include <QString>

#include <optional>

namespace settings {
class Defaults;
}

namespace app::output {

// What the result notifications say, and the two counters that make their
// hints go away: the pasteboard notice counts down five more reminders and
// then goes quiet; the "click to open" hint of a saved file stays until the
// user has clicked six of them.
class ResultNotices
{
public:
    explicit ResultNotices(settings::Defaults& defaults)
        : m_defaults(defaults)
    {}

    // The notice of a saved file (path set) or of a copy to the pasteboard
    // (path empty). A copy's notice advances its counter while it still
    // speaks; from the seventh on it has neither title nor text.
    [[nodiscard]] platform::Notification savedImage(const QString& path, bool fromRecorder);

    // A notice with the given text and title and the default sound.
    [[nodiscard]] static platform::Notification content(const QString& text, const QString& title);

    // A click on a notice: the file to show in its folder when it was a
    // saved-file notice (which also counts the click), nothing otherwise.
    [[nodiscard]] std::optional<QString> activated(const platform::Notification& notice);

    // A save that failed; `keptAt` is where the picture went instead (empty
    // when it could not be kept anywhere).
    [[nodiscard]] static platform::Notification saveFailed(const QString& reason,
                                                           const QString& keptAt);

private:
    settings::Defaults& m_defaults;
};

} // namespace app::output
