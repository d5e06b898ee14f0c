// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/output/ImageOutput.h"

#include "app/output/FileNaming.h"
#include "app/output/ImageEncoding.h"
#include "app/output/PictureFile.h"
#include "app/output/PngCheck.h"
#include "app/output/SavePanel.h"
#include "core/Localized.h"
#include "platform/FileManager.h"
#include "settings/Defaults.h"
#include "settings/Keys.h"
#include "settings/Preferences.h"

#include <QFileInfo>

#include <cstdio>
#include <optional>

namespace app::output {

namespace keys = settings::keys;

namespace {
constexpr std::chrono::milliseconds kNotificationDelay{200};
}

ImageOutput::ImageOutput(Services services, QObject* parent)
    : QObject(parent)
    , m_services(std::move(services))
    , m_notices(*m_services.defaults)
{
    if (!m_services.clock)
        m_services.clock = [] { return QDateTime::currentDateTime(); };
    if (m_services.timers == nullptr)
        m_services.timers = &m_systemClock;
    if (!m_services.report)
        m_services.report = [](const QString& line) {
            std::fprintf(stderr, "kelvo: %s\n", line.toLocal8Bit().constData());
        };
}

ImageFileType ImageOutput::preferredType() const
{
    return fileTypeForFormat(settings::Preferences(*m_services.defaults).formatOfSavePhoto());
}

QString ImageOutput::nextPicturePath(const QString& folder, ImageFileType type) const
{
    return freePicturePath(folder, pictureBaseName(m_services.clock()), type,
                           [](const QString& p) { return QFileInfo::exists(p); });
}

SaveResult ImageOutput::saveImage(const core::Picture& picture, const QString& path,
                                  ImageFileType type)
{
    SaveResult result;
    const EncodedImage encoded = encodeWith(m_encode, picture, type);
    if (!encoded.error.isEmpty())
        return keepUnencodable(picture, type, encoded.error);
    const QString folder = QFileInfo(path).absolutePath();
    result.error = folderProblem(folder);
    if (result.error.isEmpty()) {
        result.error = writeAtomically(path, encoded.bytes);
        if (result.error.isEmpty()) {
            result.path = path;
            return result;
        }
        result.error = core::localized("%1 could not be written: %2").arg(path, result.error);
    }
    result.keptAt = keepElsewhere(encoded.bytes, type);
    tellFailure(result.error, result.keptAt);
    return result;
}

QString ImageOutput::keepElsewhere(const QByteArray& bytes, ImageFileType type)
{
    for (const QString& folder : fallbackFolders()) {
        if (!folderProblem(folder).isEmpty())
            continue;
        const QString path = nextPicturePath(folder, type);
        if (writeAtomically(path, bytes).isEmpty())
            return path;
    }
    return {};
}

EncodedImage ImageOutput::encodeWith(const Encoder& encoder, const core::Picture& picture,
                                     ImageFileType type) const
{
    return encoder(picture, type, settings::Preferences(*m_services.defaults).nomalQualityImage());
}

SaveResult ImageOutput::keepUnencodable(const core::Picture& picture, ImageFileType type,
                                        const QString& error)
{
    SaveResult result;
    QString why = error;
    if (why.endsWith(QLatin1Char('.')))
        why.chop(1);
    result.error = core::localized("The picture could not be encoded as %1: %2.")
                       .arg(extensionOf(type).toUpper(), why);
    // Kelvo's own PNG encoder needs no plugin; when it fails too (a picture
    // without pixels, or too large) there is nothing left to keep.
    const EncodedImage png = type == ImageFileType::Png
                                 ? EncodedImage{}
                                 : encodeWith(encodeImage, picture, ImageFileType::Png);
    if (png.bytes.isEmpty()) {
        tellFailure(result.error, {});
        return result;
    }
    if (m_services.clipboard) {
        m_services.clipboard(png.bytes);
        result.error += core::localized(" It is on the clipboard as PNG.");
    }
    result.keptAt = keepElsewhere(png.bytes, ImageFileType::Png);
    tellFailure(result.error, result.keptAt);
    return result;
}

void ImageOutput::tellFailure(const QString& reason, const QString& keptAt)
{
    m_services.report(
        keptAt.isEmpty()
            ? reason
            : QStringLiteral("%1 The picture was saved to %2 instead.").arg(reason, keptAt));
    if (m_services.notifier != nullptr)
        m_services.notifier->notify(ResultNotices::saveFailed(reason, keptAt));
}

SaveResult ImageOutput::saveImageTo(const core::Picture& picture, const QString& target)
{
    const QFileInfo info(target);
    const auto named = typeOfFileName(target);
    if (info.isDir() || !named) {
        const ImageFileType type = preferredType();
        return saveImage(picture, nextPicturePath(info.absoluteFilePath(), type), type);
    }
    QString path = info.absoluteFilePath();
    for (int n = 2; QFileInfo::exists(path) && n < 10000; ++n)
        path = QStringLiteral("%1/%2 %3.%4")
                   .arg(info.absolutePath(), info.completeBaseName())
                   .arg(n)
                   .arg(info.suffix());
    return saveImage(picture, path, *named);
}

SaveResult ImageOutput::saveImageToFile(const core::Picture& picture)
{
    const settings::Preferences prefs(*m_services.defaults);
    if (prefs.asksForSavePath()) {
        saveImageOfNotSpecified(picture);
        return {};
    }
    const ImageFileType type = preferredType();
    return saveImage(picture, nextPicturePath(prefs.pathofSaveScreenShotsPhoto(), type), type);
}

SaveResult ImageOutput::outputCapture(const core::Picture& picture, bool copyToPaste,
                                      bool openAfterSave)
{
    if (picture.isNull())
        return {};
    const settings::Preferences prefs(*m_services.defaults);
    if (copyToPaste) {
        saveImageToPaste(picture);
        if (prefs.notifyWhenComplete())
            userNotificationOfSaveImage({}, false);
        return {};
    }
    if (prefs.asksForSavePath()) {
        saveImageOfNotSpecified(picture, openAfterSave);
        return {};
    }
    const ImageFileType type = preferredType();
    const SaveResult result =
        saveImage(picture, nextPicturePath(prefs.pathofSaveScreenShotsPhoto(), type), type);
    if (!result.saved())
        return result;
    if (openAfterSave)
        openSavedFile(result.path);
    else if (prefs.notifyWhenComplete())
        userNotificationOfSaveImage(result.path, false);
    return result;
}

void ImageOutput::saveImageToPaste(const core::Picture& picture)
{
    const core::Picture flat = flatten(picture);
    if (flat.isNull())
        return;
    const EncodedImage png = encodePngOf(flat.pixels);
    if (!png.error.isEmpty()) {
        tellFailure(png.error, {});
        return;
    }
    if (m_services.clipboard)
        m_services.clipboard(png.bytes);
}

QString ImageOutput::copyPngToClipboard(const QByteArray& png)
{
    const QString problem = checkPng(png);
    if (!problem.isEmpty())
        return problem;
    if (m_services.clipboard)
        m_services.clipboard(png);
    if (settings::Preferences(*m_services.defaults).notifyWhenComplete())
        userNotificationOfSaveImage({}, false);
    return {};
}

void ImageOutput::userNotificationOfSaveImage(const QString& path, bool fromRecorder)
{
    m_services.timers->singleShot(kNotificationDelay, this, [this, path, fromRecorder] {
        const platform::Notification n = m_notices.savedImage(path, fromRecorder);
        if (m_services.notifier != nullptr)
            m_services.notifier->notify(n);
    });
}

void ImageOutput::userNotificationContent(const QString& text, const QString& title)
{
    m_services.timers->singleShot(kNotificationDelay, this, [this, text, title] {
        if (m_services.notifier != nullptr)
            m_services.notifier->notify(ResultNotices::content(text, title));
    });
}

void ImageOutput::didActivateNotification(const platform::Notification& notice)
{
    if (m_services.files == nullptr)
        return;
    if (const auto path = m_notices.activated(notice))
        m_services.files->showItem(*path);
    else if (!notice.filePath.isEmpty())
        m_services.files->showItem(notice.filePath); // where a failed save kept it
}

void ImageOutput::openSavedFile(const QString& path)
{
    if (m_services.files == nullptr)
        return;
    const QVariantMap app = m_services.defaults->dictionaryForKey(keys::appOfUserSpecified);
    const QString id = app.value(QStringLiteral("bundleIdentifier")).toString();
    if (id == QLatin1String(kFileManagerChoice))
        m_services.files->showItem(path);
    else
        m_services.files->openWith(path, id);
}

void ImageOutput::saveImageOfNotSpecified(const core::Picture& picture, bool openAfterSave)
{
    auto* panel = new SavePanel(core::localized("Save Image"));
    connect(panel, &SavePanel::chosen, this,
            [this, picture, openAfterSave](const QString& path, ImageFileType type) {
                const SaveResult result = saveImage(picture, path, type);
                if (result.saved() && openAfterSave)
                    openSavedFile(result.path);
            });
    panel->begin();
}

} // namespace app::output
