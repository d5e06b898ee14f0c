// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/prefs/PopUpButton.h"

#include <QActionGroup>
#include <QKeyEvent>
#include <QMenu>
#include <QStyleOptionComboBox>
#include <QStylePainter>

namespace app {

PopUpButton::PopUpButton(QWidget* parent)
    : QAbstractButton(parent)
    , m_menu(new QMenu(this))
    , m_group(new QActionGroup(this))
{
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    m_group->setExclusive(true);
    connect(this, &QAbstractButton::clicked, this, &PopUpButton::showPopup);
    // The button looks pressed while its menu is open.
    connect(m_menu, &QMenu::aboutToHide, this, qOverload<>(&QWidget::update));
}

void PopUpButton::setItems(const QStringList& titles)
{
    m_items = titles;
    m_menu->clear();
    for (QAction* action : m_group->actions())
        m_group->removeAction(action);
    for (int i = 0; i < titles.size(); ++i) {
        QAction* action = m_menu->addAction(titles.at(i));
        action->setCheckable(true);
        m_group->addAction(action);
        connect(action, &QAction::triggered, this, [this, i] {
            selectItem(i);
            Q_EMIT activated(i);
        });
    }
    m_selected = static_cast<int>(m_items.indexOf(m_title));
    markSelected();
    updateGeometry();
    update();
}

void PopUpButton::setTitle(const QString& title)
{
    m_title = title;
    m_selected = static_cast<int>(m_items.indexOf(title));
    markSelected();
    updateGeometry();
    update();
}

void PopUpButton::selectItem(int index)
{
    if (index < 0 || index >= m_items.size()) {
        m_selected = -1;
    } else {
        m_selected = index;
        m_title = m_items.at(index);
    }
    markSelected();
    updateGeometry();
    update();
}

void PopUpButton::markSelected()
{
    const QList<QAction*> actions = m_menu->actions();
    for (int i = 0; i < actions.size(); ++i)
        actions.at(i)->setChecked(i == m_selected);
    setAccessibleDescription(m_title);
}

QSize PopUpButton::sizeForText(int textWidth) const
{
    QStyleOptionComboBox opt;
    opt.initFrom(this);
    opt.editable = false;
    opt.frame = true;
    const QFontMetrics fm = fontMetrics();
    const QSize content(std::max(textWidth, fm.horizontalAdvance(QLatin1Char('x')) * 4),
                        fm.height());
    return style()->sizeFromContents(QStyle::CT_ComboBox, &opt, content, this);
}

QSize PopUpButton::sizeHint() const
{
    const QFontMetrics fm = fontMetrics();
    int width = fm.horizontalAdvance(m_title);
    for (const QString& item : m_items)
        width = std::max(width, fm.horizontalAdvance(item));
    return sizeForText(width);
}

QSize PopUpButton::minimumSizeHint() const
{
    // Long titles are elided when space is short, so the button never needs
    // more than the width it is allowed.
    return sizeForText(0).boundedTo(maximumSize());
}

void PopUpButton::paintEvent(QPaintEvent*)
{
    QStylePainter painter(this);
    QStyleOptionComboBox opt;
    opt.initFrom(this);
    opt.editable = false;
    opt.frame = true;
    opt.subControls = QStyle::SC_All;
    // A long folder name is cut at its end rather than widening the window.
    const QRect textRect =
        style()->subControlRect(QStyle::CC_ComboBox, &opt, QStyle::SC_ComboBoxEditField, this);
    opt.currentText = fontMetrics().elidedText(m_title, Qt::ElideRight, textRect.width());
    if (isDown() || m_menu->isVisible()) {
        opt.state |= QStyle::State_Sunken | QStyle::State_On;
        opt.activeSubControls = QStyle::SC_ComboBoxArrow;
    }
    painter.drawComplexControl(QStyle::CC_ComboBox, opt);
    painter.drawControl(QStyle::CE_ComboBoxLabel, opt);
}

void PopUpButton::keyPressEvent(QKeyEvent* event)
{
    // The keys that open a combo box open the menu too.
    const bool altDown = event->modifiers() & Qt::AltModifier;
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_F4:
        showPopup();
        return;
    case Qt::Key_Down:
    case Qt::Key_Up:
        if (altDown) {
            showPopup();
            return;
        }
        break;
    default:
        break;
    }
    QAbstractButton::keyPressEvent(event);
}

void PopUpButton::showPopup()
{
    if (m_items.isEmpty())
        return;
    m_menu->setMinimumWidth(width());
    if (m_selected >= 0)
        m_menu->setActiveAction(m_menu->actions().at(m_selected));
    m_menu->popup(mapToGlobal(QPoint(0, height())));
    update();
}

} // namespace app
