// SPDX-License-Identifier: GPL-3.0-or-later
#include "colour/ui/CustomColorFormatDialog.h"

#include "colour/logic/ColorCopyKeys.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace colour {

namespace {

QString localized(const QString& english)
{
    return QCoreApplication::translate("Localizable", english.toUtf8().constData());
}

constexpr QSize kDialogSize{700, 125};
constexpr int kFieldWidth = 580;
constexpr int kFieldIndent = 100;

} // namespace

CustomColorFormatDialog::CustomColorFormatDialog(QWidget* parent)
    : QDialog(parent)
{
    setWindowTitle(QCoreApplication::applicationName());
    m_message = new QLabel(localized(formatDialogMessage()), this);
    m_message->setTextFormat(Qt::PlainText);

    m_field = new QLineEdit(formatDialogTemplate(), this);
    m_field->setObjectName(QStringLiteral("customColorFormatField"));
    m_field->setFixedWidth(kFieldWidth);

    auto* buttons = new QDialogButtonBox(this);
    m_ok = buttons->addButton(localized(QStringLiteral("OK")), QDialogButtonBox::AcceptRole);
    m_cancel =
        buttons->addButton(localized(QStringLiteral("Cancel")), QDialogButtonBox::RejectRole);
    m_ok->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* fieldRow = new QHBoxLayout;
    fieldRow->addSpacing(kFieldIndent);
    fieldRow->addWidget(m_field);
    fieldRow->addStretch();

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_message);
    layout->addLayout(fieldRow);
    layout->addWidget(buttons);
    setMinimumSize(kDialogSize);
    resize(kDialogSize.expandedTo(sizeHint()));
}

int CustomColorFormatDialog::resultCode() const
{
    return result() == QDialog::Accepted ? kFormatDialogAccepted : kFormatDialogAccepted + 1;
}

std::optional<QString> CustomColorFormatDialog::formatToStore() const
{
    return colour::formatToStore(resultCode(), m_field->text());
}

std::optional<QString> CustomColorFormatDialog::ask()
{
    exec();
    return formatToStore();
}

} // namespace colour
