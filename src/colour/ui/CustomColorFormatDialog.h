// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

#include <optional>

class QLabel;
class QLineEdit;
class QPushButton;

namespace colour {

// Asks for the user's own colour format: the message, a 580-point field
// that always starts with the same template (never the stored format), and
// "OK" and "Cancel"; 700 by 125 points at least. The capture must be gone
// before it opens.
class CustomColorFormatDialog : public QDialog
{
    Q_OBJECT
public:
    explicit CustomColorFormatDialog(QWidget* parent = nullptr);

    [[nodiscard]] QLabel* messageLabel() const { return m_message; }
    [[nodiscard]] QLineEdit* formatField() const { return m_field; }
    [[nodiscard]] QPushButton* okButton() const { return m_ok; }
    [[nodiscard]] QPushButton* cancelButton() const { return m_cancel; }

    // The result as the copy-key logic counts it: 1000 for "OK".
    [[nodiscard]] int resultCode() const;
    // The format to store once the dialog has closed, or nothing when it
    // was cancelled or the text lacks one of "_R", "_G", "_B".
    [[nodiscard]] std::optional<QString> formatToStore() const;

    // Runs the dialog modally and gives formatToStore().
    [[nodiscard]] std::optional<QString> ask();

private:
    QLabel* m_message = nullptr;
    QLineEdit* m_field = nullptr;
    QPushButton* m_ok = nullptr;
    QPushButton* m_cancel = nullptr;
};

} // namespace colour
