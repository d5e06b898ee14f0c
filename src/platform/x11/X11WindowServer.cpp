// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/x11/X11WindowServer.h"

#include "platform/WindowLayers.h"
#include "platform/x11/X11Atoms.h"
#include "platform/x11/X11ClientTree.h"
#include "platform/x11/X11FrozenDesktop.h"
#include "platform/x11/X11ScreenGrabber.h"
#include "platform/x11/XcbHandles.h"

#include <QFile>

#include <unistd.h>

namespace platform::x11 {

namespace {

QString commandOfPid(std::int64_t pid)
{
    if (pid <= 0)
        return {};
    QFile comm(QStringLiteral("/proc/%1/comm").arg(pid));
    if (!comm.open(QIODevice::ReadOnly))
        return {};
    return QString::fromLocal8Bit(comm.readAll()).trimmed();
}

} // namespace

// Declared in the order they must come up; they go down in reverse, so the
// grabs let go of their segments while the connection is still there.
struct X11WindowServer::State
{
    XcbConnectionPtr connection;
    X11Atoms atoms;
    std::unique_ptr<X11ScreenGrabber> grabber;
    std::unique_ptr<X11FrozenDesktop> frozen;
    std::optional<NativeScreens> fixedScreens;
    NativeScreens screens;
    std::optional<bool> composited; // asked once per window list

    [[nodiscard]] WindowRecord recordOf(const X11Client& client) const
    {
        WindowRecord r;
        r.number = client.frame;
        r.name = client.name;
        r.hasName = client.hasName;
        r.ownerPid = client.pid;
        r.ownerName = commandOfPid(client.pid);
        r.bundleIdentifier = client.windowClass;
        r.layer = layerOf(client.facts);
        r.bounds = screens.toPoints(client.frameRect);
        r.alpha = client.opacity;
        return r;
    }
};

X11WindowServer::X11WindowServer(std::optional<NativeScreens> screens)
    : m(std::make_unique<State>())
{
    m->fixedScreens = std::move(screens);
    int screenNumber = 0;
    XcbConnectionPtr connection(xcb_connect(nullptr, &screenNumber));
    if (xcb_connection_has_error(connection.get()) != 0)
        return;
    m->connection = std::move(connection);
    m->grabber = std::make_unique<X11ScreenGrabber>(m->connection.get(), screenNumber);
    m->frozen = std::make_unique<X11FrozenDesktop>(m->connection.get(), *m->grabber);
    m->atoms = X11Atoms::intern(m->connection.get());
}

X11WindowServer::~X11WindowServer() = default;

bool X11WindowServer::isConnected() const
{
    return m->connection != nullptr;
}

const QImage& X11WindowServer::frozenRoot() const
{
    static const QImage none;
    return m->frozen ? m->frozen->root() : none;
}

void X11WindowServer::refreshScreens()
{
    m->screens = m->fixedScreens ? *m->fixedScreens : NativeScreens::fromQt();
}

core::ScreenLayout X11WindowServer::screens()
{
    refreshScreens();
    return m->screens.layout();
}

int X11WindowServer::windowReads() const
{
    return m->frozen ? m->frozen->windowReads() : 0;
}

bool X11WindowServer::compositorRunning()
{
    return m->frozen && m->frozen->compositorRunning();
}

void X11WindowServer::thaw()
{
    if (m->frozen)
        m->frozen->thaw();
}

std::vector<WindowRecord> X11WindowServer::windowList()
{
    if (!m->connection)
        return {};
    refreshScreens();
    m->frozen->freeze();
    m->frozen->forgetFrames();
    m->composited.reset();
    const std::int64_t self = getpid();
    const xcb_window_t root = m->grabber->root();
    std::vector<WindowRecord> list;
    for (const X11Client& client : stackedClients(m->connection.get(), root, m->atoms)) {
        if (client.pid == self || hasState(client.facts, WindowState::Hidden))
            continue;
        m->frozen->addFrame(client.frame, client.frameRect);
        list.push_back(m->recordOf(client));
    }
    // The root stands in for the desktop picture of each monitor, at the
    // bottom of the stack.
    for (const NativeScreens::Screen& s : m->screens.screens()) {
        WindowRecord desktop;
        desktop.number = root;
        desktop.name = QStringLiteral("Desktop Picture - ") + s.name;
        desktop.hasName = true;
        desktop.ownerName = QStringLiteral("Xorg");
        desktop.layer = layers::Desktop;
        desktop.bounds = m->screens.toPoints(s.native);
        list.push_back(desktop);
    }
    return list;
}

QImage X11WindowServer::pictureOfWindow(std::uint32_t number, const QRectF& cutTo)
{
    if (!m->connection)
        return {};
    const QRect frameRect = m->frozen->frameOf(number);
    const QRect cut = cutTo.isNull() ? frameRect : m->screens.toPixels(cutTo);
    if (number != m->grabber->root() && compositorRunning()) {
        // The compositor keeps every window's contents off screen: the whole
        // window, even where others cover it.
        QImage image = m->frozen->compositedPicture(number, frameRect, cut);
        if (!image.isNull())
            return image;
    }
    if (!m->frozen->isFrozen())
        m->frozen->freeze();
    return m->frozen->cut(cut);
}

std::shared_ptr<HeldPicture> X11WindowServer::holdPictureOfWindow(std::uint32_t number,
                                                                  const QRectF& cutTo)
{
    if (!m->connection)
        return std::make_shared<ReadPicture>(QImage());
    const QRect frameRect = m->frozen->frameOf(number);
    // A window not listed with this freeze has no copy to hold.
    if (frameRect.isNull() || number == m->grabber->root())
        return WindowServer::holdPictureOfWindow(number, cutTo);
    const QRect cut = cutTo.isNull() ? frameRect : m->screens.toPixels(cutTo);
    if (!m->composited)
        m->composited = compositorRunning();
    return m->frozen->hold(number, frameRect, cut, *m->composited);
}

QImage X11WindowServer::pictureOfRect(const QRectF& rect)
{
    if (!m->connection)
        return {};
    if (m->screens.screens().empty())
        refreshScreens();
    const QRect pixels = m->screens.toPixels(rect);
    if (m->frozen->isFrozen())
        return m->frozen->cut(pixels);
    return m->grabber->grab(pixels);
}

} // namespace platform::x11
