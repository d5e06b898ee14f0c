// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/output/ImageFileType.h"

#include <QFileDialog>
#include <QObject>
#include <QPointer>
#include <QStringList>

class QComboBox;

namespace app::output {

// The save panel for a picture when no save folder is set: a file dialog
// with a "Format:" row of PNG, JPG and TIFF under it. It lives until the
// user answers and then deletes itself; a cancel drops the picture.
class SavePanel : public QObject
{
    Q_OBJECT
public:
    explicit SavePanel(const QString& title, QObject* parent = nullptr);
    ~SavePanel() override;

    // Shows the panel without blocking.
    void begin();

    // The type a popup index stands for: 0 PNG, 1 JPEG, anything else TIFF.
    [[nodiscard]] static ImageFileType typeForIndex(int index);
    // The file types the panel allows after the popup moved to `index`.
    [[nodiscard]] static QStringList allowedTypesForIndex(int index);
    // The file types allowed when the panel opens ("jiff" as written).
    [[nodiscard]] static QStringList initialAllowedTypes();

    [[nodiscard]] QFileDialog* dialog() const { return m_dialog; }
    [[nodiscard]] QComboBox* formatPopup() const { return m_popup; }

Q_SIGNALS:
    void chosen(const QString& path, app::output::ImageFileType type);

private:
    void buttonPressed(int index);
    void setAllowedTypes(const QStringList& types);

    QPointer<QFileDialog> m_dialog;
    QComboBox* m_popup = nullptr;
};

} // namespace app::output
