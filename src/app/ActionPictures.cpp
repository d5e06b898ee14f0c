// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ActionPictures.h"

#include "app/output/ImageDecoration.h"
#include "app/output/ScreenPicture.h"
#include "capture/logic/CaptureContext.h"
#include "capture/logic/WindowUnderMouse.h"
#include "capture/ui/QNClipScreenManager.h"
#include "platform/PointerControl.h"
#include "platform/WindowServer.h"
#include "settings/Defaults.h"
#include "settings/Keys.h"

#include <QApplication>
#include <QFileInfo>
#include <QImageReader>
#include <QTextStream>

namespace app {

ActionPictures::ActionPictures(Services services, QObject* parent)
    : QObject(parent)
    , m_services(std::move(services))
{
    if (!m_services.captureRunning)
        m_services.captureRunning = [] { return false; };
    if (!m_services.beep)
        m_services.beep = [] { QApplication::beep(); };
    if (!m_services.report)
        m_services.report = [](const QString& line) {
            QTextStream(stderr) << "kelvo: " << line << '\n' << Qt::flush;
        };
}

double ActionPictures::scaleOfScreen(int screen)
{
    const core::ScreenLayout layout = m_services.windows->screens();
    if (layout.isEmpty())
        return 1.0;
    return layout.screen(screen >= 0 && screen < layout.count() ? screen : 0).scale;
}

core::Picture ActionPictures::withShadow(const core::Picture& picture, int shadowSize) const
{
    if (shadowSize <= 0)
        return picture;
    return output::addShadow(
        picture, shadowSize,
        output::shadowColourFrom(m_services.defaults->stringForKey(settings::keys::colorOfShadow)));
}

void ActionPictures::saveFullImageToFile()
{
    const core::ScreenLayout layout = m_services.windows->screens();
    if (layout.isEmpty()) {
        m_services.report(QStringLiteral("no screen to take a picture of"));
        return;
    }
    const int index = m_services.context->capture().screenOfScreenShot;
    const core::ScreenInfo& screen =
        layout.screen(index >= 0 && index < layout.count() ? index : 0);
    QString error;
    const core::Picture picture =
        output::pictureOfScreenArea(*m_services.windows, screen.frame, screen.scale, &error);
    if (picture.isNull()) {
        m_services.report(error);
        return;
    }
    (void)m_services.output->saveImageToFile(picture);
}

void ActionPictures::saveWindowUnderCursor(int shadowSize)
{
    platform::WindowServer& windows = *m_services.windows;
    const core::ScreenLayout layout = windows.screens();
    // During a capture the overlay covers every screen, and a new window
    // pass would freeze it in place of the desktop: the window is chosen
    // from the list the capture froze, and pictured from its frozen state.
    const bool captureRunning = m_services.captureRunning();
    const capture::WindowUnderMouseChoice choice = capture::chooseWindowUnderMouse(
        captureRunning ? m_services.context->capture().arrayRect : windows.windowList(),
        m_services.pointer->position(), layout);
    const double scale = scaleOfScreen(m_services.context->capture().screenOfScreenShot);
    QImage image;
    switch (choice.kind) {
    case capture::WindowUnderMouseChoice::Kind::Window:
        image = windows.pictureOfWindow(choice.number, QRectF());
        break;
    case capture::WindowUnderMouseChoice::Kind::WholeScreen:
        image = windows.pictureOfRect(choice.screenRect);
        break;
    case capture::WindowUnderMouseChoice::Kind::Nothing:
        break;
    }
    // The pictures share the frozen desktop's pixels until copied; the
    // capture still needs its freeze.
    image = image.copy();
    if (!captureRunning)
        windows.thaw();
    if (image.isNull()) {
        m_services.report(
            QStringLiteral("there is no window under the pointer to take a picture of"));
        return;
    }
    (void)m_services.output->saveImageToFile(
        withShadow(core::Picture::withScale(image, scale), shadowSize));
}

core::Picture ActionPictures::pictureOfPreviousArea(const QRectF& rect, double cornerRadius,
                                                    int shadowSize)
{
    const double scale = scaleOfScreen(m_services.context->capture().screenOfScreenShot);
    const QImage image = m_services.windows->pictureOfRect(rect).copy();
    if (image.isNull())
        return {};
    core::Picture picture = core::Picture::withScale(image, scale);
    if (cornerRadius > 0)
        picture = output::addRoundImgae(picture, cornerRadius);
    return withShadow(picture, shadowSize);
}

void ActionPictures::savePreviousArea(const QRectF& rect, double cornerRadius, int shadowSize)
{
    const core::Picture picture = pictureOfPreviousArea(rect, cornerRadius, shadowSize);
    if (picture.isNull()) {
        m_services.report(QStringLiteral("the X server gave no picture of the previous area"));
        return;
    }
    (void)m_services.output->saveImageToFile(picture);
}

core::Picture ActionPictures::pictureOfStoredArea(
    const std::optional<hotkeys::CaptureActions::PreviousArea>& area, QString* error)
{
    if (!area) {
        *error = QStringLiteral("there is no previous area: capture a region first (or its "
                                "centre lies on no screen now)");
        return {};
    }
    m_services.context->capture().screenOfScreenShot = area->screen;
    const core::Picture picture =
        pictureOfPreviousArea(area->rect, area->cornerRadius, area->shadowSize);
    if (picture.isNull())
        *error = QStringLiteral("the X server gave no picture of the area");
    return picture;
}

output::SaveResult ActionPictures::sendFinishedCapture(const capture::FinishedCapture& result)
{
    switch (result.destination) {
    case capture::FinishDestination::Clipboard:
        return m_services.output->outputCapture(result.picture, true, false);
    case capture::FinishDestination::File:
        return m_services.output->outputCapture(result.picture, false, result.openAfterSave);
    case capture::FinishDestination::Pin:
        // Until pins float on the screen the picture is kept on the
        // clipboard rather than dropped.
        m_services.report(
            QStringLiteral("pins are not part of this build yet; the picture is on the clipboard"));
        m_services.output->saveImageToPaste(result.picture);
        Q_EMIT pinRequested(result.picture.pixels);
        return {};
    }
    return {};
}

void ActionPictures::mapImageToScreen(const QImage& picture)
{
    Q_EMIT pinRequested(picture);
}

void ActionPictures::openURLs(const QStringList& paths)
{
    for (const QString& path : paths) {
        QFileInfo info(path);
        if (!info.isFile())
            continue;
        QImageReader reader(path);
        // Pictures from files are bounded: a hostile header cannot make us
        // allocate gigabytes.
        reader.setAllocationLimit(512);
        const QImage image = reader.read();
        if (!image.isNull())
            Q_EMIT pinRequested(image);
    }
}

} // namespace app
