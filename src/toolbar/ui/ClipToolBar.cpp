// SPDX-License-Identifier: GPL-3.0-or-later
#include "toolbar/ui/ClipToolBar.h"

#include "core/Localized.h"
#include "toolbar/logic/ButtonBox.h"
#include "toolbar/ui/ToolIcons.h"

#include <QPainter>
#include <QToolButton>

namespace toolbar {

namespace {

QString toolTipOf(const QString& name)
{
    static const QHash<QString, const char*> tips{{"square", "Rectangle"},
                                                  {"ellipse", "Ellipse"},
                                                  {"line", "Line"},
                                                  {"arrow", "Arrow"},
                                                  {"pencilPen", "Pencil"},
                                                  {"mosaic", "Mosaic"},
                                                  {"text", "Text"},
                                                  {"note", "Note"},
                                                  {"highlight", "Highlight"},
                                                  {"map", "Pin to Screen"},
                                                  {"cancel", "Cancel"},
                                                  {"save", "Save"},
                                                  {"copyToPaste", "Copy to Paste"}};
    return core::localized(tips.value(name, ""));
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
        b->setIcon(toolIcon(name));
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
    if (QToolButton* copy = button(QStringLiteral("copyToPaste")))
        copy->setToolTip(core::localized(updatesPin ? "Update Map" : "Copy to Paste"));
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
