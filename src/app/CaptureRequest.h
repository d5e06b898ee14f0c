// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <optional>

namespace app {

// A capture someone asked the running instance for, with where its picture
// goes: `kelvo gui` with options, or the Capture method on the bus.
struct CaptureRequest
{
    QString path;            // a folder or a file name; empty: where the finish says
    bool clipboard = false;  // the picture goes to the clipboard (as well)
    int delayMs = 0;         // wait before the capture starts
    bool lastRegion = false; // the stored previous area at once, no overlay

    // The options after `gui`; nullopt with the reason in `error`.
    [[nodiscard]] static std::optional<CaptureRequest> parse(const QStringList& arguments,
                                                             QString* error);
    // The options of the Capture method ("path", "clipboard", "delay",
    // "lastRegion"); the path must be absolute, since the instance does not
    // share the caller's working folder.
    [[nodiscard]] static std::optional<CaptureRequest> fromOptions(const QVariantMap& options,
                                                                   QString* error);
    [[nodiscard]] QVariantMap toOptions() const;
    [[nodiscard]] static QString usage();

    bool operator==(const CaptureRequest&) const = default;
};

} // namespace app
