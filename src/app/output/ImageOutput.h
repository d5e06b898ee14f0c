// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/output/ImageEncoding.h"
#include "app/output/ImageFileType.h"
#include "app/output/ResultNotices.h"
#include "core/Clock.h"
#include "core/Picture.h"
#include "platform/DesktopNotifier.h"
#include "platform/FileManager.h"

#include <QDateTime>
#include <QObject>
#include <QString>

#include <functional>

namespace platform {
class FileManager;
}
namespace settings {
class Defaults;
}

namespace app::output {

using platform::kFileManagerChoice;

// Where a save ended.
struct SaveResult
{
    QString path;   // the file written, empty when the save failed
    QString error;  // why it failed, empty when saved
    QString keptAt; // where a failed save put the picture instead, if anywhere
    [[nodiscard]] bool saved() const { return error.isEmpty(); }
};

// Everything that becomes of a finished picture: a named file in the save
// folder (never replacing another), the clipboard, a save panel when no
// folder is set, the result notifications and a click on them, and opening
// a saved file. A save that fails is told on stderr and in a notification,
// and the picture is written to a fallback folder instead (see
// fallbackFolders()), so it is never lost.
class ImageOutput : public QObject
{
    Q_OBJECT
public:
    struct Services
    {
        settings::Defaults* defaults = nullptr;
        platform::DesktopNotifier* notifier = nullptr;
        platform::FileManager* files = nullptr;
        // Puts PNG data on the clipboard as "image/png", alone.
        std::function<void(const QByteArray&)> clipboard;
        // The wall clock pictures are named after.
        std::function<QDateTime()> clock;
        // Runs the notices' delays; the system's timers when unset.
        core::Clock* timers = nullptr;
        // A line for stderr.
        std::function<void(const QString&)> report;
    };

    explicit ImageOutput(Services services, QObject* parent = nullptr);

    // How a picture becomes the bytes of a file; encodeImage() unless set.
    // A writer can fail (a missing Qt image plugin, a picture it cannot
    // take); a save then keeps the picture as PNG, Kelvo's own encoder.
    using Encoder =
        std::function<EncodedImage(const core::Picture&, ImageFileType, bool nomalQualityImage)>;
    void setEncoder(Encoder encoder) { m_encode = std::move(encoder); }

    // Encodes and writes to `path`; a failure is told and the picture kept.
    SaveResult saveImage(const core::Picture& picture, const QString& path, ImageFileType type);

    // Saves to `target`: a folder, where the picture is named as Kelvo names
    // pictures (in the preferred format), or a file name whose extension
    // (.png, .jpg, .jpeg, .tif, .tiff) picks the format. An existing file is
    // never replaced: "shot.png" becomes "shot 2.png".
    SaveResult saveImageTo(const core::Picture& picture, const QString& target);

    // Names the picture and saves it into the save folder, or asks with the
    // save panel when no folder is set. No notification on success.
    SaveResult saveImageToFile(const core::Picture& picture);

    // The end of a capture: to the clipboard when `copyToPaste`, else into
    // the save folder. A saved file is then opened when `openAfterSave` or
    // else notified; a copy is notified. Both notices only under
    // notifyWhenComplete.
    SaveResult outputCapture(const core::Picture& picture, bool copyToPaste, bool openAfterSave);

    // The picture as PNG, alone on the clipboard.
    void saveImageToPaste(const core::Picture& picture);
    // PNG bytes someone else encoded, checked first (size, structure);
    // answers an error's text, empty when it is on the clipboard.
    [[nodiscard]] QString copyPngToClipboard(const QByteArray& png);

    // The result notice of a save (path) or copy (empty path), 0.2 s later.
    void userNotificationOfSaveImage(const QString& path, bool fromRecorder);
    // A free notice with the default sound, 0.2 s later.
    void userNotificationContent(const QString& text, const QString& title);
    // A click on one of our notices.
    void didActivateNotification(const platform::Notification& notice);

    // Opens a saved file with the application the user chose (or the
    // default one); with the file manager chosen, shows it there.
    void openSavedFile(const QString& path);

    // Asks where to save, with a format choice; `openAfterSave` opens the
    // file once written.
    void saveImageOfNotSpecified(const core::Picture& picture, bool openAfterSave = false);

    // The next free path for a new picture in `folder`.
    [[nodiscard]] QString nextPicturePath(const QString& folder, ImageFileType type) const;
    // formatOfSavePhoto as a type ("jpg" when absent).
    [[nodiscard]] ImageFileType preferredType() const;

private:
    void tellFailure(const QString& reason, const QString& keptAt);
    [[nodiscard]] QString keepElsewhere(const QByteArray& bytes, ImageFileType type);
    [[nodiscard]] EncodedImage encodeWith(const Encoder& encoder, const core::Picture& picture,
                                          ImageFileType type) const;
    [[nodiscard]] SaveResult keepUnencodable(const core::Picture& picture, ImageFileType type,
                                             const QString& error);

    Services m_services;
    core::SystemClock m_systemClock; // the timers unless others are given
    Encoder m_encode = encodeImage;
    ResultNotices m_notices;
};

} // namespace app::output
