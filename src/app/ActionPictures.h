// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/hotkeys/CaptureActions.h"
#include "app/output/ImageOutput.h"
#include "core/Picture.h"

#include <QImage>
#include <QObject>
#include <QRectF>
#include <QStringList>

#include <functional>
#include <optional>

namespace settings {
class Defaults;
}
namespace platform {
class PointerControl;
class WindowServer;
} // namespace platform
namespace capture {
class CaptureContext;
struct FinishedCapture;
} // namespace capture

namespace app {

// The pictures Kelvo makes and hands on outside the overlay's own drawing:
// those of the hot-key actions (the whole screen, the window under the
// pointer, the previous area), the previous area a request asks for, where
// a finished capture's picture goes, and the pictures for pins (from the
// clipboard, from files handed to Kelvo, from the pin button). Each picture
// carries the density of the screen it was taken on, so the output encodes
// and decorates it without being told a scale.
class ActionPictures : public QObject
{
    Q_OBJECT
public:
    struct Services
    {
        platform::WindowServer* windows = nullptr;
        platform::PointerControl* pointer = nullptr;
        settings::Defaults* defaults = nullptr;
        // Which screen the actions picture (screenOfScreenShot).
        capture::CaptureContext* context = nullptr;
        output::ImageOutput* output = nullptr;
        // Whether the overlay is up: its windows cover every screen.
        std::function<bool()> captureRunning;
        std::function<void()> beep;
        // A line for stderr.
        std::function<void(const QString&)> report;
    };

    explicit ActionPictures(Services services, QObject* parent = nullptr);

    // The hot-key actions' pictures, saved as the preferences say.
    void saveFullImageToFile();
    void saveWindowUnderCursor(int shadowSize);
    void savePreviousArea(const QRectF& rect, double cornerRadius, int shadowSize);

    // `rect` (global top-left points) at the density of the screen the
    // actions picture, its corners rounded and a shadow added when above 0.
    [[nodiscard]] core::Picture pictureOfPreviousArea(const QRectF& rect, double cornerRadius,
                                                      int shadowSize);
    // The stored previous area, as a request takes it: it becomes the
    // screen the actions picture. Null with the reason in `error` when there
    // is none or the X server gave no picture.
    [[nodiscard]] core::Picture
    pictureOfStoredArea(const std::optional<hotkeys::CaptureActions::PreviousArea>& area,
                        QString* error);

    // Sends a finished capture's picture where its finish asked.
    output::SaveResult sendFinishedCapture(const capture::FinishedCapture& result);

    // Pins: a picture to float on the screen, and files decoded into them
    // (what cannot be read is left out).
    void mapImageToScreen(const QImage& picture);
    void openURLs(const QStringList& paths);

Q_SIGNALS:
    // A picture that should float on the screen as a pin.
    void pinRequested(const QImage& image);

private:
    [[nodiscard]] double scaleOfScreen(int screen);
    [[nodiscard]] core::Picture withShadow(const core::Picture& picture, int shadowSize) const;

    Services m_services;
};

} // namespace app
