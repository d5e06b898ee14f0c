// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "toolbar/logic/SettingsAdjust.h"

#include <QColor>
#include <QWidget>

class QPainter;
class QToolButton;

namespace toolbar {

// The settings box `colorBox` under the chosen tool: its three size dots
// (the current size's filled), the size in words, the five colour swatches
// and the user's own colour; the text tools have a size menu instead of
// the first two dots. It tells what was clicked; the annotation window
// decides what that changes.
class SettingsBoxView final : public QWidget
{
    Q_OBJECT
public:
    explicit SettingsBoxView(QWidget* parent = nullptr);

    // The tool whose settings it shows; an invalid colour shows red.
    void showTool(const QString& tool, const BoxSettings& settings);
    [[nodiscard]] const QString& tool() const { return m_tool; }
    [[nodiscard]] QToolButton* popupSize() const { return m_popupSize; }

Q_SIGNALS:
    void sizeDotClicked(int dot);   // 0 to 2
    void swatchClicked(int swatch); // 1 to 6
    void userSwatchRightClicked();  // swatch 6, for a colour of one's own
    void textSizeChosen(const QString& title);
    void optionClicked(int option); // 0 on, see shapeOptions()

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    // The shape options at the box's right end, pressed when on.
    void paintOptions(QPainter& p) const;

private:
    QString m_tool;
    BoxSettings m_settings;
    QToolButton* m_popupSize = nullptr;
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
