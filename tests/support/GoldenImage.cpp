// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/GoldenImage.h"

#include <QDir>
#include <QFileInfo>

#include <cstdlib>

namespace golden {

bool recording()
{
    return qEnvironmentVariableIsSet("KELVO_UPDATE_GOLDENS");
}

Result compare(const QImage& actualIn, const QString& name, Tolerance tolerance)
{
    const QString path =
        QStringLiteral(KELVO_SOURCE_DIR "/tests/data/golden/") + name + QStringLiteral(".png");
    const QImage actual = actualIn.convertToFormat(QImage::Format_RGB32);
    if (recording()) {
        QDir().mkpath(QFileInfo(path).path());
        return {actual.save(path), QStringLiteral("golden written: ") + path};
    }
    const QImage golden = QImage(path).convertToFormat(QImage::Format_RGB32);
    const QString saved =
        QDir::currentPath() + QStringLiteral("/actual-") + name + QStringLiteral(".png");
    if (golden.isNull()) {
        actual.save(saved);
        return {false,
                QStringLiteral("no golden picture at %1 (actual saved to %2)").arg(path, saved)};
    }
    if (golden.size() != actual.size()) {
        actual.save(saved);
        return {false, QStringLiteral("size %1x%2, golden %3x%4 (actual saved to %5)")
                           .arg(actual.width())
                           .arg(actual.height())
                           .arg(golden.width())
                           .arg(golden.height())
                           .arg(saved)};
    }
    qint64 differing = 0;
    for (int y = 0; y < actual.height(); ++y) {
        const auto* a = reinterpret_cast<const QRgb*>(actual.constScanLine(y));
        const auto* g = reinterpret_cast<const QRgb*>(golden.constScanLine(y));
        for (int x = 0; x < actual.width(); ++x) {
            if (std::abs(qRed(a[x]) - qRed(g[x])) > tolerance.channel ||
                std::abs(qGreen(a[x]) - qGreen(g[x])) > tolerance.channel ||
                std::abs(qBlue(a[x]) - qBlue(g[x])) > tolerance.channel)
                ++differing;
        }
    }
    const auto allowed =
        static_cast<qint64>(tolerance.pixelShare * actual.width() * actual.height());
    if (differing > allowed) {
        actual.save(saved);
        return {false, QStringLiteral("%1 pixels differ (at most %2 may); actual saved to %3")
                           .arg(differing)
                           .arg(allowed)
                           .arg(saved)};
    }
    return {true, {}};
}

} // namespace golden
