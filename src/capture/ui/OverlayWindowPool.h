// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

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
// the kernel must hand out and clear, which costs more than the rest of a
// capture's start; captures come in runs, so the windows are kept and given
// back after a quiet minute.
class OverlayWindowPool : public QObject
{
    Q_OBJECT
public:
    explicit OverlayWindowPool(core::Clock& clock, QObject* parent = nullptr);
    ~OverlayWindowPool() override;

    // A hidden overlay placed over `screen`, ready for a new capture.
    [[nodiscard]] QNClipWindow* acquire(QScreen* screen);
    // The capture has ended: start counting the quiet minute.
    void idle();
    void clear();
    [[nodiscard]] std::size_t size() const { return m_windows.size(); }

private:
    core::Clock& m_clock;
    std::map<QScreen*, std::unique_ptr<QNClipWindow>> m_windows;
    // Counts acquisitions and idlings, so that a quiet minute that was
    // interrupted does not release the windows when it runs out.
    unsigned m_generation = 0;
};

} // namespace capture
