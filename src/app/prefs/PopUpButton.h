// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractButton>
#include <QStringList>

class QActionGroup;
class QMenu;

namespace app {

// A pop-up button: looks like a combo box and offers a menu of items, but
// its title is free text. A stored value that is no item (a delay of 25
// seconds) is shown as it is instead of being replaced by an item.
class PopUpButton final : public QAbstractButton
{
    Q_OBJECT
public:
    explicit PopUpButton(QWidget* parent = nullptr);

    void setItems(const QStringList& titles);
    [[nodiscard]] QStringList items() const { return m_items; }
    [[nodiscard]] QMenu* popupMenu() const { return m_menu; }

    // Shows a title; the item with that title, if any, becomes selected.
    void setTitle(const QString& title);
    [[nodiscard]] QString title() const { return m_title; }
    // Selects an item and shows its title; out of range selects nothing and
    // keeps the title.
    void selectItem(int index);
    // -1 when the title is no item.
    [[nodiscard]] int selectedIndex() const { return m_selected; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    // The user chose an item, also the one already selected.
    void activated(int index);

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void showPopup();
    void markSelected();
    [[nodiscard]] QSize sizeForText(int textWidth) const;

    QMenu* m_menu = nullptr;
    QActionGroup* m_group = nullptr;
    QStringList m_items;
    QString m_title;
    int m_selected = -1;
};

} // namespace app
