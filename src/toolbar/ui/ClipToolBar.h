// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QWidget>

class QToolButton;

namespace toolbar {

// The bar of buttons under a selection: the drawing tools and the four
// that end a capture (pin, cancel, save, copy).
class ClipToolBar final : public QWidget
{
    Q_OBJECT
public:
    explicit ClipToolBar(QWidget* parent = nullptr);

    [[nodiscard]] QToolButton* button(const QString& name) const { return m_buttons.value(name); }
    // The copy button reads "Update Map" while a pin is being marked up.
    void setUpdatesPin(bool updatesPin);
    // The chosen drawing tool's button shows pressed; "" for none.
    void setSelectedTool(const QString& name);

Q_SIGNALS:
    void clicked(const QString& name);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QHash<QString, QToolButton*> m_buttons;
};

} // namespace toolbar
