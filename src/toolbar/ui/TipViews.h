// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFrame>
#include <QVariantMap>

#include <functional>

class QGraphicsOpacityEffect;
class QLabel;
class QToolButton;

namespace toolbar {

// The tip over one button of the bar: what the button does and its short
// cut, which a menu changes for the buttons that have one.
class TipBoxView final : public QFrame
{
    Q_OBJECT
public:
    TipBoxView(int slot, QWidget* parent = nullptr);

    // Fills the tip from the live short-cut table before it shows.
    void refresh(const QVariantMap& shortcutOfButton);
    void setAlpha(double alpha);
    [[nodiscard]] QToolButton* menuButton() const { return m_menuButton; }

Q_SIGNALS:
    // A short cut was chosen in the menu: the preference and its new key.
    void shortcutChosen(const QString& key, const QString& text);
    void menuClosed();

private:
    int m_slot;
    QLabel* m_title = nullptr;
    QLabel* m_shortcut = nullptr;
    QToolButton* m_menuButton = nullptr; // none for the buttons without a short-cut menu
    QGraphicsOpacityEffect* m_opacity = nullptr;
};

// The tip at the settings box's right end: what a user cannot guess there.
class ColorTipView final : public QFrame
{
    Q_OBJECT
public:
    explicit ColorTipView(QWidget* parent = nullptr);
    void setAlpha(double alpha);

private:
    QGraphicsOpacityEffect* m_opacity = nullptr;
};

// The black tip box in the overlay's lower-left corner, for the words
// about the bar's buttons.
class ButtonTipView final : public QWidget
{
    Q_OBJECT
public:
    explicit ButtonTipView(QWidget* parent = nullptr);
    void setText(const QString& text);
    [[nodiscard]] const QString& text() const { return m_text; }
    // Back to its corner of the overlay.
    void place();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_text;
};

} // namespace toolbar
