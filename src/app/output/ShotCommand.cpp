// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/output/ShotCommand.h"

#include "app/output/ImageEncoding.h"
#include "app/output/ImageOutput.h"
#include "app/output/ScreenPicture.h"
#include "core/Localized.h"
#include "core/ShortText.h"
#include "platform/WindowServer.h"
#include "settings/Defaults.h"
#include "settings/Preferences.h"

#include <QFileInfo>

namespace app::output {

namespace {

constexpr int kDone = 0;
constexpr int kError = 1;

} // namespace

std::optional<ShotRequest> ShotRequest::parse(Area area, const QStringList& arguments,
                                              QString* error)
{
    ShotRequest r;
    r.area = area;
    auto fail = [error](const QString& text) {
        if (error != nullptr)
            *error = text;
        return std::nullopt;
    };
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString& a = arguments.at(i);
        auto value = [&](QString* out) {
            if (i + 1 >= arguments.size())
                return false;
            *out = arguments.at(++i);
            return true;
        };
        QString v;
        if (a == QLatin1String("-p") || a == QLatin1String("--path")) {
            if (!value(&v) || v.isEmpty())
                return fail(QStringLiteral("%1 needs a path").arg(a));
            if (const QString problem = targetProblem(v); !problem.isEmpty())
                return fail(QStringLiteral("%1 %2").arg(a, problem));
            r.path = v;
        } else if (a == QLatin1String("-c") || a == QLatin1String("--clipboard")) {
            r.clipboard = true;
        } else if (a == QLatin1String("-r") || a == QLatin1String("--raw")) {
            r.raw = true;
        } else if (a == QLatin1String("-d") || a == QLatin1String("--delay")) {
            bool ok = false;
            const int ms = value(&v) ? v.toInt(&ok) : -1;
            if (!ok || ms < 0 || ms > kMaxShotDelayMs)
                return fail(QStringLiteral("%1 needs milliseconds from 0 to %2")
                                .arg(a)
                                .arg(kMaxShotDelayMs));
            r.delayMs = ms;
        } else if (area == Area::Screen &&
                   (a == QLatin1String("-n") || a == QLatin1String("--number"))) {
            bool ok = false;
            const int n = value(&v) ? v.toInt(&ok) : -1;
            if (!ok || n < 0)
                return fail(QStringLiteral("%1 needs a screen number (0 is the primary)").arg(a));
            r.screen = n;
        } else {
            return fail(
                QStringLiteral("unknown option for '%1': %2")
                    .arg(area == Area::Screen ? QStringLiteral("screen") : QStringLiteral("full"),
                         core::shortForMessage(a)));
        }
    }
    return r;
}

QString ShotRequest::usage()
{
    return QStringLiteral(
        "  full [-p PATH] [-c] [-r] [-d MS]\n"
        "                      picture of the whole desktop\n"
        "  screen [-n N] [-p PATH] [-c] [-r] [-d MS]\n"
        "                      picture of monitor N (0 is the primary; default:\n"
        "                      the one under the pointer)\n"
        "    -p, --path PATH   a folder (named as Kelvo names pictures) or a file\n"
        "                      (.png, .jpg, .tiff); default: the preferences' folder\n"
        "    -c, --clipboard   copy it (as image/png) through the running Kelvo\n"
        "    -r, --raw         write the PNG to stdout\n"
        "    -d, --delay MS    wait before taking it\n");
}

ShotCommand::ShotCommand(Services services)
    : m_services(std::move(services))
{}

int ShotCommand::run(const ShotRequest& request)
{
    auto& report = m_services.report;
    const settings::Preferences prefs(*m_services.defaults);
    const bool toFile = !request.path.isEmpty() || (!request.clipboard && !request.raw);
    if (toFile && request.path.isEmpty() && prefs.asksForSavePath()) {
        report(QStringLiteral("no folder: Kelvo is set to ask where to save each picture; "
                              "give one with -p PATH"));
        return kError;
    }

    if (request.delayMs > 0 && m_services.sleep)
        m_services.sleep(request.delayMs);

    const core::ScreenLayout layout = m_services.windows->screens();
    if (layout.isEmpty()) {
        report(QStringLiteral("no screen to take a picture of"));
        return kError;
    }
    QRectF area;
    double scale = layout.deepestScreen().scale;
    if (request.area == ShotRequest::Area::Desktop) {
        for (const core::ScreenInfo& s : layout.screens())
            area = area.united(s.frame);
    } else {
        int index = 0;
        if (request.screen) {
            index = *request.screen;
            if (index >= layout.count()) {
                report(QStringLiteral("there is no screen %1; screens are 0 to %2")
                           .arg(index)
                           .arg(layout.count() - 1));
                return kError;
            }
        } else if (m_services.pointer) {
            const QPointF at = m_services.pointer();
            for (int i = 0; i < layout.count(); ++i) {
                if (layout.screen(i).frame.contains(at)) {
                    index = i;
                    break;
                }
            }
        }
        area = layout.screen(index).frame;
        scale = layout.screen(index).scale;
    }
    QString error;
    const core::Picture picture = pictureOfScreenArea(*m_services.windows, area, scale, &error);
    if (picture.isNull()) {
        report(error);
        return kError;
    }
    const QImage& image = picture.pixels;

    int status = kDone;
    QByteArray png;
    // A picture that cannot become PNG cannot be copied or written out
    // raw; it is not dropped but saved as a file (the preferred format).
    bool encodeFailed = false;
    if (request.raw || request.clipboard) {
        const EncodedImage encoded = encodePngOf(image);
        if (!encoded.error.isEmpty()) {
            report(encoded.error);
            encodeFailed = true;
            status = kError;
        }
        png = encoded.bytes;
    }
    if (request.raw && !encodeFailed && m_services.writeOut)
        m_services.writeOut(png);

    ImageOutput::Services outputServices;
    outputServices.defaults = m_services.defaults;
    outputServices.notifier = m_services.notifier;
    outputServices.report = report;
    ImageOutput output(std::move(outputServices));
    bool clipboardFailed = encodeFailed;
    if (request.clipboard && !encodeFailed) {
        const QString copyError =
            m_services.clipboard ? m_services.clipboard(png) : QStringLiteral("no clipboard");
        if (!copyError.isEmpty()) {
            report(QStringLiteral("the picture could not be copied: %1").arg(copyError));
            clipboardFailed = true;
            status = kError;
        }
    }
    // A copy that failed must not lose the picture: it goes to a file then.
    if (!toFile && !clipboardFailed)
        return status;

    const QString target =
        request.path.isEmpty() ? prefs.pathofSaveScreenShotsPhoto() : request.path;
    const SaveResult saved = output.saveImageTo(picture, target);
    if (!saved.saved())
        return kError;
    if (!request.raw && m_services.writeOut)
        m_services.writeOut(saved.path.toLocal8Bit() + '\n');
    return status;
}

} // namespace app::output
