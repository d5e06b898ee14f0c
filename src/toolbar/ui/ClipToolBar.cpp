// SPDX-License-Identifier: GPL-3.0-or-later
#include "toolbar/ui/ClipToolBar.h"

#include "core/Localized.h"
#include "toolbar/logic/ButtonBox.h"
#include "toolbar/logic/ToolRegistry.h"
#include "toolbar/ui/ToolIcons.h"

#include <QPainter>
#include <QToolButton>

namespace toolbar {

namespace {

QString toolTipOf(const QString& name)
{
    const ToolEntry* entry = toolNamed(name);
    return core::localized(entry != nullptr ? entry->tip : "");
}

} // namespace

ClipToolBar::ClipToolBar(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("clipToolBar"));
    const QSizeF size = buttonBoxSize();
    setFixedSize(size.toSize());
    const QRectF box(QPointF(0, 0), size);
    for (const QString& name : buttonNames()) {
        auto* b = new QToolButton(this);
        b->setObjectName(name);
        if (const ToolEntry* entry = toolNamed(name)) {
            b->setIcon(toolIcon(QString(entry->iconName)));
            b->setCheckable(entry->can(can::Draw));
        }
        b->setIconSize(QSize(20, 20));
        b->setToolTip(toolTipOf(name));
        b->setAutoRaise(true);
        b->setFocusPolicy(Qt::NoFocus);
        const QPointF centre = buttonCentre(box, name);
        b->setGeometry(QRectF(centre.x() - kButtonSize / 2, centre.y() - kButtonSize / 2,
                              kButtonSize, kButtonSize)
                           .toRect());
        connect(b, &QToolButton::clicked, this, [this, name] { Q_EMIT clicked(name); });
        m_buttons.insert(name, b);
    }
}

void ClipToolBar::setUpdatesPin(bool updatesPin)
{
    if (QToolButton* copy = button(QString(tool(ToolId::CopyToPaste).name)))
        copy->setToolTip(core::localized(updatesPin ? "Update Map" : "Copy to Paste"));
}

void ClipToolBar::setSelectedTool(const QString& name)
{
    for (auto it = m_buttons.constBegin(); it != m_buttons.constEnd(); ++it) {
        if (it.value()->isCheckable())
            it.value()->setChecked(it.key() == name);
    }
}

void ClipToolBar::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QColor(0, 0, 0, 60));
    p.setBrush(QColor(248, 248, 248));
    p.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 5, 5);
}

} // namespace toolbar
