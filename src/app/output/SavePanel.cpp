// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/output/SavePanel.h"

#include "core/Localized.h"

#include <QComboBox>
#include <QFileDialog>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>

namespace app::output {

SavePanel::SavePanel(const QString& title, QObject* parent)
    : QObject(parent)
    , m_dialog(new QFileDialog)
{
    m_dialog->setAttribute(Qt::WA_DeleteOnClose);
    // The format row goes into the dialog's own layout, which only Qt's
    // dialog has.
    m_dialog->setOption(QFileDialog::DontUseNativeDialog);
    m_dialog->setAcceptMode(QFileDialog::AcceptSave);
    m_dialog->setFileMode(QFileDialog::AnyFile);
    m_dialog->setWindowTitle(title);
    setAllowedTypes(initialAllowedTypes());

    auto* row = new QWidget(m_dialog);
    auto* rowLayout = new QHBoxLayout(row);
    rowLayout->setContentsMargins(0, 0, 0, 0);
    auto* label = new QLabel(core::localized("Format:"), row);
    label->setForegroundRole(QPalette::PlaceholderText);
    m_popup = new QComboBox(row);
    m_popup->addItems({core::localized("PNG"), core::localized("JPG"), core::localized("TIFF")});
    m_popup->setMinimumWidth(225);
    rowLayout->addWidget(label);
    rowLayout->addWidget(m_popup);
    rowLayout->addStretch();
    if (auto* grid = qobject_cast<QGridLayout*>(m_dialog->layout()))
        grid->addWidget(row, grid->rowCount(), 0, 1, grid->columnCount());
    connect(m_popup, &QComboBox::activated, this, &SavePanel::buttonPressed);

    connect(m_dialog, &QFileDialog::finished, this, [this](int result) {
        if (result == QDialog::Accepted && !m_dialog->selectedFiles().isEmpty())
            Q_EMIT chosen(m_dialog->selectedFiles().constFirst(),
                          typeForIndex(m_popup->currentIndex()));
        deleteLater();
    });
}

SavePanel::~SavePanel()
{
    if (m_dialog)
        m_dialog->deleteLater();
}

void SavePanel::begin()
{
    m_dialog->open();
}

ImageFileType SavePanel::typeForIndex(int index)
{
    switch (index) {
    case 0:
        return ImageFileType::Png;
    case 1:
        return ImageFileType::Jpeg;
    default:
        return ImageFileType::Tiff;
    }
}

QStringList SavePanel::allowedTypesForIndex(int index)
{
    return {extensionOf(typeForIndex(index))};
}

QStringList SavePanel::initialAllowedTypes()
{
    return {QStringLiteral("png"), QStringLiteral("jpg"), QStringLiteral("jiff")};
}

void SavePanel::buttonPressed(int index)
{
    setAllowedTypes(allowedTypesForIndex(index));
}

void SavePanel::setAllowedTypes(const QStringList& types)
{
    QStringList patterns;
    for (const QString& t : types)
        patterns << QStringLiteral("*.") + t;
    m_dialog->setNameFilter(patterns.join(QLatin1Char(' ')));
    m_dialog->setDefaultSuffix(types.constFirst());
}

} // namespace app::output
