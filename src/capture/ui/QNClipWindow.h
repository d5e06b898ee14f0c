// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QWidget>

namespace capture {

// The overlay of one screen: a frameless, override-redirect top-level above
// every client, whose background is the frozen picture of its screen. All
// other layers of a capture are child widgets of it, so their order holds
// with or without a compositor.
class QNClipWindow : public QWidget
{
    Q_OBJECT
public:
    explicit QNClipWindow(QScreen* screen);

    // The frozen screen at device pixels; painted 1:1 (device pixel ratio set).
    void setBackgroundPicture(QImage picture);
    [[nodiscard]] const QImage& backgroundPicture() const { return m_background; }
    // Without a compositor a see-through overlay cannot show the live
    // desktop under it, so unfreezing hides the window instead.
    void unfreeze();
    [[nodiscard]] bool isFrozen() const { return !m_background.isNull(); }
    // Ready for another capture: the next paint is reported as its first.
    void prepareForCapture();

Q_SIGNALS:
    void firstFramePainted();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QImage m_background;
    bool m_painted = false;
};

} // namespace capture
