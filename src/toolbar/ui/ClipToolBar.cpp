// SPDX-License-Identifier: GPL-3.0-or-later
#include "toolbar/ui/ClipToolBar.h"

#include "core/Geometry.h"
#include "core/Localized.h"
#include "toolbar/logic/ToolRegistry.h"
#include "toolbar/ui/ToolIcons.h"

#include <QPainter>
#include <QToolButton>

namespace toolbar {

ClipToolBar::ClipToolBar(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("clipToolBar"));
    setFixedSize(buttonBoxSize().toSize());
    setCursor(Qt::ArrowCursor);
    for (int i = 0; i < kSlotCount; ++i) {
        const Slot& slot = slots()[static_cast<std::size_t>(i)];
        const ToolEntry& entry = tool(*slot.tool);
        const QString name(slot.name);
        auto* b = new QToolButton(this);
        b->setObjectName(name);
        b->setIcon(toolIcon(QString(entry.iconName)));
        b->setCheckable(entry.can(can::Draw));
        b->setIconSize(QSize(20, 20));
        b->setAutoRaise(true);
        b->setFocusPolicy(Qt::NoFocus);
        // The slots' frames are measured from the bar's bottom.
        b->setGeometry(core::flipped(buttonFrame(i), kButtonBoxHeight).toRect());
        connect(b, &QToolButton::clicked, this, [this, name] { Q_EMIT clicked(name); });
        m_buttons[static_cast<std::size_t>(i)] = b;
    }
}

QToolButton* ClipToolBar::button(const QString& name) const
{
    const int slot = slotNamed(name);
    return slot < 0 ? nullptr : m_buttons[static_cast<std::size_t>(slot)];
}

void ClipToolBar::setUpdatesPin(bool updatesPin)
{
    if (QToolButton* copy = m_buttons[kSlotCount - 1])
        copy->setAccessibleName(core::localized(updatesPin ? "Update Map" : "Copy to Paste"));
}

void ClipToolBar::showLooks(const ToolBarState& state, bool canUndo)
{
    for (int i = 0; i < kSlotCount; ++i) {
        QToolButton* b = m_buttons[static_cast<std::size_t>(i)];
        const ButtonLook look = state.look(i, canUndo);
        b->setEnabled(look != ButtonLook::Disabled);
        if (b->isCheckable())
            b->setChecked(look == ButtonLook::Selected);
    }
}

void ClipToolBar::paintEvent(QPaintEvent*)
{
    // A light bar with a hairline edge.
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(QColor(0, 0, 0, 90), 0.2));
    p.setBrush(Qt::white);
    p.drawRect(QRectF(rect()).adjusted(0.1, 0.1, -0.1, -0.1));
}

} // namespace toolbar
