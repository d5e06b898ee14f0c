// SPDX-License-Identifier: GPL-3.0-or-later
#include "toolbar/ui/ToolBarView.h"

#include "core/Geometry.h"
#include "toolbar/ui/ClipToolBar.h"
#include "toolbar/ui/SettingsBoxView.h"
#include "toolbar/ui/TipViews.h"

#include <QMouseEvent>
#include <QToolButton>

namespace toolbar {

ToolBarView::ToolBarView(std::function<QVariantMap()> shortcuts, QObject* parent)
    : QObject(parent)
    , m_shortcuts(std::move(shortcuts))
    , m_bar(new ClipToolBar())
    , m_colorBox(new SettingsBoxView())
    , m_sanjiao(new SanjiaoView())
    , m_buttonTip(new ButtonTipView())
    , m_colorTip(new ColorTipView())
{
    connect(m_bar, &ClipToolBar::clicked, this, &ToolBarView::clicked);
    watchPointer(m_bar);
    watchPointer(m_colorBox);
}

ToolBarView::~ToolBarView()
{
    for (QPointer<TipBoxView>& tipView : m_tips)
        delete tipView.data();
    delete m_colorTip.data();
    delete m_buttonTip.data();
    delete m_sanjiao.data();
    delete m_colorBox.data();
    delete m_bar.data();
}

void ToolBarView::watchPointer(QWidget* widget)
{
    widget->setMouseTracking(true);
    widget->installEventFilter(this);
    for (QWidget* child : widget->findChildren<QWidget*>()) {
        child->setMouseTracking(true);
        child->installEventFilter(this);
    }
}

bool ToolBarView::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseMove && m_overlay != nullptr) {
        const auto* move = static_cast<QMouseEvent*>(event);
        // A move a button leaves to the bar under it is the same move.
        const std::pair<quint64, QPointF> seen{move->timestamp(), move->globalPosition()};
        if (seen != m_lastMove) {
            m_lastMove = seen;
            Q_EMIT pointerMoved(
                core::flipped(m_overlay->mapFromGlobal(seen.second), overlayHeight()));
        }
    }
    return QObject::eventFilter(watched, event);
}

void ToolBarView::attach(QWidget* overlay)
{
    m_overlay = overlay;
    reparent(overlay);
}

void ToolBarView::detach()
{
    reparent(nullptr);
    m_overlay = nullptr;
}

void ToolBarView::reparent(QWidget* parent)
{
    for (QWidget* w : {static_cast<QWidget*>(m_colorBox), static_cast<QWidget*>(m_sanjiao),
                       static_cast<QWidget*>(m_bar), static_cast<QWidget*>(m_buttonTip),
                       static_cast<QWidget*>(m_colorTip)}) {
        w->hide();
        w->setParent(parent);
    }
    for (QPointer<TipBoxView>& tipView : m_tips) {
        if (tipView != nullptr) {
            tipView->hide();
            tipView->setParent(parent);
        }
    }
}

qreal ToolBarView::overlayHeight() const
{
    return m_overlay != nullptr ? m_overlay->height() : 0;
}

qreal ToolBarView::overlayWidth() const
{
    return m_overlay != nullptr ? m_overlay->width() : 0;
}

void ToolBarView::move(QWidget* widget, QPointF origin) const
{
    const QRectF frame(origin, QSizeF(widget->size()));
    widget->move(core::flipped(frame, overlayHeight()).topLeft().toPoint());
}

TipBoxView* ToolBarView::tipBox(int slot) const
{
    return slot >= 0 && slot < kSlotCount ? m_tips[static_cast<std::size_t>(slot)].data() : nullptr;
}

void ToolBarView::place(const ToolBarState& state, bool shown)
{
    if (m_overlay == nullptr)
        return;
    move(m_bar, state.shownOrigin());
    m_bar->setVisible(shown);
    const std::optional<ColorBoxPlacement> box = state.colorBox();
    if (box && shown) {
        move(m_colorBox, box->colorBox.topLeft());
        move(m_sanjiao, box->sanjiao);
    }
    m_colorBox->setVisible(box && shown);
    m_sanjiao->setVisible(box && shown);
    if (shown) {
        m_colorBox->raise();
        m_sanjiao->raise();
        m_bar->raise();
    }
}

void ToolBarView::showLooks(const ToolBarState& state, bool canUndo)
{
    m_bar->showLooks(state, canUndo);
}

void ToolBarView::setButtonTip(const QString& text)
{
    if (m_overlay == nullptr)
        return;
    if (text.isEmpty()) {
        m_buttonTip->hide();
        return;
    }
    m_buttonTip->setText(text);
    m_buttonTip->show();
    m_buttonTip->raise();
}

bool ToolBarView::contains(QPoint global) const
{
    const auto under = [global](const QWidget* w) {
        return w != nullptr && w->isVisible() && w->rect().contains(w->mapFromGlobal(global));
    };
    if (under(m_bar) || under(m_colorBox) || under(m_colorTip))
        return true;
    return std::any_of(m_tips.begin(), m_tips.end(),
                       [&](const QPointer<TipBoxView>& t) { return under(t.data()); });
}

TipBoxView& ToolBarView::tip(int slot)
{
    QPointer<TipBoxView>& tipView = m_tips[static_cast<std::size_t>(slot)];
    if (tipView == nullptr) {
        tipView = new TipBoxView(slot, m_overlay);
        tipView->hide();
        watchPointer(tipView);
        connect(tipView, &TipBoxView::shortcutChosen, this, &ToolBarView::shortcutChosen);
        connect(tipView, &TipBoxView::menuClosed, this, &ToolBarView::menuClosed);
    }
    return *tipView;
}

QSizeF ToolBarView::tipSize(int slot)
{
    if (slot == kColorTipSlot)
        return m_colorTip != nullptr ? QSizeF(m_colorTip->size()) : QSizeF();
    if (slot < 0 || slot >= kSlotCount)
        return {};
    TipBoxView& tipView = tip(slot);
    tipView.refresh(m_shortcuts ? m_shortcuts() : QVariantMap());
    return QSizeF(tipView.size());
}

void ToolBarView::showTip(int slot, QPointF origin)
{
    if (slot == kColorTipSlot) {
        if (m_overlay == nullptr || m_colorTip == nullptr)
            return;
        m_colorTip->setAlpha(1.0);
        move(m_colorTip, origin);
        m_colorTip->show();
        m_colorTip->raise();
        return;
    }
    if (m_overlay == nullptr || slot < 0 || slot >= kSlotCount)
        return;
    TipBoxView& tipView = tip(slot);
    tipView.refresh(m_shortcuts ? m_shortcuts() : QVariantMap());
    tipView.setAlpha(1.0);
    move(&tipView, origin);
    tipView.show();
    tipView.raise();
}

void ToolBarView::setTipAlpha(int slot, double alpha)
{
    if (slot == kColorTipSlot && m_colorTip != nullptr)
        m_colorTip->setAlpha(alpha);
    if (TipBoxView* tipView = tipBox(slot))
        tipView->setAlpha(alpha);
}

void ToolBarView::hideTip(int slot)
{
    if (slot == kColorTipSlot) {
        if (m_colorTip != nullptr) {
            m_colorTip->hide();
            m_colorTip->setAlpha(0.0);
        }
        return;
    }
    if (TipBoxView* tipView = tipBox(slot)) {
        tipView->hide();
        tipView->setAlpha(0.0);
    }
}

} // namespace toolbar
