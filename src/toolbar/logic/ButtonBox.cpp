// SPDX-License-Identifier: GPL-3.0-or-later
#include "toolbar/logic/ButtonBox.h"

#include "toolbar/logic/ToolRegistry.h"

#include <algorithm>

namespace toolbar {

const QStringList& buttonNames()
{
    static const QStringList names = [] {
        QStringList list;
        for (const ToolEntry& entry : kTools) {
            if (entry.can(can::ShowButton))
                list.append(QString(entry.name));
        }
        return list;
    }();
    return names;
}

QSizeF buttonBoxSize()
{
    const auto n = static_cast<qreal>(buttonNames().size());
    return {n * kButtonSize + (n + 1) * kButtonSpacing, kButtonSize + 2 * kButtonSpacing};
}

QRectF placeButtonBox(const QRectF& selection, const QSizeF& screen)
{
    const QSizeF size = buttonBoxSize();
    qreal y = selection.bottom() + kButtonBoxGap;
    if (y + size.height() > screen.height()) {
        y = selection.top() - kButtonBoxGap - size.height();
        if (y < 0)
            y = selection.bottom() - kButtonBoxGap - size.height();
    }
    y = std::clamp(y, 0.0, std::max(0.0, screen.height() - size.height()));
    const qreal x = std::clamp(selection.right() - size.width(), 0.0,
                               std::max(0.0, screen.width() - size.width()));
    return {QPointF(x, y), size};
}

QPointF buttonCentre(const QRectF& box, const QString& name)
{
    const auto index = static_cast<qreal>(std::max<qsizetype>(0, buttonNames().indexOf(name)));
    return {box.left() + kButtonSpacing + index * (kButtonSize + kButtonSpacing) + kButtonSize / 2,
            box.center().y()};
}

} // namespace toolbar
