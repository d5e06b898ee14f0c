// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/CaptureRequest.h"

#include "app/output/ImageFileType.h"
#include "app/output/ShotCommand.h"
#include "core/ShortText.h"

#include <QDir>

namespace app {

namespace {

const QString kPath = QStringLiteral("path");
const QString kClipboard = QStringLiteral("clipboard");
const QString kDelay = QStringLiteral("delay");
const QString kLastRegion = QStringLiteral("lastRegion");

std::nullopt_t fail(QString* error, const QString& text)
{
    if (error != nullptr)
        *error = text;
    return std::nullopt;
}

QString delayRange()
{
    return QStringLiteral("milliseconds from 0 to %1").arg(output::kMaxShotDelayMs);
}

bool isIntegral(const QVariant& v)
{
    switch (v.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::UChar:
        return true;
    default:
        return false;
    }
}

} // namespace

std::optional<CaptureRequest> CaptureRequest::parse(const QStringList& arguments, QString* error)
{
    CaptureRequest r;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString& a = arguments.at(i);
        const bool hasValue = i + 1 < arguments.size();
        if (a == QLatin1String("-p") || a == QLatin1String("--path")) {
            if (!hasValue || arguments.at(i + 1).isEmpty())
                return fail(error, QStringLiteral("%1 needs a folder or a file name").arg(a));
            r.path = arguments.at(++i);
            if (const QString problem = output::targetProblem(r.path); !problem.isEmpty())
                return fail(error, QStringLiteral("%1 %2").arg(a, problem));
        } else if (a == QLatin1String("-c") || a == QLatin1String("--clipboard")) {
            r.clipboard = true;
        } else if (a == QLatin1String("-d") || a == QLatin1String("--delay")) {
            bool ok = false;
            const int ms = hasValue ? arguments.at(i + 1).toInt(&ok) : -1;
            if (!ok || ms < 0 || ms > output::kMaxShotDelayMs)
                return fail(error, QStringLiteral("%1 needs %2").arg(a, delayRange()));
            r.delayMs = ms;
            ++i;
        } else if (a == QLatin1String("--last-region")) {
            r.lastRegion = true;
        } else {
            return fail(
                error,
                QStringLiteral("unknown option for 'gui': %1").arg(core::shortForMessage(a)));
        }
    }
    return r;
}

std::optional<CaptureRequest> CaptureRequest::fromOptions(const QVariantMap& options,
                                                          QString* error)
{
    CaptureRequest r;
    for (auto it = options.constBegin(); it != options.constEnd(); ++it) {
        const QVariant& v = it.value();
        if (it.key() == kPath) {
            if (v.typeId() != QMetaType::QString || v.toString().isEmpty())
                return fail(error, QStringLiteral("\"path\" must be a non-empty string"));
            if (!QDir::isAbsolutePath(v.toString()))
                return fail(error, QStringLiteral("\"path\" must be absolute: %1")
                                       .arg(core::shortForMessage(v.toString())));
            if (const QString problem = output::targetProblem(v.toString()); !problem.isEmpty())
                return fail(error, QStringLiteral("\"path\": %1").arg(problem));
            r.path = v.toString();
        } else if (it.key() == kClipboard || it.key() == kLastRegion) {
            if (v.typeId() != QMetaType::Bool)
                return fail(error, QStringLiteral("\"%1\" must be a boolean").arg(it.key()));
            (it.key() == kClipboard ? r.clipboard : r.lastRegion) = v.toBool();
        } else if (it.key() == kDelay) {
            // An unsigned 64-bit value is read as such, so a huge one cannot
            // wrap to a small delay.
            const qlonglong ms =
                v.typeId() == QMetaType::ULongLong
                    ? (v.toULongLong() > quint64(output::kMaxShotDelayMs) ? -1 : v.toLongLong())
                    : v.toLongLong();
            if (!isIntegral(v) || ms < 0 || ms > output::kMaxShotDelayMs)
                return fail(error,
                            QStringLiteral("\"delay\" must be an integer, %1").arg(delayRange()));
            r.delayMs = static_cast<int>(ms);
        } else {
            return fail(
                error,
                QStringLiteral("unknown option: \"%1\"").arg(core::shortForMessage(it.key())));
        }
    }
    return r;
}

QVariantMap CaptureRequest::toOptions() const
{
    QVariantMap options;
    if (!path.isEmpty())
        options.insert(kPath,
                       QDir::isAbsolutePath(path) ? path : QDir::current().absoluteFilePath(path));
    if (clipboard)
        options.insert(kClipboard, true);
    if (delayMs > 0)
        options.insert(kDelay, delayMs);
    if (lastRegion)
        options.insert(kLastRegion, true);
    return options;
}

QString CaptureRequest::usage()
{
    return QStringLiteral(
        "  gui [-p PATH] [-c] [-d MS] [--last-region]\n"
        "                      start a region capture in the running Kelvo (starting\n"
        "                      Kelvo first if needed); with options, wait for it to\n"
        "                      end and print the saved file's path\n"
        "    -p, --path PATH   save the finished picture there: a folder, or a file\n"
        "                      (.png, .jpg, .tiff)\n"
        "    -c, --clipboard   copy the finished picture (as image/png)\n"
        "    -d, --delay MS    wait before the capture starts\n"
        "    --last-region     take the previous capture's area at once, no overlay\n");
}

} // namespace app
