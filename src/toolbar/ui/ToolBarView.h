// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "toolbar/logic/ToolBarHover.h"
#include "toolbar/logic/ToolBarState.h"
#include "toolbar/ui/ClipToolBar.h"
#include "toolbar/ui/SettingsBoxView.h"
#include "toolbar/ui/TipViews.h"

#include <QObject>
#include <QPointer>
#include <QVariantMap>

#include <array>
#include <functional>
#include <utility>

namespace toolbar {

// The tool bar's widgets on the overlay of the selection's screen: the bar,
// the settings box under the chosen tool with its pointer, the tips over the
// buttons and the button words in the overlay's corner. It places them from
// the bar's state and tells of the pointer moving over any of them.
class ToolBarView final : public QObject, public TipBoxes
{
    Q_OBJECT
public:
    // `shortcuts` answers the live short-cut table when a tip opens.
    explicit ToolBarView(std::function<QVariantMap()> shortcuts, QObject* parent = nullptr);
    ~ToolBarView() override;

    void attach(QWidget* overlay);
    // Off the overlay, which goes back to its pool.
    void detach();
    [[nodiscard]] ClipToolBar* bar() const { return m_bar; }
    [[nodiscard]] SettingsBoxView* colorBox() const { return m_colorBox; }
    [[nodiscard]] ButtonTipView* buttonTip() const { return m_buttonTip; }
    [[nodiscard]] TipBoxView* tipBox(int slot) const;
    [[nodiscard]] ColorTipView* colorTip() const { return m_colorTip; }

    // The bar where the state has it, and the settings box under the tool
    // that is on, if any; `shown` false hides them all.
    void place(const ToolBarState& state, bool shown);
    void showLooks(const ToolBarState& state, bool canUndo);
    // The overlay's corner shows `text`; empty hides it.
    void setButtonTip(const QString& text);
    // The overlay's height, which turns window points (y up) into the
    // widgets' own.
    [[nodiscard]] qreal overlayHeight() const;
    [[nodiscard]] qreal overlayWidth() const;
    // Whether one of the shown widgets is under the global point.
    [[nodiscard]] bool contains(QPoint global) const;

    [[nodiscard]] QSizeF tipSize(int slot) override;
    void showTip(int slot, QPointF origin) override;
    void setTipAlpha(int slot, double alpha) override;
    void hideTip(int slot) override;

Q_SIGNALS:
    void clicked(const QString& name);
    // The pointer moved over one of the widgets (window points, y up).
    void pointerMoved(QPointF location);
    void shortcutChosen(const QString& key, const QString& text);
    void menuClosed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void watchPointer(QWidget* widget);
    // Every widget hidden and handed to `parent` (none: off any overlay).
    void reparent(QWidget* parent);
    TipBoxView& tip(int slot);
    void move(QWidget* widget, QPointF origin) const;

    std::function<QVariantMap()> m_shortcuts;
    QPointer<QWidget> m_overlay;
    QPointer<ClipToolBar> m_bar;
    QPointer<SettingsBoxView> m_colorBox;
    QPointer<SanjiaoView> m_sanjiao;
    QPointer<ButtonTipView> m_buttonTip;
    std::array<QPointer<TipBoxView>, kSlotCount> m_tips{};
    QPointer<ColorTipView> m_colorTip;      // at the settings box's right end
    std::pair<quint64, QPointF> m_lastMove; // the last move told, by time and place
};

} // namespace toolbar
