// SPDX-License-Identifier: GPL-3.0-or-later
#include "scroll/cli/StitchCommand.h"

#include "scroll/logic/ScrollComposition.h"
#include "scroll/logic/ScrollShots.h"
#include "scroll/logic/ScrollState.h"

#include <QFileInfo>
#include <QImage>
#include <QImageReader>
#include <QImageWriter>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QTextStream>

#include <memory>

namespace scroll {

namespace {

constexpr int kMaxScale = 16;

struct LoadedFrame
{
    std::shared_ptr<const QImage> image;
    QString problem;
};

LoadedFrame loadFrame(const QString& path)
{
    QImageReader reader(path);
    const QSize size = reader.size();
    if (size.isValid() && (size.width() > Frame::kMaxSide || size.height() > Frame::kMaxSide))
        return {nullptr, QStringLiteral("%1: %2x%3 is larger than a frame may be")
                             .arg(path)
                             .arg(size.width())
                             .arg(size.height())};
    QImage image = reader.read();
    if (image.isNull())
        return {nullptr, QStringLiteral("%1: unreadable (%2)").arg(path, reader.errorString())};
    return {std::make_shared<const QImage>(image.convertToFormat(QImage::Format_ARGB32)), {}};
}

bool writePng(const ComposedPicture& picture, const QString& path, QString* error)
{
    const QImage image(picture.pixels.data(), picture.width, picture.height,
                       qsizetype(picture.width) * 4, QImage::Format_ARGB32);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        *error = file.errorString();
        return false;
    }
    QImageWriter writer(&file, "png");
    if (!writer.write(image)) {
        *error = writer.errorString();
        file.cancelWriting();
        return false;
    }
    if (!file.commit()) {
        *error = file.errorString();
        return false;
    }
    return true;
}

QByteArray endState(const ScrollState& s, int judged, int accepted, const ComposedPicture& p)
{
    QJsonArray used;
    for (const float value : s.imageUsedHeightArr)
        used.append(double(value));
    QJsonObject json;
    json.insert(QStringLiteral("judgedFrames"), judged);
    json.insert(QStringLiteral("acceptedFrames"), accepted);
    json.insert(QStringLiteral("imageUsedHeightArr"), used);
    json.insert(QStringLiteral("headSameRow"), s.headSameRow);
    json.insert(QStringLiteral("tailSameRow"), s.tailSameRow);
    json.insert(QStringLiteral("leftSameColumn"), s.leftSameColumn);
    json.insert(QStringLiteral("rightSameColumn"), s.rightSameColumn);
    json.insert(QStringLiteral("width"), p.width);
    json.insert(QStringLiteral("height"), p.height);
    return QJsonDocument(json).toJson(QJsonDocument::Compact);
}

} // namespace

ParsedStitchArguments parseStitchArguments(const QStringList& arguments)
{
    ParsedStitchArguments parsed;
    StitchOptions options;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString& arg = arguments[i];
        const bool takesValue = arg == QLatin1String("--scale") ||
                                arg == QLatin1String("--app-id") || arg == QLatin1String("-o");
        if (takesValue && i + 1 >= arguments.size()) {
            parsed.error = QStringLiteral("%1 needs a value").arg(arg);
            return parsed;
        }
        if (arg == QLatin1String("--scale")) {
            bool ok = false;
            options.scale = arguments[++i].toInt(&ok);
            if (!ok || options.scale < 1 || options.scale > kMaxScale) {
                parsed.error =
                    QStringLiteral("--scale takes a whole number from 1 to %1, not \"%2\"")
                        .arg(kMaxScale)
                        .arg(arguments[i]);
                return parsed;
            }
        } else if (arg == QLatin1String("--app-id")) {
            options.appID = arguments[++i];
        } else if (arg == QLatin1String("-o")) {
            options.output = arguments[++i];
        } else if (arg.startsWith(QLatin1Char('-')) && arg.size() > 1) {
            parsed.error = QStringLiteral("unknown option %1").arg(arg);
            return parsed;
        } else {
            options.frames << arg;
        }
    }
    if (options.frames.isEmpty()) {
        parsed.error = QStringLiteral("no frames given");
        return parsed;
    }
    if (options.output.isEmpty()) {
        parsed.error = QStringLiteral("no output file given (-o OUT.png)");
        return parsed;
    }
    parsed.options = options;
    return parsed;
}

StitchReport stitchPictures(const StitchOptions& options)
{
    StitchReport report;
    const int scale = std::max(1, options.scale);
    const std::string appID = options.appID.toStdString();
    const FrameContext context{scale, appID};

    // A fresh process: every carried-over count starts at 0.
    ScrollState state;
    state.resetForSession();
    QSize firstSize;
    int judged = 0;
    int accepted = 0;
    for (const QString& path : options.frames) {
        const LoadedFrame loaded = loadFrame(path);
        if (!loaded.image) {
            report.problems << loaded.problem;
            continue;
        }
        const QSize size = loaded.image->size();
        if (!state.startScrollScreenshots) {
            firstSize = size;
            state.rectOfScreenShots =
                QRectF(0, 0, double(size.width()) / scale, double(size.height()) / scale);
        } else if (size != firstSize) {
            report.problems << QStringLiteral("%1: %2x%3 does not match the first frame's %4x%5")
                                   .arg(path)
                                   .arg(size.width())
                                   .arg(size.height())
                                   .arg(firstSize.width())
                                   .arg(firstSize.height());
            continue;
        } else {
            state.totalDeltay += -1.0f; // one wheel step down before each later frame
        }
        const std::optional<Frame> whole =
            Frame::wrap(core::ImageView::of(*loaded.image), loaded.image);
        const FrameSource source = [&](const QRectF& area) -> std::optional<Frame> {
            if (!whole)
                return std::nullopt;
            Frame cut = frameInArea(*whole, state.rectOfScreenShots, area, scale);
            if (cut.isNull())
                return std::nullopt;
            return cut;
        };
        const FrameJudgement judgement = screenShotsAtScrollScreenshots(state, source, context);
        switch (judgement.verdict) {
        case FrameVerdict::First:
            state.startScrollScreenshots = true;
            ++judged;
            break;
        case FrameVerdict::NoFrame:
            report.problems << QStringLiteral("%1: nothing left of the frame inside the "
                                              "capture area")
                                   .arg(path);
            break;
        case FrameVerdict::Accepted:
            ++accepted;
            ++judged;
            break;
        default:
            ++judged;
            break;
        }
    }
    if (!state.startScrollScreenshots) {
        report.problems << QStringLiteral("no readable frame");
        return report;
    }

    const ComposeResult composed = toImage(redrawScrollView(state, scale), scale);
    if (composed.status != ComposeStatus::Done) {
        report.problems << (composed.status == ComposeStatus::TooLarge
                                ? QStringLiteral("the stitched picture would be too large")
                                : QStringLiteral("the stitched picture is empty"));
        return report;
    }
    QString error;
    if (!writePng(composed.picture, options.output, &error)) {
        report.problems << QStringLiteral("%1: cannot write (%2)").arg(options.output, error);
        return report;
    }
    report.written = true;
    report.json = endState(state, judged, accepted, composed.picture);
    return report;
}

int runStitchCommand(const QStringList& arguments)
{
    QTextStream err(stderr);
    const ParsedStitchArguments parsed = parseStitchArguments(arguments);
    if (!parsed.options) {
        err << "kelvo stitch: " << parsed.error << " (see kelvo --help)\n";
        return 1;
    }
    const StitchReport report = stitchPictures(*parsed.options);
    for (const QString& problem : report.problems)
        err << "kelvo stitch: " << problem << "\n";
    err.flush();
    if (!report.written)
        return 1;
    QTextStream(stdout) << report.json << "\n";
    // The picture of the frames that could be used is kept, but it is not
    // the one asked for: a script must not take it for a full success.
    return report.problems.isEmpty() ? 0 : 1;
}

} // namespace scroll
