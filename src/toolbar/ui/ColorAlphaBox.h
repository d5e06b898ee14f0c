// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

namespace toolbar {

// The small box `boxOfColorAlpha` that shows a stroke's opacity in per
// cent (`indicatorFieldOfColorAlpha`) while the wheel changes it, just
// above the pointer. It never takes the pointer's events.
class ColorAlphaBox final : public QWidget
{
    Q_OBJECT
public:
    explicit ColorAlphaBox(QWidget* overlay);

    // Opens with `percent`, centred on `pointer` (the overlay's top-left
    // points) across and 16 points above it.
    void openAt(QPointF pointer, const QString& percent);
    void setPercent(const QString& percent);
    [[nodiscard]] const QString& percent() const { return m_percent; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_percent;
};

} // namespace toolbar
