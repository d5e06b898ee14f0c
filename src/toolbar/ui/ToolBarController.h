// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "toolbar/logic/SettingsAdjust.h"
#include "toolbar/logic/ToolBarHover.h"
#include "toolbar/logic/ToolBarMover.h"
#include "toolbar/logic/ToolBarState.h"
#include "toolbar/ui/ToolBarView.h"

#include <QObject>
#include <QRectF>

#include <memory>

namespace core {
class Clock;
}
namespace settings {
class Defaults;
}

namespace toolbar {

// The annotation window's tool bar on the overlay of the selection: its
// widgets placed from the bar's state, the hover that opens the tips, the
// words about a button in the overlay's corner, and the move away at the
// screen's bottom. The tool chosen is the annotation window's business; a
// click on a button comes back as `clicked`.
class ToolBarController final : public QObject
{
    Q_OBJECT
public:
    ToolBarController(ToolBarState& state, settings::Defaults& defaults, core::Clock& clock,
                      QObject* parent = nullptr);
    ~ToolBarController() override;

    void attach(QWidget* overlay, bool updatesPin);
    // The window closes: timers stop, the widgets leave the overlay.
    void detach();
    [[nodiscard]] ToolBarView& view() { return *m_view; }
    [[nodiscard]] const ToolBarView& view() const { return *m_view; }
    [[nodiscard]] bool attached() const { return m_view->overlayHeight() > 0; }

    // The bar laid out anew for `selection` (the overlay's top-left points,
    // without the crop border's band).
    void place(const QRectF& selection);
    void setShown(bool shown) { m_shown = shown; }
    [[nodiscard]] bool shown() const { return m_shown; }
    // The buttons' looks and the settings box after a change of tool or
    // history.
    void refresh(bool canUndo, const BoxSettings& box);
    // A button was clicked or a key chose: no tip waits or stays open.
    void closeTipAtOnce() { m_hover.closeTipAtOnce(); }
    // The selection is a window, which cannot scroll.
    void setWindowSelection(bool window) { m_windowSelection = window; }

    // A pointer move anywhere over the overlay (global points).
    void mouseMoved(QPointF global);
    void flagsChanged(Qt::KeyboardModifiers held, const QWidget* overlay);
    void keyDown() { m_mover.keyDown(); }

Q_SIGNALS:
    void clicked(const QString& name);

private:
    void hoverMoved(QPointF location);

    ToolBarState& m_state;
    settings::Defaults& m_defaults;
    std::unique_ptr<ToolBarView> m_view;
    ToolBarHover m_hover;
    ToolBarMover m_mover;
    bool m_shown = false;
    bool m_windowSelection = false;
};

} // namespace toolbar
