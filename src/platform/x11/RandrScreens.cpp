// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/x11/RandrScreens.h"

#include "platform/x11/XcbHandles.h"

#include <xcb/randr.h>

#include <QStringList>

#include <cstdlib>

namespace platform::x11 {

namespace {

QString atomName(xcb_connection_t* c, xcb_atom_t atom)
{
    XcbReply<xcb_get_atom_name_reply_t> reply(
        xcb_get_atom_name_reply(c, xcb_get_atom_name(c, atom), nullptr));
    if (!reply)
        return {};
    return QString::fromLatin1(xcb_get_atom_name_name(reply.get()),
                               xcb_get_atom_name_name_length(reply.get()));
}

} // namespace

double RandrScreens::scaleFor(const QString& name, int index, const QString& screenFactors,
                              const QString& factor)
{
    double scale = 1.0;
    const QStringList parts = screenFactors.split(QLatin1Char(';'), Qt::SkipEmptyParts);
    for (int i = 0; i < parts.size(); ++i) {
        const QString& part = parts.at(i);
        const int eq = part.indexOf(QLatin1Char('='));
        bool ok = false;
        double value = 0;
        if (eq >= 0) {
            if (part.left(eq) != name)
                continue;
            value = part.mid(eq + 1).toDouble(&ok);
        } else if (i == index) {
            value = part.toDouble(&ok);
        }
        if (ok && value > 0)
            scale = value;
    }
    bool ok = false;
    const double global = factor.toDouble(&ok);
    if (ok && global > 0)
        scale *= global;
    return scale;
}

std::optional<RandrScreens> RandrScreens::query()
{
    int screenNumber = 0;
    XcbConnectionPtr connection(xcb_connect(nullptr, &screenNumber));
    if (xcb_connection_has_error(connection.get()) != 0)
        return std::nullopt;
    xcb_connection_t* c = connection.get();
    xcb_screen_iterator_t it = xcb_setup_roots_iterator(xcb_get_setup(c));
    for (int i = 0; i < screenNumber && it.rem > 0; ++i)
        xcb_screen_next(&it);
    const xcb_window_t root = it.data->root;
    const QRect rootRect(0, 0, it.data->width_in_pixels, it.data->height_in_pixels);

    const auto pointerCookie = xcb_query_pointer(c, root);
    const auto monitorsCookie = xcb_randr_get_monitors(c, root, 1);
    RandrScreens result;
    XcbReply<xcb_query_pointer_reply_t> pointer(xcb_query_pointer_reply(c, pointerCookie, nullptr));
    if (pointer)
        result.m_pointer = QPoint(pointer->root_x, pointer->root_y);

    const QString screenFactors = QString::fromLocal8Bit(qgetenv("QT_SCREEN_SCALE_FACTORS"));
    const QString factor = QString::fromLocal8Bit(qgetenv("QT_SCALE_FACTOR"));
    std::vector<NativeScreens::Screen> screens;
    XcbReply<xcb_randr_get_monitors_reply_t> monitors(
        xcb_randr_get_monitors_reply(c, monitorsCookie, nullptr));
    if (monitors) {
        xcb_randr_monitor_info_iterator_t m =
            xcb_randr_get_monitors_monitors_iterator(monitors.get());
        for (; m.rem > 0; xcb_randr_monitor_info_next(&m)) {
            const xcb_randr_monitor_info_t* info = m.data;
            NativeScreens::Screen s;
            s.name = atomName(c, info->name);
            s.native = QRect(info->x, info->y, info->width, info->height);
            const int index = static_cast<int>(screens.size());
            s.scale = scaleFor(s.name, index, screenFactors, factor);
            s.logical = QRectF(s.native.topLeft(), QSizeF(s.native.size()) / s.scale);
            if (info->primary != 0)
                screens.insert(screens.begin(), s);
            else
                screens.push_back(s);
        }
    }
    if (screens.empty()) {
        const double scale = scaleFor(QString(), 0, screenFactors, factor);
        screens.push_back({QStringLiteral("root"), rootRect,
                           QRectF(QPointF(0, 0), QSizeF(rootRect.size()) / scale), scale});
    }
    result.m_screens = NativeScreens(std::move(screens));
    return result;
}

} // namespace platform::x11
