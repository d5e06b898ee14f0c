// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "toolbar/logic/ToolBarState.h"

#include <QWidget>

#include <array>

class QToolButton;

namespace toolbar {

// The strip of fifteen buttons under a selection, one per slot at the
// slots' pitch: the drawing tools, undo, and the buttons that pin, cancel,
// scroll, save and copy.
class ClipToolBar final : public QWidget
{
    Q_OBJECT
public:
    explicit ClipToolBar(QWidget* parent = nullptr);

    [[nodiscard]] QToolButton* button(const QString& name) const;
    // The copy button reads "Update Map" while a pin is being marked up.
    void setUpdatesPin(bool updatesPin);
    // Each button's look: pressed for the tool that is on, greyed when it
    // cannot act.
    void showLooks(const ToolBarState& state, bool canUndo);

Q_SIGNALS:
    void clicked(const QString& name);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::array<QToolButton*, kSlotCount> m_buttons{};
};

} // namespace toolbar
