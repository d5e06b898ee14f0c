// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QWidget>

namespace toolbar {

// The settings box `colorBox` under the chosen tool: its three size dots
// (the current size's filled), the size in words, the five colour swatches
// and the user's own colour.
class SettingsBoxView final : public QWidget
{
    Q_OBJECT
public:
    explicit SettingsBoxView(QWidget* parent = nullptr);

    // The tool whose settings it shows, with its remembered size and colour
    // (invalid for none) and the user's colour (invalid while there is none).
    void showTool(const QString& tool, int size, const QColor& color, const QColor& userColor);
    [[nodiscard]] const QString& tool() const { return m_tool; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_tool;
    int m_size = 0;
    QColor m_color;
    QColor m_userColor;
};

// The small pointer `sanjiao` that joins the settings box to its button.
class SanjiaoView final : public QWidget
{
    Q_OBJECT
public:
    static constexpr int kWidth = 15;
    static constexpr int kHeight = 15;
    explicit SanjiaoView(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace toolbar
