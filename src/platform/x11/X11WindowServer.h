// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/WindowServer.h"
#include "platform/x11/NativeScreens.h"
#include "platform/x11/ShmGrabber.h"
#include "platform/x11/XcbHandles.h"

#include <QHash>
#include <QTimer>

#include <optional>

namespace platform::x11 {

// The window server of an X11 desktop. One windowList() call is one freeze:
// it grabs the whole root through MIT-SHM and reads the stacking order, and
// later pictures are cut from that grab without copying. Only with a
// compositor running can a covered window be pictured whole (XComposite);
// Kelvo never redirects windows itself.
class X11WindowServer final : public WindowServer
{
public:
    // Opens its own connection to $DISPLAY; the screens come from Qt unless
    // given (tools that run without a QGuiApplication pass them).
    explicit X11WindowServer(std::optional<NativeScreens> screens = std::nullopt);
    ~X11WindowServer() override;

    [[nodiscard]] bool isConnected() const { return m_connection != nullptr; }

    core::ScreenLayout screens() override;
    std::vector<WindowRecord> windowList() override;
    QImage pictureOfWindow(std::uint32_t number, const QRectF& cutTo) override;
    QImage pictureOfRect(const QRectF& rect) override;
    bool canSeeOtherClients() override { return isConnected(); }
    void thaw() override;

    [[nodiscard]] bool compositorRunning();
    // The frozen root (device pixels), null before the first freeze.
    [[nodiscard]] const QImage& frozenRoot() const { return m_frozen; }

private:
    struct Atoms;
    struct Client;
    void refreshScreens();
    void freezeRoot();
    [[nodiscard]] std::vector<Client> stackedClients();
    [[nodiscard]] WindowRecord recordOf(const Client& client);
    [[nodiscard]] int layerOf(const Client& client) const;

    XcbConnectionPtr m_connection;
    xcb_window_t m_root = 0;
    int m_rootDepth = 24;
    QSize m_rootSize;
    std::unique_ptr<Atoms> m_atoms;
    std::unique_ptr<ShmGrabber> m_grabber;
    std::optional<NativeScreens> m_fixedScreens;
    NativeScreens m_screens;
    QImage m_frozen;
    QHash<std::uint32_t, QRect> m_frames; // frame id -> device rectangle, from the last list
    // Captures tend to come in runs; the grab's memory is kept between them
    // and given back after a quiet minute.
    QTimer m_releaseTimer;
};

// A view of part of an image that shares its pixels (no copy); the view keeps
// the parent alive.
[[nodiscard]] QImage sharedView(const QImage& parent, const QRect& rect);

} // namespace platform::x11
