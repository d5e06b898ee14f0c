// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/logic/WindowFilter.h"

#include "capture/logic/DockMeasurement.h"
#include "capture/logic/WindowRules.h"

#include <utility>

namespace capture {

namespace {

// Notification Centre's window is wide and mostly transparent; only its
// panel counts.
constexpr double kNotificationCentreWidth = 788.0;
constexpr double kNotificationCentrePanelWidth = 344.0;

// Menu bar extras are pictured from the screen, as such a window alone may
// draw nothing useful.
constexpr double kMenuExtraHeight = 22.0;

// Windows this small can be hovered but not picked.
constexpr double kSmallestPictured = 5.0;

} // namespace

WindowFilter::WindowFilter(platform::WindowServer& server, core::ScreenLayout layout)
    : m_server(server)
    , m_layout(std::move(layout))
{}

void WindowFilter::run(const std::vector<platform::WindowRecord>& windows,
                       CaptureState& state) const
{
    for (const platform::WindowRecord& window : windows) {
        std::optional<Survivor> survivor = correct(window, state);
        if (!survivor)
            continue;
        state.arrayRect.push_back(survivor->window);
        if (std::optional<WindowPicture> picture = pictureOf(*survivor))
            state.imageAllWindowArray.push_back(std::move(*picture));
    }
}

std::optional<WindowFilter::Survivor> WindowFilter::correct(const platform::WindowRecord& window,
                                                            CaptureState& state) const
{
    Survivor survivor{window};
    QRectF& bounds = survivor.window.bounds;
    const int layer = window.layer;
    const QString& name = window.name;

    if (name == QLatin1String(windownames::MenuBar))
        state.menuBarWindowID = window.number;

    if (isFullSizeShade(window, m_layout))
        return std::nullopt;

    if (layer == windowlayers::Banner && name == QLatin1String(windownames::Banner)) {
        correctBanner(bounds);
        survivor.pictureKind = PictureKind::CutToBounds;
    }

    if (isLyricsOverlay(window))
        return std::nullopt;

    if (name == QLatin1String(windownames::Pin)) {
        bounds.adjust(kPinMargin, kPinMargin, -kPinMargin, -kPinMargin);
        survivor.isPin = true;
    }

    if (isMeasuredDock(window, m_layout)) {
        measureDock(window, bounds, state);
        survivor.pictureKind = PictureKind::CutToBounds;
    }

    if (layer == windowlayers::NotificationCentre && bounds.width() == kNotificationCentreWidth &&
        window.bundleIdentifier == QLatin1String(windownames::NotificationCentre)) {
        bounds.setWidth(kNotificationCentrePanelWidth);
        survivor.pictureKind = PictureKind::CutToBounds;
    }

    if (name == QLatin1String(windownames::Desktop))
        return std::nullopt;

    if (survivor.pictureKind == PictureKind::Whole &&
        (layer == windowlayers::MenuExtraLow || layer == windowlayers::MenuExtraHigh) &&
        bounds.height() == kMenuExtraHeight)
        survivor.pictureKind = PictureKind::ScreenArea;
    return survivor;
}

void WindowFilter::correctBanner(QRectF& bounds) const
{
    // The banner's window carries a shadow and a transparent margin around
    // the visible card; its size depends on the primary screen's scale.
    const double scale = m_layout.isEmpty() ? 1.0 : m_layout.deepestScreen().scale;
    const bool singleScale = scale == 1.0;
    const double width = bounds.width();
    bounds.moveTo(bounds.x() + 32.0, bounds.y() + 20.0);
    bounds.setHeight(singleScale ? 62.0 : 63.0);
    bounds.setWidth(singleScale ? static_cast<double>(static_cast<long long>(width - 52.5))
                                : width - 52.0);
}

void WindowFilter::measureDock(const platform::WindowRecord& window, QRectF& bounds,
                               CaptureState& state) const
{
    const QImage whole = m_server.pictureOfWindow(window.number, QRectF());
    state.dockImage = core::Picture::pixelsAsPoints(whole);
    bounds = DockMeasurement::measure(core::ImageView::of(whole), bounds, m_layout);
}

std::optional<WindowPicture> WindowFilter::pictureOf(const Survivor& survivor) const
{
    const QRectF& bounds = survivor.window.bounds;
    if (!(bounds.width() > kSmallestPictured && bounds.height() > kSmallestPictured))
        return std::nullopt;

    // The picture is sized in points as the corrected bounds; a pin's picture
    // still holds its margin.
    QSizeF size = bounds.size();
    if (survivor.isPin)
        size += QSizeF(2 * kPinMargin, 2 * kPinMargin);

    WindowImage image;
    if (survivor.pictureKind == PictureKind::ScreenArea) {
        // A cut of the frozen desktop: no read to put off.
        QImage area = m_server.pictureOfRect(bounds);
        if (area.isNull())
            return std::nullopt;
        image = core::Picture{std::move(area), size};
    } else {
        // Held, not read: most captures hover and never need the pixels.
        const QRectF cutTo = survivor.pictureKind == PictureKind::CutToBounds ? bounds : QRectF();
        std::shared_ptr<platform::HeldPicture> held =
            m_server.holdPictureOfWindow(survivor.window.number, cutTo);
        if (!held || held->isNull())
            return std::nullopt;
        image = WindowImage(std::move(held), size);
    }
    return WindowPicture{survivor.window.number, std::move(image), bounds, survivor.window.name};
}

} // namespace capture
