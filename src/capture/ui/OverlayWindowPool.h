// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QObject>

#include <map>
#include <memory>

class QScreen;

namespace core {
class Clock;
}

namespace capture {

class QNClipWindow;

// Keeps one overlay window per screen between captures. A new top-level
// needs a window on the server and a screen-sized backing store whose pages
// the kernel must hand out and clear, which costs several times the rest of
// a capture's start. So the windows are made, and painted once where no one
// sees them, on the first turn of the event loop after start, and kept: the
// first capture, and one after an hour of quiet, start as fast as the tenth.
class OverlayWindowPool : public QObject
{
    Q_OBJECT
public:
    explicit OverlayWindowPool(core::Clock& clock, QObject* parent = nullptr);
    ~OverlayWindowPool() override;

    // A hidden overlay placed over `screen`, ready for a new capture.
    [[nodiscard]] QNClipWindow* acquire(QScreen* screen);
    // Makes the windows of `screens` that are missing and paints each once
    // off screen, so that its backing store exists with its pages touched.
    void warm(const QList<QScreen*>& screens);
    void clear();
    [[nodiscard]] std::size_t size() const { return m_windows.size(); }

private:
    QNClipWindow& windowFor(QScreen* screen);

    std::map<QScreen*, std::unique_ptr<QNClipWindow>> m_windows;
};

} // namespace capture
