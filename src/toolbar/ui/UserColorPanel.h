// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QObject>
#include <QPointer>
#include <QRect>

#include <memory>

class QColorDialog;
class QWidget;

namespace toolbar {

// The colour panel for the user's own colour: a colour dialog (with alpha,
// telling every change at once) in a window of its own over the capture's
// overlay. The overlay is an override-redirect window that holds the
// keyboard, so the panel stands above it the same way and takes the
// keyboard while the pointer is over it, giving it back as the pointer
// leaves; the overlay's input filter never sees the panel's events.
class UserColorPanel final : public QObject
{
    Q_OBJECT
public:
    explicit UserColorPanel(QObject* parent = nullptr);
    ~UserColorPanel() override;

    // Opens beside `anchor` (global points) on the screen of `overlay`,
    // showing `initial`.
    void open(QWidget* overlay, const QRect& anchor, const QColor& initial);
    // Closes it and hands the keyboard back to the overlay if that is still
    // shown; safe whichever of the two went first.
    void close();
    [[nodiscard]] bool isOpen() const;
    [[nodiscard]] QWidget* window() const { return m_window.get(); }

Q_SIGNALS:
    void colorChanged(const QColor& color);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void make();
    void giveKeyboardBack();

    std::unique_ptr<QWidget> m_window;
    QColorDialog* m_dialog = nullptr; // inside m_window
    QPointer<QWidget> m_overlay;
    bool m_hasKeyboard = false;
};

} // namespace toolbar
