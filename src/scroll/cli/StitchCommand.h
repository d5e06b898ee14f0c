// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace scroll {

// kelvo stitch: the scrolling capture's matching run over pictures taken
// elsewhere, one frame per file, as if the wheel had turned one step down
// before each frame after the first.
struct StitchOptions
{
    int scale = 1;
    QString appID;
    QStringList frames;
    QString output;
};

inline constexpr const char* kStitchUsage =
    "stitch [--scale N] [--app-id ID] FRAME.png... -o OUT.png";

// The options, or an error message naming what is wrong with them.
struct ParsedStitchArguments
{
    std::optional<StitchOptions> options;
    QString error;
};
[[nodiscard]] ParsedStitchArguments parseStitchArguments(const QStringList& arguments);

struct StitchReport
{
    bool written = false; // the output file holds the stitched picture
    // One line per frame that was skipped or per failure, naming the file.
    QStringList problems;
    // The session's end state as one line of JSON; empty when not written.
    QByteArray json;
};
[[nodiscard]] StitchReport stitchPictures(const StitchOptions& options);

// The verb's entry: 0 when the picture was written, 1 otherwise.
int runStitchCommand(const QStringList& arguments);

} // namespace scroll
