// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/WindowServer.h"
#include "platform/x11/NativeScreens.h"

#include <memory>
#include <optional>

namespace platform::x11 {

// The window server of an X11 desktop. One windowList() call is one freeze:
// it grabs the whole root through MIT-SHM and reads the stacking order, and
// later pictures are cut from that grab without copying. Only with a
// compositor running can a covered window be pictured whole (XComposite);
// Kelvo never redirects windows itself. Held pictures of windows (see
// X11FrozenDesktop) stay on the server until a pick reads them.
//
// Put together from X11Atoms (the names it reads), stackedClients() (the
// tree walk), layerOf() (the stacking layer) and X11FrozenDesktop (the grab
// and the pictures cut from it).
class X11WindowServer final : public WindowServer
{
public:
    // Opens its own connection to $DISPLAY; the screens come from Qt unless
    // given (tools that run without a QGuiApplication pass them).
    explicit X11WindowServer(std::optional<NativeScreens> screens = std::nullopt);
    ~X11WindowServer() override;
    X11WindowServer(const X11WindowServer&) = delete;
    X11WindowServer& operator=(const X11WindowServer&) = delete;

    [[nodiscard]] bool isConnected() const;

    core::ScreenLayout screens() override;
    std::vector<WindowRecord> windowList() override;
    QImage pictureOfWindow(std::uint32_t number, const QRectF& cutTo) override;
    std::shared_ptr<HeldPicture> holdPictureOfWindow(std::uint32_t number,
                                                     const QRectF& cutTo) override;
    QImage pictureOfRect(const QRectF& rect) override;
    bool canSeeOtherClients() override { return isConnected(); }
    void thaw() override;

    [[nodiscard]] bool compositorRunning();
    // The frozen root (device pixels), null before the first freeze.
    [[nodiscard]] const QImage& frozenRoot() const;
    // Window pixels read from the server so far (see X11FrozenDesktop).
    [[nodiscard]] int windowReads() const;

private:
    struct State;
    void refreshScreens();

    std::unique_ptr<State> m;
};

} // namespace platform::x11
